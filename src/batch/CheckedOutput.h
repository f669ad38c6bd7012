// An output that remembers whether all of it was written. Keeps what is written in small pieces until it is worth a
// call to the system.
#pragma once

#include <QIODevice>
#include <optional>

namespace batch {

class CheckedOutput final : public QIODevice {
public:
    /// `device` is open for writing and outlives this.
    explicit CheckedOutput(QIODevice& device);

    /// Writes the rest. Nothing when everything was written, else why not; nothing more can be written then.
    std::optional<QString> Finish();
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* bytes, qint64 count) override;

private:
    bool put(QByteArrayView bytes);

    QIODevice& target;
    QByteArray waiting;
    std::optional<QString> problem;
};

} // namespace batch

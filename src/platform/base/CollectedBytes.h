// Bytes that come in parts, also from where no exception may come: destructors that put a device back, and foreign
// writers in the midst of their work. A part that finds no memory is told at the end.
#pragma once

#include <QByteArray>
#include <new>

class CollectedBytes {
public:
    void Append(QByteArrayView part) noexcept {
        try {
            if (!incomplete)
                bytes.append(part);
        } catch (const std::bad_alloc&) {
            incomplete = true;
        }
    }
    /// All parts so far; throws std::bad_alloc when one of them was lost.
    const QByteArray& Whole() const {
        if (incomplete)
            throw std::bad_alloc();
        return bytes;
    }

private:
    QByteArray bytes;
    bool incomplete = false;
};

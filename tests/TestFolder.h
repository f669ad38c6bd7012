// A folder of files that goes with the test.
#pragma once

#include <QFile>
#include <QTemporaryDir>

class TestFolder {
public:
    QString Write(const QByteArray& bytes, const QString& name = QStringLiteral("model.vrf")) const {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return {};
        return file.fileName();
    }
    QString Path(const QString& name) const { return folder.filePath(name); }
    static QByteArray Read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir folder;
};

// A print service of the test's own: a CUPS daemon behind a socket in a folder that is thrown away, which the program
// under test finds by its environment. What a queue prints lands in a file.
#pragma once

#include "TestFolder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

class CupsService {
public:
    CupsService() {
        const QString daemon = tool(u"cupsd"_s);
        if (daemon.isEmpty() || tool(u"lpadmin"_s).isEmpty() || !folder.isValid())
            return;
        // The daemon's helpers may belong to another user.
        QFile::setPermissions(folder.path(), QFile::Permissions(0x7755));
        for (const QString& name : {u"spool/tmp"_s, u"cache"_s, u"state"_s, u"log"_s, u"bin/backend"_s, u"out"_s})
            QDir(folder.path()).mkpath(name);
        for (const QString& name : {u"filter"_s, u"daemon"_s})
            QFile::link(u"/usr/lib/cups/"_s + name, path(u"bin/"_s + name));
        QFile::setPermissions(path(u"out"_s), QFile::Permissions(0x7777));
        write(u"bin/backend/tofile"_s, u"#!/bin/sh\n[ $# -gt 0 ] || exit 0\nout=${DEVICE_URI#tofile:}\n"
                                       "cat ${6:--} > $out.part && mv $out.part $out\n"_s);
        QFile::setPermissions(path(u"bin/backend/tofile"_s), QFile::Permissions(0x7755));
        write(u"files.conf"_s,
              u"ServerRoot @\nServerBin @/bin\nRequestRoot @/spool\nTempDir @/spool/tmp\nCacheDir @/cache\n"
              "StateDir @/state\nAccessLog @/log/access\nErrorLog @/log/error\nPageLog @/log/page\n"
              "Sandboxing relaxed\n"_s);
        write(u"cupsd.conf"_s,
              u"Listen @/socket\nBrowsing Off\nWebInterface No\nDefaultAuthType None\nDirtyCleanInterval 0\n"
              "<Policy default>\n<Limit All>\nAllow all\n</Limit>\n</Policy>\n"_s);
        qputenv("CUPS_SERVER", path(u"socket"_s).toUtf8());
        process.start(daemon, {u"-f"_s, u"-c"_s, path(u"cupsd.conf"_s), u"-s"_s, path(u"files.conf"_s)});
        running = process.waitForStarted() && until([this] { return answers(); });
    }
    ~CupsService() {
        process.terminate();
        process.waitForFinished();
        if (before.isNull())
            qunsetenv("CUPS_SERVER");
        else
            qputenv("CUPS_SERVER", before);
    }

    /// False where no daemon can be started; such a test is skipped.
    bool IsRunning() const { return running; }
    /// A queue that puts a PDF as it stands into `Printed`.
    bool AddQueue(const QString& name) const {
        return run(u"lpadmin"_s, {u"-p"_s, name, u"-E"_s, u"-v"_s, u"tofile:"_s + output(name), u"-P"_s,
                                  QStringLiteral(VELORIN_SOURCE_DIR "/tests/data/queue.ppd")});
    }
    bool SetDefault(const QString& name) const { return run(u"lpadmin"_s, {u"-d"_s, name}); }
    bool Reject(const QString& name) const { return run(u"cupsreject"_s, {name}); }
    bool Remove(const QString& name) const { return run(u"lpadmin"_s, {u"-x"_s, name}); }

    /// The file that the queue prints into, once it is there.
    QString Printed(const QString& queue) const {
        until([&] { return QFile::exists(output(queue)); });
        return output(queue);
    }
    /// What the service keeps about its n-th job, in its own form.
    QByteArray Job(int number) const { return TestFolder::Read(path(u"spool/c%1"_s.arg(number, 5, 10, QChar(u'0')))); }

    static bool until(const std::function<bool()>& holds) {
        QElapsedTimer time;
        for (time.start(); time.elapsed() < 20000; QThread::msleep(20))
            if (holds())
                return true;
        return false;
    }

private:
    bool answers() const {
        const QByteArray name = path(u"socket"_s).toUtf8();
        sockaddr_un address{AF_UNIX, {}};
        if (std::size_t(name.size()) >= sizeof address.sun_path)
            return false;
        std::ranges::copy(name, address.sun_path);
        const int handle = ::socket(AF_UNIX, SOCK_STREAM, 0);
        const bool taken = connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        close(handle);
        return taken;
    }
    static QString tool(const QString& name) {
        const QString found = QStandardPaths::findExecutable(name);
        return found.isEmpty() ? QStandardPaths::findExecutable(name, {u"/usr/sbin"_s}) : found;
    }
    static bool run(const QString& name, const QStringList& arguments) {
        QProcess command;
        command.start(tool(name), arguments);
        if (command.waitForFinished() && command.exitCode() == 0)
            return true;
        qWarning() << name << arguments << command.readAllStandardError();
        return false;
    }
    /// Any name, as the address of a device may hold it.
    QString output(const QString& queue) const {
        return path(u"out/"_s + QString::fromLatin1(queue.toUtf8().toHex()) + u".pdf"_s);
    }
    QString path(const QString& name) const { return folder.filePath(name); }
    void write(const QString& name, QString text) const {
        QFile file(path(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(text.replace(u'@', folder.path()).toUtf8());
    }

    QTemporaryDir folder;
    QProcess process;
    bool running = false;
    QByteArray before = qgetenv("CUPS_SERVER");
};

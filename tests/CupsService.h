// A print service of the test's own, which the program under test finds by its environment: a CUPS daemon in a folder
// that is thrown away. What a queue prints lands in a file.
#pragma once

#include "TestFolder.h"

#include <QDeadlineTimer>
#include <QProcess>

class CupsService {
public:
    CupsService() {
        qputenv("CUPS_SERVER", path(u"socket"_s).toUtf8());
        process.start(QStringLiteral(VELORIN_SOURCE_DIR "/tests/tools/printService.sh"), {folder.path()});
        running = process.waitForReadyRead() && process.readLine() == "ready\n";
    }
    ~CupsService() {
        process.terminate();
        process.waitForFinished();
        before.isNull() ? qunsetenv("CUPS_SERVER") : qputenv("CUPS_SERVER", before);
    }

    /// False where no daemon can be started; such a test is skipped.
    bool IsRunning() const { return running; }
    /// A queue that puts a PDF as it stands into `Printed`.
    bool AddQueue(const QString& name) const {
        return Run(u"lpadmin"_s, {u"-p"_s, name, u"-E"_s, u"-v"_s, u"tofile:"_s + output(name), u"-P"_s,
                                  QStringLiteral(VELORIN_SOURCE_DIR "/tests/data/queue.ppd")});
    }
    static bool Run(const QString& name, const QStringList& arguments) {
        qputenv("PATH", qgetenv("PATH") + ":/usr/sbin");
        return QProcess::execute(name, arguments) == 0;
    }
    /// The file that the queue prints into, once it is there.
    QString Printed(const QString& queue) const {
        QDeadlineTimer deadline(20000);
        while (!QFile::exists(output(queue)) && !deadline.hasExpired())
            process.waitForFinished(20);
        return output(queue);
    }
    /// What the service keeps about its n-th job, in its own form.
    QByteArray Job(int number) const { return TestFolder::Read(path(u"spool/c%1"_s.arg(number, 5, 10, QChar(u'0')))); }

private:
    /// Any name, as the address of a device may hold it.
    QString output(const QString& queue) const {
        return path(u"out/"_s + QString::fromLatin1(queue.toUtf8().toHex()) + u".pdf"_s);
    }
    QString path(const QString& name) const { return folder.filePath(name); }

    QTemporaryDir folder;
    mutable QProcess process;
    bool running = false;
    QByteArray before = qgetenv("CUPS_SERVER");
};

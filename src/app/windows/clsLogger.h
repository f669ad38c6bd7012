// A text log in one file, for diagnosis by hand: nothing in the program makes one. It overwrites the log of before.
#pragma once

#include <QFile>

/// Writes "<program>.log" in the folder of temporary files. Without that folder it says so and stays without a file.
class clsLogger {
public:
    /// Writes `text`, UTF-8, as one line that is in the file at once.
    void DumpMessage(const QString& text);
    /// These two have no effect; the file is open as long as the object lives.
    void Finalize() {}
    void Initialize() {}

    clsLogger();

private:
    QFile file;
};

// A configuration folder of its own for one test case, and thereby a registry of its own.
#pragma once

#include <QDir>
#include <QTemporaryDir>

class ConfigurationFolder {
public:
    ConfigurationFolder() { Use(); }
    ~ConfigurationFolder() { qputenv("XDG_CONFIG_HOME", before); }

    void Use() const { qputenv("XDG_CONFIG_HOME", Path().toUtf8()); }
    QString Path() const { return folder.path(); }

private:
    QTemporaryDir folder;
    QByteArray before = qgetenv("XDG_CONFIG_HOME");
};

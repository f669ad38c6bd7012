#include "extensions/windows/toolPictures.h"

#include "app/mdApplication.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

/// The value of a key in the main group of a desktop entry.
QString valueIn(const QStringList& lines, const QString& key) {
    bool inMain = false;
    for (const QString& line : lines) {
        if (line.startsWith(u'['))
            inMain = line.trimmed() == u"[Desktop Entry]"_s;
        const qsizetype equals = line.indexOf(u'=');
        if (inMain && equals > 0 && line.left(equals).trimmed() == key)
            return line.mid(equals + 1).trimmed();
    }
    return {};
}

bool starts(const QStringList& entry, const QString& program) {
    const QStringList command = toolTable::SplitArguments(valueIn(entry, u"Exec"_s));
    if (command.isEmpty())
        return false;
    const QString& first = command.constFirst();
    return first == program || (!first.contains(u'/') && QStandardPaths::findExecutable(first) == program);
}

QIcon named(const QString& name) {
    return name.startsWith(u'/') ? QIcon(name) : QIcon::fromTheme(name);
}

/// Of the first entry that starts the program. Entries are named after their programs, more or less, so only those are
/// looked into.
QIcon fromDesktop(const QString& program) {
    constexpr qint64 mostBytes = 1 << 18;
    const QString name = QFileInfo(program).fileName();
    for (const QString& folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation))
        for (const QString& entry : QDir(folder).entryList({u"*"_s + name + u"*.desktop"_s}, QDir::Files)) {
            QFile file(folder + u'/' + entry);
            if (!file.open(QIODevice::ReadOnly))
                continue;
            const QStringList lines = QString::fromUtf8(file.read(mostBytes)).split(u'\n');
            if (starts(lines, program))
                return named(valueIn(lines, u"Icon"_s));
        }
    return {};
}

} // namespace

QIcon toolPictures::PictureOf(const ToolEntry& tool) {
    const QString program = toolTable::ProgramOf(tool);
    if (tool.Missing || tool.Icon < 0)
        return {};
    QList<QIcon> pictures{fromDesktop(program)};
    for (const QString& ending : {u".svg"_s, u".png"_s, u".xpm"_s})
        if (mdApplication::FileExists(program + ending))
            pictures += QIcon(program + ending);
    pictures.removeIf([](const QIcon& picture) { return picture.isNull(); });
    return pictures.value(tool.Icon);
}

#include "platform/base/OneLine.h"

#include "platform/base/Literals.h"
#include "platform/base/NativePath.h"

QString OneLine(const QString& text) {
    QString line;
    for (const QChar c : NativePath::Shown(text)) {
        // Those that turn the direction of writing change what a line seems to say.
        const bool joins = c == QChar(0x200c) || c == QChar(0x200d);
        const bool shown = c.category() != QChar::Other_Control && (c.category() != QChar::Other_Format || joins) &&
                           c.category() != QChar::Separator_Line && c.category() != QChar::Separator_Paragraph;
        if (shown)
            line += c;
        else if (c == u'\n')
            line += u"\\n";
        else if (c == u'\t')
            line += u"\\t";
        else
            line += u"\\u{"_s + QString::number(c.unicode(), 16) + u'}';
    }
    return line;
}

#include "platform/base/ShellWords.h"

#include "platform/base/NativePath.h"

#include <QProcess>
#include <QRandomGenerator>
#include <gtest/gtest.h>

TEST(ShellWords, AShellReadsTheWordsThatWereWritten) {
    QRandomGenerator random(1);
    QStringList words{{}, u"plain-1.5"_s};
    const QByteArray pieces = "a '\"\\$`*~!#;\n\t\x01\xff\xe2\x80\xae\xe4\xba\x8c=%";
    while (words.size() < 3000) {
        QByteArray word;
        while (random.bounded(9) > 0)
            word += pieces.mid(random.bounded(int(pieces.size())), random.bounded(1, 4));
        words += NativePath::Text(word);
    }
    const QString line = ShellWords::Line(words);
    EXPECT_EQ(ShellWords::Split(line), words);
    EXPECT_TRUE(line.isValidUtf16() && !line.contains(u'\n'));
    EXPECT_TRUE(line.startsWith(u"'' plain-1.5 "));
    QProcess shell;
    shell.start(u"bash"_s, {u"-c"_s, u"printf '%s\\0' "_s + line});
    ASSERT_TRUE(shell.waitForFinished());
    QByteArray expected;
    for (const QString& word : words)
        expected += QByteArray::fromStdString(NativePath::Of(word).native()) + '\0';
    EXPECT_EQ(shell.readAllStandardOutput(), expected);
    for (const QString& open : {u"a 'b"_s, u"\"b\\\""_s, u"$'"_s, u"b\\"_s})
        EXPECT_EQ(ShellWords::Split(open), std::nullopt) << open.toStdString();
}

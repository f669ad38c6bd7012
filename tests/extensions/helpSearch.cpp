#include "TestFolder.h"

#include "extensions/helpSearch.h"
#include "extensions/helpText.h"
#include "platform/base/Codepage.h"
#include "platform/base/Literals.h"
#include "platform/base/NativePath.h"

#include <QDir>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

TEST(HelpText, TitlesAndExcerptsAsTheTagsCutThem) {
    // Page, title, excerpt with a limit of 8.
    const QString rows[][3] = {
        {u"<Title> あ い\u3000</tiTLE><p>b"_s, u"あ い"_s, u"あ い b"_s},
        {u"<title>never closed<p>b"_s, u""_s, u"never closed"_s},
        {u"\r\n<html>\r\n\r\n<p> <b>first</b> text"_s, u"first"_s, u"first text"_s},
        {u"<p>\r\ndropped<b>one\t \u3000\r\ntwo</b>\r\nkept"_s, u"dropped"_s, u"one two"_s},
        {u"only text > here"_s, u""_s, u"only text > here"_s},
        {u"text <endless tag"_s, u"text"_s, u"text"_s},
        {u"<p>1234567<p>89<p>more"_s, u"1234567"_s, u"123456789"_s},
        {u"<p>;a&nbsp;b &lt;&;c&d"_s, u""_s, u";a b   c&d"_s},
        {u"<title>ﬀ</title>ß<title>x</title>"_s, u"ﬀ"_s, u"ﬀßx"_s},
        {u""_s, u""_s, u""_s},
    };
    for (const auto& [page, title, excerpt] : rows) {
        EXPECT_EQ(helpText::ReadHelpTitle(page), title) << page.toStdString();
        EXPECT_EQ(helpText::MakeExcerpt(page, 8), u"<抜粋>\r\n"_s + excerpt) << page.toStdString();
    }
}

TEST(HelpText, WordsCountOutsideTags) {
    const std::pair<QString, bool> rows[] = {
        {u"FOO"_s, false},
        {u"<P>A FOO"_s, true},
        {u"<A HREF=FOO>"_s, false},
        {u"<A FOO FOO>"_s, false},
        {u"<A FOO>B</A FOO>FOO"_s, true},
        {u"<P>FO"_s, false},
    };
    for (const auto& [page, found] : rows)
        EXPECT_EQ(helpText::FileHasWord(u"FOO", page), found) << page.toStdString();
}

TEST(HelpText, EncodingIsWhatThePageSaysElseWhatItsBytesAllow) {
    const QString text = u"漢字ｶﾅ"_s;
    const QByteArray sjis = Codepage::Encode(text), utf8 = text.toUtf8();
    const QByteArray euc = QByteArray::fromHex("b4c1bbfa8eb68ec5");
    const std::pair<QByteArray, QByteArray> rows[] = {
        {"<meta charset=\"x-sjis\">", sjis},
        {"<META http-equiv=a><Meta content='text/html; CHARSET = Shift_JIS'>", sjis},
        {"<?xml version='1.0' encoding='EUC-JP'?>", euc},
        {"<meta charset=utf-16/>", utf8},
        {"\xef\xbb\xbf<meta charset=euc-jp>", utf8},
        {"<meta charset=none-such>", sjis},
        {"<p charset=euc-jp>", sjis},
        {"<p>", utf8},
        {"<meta charset=", utf8},
    };
    for (const auto& [head, bytes] : rows)
        EXPECT_TRUE(helpText::Decode(QByteArray(head + "<p>" + bytes)).endsWith(u"<p>"_s + text)) << head.toStdString();
    EXPECT_EQ(helpText::Decode(QByteArray("\xff\xfe<\0", 4)), u"<"_s);
}

TEST(HelpSearch, FindsPagesInFoldersWhateverElseStandsThere) {
    const TestFolder folder;
    const auto write = [&](const QString& name, const QByteArray& bytes) {
        const std::filesystem::path path = NativePath::Of(folder.Path(name));
        std::filesystem::create_directories(path.parent_path());
        QFile file;
        ASSERT_TRUE(file.open(std::fopen(path.c_str(), "wb"), QIODevice::WriteOnly, QFile::AutoCloseHandle));
        file.write(bytes);
    };
    write(u"b.HTML"_s, "<title>B</title>Mesh");
    write(u"sub/deep/a.htm"_s, "<title>A</title>MESH &amp; more");
    write(u"sub/"_s + QChar(0xdcff) + u".html"_s, "<title>bytes</title>mesh");
    write(u"tag.html"_s, "<title>T</title><a href=mesh>");
    write(u"none.html"_s, "");
    write(u"page.txt"_s, "<title>text</title>mesh");
    write(u".hidden/h.html"_s, "<title>H</title>mesh");
    write(u"locked.html"_s, "<title>L</title>mesh");
    write(u"large.html"_s, "<title>Large</title>" + QByteArray(20 << 20, 'm') + "esh");
    const auto link = [&](const char* to, const QString& from) {
        std::filesystem::create_symlink(to, NativePath::Of(folder.Path(from)));
    };
    link("..", u"sub/circle"_s);
    link("sub", u"again"_s);
    link("nowhere", u"gone.html"_s);
    ::mkfifo(NativePath::Of(folder.Path(u"pipe.html"_s)).c_str(), 0600);
    std::filesystem::permissions(NativePath::Of(folder.Path(u"locked.html"_s)), std::filesystem::perms::none);
    const bool locks = ::access(folder.Path(u"locked.html"_s).toUtf8(), R_OK) != 0;

    const auto titles = [](const QList<HelpTopic>& topics) {
        QStringList list;
        for (const HelpTopic& topic : topics)
            list += topic.Title;
        list.removeAll(u"L"_s);
        return list.join(u' ');
    };
    QList<HelpTopic> all, some, stopped, nothing;
    qint64 last = 0, expected = -1;
    EXPECT_TRUE(helpSearch::ListHelpFolder(folder.Path(u"."_s), all, [&](qint64 done, qint64 total) {
        last = done;
        expected = total;
        return true;
    }));
    EXPECT_EQ(titles(all), u"A bytes B Large T"_s);
    EXPECT_EQ(all.size(), locks ? 5 : 6);
    EXPECT_EQ(last, expected);
    EXPECT_EQ(all[0].Description, u"<抜粋>\r\nAMESH   more"_s);
    EXPECT_TRUE(std::filesystem::exists(NativePath::Of(all[1].FileName)));
    EXPECT_TRUE(helpSearch::SearchHelpFolder(u"mEsh"_s, folder.Path(u"."_s), some));
    EXPECT_EQ(titles(some), u"A bytes B Large"_s);
    EXPECT_FALSE(helpSearch::ListHelpFolder(folder.Path(u"."_s), stopped, [](qint64, qint64) { return false; }));
    EXPECT_TRUE(helpSearch::ListHelpFolder(folder.Path(u"none"_s), nothing));
    EXPECT_TRUE(stopped.isEmpty() && nothing.isEmpty());
    std::filesystem::remove_all(NativePath::Of(folder.Path(u"sub"_s)));

    const QStringList rows{u"Alpha"_s, u"beta"_s, u"Gamma"_s};
    for (const auto& [typed, row] : {std::pair(u"b"_s, 1), std::pair(u"BETAMAX"_s, 2), std::pair(u"h"_s, -1),
                                     std::pair(u""_s, -1), std::pair(u"aa"_s, 0)})
        EXPECT_EQ(helpSearch::FirstRowFor(typed, 3, [&](qsizetype i) { return rows[i]; }), row) << typed.toStdString();
}

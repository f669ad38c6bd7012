#include "property/clsXML.h"

#include "TestFolder.h"

#include <gtest/gtest.h>

namespace {
bool load(clsXML& document, const QByteArray& bytes) {
    const TestFolder folder;
    return document.Load(folder.Write(bytes));
}

/// name[attribute=value]{text;children}, each part only where there is something.
QString dump(const clsXMLNodeCollection& nodes) {
    QStringList parts;
    for (int i = 0; i < nodes.Length(); ++i) {
        const clsXMLNode& node = *nodes.Item(i);
        QString part = node.nodeName;
        for (int k = 0; k < node.Attributes.Length(); ++k)
            part += u'[' + node.Attributes.Item(k)->nodeName + u'=' + node.Attributes.Item(k)->Text + u']';
        const QString children = dump(node.childNodes);
        if (!node.Text.isEmpty() || !children.isEmpty())
            part += u'{' + node.Text + (children.isEmpty() ? QString() : QString(u';' + children)) + u'}';
        parts.append(part);
    }
    return parts.join(u',');
}

} // namespace

TEST(Xml, Trees) {
    const std::pair<const char*, const char*> cases[] = {
        {"<a>1</a>", "a{1}"},
        {"<?xml version=\"1.0\" ?>\r\n<a/>", "a/"},
        {"<r><a>1</a>\r\n  <B> 2 </b></r>", "r{;a{1},B{2}}"},
        {"<A>x</a><b></b>", "A{x},b"},
        {"<a></a></a><b></b>", "false:a"},
        {"<a><b>1</b><c>", "a{;b{1},c}"},
        {"<a>1</a><b", "a{1}"},
        {"<?xml ?><!-- only -->", "false:"},
        {"no tags", "false:"},
        {"<a> <!-- c > text --> </x>1</a>", "a{<!-- c >}"},
        {"<a><b>1</c>2</b></a>", "a{;b{11}}"},
        {"<a>x&lt;\ny</a>", "a{x&lt;\ny}"},
        {"<a>bb>cc/>d/>", "a{;b{;c/}}"},
        {"\x95\x5c<\x94\x5c>\x83\x5c\x80\xa0</\x94\x5c>", "能{ソ\uFFFD\uFFFD}"},
        // At the top level leading blanks push the end of the text out; inside, they are gone before.
        {"<a>  12</a>", "a"},
        {"<a> 123</a>", "a{12}"},
        {"<r><a>  12</a></r>", "r{;a{12}}"},
        {"<a>one<b/>three</a>", "a{oneone<b;b/}"},
        {"<a default=\"true\">", "a[default=true]"},
        {"<a b = \"1 2\" />", "a[b=]"},
        {"<a b=1 />", "a[b=1]"},
        {"<a b=>", "a"},
        {"<a b=\"\">", "a[b=]"},
        {"<a b=1 c=2>", "a[b=1][c=2]"},
        {"<a b=\"1\" c=\"2\">", "a[b=\"1][c=2]"},
        {"<a ab=\"1\" c=\"2\">", "a[ab=\"][\" c=2]"},
        {"<a \"b\"=\">", "a[b=\"]"},
        {"<a long= 1 x>", "a[long=][ng=]"}};
    for (const auto& [bytes, tree] : cases) {
        clsXML document;
        const QString start = load(document, bytes) ? QString() : u"false:"_s;
        EXPECT_EQ(QString(start + dump(document.childNodes())).toStdString(), tree) << bytes;
    }
    clsXML document;
    EXPECT_TRUE(load(document, "<a></a><b><c></c></b>") && document.lastChild()->nodeName == u"b");
    EXPECT_TRUE(!document.childNodes().Item(-1) && !document.childNodes().Item(2));
    EXPECT_FALSE(document.Load(u"/nowhere/at/all"_s) || document.lastChild());
}

// Inputs that would take hours, gigabytes or all of the stack if the work grew faster than the file.
TEST(Xml, HostileInput) {
    constexpr int many = 10 << 20, most = 1 << 20;
    const QByteArray texts[] = {QByteArray(many, '<') + '>',
                                "<a>" + QByteArray(many, '>'),
                                QByteArray("<a>").repeated(100000) + QByteArray("</a>").repeated(100000) + "<b/>",
                                QByteArray("<a/>").repeated(many / 4) + QByteArray(most, ' '),
                                "<a " + QByteArray(many / 2, 'x') + "= b>",
                                "<a x" + QByteArray(many / 2, ' ') + "y= b>",
                                "<a>t" + QByteArray("<!>t").repeated(many / 4)};
    const std::pair<int, int> broadAndDeep[] = {{1, 1}, {1, most}, {2, 100000}, {most, 1}, {1, 1}, {1, 1}, {1, 1}};
    for (int i = 0; i < int(std::size(texts)); ++i) {
        clsXML document;
        EXPECT_TRUE(load(document, texts[i])) << i;
        int depth = 0;
        for (const clsXMLNode* node = document.childNodes().Item(0); node; node = node->childNodes.Item(0))
            ++depth;
        EXPECT_LE(document.childNodes().Length(), broadAndDeep[i].first) << i;
        EXPECT_LE(depth, broadAndDeep[i].second) << i;
    }
    clsXML document;
    EXPECT_FALSE(load(document, QByteArray(many, '<')));
}

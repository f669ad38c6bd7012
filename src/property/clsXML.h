// A reader for the small XML-like file that keeps a result file's drawing settings. A text cutter that looks for "<"
// and ">", not a conforming parser: no references, no data sections, no encodings but code page 932.
#pragma once

#include <QString>
#include <QStringView>
#include <memory>
#include <vector>

struct clsXMLNode;

/// An ordered list of nodes, which it owns. Its destruction needs no stack however deep the nodes are nested.
class clsXMLNodeCollection {
public:
    clsXMLNodeCollection() = default;
    ~clsXMLNodeCollection();
    clsXMLNodeCollection(const clsXMLNodeCollection&) = delete;
    clsXMLNodeCollection& operator=(const clsXMLNodeCollection&) = delete;

    /// Appends the node and gives it back.
    clsXMLNode* Add(std::unique_ptr<clsXMLNode> xmlNode);
    void Clear();
    /// The node at a position counted from 0; null for a position that there isn't.
    const clsXMLNode* Item(int index) const;
    int Length() const { return int(nodes.size()); }

private:
    std::vector<std::unique_ptr<clsXMLNode>> nodes;
};

/// An element, or an attribute with its value in `Text`.
struct clsXMLNode {
    QString nodeName;
    QString Text;
    clsXMLNodeCollection Attributes;
    clsXMLNodeCollection childNodes;
};

/// What is wanted of it, as files on disk lean on it: a declaration or comment ends at its first ">"; the name of
/// "<abc/>" is "abc/", that of "<abc />" is "abc"; closing tags compare without regard to case, and one that fits no
/// open element is dropped; an element that is never closed takes all behind it as children; text behind a child
/// element comes from the wrong place; and only the last attribute of a tag is sure to come out whole.
class clsXML {
public:
    const clsXMLNodeCollection& childNodes() const { return children; }
    /// The last top-level node; null if there is none.
    const clsXMLNode* lastChild() const { return children.Item(children.Length() - 1); }

    /// Reads a file anew. False when it gave no element, or when a closing tag stands at the top level; the tree then
    /// holds what was read before it. Work and memory grow with the file's size alone and end at a fixed limit, far
    /// above what such a file needs: 16 MB read, a quarter of a million nodes. What lies beyond counts as not there.
    bool Load(const QString& path);

private:
    struct OpenElement {
        clsXMLNode* Node;
        QStringView Name;    ///< in the text that is read
        QStringView Content; ///< all the text behind the opening tag
    };

    bool ParseText(QStringView rest);
    void ParseElement(QStringView tag, QStringView rest, clsXMLNode* parent);
    void ParseContent(QStringView& rest);
    void ParseAttributes(clsXMLNode* node, QStringView tag);
    static QStringView StripQuotes(QStringView text);
    bool spend(qsizetype cost);

    clsXMLNodeCollection children;
    std::vector<OpenElement> open; ///< innermost last
    qsizetype budget = 0;          ///< what nodes and attributes may still cost
};

#include "property/clsXML.h"

#include "app/mdTips.h"

namespace {
constexpr qint64 mostBytes = 16 << 20;
constexpr qsizetype nodeCost = 16;
constexpr qsizetype mostCost = nodeCost << 18;

/// Without the blanks at both ends; no other white space counts here.
QStringView trimmed(QStringView text) {
    while (text.startsWith(u' '))
        text = text.mid(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

QString withoutLineEnds(const QString& text) {
    QString result(text.size(), Qt::Uninitialized);
    QChar* to = result.data();
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            ++i;
        else
            *to++ = text[i];
    }
    result.truncate(to - result.constData());
    return result;
}

/// The name in a tag: up to the first blank, or all between its brackets.
QStringView nameOf(QStringView tag) {
    const qsizetype blank = tag.indexOf(u' ');
    const qsizetype end = blank >= 0 ? blank : tag.size() - 1;
    return tag.mid(1, std::max<qsizetype>(end - 1, 0));
}

bool closes(QStringView tag, QStringView name) {
    return tag.size() == name.size() + 3 && tag.startsWith(u"</") &&
           tag.mid(2).chopped(1).compare(name, Qt::CaseInsensitive) == 0;
}

bool isPassedOver(QStringView tag) {
    return tag.size() > 1 && (tag[1] == u'?' || tag[1] == u'!' || tag[1] == u'/');
}
} // namespace

clsXMLNodeCollection::~clsXMLNodeCollection() {
    Clear();
}

void clsXMLNodeCollection::Clear() {
    std::vector<std::unique_ptr<clsXMLNode>> doomed = std::move(nodes);
    nodes.clear();
    // Each node dies with its lists empty, so that no destructor calls another one.
    while (!doomed.empty()) {
        const std::unique_ptr<clsXMLNode> node = std::move(doomed.back());
        doomed.pop_back();
        for (clsXMLNodeCollection* list : {&node->childNodes, &node->Attributes}) {
            std::move(list->nodes.begin(), list->nodes.end(), std::back_inserter(doomed));
            list->nodes.clear();
        }
    }
}

clsXMLNode* clsXMLNodeCollection::Add(std::unique_ptr<clsXMLNode> xmlNode) {
    return nodes.emplace_back(std::move(xmlNode)).get();
}

const clsXMLNode* clsXMLNodeCollection::Item(int index) const {
    return index >= 0 && index < Length() ? nodes[std::size_t(index)].get() : nullptr;
}

bool clsXML::Load(const QString& path) {
    children.Clear();
    budget = mostCost;
    const QString text = withoutLineEnds(mdTips::ReadTextFile(path, mostBytes));
    const bool good = ParseText(text);
    open.clear();
    return good;
}

bool clsXML::ParseText(QStringView rest) {
    while (budget > 0) {
        const qsizetype start = rest.indexOf(u'<');
        if (start < 0)
            break;
        rest = rest.mid(start);
        const qsizetype end = rest.indexOf(u'>');
        if (end < 0)
            break;
        const QStringView tag = rest.left(end + 1);
        rest = rest.mid(end + 1);
        if (tag[1] == u'/')
            return false;
        if (isPassedOver(tag))
            continue;
        ParseElement(tag, rest, nullptr);
        if (!open.empty())
            ParseContent(rest);
    }
    return children.Length() > 0;
}

/// Makes the node of an opening tag. If it has content, which stands in `rest`, it becomes the innermost open element;
/// nesting takes no stack this way.
void clsXML::ParseElement(QStringView tag, QStringView rest, clsXMLNode* parent) {
    if (!spend(nodeCost))
        return;
    clsXMLNodeCollection& list = parent ? parent->childNodes : children;
    clsXMLNode* const node = list.Add(std::make_unique<clsXMLNode>());
    const QStringView name = nameOf(tag);
    node->nodeName = name.toString();
    ParseAttributes(node, tag);
    if (!tag.endsWith(u"/>"))
        open.push_back({node, name, rest});
}

/// Reads until all open elements are closed and takes what it uses off the front of `rest`.
void clsXML::ParseContent(QStringView& rest) {
    rest = trimmed(rest);
    bool moreTags = true;
    while (!open.empty() && budget > 0) {
        const OpenElement& element = open.back();
        // A text without any "<" may hold many a ">" still; it is searched to its end only once.
        const qsizetype start = moreTags ? rest.indexOf(u'<') : -1;
        moreTags = start >= 0;
        if (start > 0) {
            element.Node->Text += trimmed(element.Content.left(start));
            rest = rest.mid(start);
        }
        const qsizetype end = rest.indexOf(u'>');
        if (end < 0)
            break;
        const QStringView tag = rest.left(end + 1);
        rest = trimmed(rest.mid(end + 1));
        if (closes(tag, element.Name))
            open.pop_back();
        else if (!isPassedOver(tag))
            ParseElement(tag, rest, element.Node);
    }
    if (!open.empty())
        rest = {};
    open.clear();
}

void clsXML::ParseAttributes(clsXMLNode* node, QStringView tag) {
    QStringView text = tag.mid(1 + node->nodeName.size());
    text = trimmed(text.left(text.size() - 1));
    if (text.endsWith(u'/'))
        text = trimmed(text.chopped(1));

    // Positions count from 1 here, 0 is none; `blank` is one in the slice from `equals` on and serves as one in the
    // whole text all the same.
    for (;;) {
        const qsizetype equals = text.indexOf(u'=') + 1;
        if (equals < 2 || equals == text.size() || !spend(nodeCost + equals))
            return;
        qsizetype blank = text.mid(equals - 1).indexOf(u' ') + 1;
        if (blank == equals + 1)
            blank = text.indexOf(u' ', blank) + 1;

        clsXMLNode* const attribute = node->Attributes.Add(std::make_unique<clsXMLNode>());
        attribute->nodeName = StripQuotes(trimmed(text.left(equals - 1))).toString();
        const qsizetype length = blank == 0 ? text.size() : std::max<qsizetype>(blank - equals - 1, 0);
        attribute->Text = StripQuotes(trimmed(text.mid(equals, length))).toString();
        if (blank == 0)
            return;
        text = text.mid(blank);
    }
}

QStringView clsXML::StripQuotes(QStringView text) {
    return text.size() > 1 && text.startsWith(u'"') && text.endsWith(u'"') ? text.mid(1, text.size() - 2) : text;
}

/// False, and the reading ends, when the budget doesn't hold the cost. An attribute costs its distance in the tag too,
/// since the same name may be cut out again and again.
bool clsXML::spend(qsizetype cost) {
    budget = cost < budget ? budget - cost : 0;
    return budget > 0;
}

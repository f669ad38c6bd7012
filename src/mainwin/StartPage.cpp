#include "mainwin/StartPage.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
/// What stands behind the number in a menu's entry.
QString withoutNumber(const QString& caption) {
    const QString mark = u" - "_s;
    return caption.mid(caption.indexOf(mark) + mark.size()).replace(u"&&"_s, u"&"_s);
}
} // namespace

StartPage::StartPage(QWidget& place) : QWidget(&place) {
    setObjectName(u"startPage"_s);
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    auto* cover = new QVBoxLayout(&place);
    cover->setContentsMargins(0, 0, 0, 0);
    cover->addWidget(this);

    auto* title = new QLabel(u"計算結果ファイルを開いてください"_s);
    QFont large = title->font();
    constexpr double timesLarger = 1.5;
    large.setPointSizeF(large.pointSizeF() * timesLarger);
    title->setFont(large);
    auto* column = new QVBoxLayout;
    column->addWidget(title);
    column->addSpacing(fontMetrics().height());
    addLink(*column, u"miFileOpen"_s, u"ファイルを開く... (Ctrl+O)"_s, u"計算結果ファイルを開きます。"_s);
    column->addWidget(new QLabel(u"ファイルをここにドロップしても開けます。"_s));
    recentFiles = new QWidget;
    new QVBoxLayout(recentFiles);
    recentFiles->layout()->setContentsMargins({});
    column->addWidget(recentFiles);

    auto* middle = new QHBoxLayout;
    middle->addStretch(1);
    middle->addLayout(column);
    middle->addStretch(1);
    auto* page = new QVBoxLayout(this);
    page->addStretch(1);
    page->addLayout(middle);
    page->addStretch(2);
}

void StartPage::addLink(QVBoxLayout& column, const QString& tool, const QString& text, const QString& description) {
    auto* link = new QPushButton(QString(text).replace(u'&', u"&&"_s));
    link->setObjectName(u"start_"_s + tool);
    link->setFlat(true);
    link->setToolTip(description);
    link->setCursor(Qt::PointingHandCursor);
    // As narrow as its text, and to be read on light and dark desktops: not all have a colour of links that is.
    link->setStyleSheet(u"text-align: left; padding: 2px; text-decoration: underline;"_s);
    if (!focusProxy())
        setFocusProxy(link);
    connect(link, &QPushButton::clicked, this, [this, tool] { emit Chosen(tool); });
    column.addWidget(link, 0, Qt::AlignLeft);
}

void StartPage::Show(const std::vector<FamilyEntry>& recent) {
    auto* column = static_cast<QVBoxLayout*>(recentFiles->layout());
    while (QLayoutItem* item = column->takeAt(0)) {
        // Not at once: it may be the one that has just been clicked.
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
    recentFiles->setVisible(!recent.empty());
    if (recent.empty())
        return;
    auto* heading = new QLabel(u"最近使ったファイル"_s);
    heading->setContentsMargins(0, fontMetrics().height(), 0, 0);
    column->addWidget(heading);
    for (std::size_t i = 0; i < recent.size(); ++i)
        addLink(*column, u"recent-"_s + QString::number(i), withoutNumber(recent[i].Caption), recent[i].Description);
}

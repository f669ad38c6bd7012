#include "platform/widgets/ListPanel.h"

#include <QAccessible>
#include <QScrollBar>
#include <QtTest>
#include <gtest/gtest.h>

namespace {

/// A list in sight, three rows high, that notes what it tells.
struct Shown : ListPanel {
    explicit Shown(const QStringList& texts) {
        for (const QString& text : texts)
            AddItem(text, u"description of "_s + text, {}, u"/"_s + text);
        setFrameStyle(NoFrame);
        resize(300, 3 * RowHeight());
        show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(this));
        connect(this, &ListPanel::Change, this, [this](int index) { Told += u" %1>%2"_s.arg(index).arg(ListIndex()); });
        connect(this, &ListPanel::MouseDown, this, [this] { Told += u" down@%1"_s.arg(ListIndex()); });
        connect(this, &ListPanel::DblClick, this, [this] { Told += u" double"_s; });
    }
    QString Texts() {
        QStringList texts;
        for (int i = 0; i < ListCount(); ++i)
            texts += ListText(i) + ListPrivateData(i);
        return texts.join(u' ');
    }
    void Press(Qt::Key key) { QTest::keyClick(viewport(), key); }
    void Click(int y) { QTest::mouseClick(viewport(), Qt::LeftButton, {}, {5, y}); }
    QString Told;
};

TEST(ListPanel, KeysTellTheNewIndexAndClicksTheOneBefore) {
    Shown list({u"a"_s, u"b"_s});
    const int row = list.RowHeight();
    list.Press(Qt::Key_Down);
    list.Click(0);
    list.Click(row - 1);
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_End, Qt::Key_A})
        list.Press(key);
    list.Click(2 * row);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, {5, row});
    list.SetListIndex(1);
    list.SetListIndex(1);
    list.SetListIndex(2);
    QAccessible::queryAccessibleInterface(&list)->tableInterface()->selectRow(1);
    EXPECT_EQ(list.Told.toStdString(), " down@-1 -1>0 down@0 0>0 1>1 down@1 1>-1 double 1>1 1>1 -1>-1 1>1");
    list.Clear();
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST(ListPanel, RowsAreKeptSortedFoundAndReadWithCare) {
    Shown list({u"c"_s, u"B"_s});
    list.AddItem(u"a"_s, {}, {}, {}, 1);
    EXPECT_EQ(list.Texts(), u"c/c a B/B"_s);
    list.SetListIndex(0);
    list.SetSorted(true);
    EXPECT_EQ(list.ListIndex(), 2);
    list.AddItem(u"b"_s, {}, {}, u"2"_s, 0);
    list.AddItem(u"A"_s, {}, {}, {});
    EXPECT_EQ(list.Texts(), u"a A B/B b2 c/c"_s);
    EXPECT_EQ(list.ListIndex(), 4);
    EXPECT_EQ(list.FindItem(-3, u"b"_s) * 10 + list.FindItem(3, u"B"_s), 29);
    list.SetListText(9, u"x"_s);
    list.SetListText(0, u"z"_s);
    list.RemoveItem(4);
    list.RemoveItem(-1);
    EXPECT_EQ(list.Texts() + list.ListText(-1) + list.ListDescription(4), u"z A B/B b2"_s);
    EXPECT_EQ(list.ListIndex(), -1);
    const QAccessibleInterface& heard = *QAccessible::queryAccessibleInterface(&list);
    EXPECT_EQ(heard.role(), QAccessible::List);
    EXPECT_EQ(heard.childCount(), 4);
    EXPECT_EQ(heard.child(2)->text(QAccessible::Name) + heard.child(2)->text(QAccessible::Description),
              u"Bdescription of B"_s);
}

TEST(ListPanel, RowsStandWhereTheyAreHit) {
    Shown list(QStringList(100, u"row"_s));
    const int font = list.GetPixelFontSize(), row = std::max(font, 32) + 5 * font + 9;
    EXPECT_EQ(list.verticalScrollBar()->maximum(), 100 * row + 3 - 3 * row);
    list.verticalScrollBar()->setValue(10 * row + 7);
    QImage red(32, 32, QImage::Format_RGB32);
    red.fill(Qt::red);
    red.setPixel(1, 1, qRgb(255, 255, 255));
    list.SetListPicture(11, QPixmap::fromImage(red));
    list.SetListIndex(11);
    const QImage shown = list.viewport()->grab().toImage();
    const QRgb ground = list.palette().color(QPalette::Highlight).rgb();
    EXPECT_EQ(list.HitTest(5, row - 7) * 100 + list.HitTest(5, row - 8), 1110);
    EXPECT_EQ(list.HitTest(5, -1) + list.HitTest(300, 1), -2);
    EXPECT_NE(shown.pixel(2, row - 8), ground);
    EXPECT_EQ(shown.pixel(0, row - 7), ground);
    EXPECT_EQ(shown.pixel(5, row - 5), ground) << "the mask colour is transparent";
    EXPECT_EQ(shown.pixel(6, row - 5), qRgb(255, 0, 0));
    list.SetPictureExtent(1);
    list.resize(300, 2000);
    list.Clear();
    list.AddItem(u"one"_s, {}, {}, {});
    list.Refresh();
    EXPECT_EQ(list.HitTest(5, std::max(font, 16) + 5 * font + 8), 0);
    EXPECT_EQ(list.verticalScrollBar()->maximum(), 0);
}

} // namespace

// The dialogs of a page as their user has them.
#include "GivenPrinters.h"
#include "ShownDialog.h"
#include "output/windows/frmLabelEdit.h"
#include "output/windows/frmPageLayout.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/PictureBox.h"
#include "platform/widgets/UpDown.h"

#include <QApplication>
#include <QCheckBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTreeWidget>

namespace {
const QString ok = u"Command1_0"_s, cancel = u"Command1_1"_s;

/// Printers with a property to choose.
struct ChoosyPrinters : GivenPrinters {
    PrinterOption Sides{u"sides"_s, u"両面(&D):"_s, {{u"one"_s, u"片面"_s}, {u"two"_s, u"両面"_s}}, u"one"_s};
    QList<PrinterOption> Options(const QString& name) override {
        return name == u"laser" ? QList{Sides} : QList<PrinterOption>();
    }
    void Choose(const QString&, const QString&, const QString& value) override { Sides.Chosen = value; }
};

struct PageTest : testing::Test {
    PageTest() {
        Dialogs::Testing::Start();
        printers.List.append({u"laser"_s, {{256, u"細長"_s, 50, 200}, {8, u"A3"_s, 297, 420}}, 256, 300});
    }
    ~PageTest() override {
        EXPECT_EQ(Dialogs::Testing::UnexpectedCount() + Dialogs::Testing::UnusedCount(), 0);
        Dialogs::Testing::Stop();
    }
    /// Does `act` to the dialog of that kind that is to open next, and closes it.
    template<class Dialog>
    void whenOpen(const std::function<void(Dialog&)>& act) {
        QTimer::singleShot(0, qApp, [this, act] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return whenOpen(act);
            act(*dialog);
            dialog->close();
        });
    }

    ChoosyPrinters printers;
    PageSettings settings;
};
} // namespace

TEST_F(PageTest, PrinterPaperAndOrientationAreThoseOfThePrinter) {
    settings.Printer = u"laser"_s;
    settings.PaperSize = 77;
    const PageSettings before = settings;
    Shown<frmPageLayout> form(printers, settings);
    EXPECT_EQ(form.windowTitle(), u"ページ設定"_s);
    const auto textOf = [&](const QString& name) -> QString { return form.Find<QComboBox>(name).currentText(); };
    EXPECT_EQ(textOf(u"cmbPrinter"_s) + textOf(u"cmbPaper"_s) + textOf(u"cmbOrientation"_s), u"laser細長横方向"_s);
    EXPECT_TRUE(form.Find<QWidget>(u"cmdPrinter"_s).isEnabled());
    whenOpen<QDialog>([](QDialog& dialog) {
        dialog.findChild<QComboBox*>(u"cmbOption_0"_s)->setCurrentIndex(1);
        dialog.accept();
    });
    form.Click(u"cmdPrinter"_s);
    EXPECT_EQ(printers.Sides.Chosen, u"two"_s);
    form.Choose(u"cmbPaper"_s, 1);
    form.Choose(u"cmbPrinter"_s, 1);
    EXPECT_EQ(textOf(u"cmbPaper"_s), u"A3"_s) << "goes along where the printer has it";
    EXPECT_FALSE(form.Find<QWidget>(u"cmdPrinter"_s).isEnabled());
    // A printer that goes while the dialog stands: the message, no paper, and what stands is written.
    form.Choose(u"cmbOrientation"_s, 0);
    printers.List.removeFirst();
    Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
    form.Choose(u"cmbPrinter"_s, 0);
    EXPECT_EQ(Dialogs::Testing::Asked().last().Text, u"プリンタの情報を取得することができません。"_s);
    EXPECT_EQ(form.Find<QComboBox>(u"cmbPaper"_s).count(), 0);
    EXPECT_EQ(settings, before);
    form.Click(ok);
    PageSettings expected = before;
    expected.Printer = u"trace"_s;
    expected.Orientation = 1;
    EXPECT_EQ(settings, expected);
    // One that had gone before stays in the settings unless another one is chosen; no name is the default.
    for (const QString& name : {u"trace"_s, QString()}) {
        settings.Printer = name;
        Shown<frmPageLayout> next(printers, settings);
        EXPECT_EQ(next.Find<QComboBox>(u"cmbPrinter"_s).currentText(), name.isEmpty() ? u"PDF"_s : QString());
        next.Click(ok);
        EXPECT_EQ(settings.Printer, name.isEmpty() ? u"PDF"_s : name);
    }
}

TEST_F(PageTest, LengthsArePutInOrderOnLeavingTheirBox) {
    settings.Margin = {-7, 123, 20000, 0};
    Shown<frmPageLayout> form(printers, settings);
    EXPECT_EQ(form.Texts().left(20), u"0.0|12.3|999.9|0.0|0"_s);
    const std::tuple<QString, QString, int> rows[] = {
        {u"12.34"_s, u"12.3"_s, 123}, {u"-5"_s, u"5.0"_s, 50}, {u"1e9"_s, u"999.9"_s, 9999}, {u"x"_s, u"0.0"_s, 0}};
    for (int i = 0; const auto& [typed, shown, tenths] : rows) {
        const QString name = u"txtMargin_%1"_s.arg(i), arrows = u"udMargin_%1"_s.arg(i++);
        form.Type(name, typed, tenths == 50 ? Qt::Key_Return : Qt::Key_Tab);
        EXPECT_EQ(form.Find<QLineEdit>(name).text(), shown);
        EXPECT_EQ(form.Find<UpDown>(arrows).Value(), tenths);
    }
    QTest::keyClick(&form.Find<QWidget>(u"txtMargin_0"_s), Qt::Key_Up);
    QTest::keyClick(&form.Find<QWidget>(u"txtMargin_3"_s), Qt::Key_Down);
    EXPECT_EQ(form.Texts().left(24), u"12.4|5.0|999.9|0.0|0.3|1"_s);
    EXPECT_FALSE(form.Find<QWidget>(u"txtScale"_s).isEnabled());
    form.Choose(u"cmbScale"_s, 1);
    const std::tuple<QString, QString, QString> others[] = {{u"txtOutline"_s, u"0"_s, u"0.1"_s},
                                                            {u"txtOutline"_s, u"2.26"_s, u"2.3"_s},
                                                            {u"txtScale"_s, u"-3"_s, u"1"_s},
                                                            {u"txtScale"_s, u"x"_s, u"1"_s},
                                                            {u"txtScale"_s, u"1:2.5"_s, u"2.5"_s}};
    for (const auto& [name, typed, shown] : others) {
        form.Type(name, typed);
        EXPECT_EQ(form.Find<QLineEdit>(name).text(), shown);
    }
    form.Click(u"chkPaintOutline"_s);
    EXPECT_FALSE(form.Find<QWidget>(u"txtOutline"_s).isEnabled());
    form.Find<QLineEdit>(u"txtMargin_2"_s).setText(u"7.77"_s); // as if it had the focus still
    form.Click(ok);
    EXPECT_EQ(settings.Margin, (std::array{124, 50, 78, 0}));
    EXPECT_EQ(std::tuple(settings.Frame, settings.FrameSize, settings.ScaleDenominator), std::tuple(false, 23, 2.5));
    PageSettings one, other;
    one.ScaleUnit = 2;
    other.Frame = false;
    other.FrameSize = 105;
    other.ScaleDenominator = 0.125;
    expectRoundTrip(form.Bindings(), one, other);
}

TEST_F(PageTest, TheSmallSheetHasThePapersProportionAndItsMargins) {
    settings.Margin = {500, 100, 200, 300};
    for (const auto& [orientation, paper, size] :
         {std::tuple(1, 9, QSizeF(210, 297)), {2, 9, QSizeF(297, 210)}, {1, 4, QSizeF(431.8, 279.4)}}) {
        settings.Orientation = orientation;
        settings.PaperSize = paper;
        Shown<frmPageLayout> form(printers, settings);
        const QImage image = form.Find<PictureBox>(u"picPaper"_s).Image();
        const QSizeF drawn = size.scaled(image.size() - QSize(2, 2), Qt::KeepAspectRatio);
        const QPointF corner((image.width() - drawn.width()) / 2, (image.height() - drawn.height()) / 2);
        const double perMm = drawn.width() / size.width();
        const auto grayAt = [&](double x, double y) {
            const QPoint about = QPointF(corner.x() + x * perMm, corner.y() + y * perMm).toPoint();
            int darkest = 255;
            for (int i = 0; i < 27; ++i)
                if (const QPoint at = about + QPoint(i % 3 - 1, i / 3); image.valid(at))
                    darkest = std::min(darkest, qGray(image.pixel(at)));
            return darkest;
        };
        const double middle = size.height() / 2;
        EXPECT_TRUE(grayAt(0, middle) == 0 && grayAt(size.width(), middle) == 0) << "as large as there is room";
        EXPECT_TRUE(grayAt(50, middle) == 0 && grayAt(size.width() - 20, middle) == 0) << "the margins";
        EXPECT_TRUE(grayAt(40, middle) == 255 && grayAt(size.width() - 30, middle) == 255);
    }
}

TEST_F(PageTest, LabelsAreAddedRemovedEditedAndTicked) {
    settings.LabelCount = 1;
    settings.Labels = {{u"a"_s, true, 99, u"f"_s}, {u"beyond the count"_s, true, 0, {}}};
    Shown<frmPageLayout> form(printers, settings);
    form.ShowTab(1);
    auto& list = form.Find<QTreeWidget>(u"lvLabel"_s);
    const auto lines = [&]() -> QString {
        QStringList texts;
        for (int i = 0; i < list.topLevelItemCount(); ++i)
            texts.append(list.topLevelItem(i)->text(0) + list.topLevelItem(i)->text(1) +
                         (list.topLevelItem(i)->checkState(0) ? u"+"_s : u"-"_s));
        return texts.join(u'|') + u' ' + QString::number(list.indexOfTopLevelItem(list.currentItem()));
    };
    EXPECT_EQ(lines(), u"a左上+ -1"_s);
    for (const QString& button : {u"cmdLabel_1"_s, u"cmdLabel_2"_s}) {
        Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
        form.Click(button);
        EXPECT_EQ(Dialogs::Testing::Asked().last().Text, u"項目を選択してください。"_s);
    }
    const auto edit = [&](const QString& text, int place, bool accept) {
        whenOpen<frmLabelEdit>([=](frmLabelEdit& dialog) {
            dialog.LabelString(text);
            dialog.Position(place);
            QTest::mouseClick(dialog.findChild<QPushButton*>(accept ? ok : cancel), Qt::LeftButton);
        });
    };
    edit(u"%step%"_s, 17, true);
    form.Click(u"cmdLabel_0"_s);
    edit(u"lost"_s, 1, false);
    form.Click(u"cmdLabel_0"_s);
    EXPECT_EQ(lines(), u"a左上+|%step%右下内+ 1"_s);
    list.topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    edit(u"b"_s, 3, true);
    const QPoint row = list.visualItemRect(list.topLevelItem(0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, row);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, row);
    EXPECT_EQ(lines(), u"b左下-|%step%右下内+ 0"_s);
    for (const int answer : {MessageAnswer::No, MessageAnswer::Yes}) {
        Dialogs::Testing::QueueAnswer(answer);
        form.Click(u"cmdLabel_1"_s);
        EXPECT_EQ(Dialogs::Testing::Asked().last().Text, u"b を削除します。"_s);
        EXPECT_EQ(Dialogs::Testing::Asked().last().Flags, MessageStyle::AskNoDefault);
    }
    EXPECT_EQ(lines(), u"%step%右下内+ 0"_s);
    EXPECT_EQ(settings.Labels.first().Text, u"a"_s);
    form.Click(ok);
    EXPECT_EQ(settings.LabelCount, 1);
    EXPECT_EQ(settings.Labels, (QList<PageLabel>{{u"%step%"_s, true, 17, pageLabels::DefaultFont}}));
}

TEST_F(PageTest, ALabelHasTextPlaceAndFont) {
    Shown<frmLabelEdit> form;
    EXPECT_EQ(form.windowTitle(), u"文字列の編集"_s);
    form.Position(18);
    EXPECT_EQ(form.Position(), 0);
    Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
    form.Click(ok);
    EXPECT_EQ(Dialogs::Testing::Asked().last().Text, u"文字列を設定してください。"_s);
    EXPECT_TRUE(form.isVisible());
    // Every place can be reached with the arrow keys, and the one with the focus is chosen.
    QSet<int> reached;
    QList<int> starts{0};
    while (!starts.isEmpty()) {
        const int from = starts.takeFirst();
        if (reached.contains(from))
            continue;
        reached.insert(from);
        auto& option = form.Find<QRadioButton>(u"optPosition_%1"_s.arg(from));
        EXPECT_EQ(option.accessibleName(), pageLabels::PositionName(from));
        for (const auto key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up}) {
            form.Position(from);
            option.setFocus();
            QTest::keyClick(&option, key);
            starts.append(form.Position());
        }
    }
    EXPECT_EQ(reached.size(), pageLabels::PositionCount);
    const int folded = form.height();
    form.Click(u"chkMacro"_s);
    EXPECT_EQ(form.height() - folded, (8385 - 4920) / 15);
    const QString macros = form.Find<QPlainTextEdit>(u"txtMacro"_s).toPlainText();
    EXPECT_EQ(macros.count(u'\n'), 16);
    EXPECT_TRUE(macros.startsWith(u"利用可能なマクロ一覧：\n %path%"));
    // Cancel leaves the font; OK takes it with its colour, even where there was no font before.
    form.FontString(u"???"_s);
    Dialogs::Testing::QueueFont({});
    form.Click(u"cmdFont"_s);
    EXPECT_EQ(form.FontString(), u"???"_s);
    Dialogs::Testing::QueueFont(Dialogs::FontChoice{u"Arial"_s, 10.5, true, false, true, false, 0xff});
    form.Click(u"cmdFont"_s);
    EXPECT_EQ(form.FontString(), form.Find<QLineEdit>(u"txtFont"_s).text());
    ColorRef color = 0;
    EXPECT_EQ(mdTips::ParseFontString(form.FontString(), color), (FontObject{u"Arial"_s, 10.5, true, false, true}));
    EXPECT_EQ(color, 0xffu);
    const QString large(100000, u'字');
    form.LabelString(large);
    form.Click(ok);
    EXPECT_TRUE(form.HasEnded(true));
    EXPECT_TRUE(form.LabelString() == large);
}

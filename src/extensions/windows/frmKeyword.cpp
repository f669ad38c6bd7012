#include "extensions/windows/frmKeyword.h"

#include "app/mdApplication.h"
#include "app/windows/ShowMessage.h"
#include "platform/base/NativePath.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/ListPanel.h"
#include "platform/widgets/LongWork.h"
#include "platform/widgets/Shell.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTimer>
#include <QVBoxLayout>

using FormSupport::Named;
using mdApplication::ShowMessage;

namespace {

const QString showCaption = u"表示"_s, searchCaption = u"検索"_s;
const QString cannotBeShown = u"ヘルプドキュメントが参照できません。"_s;

/// While it lives a control has a tag, which says that the program itself changes the control.
class Tagged {
public:
    Tagged(QWidget& tagged, QStringView tag) : control(tagged) { control.setProperty("Tag", tag.toString()); }
    ~Tagged() { control.setProperty("Tag", {}); }
    Tagged(const Tagged&) = delete;
    Tagged& operator=(const Tagged&) = delete;

    static bool Is(const QWidget& control) { return !control.property("Tag").toString().isEmpty(); }

private:
    QWidget& control;
};

} // namespace

frmKeyword::frmKeyword(QWidget* parent, const QString& helpFolder, int helpStyle)
    : QDialog(parent), HelpDir(helpFolder), style(helpStyle) {
    Q_INIT_RESOURCE(extensions);
    setObjectName(u"frmKeyword"_s);
    buildControls();
    showStyle();
    constexpr int charactersWide = 84, linesHigh = 34;
    FormSupport::PlaceOnScreen(*this,
                               {fontMetrics().averageCharWidth() * charactersWide, fontMetrics().height() * linesHigh});
}

void frmKeyword::buildControls() {
    txtWord = Named(new QLineEdit, u"txtWord"_s);
    FormSupport::SelectAllOnFocus(*txtWord);
    txtWord->installEventFilter(this);
    Label1 = Named(new QLabel, u"Label1"_s);
    Label1->setBuddy(txtWord);
    lpList = Named(new ListPanel, u"lpList"_s);
    lpList->setAccessibleName(u"トピック"_s);
    lpList->SetPictureExtent(1);
    lpList->SetSorted(true);
    const QColor back = palette().color(QPalette::Base);
    lpList->SetBackColor(makeColor(back.red(), back.green(), back.blue()));
    lblState = Named(new QLabel, u"lblState"_s);
    Command1[0] = Named(new QPushButton(searchCaption), u"Command1"_s, 0);
    Command1[0]->setDefault(true);
    Command1[1] = Named(new QPushButton(u"閉じる(&C)"_s), u"Command1"_s, 1);
    Command1[1]->setAutoDefault(false);
    FormSupport::ButtonWidths({Command1[0], Command1[1]});
    Timer1 = new QTimer(this);
    Timer1->setObjectName(u"Timer1"_s);
    Timer1->setSingleShot(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addWidget(txtWord);
    layout->addWidget(lpList, 1);
    layout->addWidget(lblState);
    layout->addLayout(FormSupport::ButtonRow({}, {Command1[0], Command1[1]}));

    connect(txtWord, &QLineEdit::textChanged, this, &frmKeyword::onType);
    connect(lpList, &ListPanel::Change, this, &frmKeyword::onMove);
    connect(lpList, &ListPanel::DblClick, this, &frmKeyword::onDoubleClick);
    connect(Command1[0], &QPushButton::clicked, this, &frmKeyword::onCommand);
    connect(Command1[1], &QPushButton::clicked, this, &QDialog::reject);
    connect(Timer1, &QTimer::timeout, this, &QDialog::accept);
}

void frmKeyword::showStyle() {
    const bool keywords = style == Keywords;
    setWindowTitle(keywords ? u"キーワード"_s : u"検索"_s);
    Label1->setText(keywords ? u"キーワードを入力してください(&W):"_s : u"検索する語句を入力してください(&W):"_s);
    Command1[0]->setText(keywords ? showCaption : searchCaption);
}

void frmKeyword::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    // Its progress is to be seen.
    if (style == Keywords && !std::exchange(listed, true))
        QTimer::singleShot(0, this, &frmKeyword::listKeywords);
}

bool frmKeyword::fillList(const Scan& scan) {
    QList<HelpTopic> topics;
    lpList->Clear();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto over = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
    LongWork work(u"ヘルプを読んでいます。"_s, [this](const QString& line) { lblState->setText(line); });
    bool whole = false;
    work.Run([&](const LongWork::Progress& progress) { whole = scan(topics, progress); });
    lpList->setUpdatesEnabled(false);
    const QIcon picture(u":/icons/topic.svg"_s);
    for (const HelpTopic& topic : topics)
        lpList->AddItem(topic.Title, topic.Description, picture, topic.FileName);
    lpList->setUpdatesEnabled(true);
    lblState->setText(whole ? u"%1 件"_s.arg(topics.size()) : u"中止しました。 %1 件"_s.arg(topics.size()));
    return whole;
}

void frmKeyword::listKeywords() {
    const bool whole = fillList([this](QList<HelpTopic>& topics, const helpSearch::Progress& progress) {
        return helpSearch::ListHelpFolder(HelpDir, topics, progress);
    });
    Command1[0]->setEnabled(lpList->ListCount() > 0);
    if (whole && lpList->ListCount() == 0)
        ShowMessage(cannotBeShown, MessageStyle::Stop);
}

void frmKeyword::searchHelp() {
    if (txtWord->text().isEmpty()) {
        ShowMessage(u"検索する語句を入力してください。"_s, MessageStyle::Stop);
        txtWord->setFocus();
        return;
    }
    if (!NativePath::IsFolder(HelpDir)) {
        ShowMessage(cannotBeShown, MessageStyle::Stop);
        return;
    }
    const bool whole = fillList([this](QList<HelpTopic>& topics, const helpSearch::Progress& progress) {
        return helpSearch::SearchHelpFolder(txtWord->text(), HelpDir, topics, progress);
    });
    if (!whole || lpList->ListCount() > 0)
        return;
    ShowMessage(u"指定された語句を含むドキュメントは見つかりませんでした。"_s, MessageStyle::Stop);
    txtWord->setFocus();
    txtWord->selectAll();
}

void frmKeyword::onType() {
    if (Tagged::Is(*txtWord))
        return;
    const Tagged guard(*txtWord, u"NOTMOVE");
    if (style == Search) {
        Command1[0]->setText(searchCaption);
        Command1[0]->setEnabled(!txtWord->text().isEmpty());
        return;
    }
    const auto titleOf = [this](qsizetype row) { return lpList->ListText(int(row)); };
    const qsizetype row = helpSearch::FirstRowFor(txtWord->text(), lpList->ListCount(), titleOf);
    const Tagged moving(*lpList, u"ON CODE");
    if (row >= 0)
        lpList->SetListIndex(int(row));
}

void frmKeyword::onMove() {
    if (style == Search) {
        Command1[0]->setText(showCaption);
        Command1[0]->setEnabled(true);
    } else if (!Tagged::Is(*lpList)) {
        const Tagged guard(*txtWord, u"NOTMOVE");
        txtWord->setText(lpList->ListText(lpList->ListIndex()));
    }
}

void frmKeyword::onCommand() {
    // Assistive tools press buttons also while the mouse and the keyboard don't.
    if (LongWork::IsRunning())
        return;
    if (Command1[0]->text() == showCaption)
        showTopic();
    else
        searchHelp();
}

void frmKeyword::showTopic() {
    const QString file = lpList->ListPrivateData(lpList->ListIndex());
    if (!mdApplication::FileExists(file) || !Shell::Open(file))
        ShowMessage(cannotBeShown, MessageStyle::Stop);
}

void frmKeyword::onDoubleClick() {
    if (lpList->ListIndex() < 0)
        return;
    onCommand();
    if (style == Keywords)
        Timer1->start(0);
}

/// Up and down move in the list without leaving the box.
bool frmKeyword::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if ((key != Qt::Key_Up && key != Qt::Key_Down) || lpList->ListCount() == 0)
        return false;
    if (lpList->ListIndex() < 0)
        lpList->SetListIndex(0);
    else
        QApplication::sendEvent(lpList, event);
    return true;
}

#include "extensions/windows/ctlToolTable.h"

#include "app/mdApplication.h"
#include "extensions/windows/toolPictures.h"
#include "platform/base/NativePath.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/FormSupport.h"

#include <QGridLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <cmath>

using FormSupport::Bind;
using FormSupport::Named;

namespace {

enum Field : int { Name, Description, Program, Arguments, Picture };

QString listText(const ToolEntry& tool) {
    const QString name = QString(tool.Name).remove(u'&');
    return tool.Missing ? name + u" (見つかりません)"_s : name;
}

} // namespace

ctlToolTable::ctlToolTable(QWidget* parent) : QWidget(parent) {
    setObjectName(u"ctlToolTable"_s);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(buildList(), 1);
    layout->addWidget(buildFields());
    rows = {Bind(txtTool[Name], &ToolEntry::Name), Bind(txtTool[Description], &ToolEntry::Description),
            Bind(txtTool[Program], &ToolEntry::Module), Bind(txtTool[Arguments], &ToolEntry::Args),
            Bind(FormSupport::Edit<int>{txtTool[Picture], [](int number) { return QString::number(number); },
                                        [](const QString& text) { return std::optional(text.toInt()); }, -1},
                 &ToolEntry::Icon)};
    SetTools({});
}

QWidget* ctlToolTable::buildList() {
    auto* part = new QWidget;
    auto* layout = new QGridLayout(part);
    layout->setContentsMargins({});
    lstTool = Named(new QListWidget, u"lstTool"_s);
    lstTool->setAccessibleName(u"ツール"_s);
    layout->addWidget(lstTool, 0, 0, 5, 1);
    const std::array<QString, 4> captions{u"追加(&A)"_s, u"削除(&R)"_s, u"上へ(&U)"_s, u"下へ(&D)"_s};
    for (int i = 0; i < int(captions.size()); ++i) {
        cmdTool[i] = Named(new QPushButton(captions[i]), u"cmdTool"_s, i);
        cmdTool[i]->setAutoDefault(false);
        layout->addWidget(cmdTool[i], i, 1);
    }
    layout->setRowStretch(4, 1);
    FormSupport::ButtonWidths({cmdTool[0], cmdTool[1], cmdTool[2], cmdTool[3]});
    connect(lstTool, &QListWidget::currentRowChanged, this, &ctlToolTable::showEntry);
    connect(cmdTool[0], &QPushButton::clicked, this, &ctlToolTable::add);
    connect(cmdTool[1], &QPushButton::clicked, this, &ctlToolTable::remove);
    connect(cmdTool[2], &QPushButton::clicked, this, [this] { move(-1); });
    connect(cmdTool[3], &QPushButton::clicked, this, [this] { move(1); });
    return part;
}

QWidget* ctlToolTable::buildFields() {
    fields = new QWidget;
    auto* layout = new QGridLayout(fields);
    layout->setContentsMargins({});
    layout->setColumnStretch(1, 1);
    const std::array<QString, 5> captions{u"名称(&N):"_s, u"説明(&E):"_s, u"プログラム(&P):"_s, u"引数(&G):"_s,
                                          u"アイコン番号(&I):"_s};
    for (int i = 0; i < int(captions.size()); ++i) {
        txtTool[i] = Named(new QLineEdit, u"txtTool"_s, i);
        FormSupport::AddRow(*layout, i, captions[i], txtTool[i]);
        FormSupport::SelectAllOnFocus(*txtTool[i]);
        connect(txtTool[i], &QLineEdit::textEdited, this, &ctlToolTable::takeFields);
    }
    cmdProgram = FormSupport::BrowseButton(u"cmdProgram"_s, u"プログラムの選択"_s);
    layout->addWidget(cmdProgram, Program, 2);
    txtTool[Picture]->setValidator(new QIntValidator(-1, 999, this));
    txtTool[Picture]->setMaximumWidth(fontMetrics().averageCharWidth() * 10);
    auto* macros =
        new QLabel(u"引数では次のマクロが使えます。\n%f 計算結果ファイル　%p そのフォルダ　%a プログラムのフォルダ\n"
                   u"%r レジストリのパス　%t ツールのレジストリのパス"_s);
    layout->addWidget(macros, int(captions.size()), 1, 1, 2);
    connect(cmdProgram, &QPushButton::clicked, this, &ctlToolTable::chooseProgram);
    return fields;
}

void ctlToolTable::SetTools(const std::vector<ToolEntry>& entries) {
    tools = entries;
    {
        const QScopedValueRollback filling(Updating, true);
        lstTool->clear();
        for (std::size_t i = 0; i < tools.size(); ++i) {
            lstTool->addItem(QString());
            showLine(int(i));
        }
        lstTool->setCurrentRow(tools.empty() ? -1 : 0);
    }
    showEntry();
}

int ctlToolTable::current() const {
    return lstTool->currentRow();
}

void ctlToolTable::showLine(int index) {
    const ToolEntry& tool = tools[std::size_t(index)];
    lstTool->item(index)->setText(listText(tool));
    lstTool->item(index)->setIcon(toolPictures::PictureOf(tool));
}

void ctlToolTable::showEntry() {
    if (Updating)
        return;
    const QScopedValueRollback filling(Updating, true);
    const int index = current();
    fields->setEnabled(index >= 0);
    cmdTool[1]->setEnabled(index >= 0);
    cmdTool[2]->setEnabled(index > 0);
    cmdTool[3]->setEnabled(index >= 0 && index + 1 < int(tools.size()));
    rows.Fill(index < 0 ? ToolEntry() : tools[std::size_t(index)]);
}

void ctlToolTable::takeFields() {
    if (Updating || current() < 0)
        return;
    ToolEntry& tool = tools[std::size_t(current())];
    rows.Read(tool);
    tool.Missing = !mdApplication::FileExists(toolTable::ProgramOf(tool));
    showLine(current());
}

void ctlToolTable::chooseProgram() {
    const std::optional<QString> chosen =
        Dialogs::OpenFileName(this, u"プログラムの選択"_s, txtTool[Program]->text(), u"すべてのファイル(*)|*"_s);
    if (!chosen)
        return;
    txtTool[Program]->setText(*chosen);
    if (txtTool[Name]->text().isEmpty())
        txtTool[Name]->setText(mdApplication::PathPart(*chosen, mdApplication::BaseName));
    takeFields();
}

void ctlToolTable::add() {
    ToolEntry tool;
    tool.Name = u"新しいツール"_s;
    tool.Args = u"%f"_s;
    tool.Missing = true;
    tools.push_back(tool);
    lstTool->addItem(listText(tool));
    lstTool->setCurrentRow(int(tools.size()) - 1);
    txtTool[Name]->setFocus();
}

void ctlToolTable::remove() {
    const int index = current();
    tools.erase(tools.begin() + index);
    {
        const QScopedValueRollback filling(Updating, true);
        delete lstTool->takeItem(index);
        lstTool->setCurrentRow(std::min(index, int(tools.size()) - 1));
    }
    showEntry();
}

void ctlToolTable::move(int by) {
    const int from = current(), to = from + by;
    std::swap(tools[std::size_t(from)], tools[std::size_t(to)]);
    showLine(from);
    showLine(to);
    lstTool->setCurrentRow(to);
}

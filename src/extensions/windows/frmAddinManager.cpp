#include "extensions/windows/frmAddinManager.h"

#include "app/windows/ShowMessage.h"
#include "extensions/mdAddIn.h"
#include "platform/base/NativePath.h"
#include "platform/widgets/FormSupport.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using FormSupport::Named;
using mdApplication::ShowMessage;

frmAddinManager::frmAddinManager(QWidget* parent, AddinHost& addinHost, const QStringList& addinFolders)
    : QDialog(parent), host(addinHost), folders(addinFolders) {
    Q_INIT_RESOURCE(extensions);
    setObjectName(u"frmAddinManager"_s);
    setWindowTitle(u"アドインマネージャ"_s);
    buildControls();
    refresh();
    constexpr int charactersWide = 92, linesHigh = 26;
    FormSupport::PlaceOnScreen(*this,
                               {fontMetrics().averageCharWidth() * charactersWide, fontMetrics().height() * linesHigh});
}

void frmAddinManager::buildControls() {
    lvModule = Named(new QTreeWidget, u"lvModule"_s);
    lvModule->setAccessibleName(u"アドインモジュール"_s);
    lvModule->setHeaderLabels({u"名称"_s, u"状態"_s});
    lvModule->setRootIsDecorated(false);
    lvModule->setAllColumnsShowFocus(true);
    lvModule->setUniformRowHeights(true);
    lvModule->header()->setStretchLastSection(false);
    lvModule->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    lvModule->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);

    const std::array<QString, 3> buttons{u"インストール(&I)"_s, u"更新(&R)"_s, u"削除(&M)"_s};
    auto* column = new QVBoxLayout;
    for (int i = 0; i < int(buttons.size()); ++i) {
        cmdModule[i] = Named(new QPushButton(buttons[i]), u"cmdModule"_s, i);
        cmdModule[i]->setAutoDefault(false);
        column->addWidget(cmdModule[i]);
    }
    column->addStretch();
    FormSupport::ButtonWidths({cmdModule[0], cmdModule[1], cmdModule[2]});

    auto* frame = new QGroupBox(u"モジュール"_s);
    auto* info = new QGridLayout(frame);
    for (int i = 0; i < int(lblInfo.size()); ++i) {
        captions[i] = new QLabel;
        lblInfo[i] = Named(new QLabel, u"lblInfo"_s, i);
        lblInfo[i]->setWordWrap(true);
        lblInfo[i]->setTextFormat(Qt::PlainText);
        lblInfo[i]->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        info->addWidget(captions[i], i, 0, Qt::AlignTop);
        info->addWidget(lblInfo[i], i, 1, Qt::AlignTop);
    }
    info->setColumnStretch(1, 1);
    info->setRowStretch(int(lblInfo.size()), 1);
    frame->setMinimumHeight(fontMetrics().height() * 10);

    Command1 = Named(new QPushButton(u"閉じる(&C)"_s), u"Command1"_s);
    Command1->setDefault(true);
    FormSupport::ButtonWidths({Command1});
    auto* layout = new QGridLayout(this);
    layout->addWidget(lvModule, 0, 0);
    layout->addLayout(column, 0, 1);
    layout->addWidget(frame, 1, 0, 1, 2);
    layout->addLayout(FormSupport::ButtonRow({}, {Command1}), 2, 0, 1, 2);
    layout->setRowStretch(0, 1);

    connect(lvModule, &QTreeWidget::currentItemChanged, this, &frmAddinManager::showRow);
    connect(cmdModule[0], &QPushButton::clicked, this, &frmAddinManager::install);
    connect(cmdModule[1], &QPushButton::clicked, this, &frmAddinManager::refresh);
    connect(cmdModule[2], &QPushButton::clicked, this, &frmAddinManager::remove);
    connect(Command1, &QPushButton::clicked, this, &QDialog::accept);
}

void frmAddinManager::refresh() {
    rows.clear();
    lvModule->clear();
    for (const AddinModule& module : host.ModuleList())
        addRow({module, Kind::Module}, u"インストール済み"_s);
    for (const AddinModule& module : mdAddIn::Candidates(host, folders, true)) {
        const QString state = !module.Installable ? u"インストール不可"_s
                              : module.Changed    ? u"変更されています"_s
                                                  : u"未インストール"_s;
        addRow({module, module.Installable ? Kind::Install : Kind::NoInstall}, state);
    }
    showRow();
}

void frmAddinManager::addRow(const Row& row, const QString& state) {
    static constexpr const char16_t* pictures[] = {u":/icons/addinInstalled.svg", u":/icons/addinReady.svg",
                                                   u":/icons/addinRefused.svg"};
    rows.push_back(row);
    auto* item = new QTreeWidgetItem(lvModule, {row.Module.Name, state});
    item->setIcon(0, FormSupport::RowIcon(QString::fromUtf16(pictures[int(row.Kind)])));
}

const frmAddinManager::Row* frmAddinManager::selected() const {
    const int index = lvModule->indexOfTopLevelItem(lvModule->currentItem());
    return index < 0 ? nullptr : &rows[std::size_t(index)];
}

void frmAddinManager::showRow() {
    const Row* row = selected();
    const AddinModule module = row ? row->Module : AddinModule();
    captions[0]->setText(u"提供元:"_s);
    captions[1]->setText(u"バージョン:"_s);
    captions[2]->setText(row && row->Kind != Kind::Module ? u"モジュール:"_s : u"機能:"_s);
    captions[3]->setText(u"ファイル名:"_s);
    lblInfo[0]->setText(module.Vendor);
    lblInfo[1]->setText(module.Version);
    lblInfo[2]->setText(module.Description);
    lblInfo[3]->setText(NativePath::Shown(module.FileName));
    for (std::size_t i = 0; i < lblInfo.size(); ++i)
        lblInfo[i]->setAccessibleName(captions[i]->text());
    cmdModule[0]->setEnabled(row && row->Kind == Kind::Install);
    cmdModule[2]->setEnabled(row && row->Kind == Kind::Module);
}

void frmAddinManager::install() {
    const Row* row = selected();
    if (!row || ShowMessage(row->Module.Name + u" をインストールします。"_s, MessageStyle::Ask) != MessageAnswer::Yes)
        return;
    if (!host.Install(row->Module)) {
        ShowMessage(u"インストールすることができません。"_s, MessageStyle::Stop);
        return;
    }
    ShowMessage(u"正常にインストールされました。"_s, MessageStyle::Information);
    refresh();
}

void frmAddinManager::remove() {
    const Row* row = selected();
    if (!row) {
        ShowMessage(u"モジュールを選択してください。"_s, MessageStyle::Information);
        return;
    }
    const QString name = row->Module.Name;
    if (ShowMessage(name + u" を削除します。"_s, MessageStyle::AskNoDefault) != MessageAnswer::Yes)
        return;
    // The list may be older than the registry: what is meant is the module, whatever place it has now.
    const QString library = row->Module.FileName;
    const std::vector<AddinModule> installed = host.ModuleList();
    const auto found = std::find_if(installed.begin(), installed.end(),
                                    [&](const AddinModule& module) { return module.FileName == library; });
    if (found != installed.end() && host.Uninstall(int(found - installed.begin())))
        ShowMessage(name + u" は削除されました。"_s, MessageStyle::Information);
    else
        ShowMessage(name + u" を削除することができません。"_s, MessageStyle::Stop);
    refresh();
}

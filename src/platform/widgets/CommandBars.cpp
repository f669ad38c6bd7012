#include "platform/widgets/CommandBars.h"

#include "platform/widgets/CommandControls.h"

#include <QAction>
#include <QIcon>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QRegularExpression>
#include <QStringListModel>
#include <QToolBar>
#include <QWidgetAction>

struct CommandBars::Tool {
    ToolRecord record;
    std::vector<QAction*> actions; ///< one for each caption under which it stands; all show the same state
    bool enabled = true;
    bool checked = false;
    bool visible = true;
    QIcon picture;

    // Of a combo.
    QStringListModel* lines = nullptr;
    int index = -1;
    struct Combo {
        QComboBox* box;
        QAction* action; ///< its place on the tool bar
    };
    std::vector<Combo> combos;
};

/// What stands on a band; the separator before it is its own.
struct CommandBars::Place {
    QString tool;
    QAction* action;
    QAction* separator;
};

struct CommandBars::Band {
    QString name;
    QMenuBar* menuBar = nullptr;
    QToolBar* toolBar = nullptr;
    QMenu* menu = nullptr;
    QLabel* note = nullptr; ///< behind the tools of a tool bar, once there is one
    bool wanted = true;     ///< shown as far as its owner is concerned
    std::vector<Place> places;

    QWidget& Widget() const {
        return menuBar ? static_cast<QWidget&>(*menuBar) : toolBar ? static_cast<QWidget&>(*toolBar) : *menu;
    }
};

namespace {

/// A caption as it reads where there are no access keys: "(&O)" and "..." are left out.
QString plainCaption(QString caption) {
    static const QRegularExpression marks(u"\\(&.\\)|&(?!&)|\\.\\.\\.$"_s);
    return caption.remove(marks);
}

void setCaption(QAction& action, const QString& caption) {
    const QString plain = plainCaption(caption);
    const QString key = action.shortcut().toString(QKeySequence::NativeText);
    action.setText(caption);
    action.setIconText(plain);
    action.setToolTip(key.isEmpty() ? plain : plain + u" ("_s + key + u')');
}

} // namespace

CommandBars::CommandBars(QMainWindow& ownWindow) : QObject(&ownWindow), window(ownWindow) {}

CommandBars::~CommandBars() = default;

CommandBars::Tool* CommandBars::find(const QString& name) const {
    return tools.value(name).get();
}

CommandBars::Band* CommandBars::findBand(const QString& name) const {
    return bands.value(name).get();
}

void CommandBars::AddTool(const ToolRecord& record) {
    if (tools.contains(record.Name))
        return;
    auto tool = std::make_shared<Tool>();
    tool->record = record;
    if (record.Form == ToolRecord::Kind::Combo)
        tool->lines = new QStringListModel(this);
    tools.insert(record.Name, tool);
}

void CommandBars::AddBand(const QString& name, BandKind kind, const QString& caption,
                          const std::vector<BandEntry>& entries) {
    auto band = std::make_shared<Band>();
    band->name = name;
    if (kind == BandKind::MenuBar) {
        band->menuBar = window.menuBar();
        band->menuBar->setObjectName(name);
    } else if (kind == BandKind::ToolBar) {
        band->toolBar = window.addToolBar(caption);
        band->toolBar->setObjectName(name);
        band->toolBar->setIconSize({20, 20});
        // The bars have commands of their own to be shown and hidden by.
        band->toolBar->toggleViewAction()->setVisible(false);
        connect(band->toolBar, &QToolBar::visibilityChanged, this, [this, band = band.get()](bool visible) {
            if (!visible && band->wanted)
                emit BandClosed(band->name);
        });
    } else {
        band->menu = new CommandMenu(caption, name, window);
        connect(band->menu, &QMenu::aboutToShow, this, [this, name] { emit BandOpening(name); });
    }
    bands.insert(name, band);
    for (const BandEntry& entry : entries)
        if (Tool* tool = find(entry.Tool))
            place(*band, *tool, entry);
}

QAction* CommandBars::actionFor(Band& band, Tool& tool, const QString& caption) {
    for (QAction* action : tool.actions)
        if (action->text() == caption && tool.record.Form == ToolRecord::Kind::Button)
            return action;
    auto* action = new QAction(&window);
    // One of a tool's actions has its plain name and its key; two with a key would make it ambiguous.
    action->setObjectName(tool.actions.empty() ? tool.record.Name : tool.record.Name + u'@' + band.name);
    if (tool.actions.empty())
        action->setShortcuts(QList{tool.record.Shortcut} + tool.record.OtherKeys);
    setCaption(*action, caption);
    action->setStatusTip(tool.record.Description);
    action->setEnabled(tool.enabled);
    action->setVisible(tool.visible);
    action->setIcon(tool.picture);
    if (tool.record.Form == ToolRecord::Kind::Popup) {
        if (Band* popup = findBand(tool.record.Popup))
            action->setMenu(popup->menu);
    } else if (tool.record.Form == ToolRecord::Kind::Combo) {
        auto* menu = new CommandMenu({}, tool.record.Name + u"_menu"_s, window);
        action->setMenu(menu);
        connect(menu, &QMenu::aboutToShow, this, [this, &tool, menu] { fillComboMenu(tool, *menu); });
    } else {
        connect(action, &QAction::triggered, this, [this, &tool, action] {
            // A check mark follows the state that the command's reaction sets, not the click.
            if (action->isCheckable())
                action->setChecked(tool.checked);
            // A copy, since the reaction may remove the tool: opening a recent file makes the recent files' tools anew.
            const QString clicked = tool.record.Name;
            emit Clicked(clicked);
        });
    }
    tool.actions.push_back(action);
    return action;
}

void CommandBars::place(Band& band, Tool& tool, const BandEntry& entry) {
    QAction* action = band.toolBar && tool.record.Form == ToolRecord::Kind::Combo
                          ? placeCombo(*band.toolBar, tool)
                          : actionFor(band, tool, entry.Caption.isEmpty() ? tool.record.Caption : entry.Caption);
    append(band, {tool.record.Name, action, nullptr}, entry.BeginGroup);
}

void CommandBars::append(Band& band, Place place, bool beginGroup) {
    QWidget& widget = band.Widget();
    if (beginGroup && !band.places.empty()) {
        place.separator = new QAction(&widget);
        place.separator->setSeparator(true);
        widget.addAction(place.separator);
    }
    widget.addAction(place.action);
    if (QWidget* button = band.toolBar ? band.toolBar->widgetForAction(place.action) : nullptr)
        button->setFocusPolicy(Qt::FocusPolicy(button->focusPolicy() | Qt::TabFocus));
    band.places.push_back(place);
}

QAction* CommandBars::placeCombo(QToolBar& bar, Tool& tool) {
    auto* combo = new CommandList(plainCaption(tool.record.Caption), tool.record.Description, bar);
    combo->setObjectName(tool.record.Name + u'@' + bar.objectName());
    combo->setModel(tool.lines);
    combo->setCurrentIndex(tool.index);
    combo->setEnabled(tool.enabled);
    connect(combo, &QComboBox::activated, this, [this, &tool](int index) { SetListIndex(tool.record.Name, index); });
    auto* action = new QWidgetAction(&bar);
    action->setDefaultWidget(combo);
    action->setVisible(tool.visible);
    tool.combos.push_back({combo, action});
    return action;
}

void CommandBars::fillComboMenu(Tool& tool, QMenu& menu) {
    menu.clear();
    // A menu of thousands of lines is of no use: it shows those around the chosen one.
    constexpr int mostLines = 100;
    const int count = tool.lines->rowCount();
    const int first = std::clamp(tool.index - mostLines / 2, 0, std::max(0, count - mostLines));
    for (int i = first; i < std::min(count, first + mostLines); ++i) {
        QString line = tool.lines->stringList().at(i);
        QAction* action = menu.addAction(line.replace(u'&', u"&&"_s));
        action->setCheckable(true);
        action->setChecked(i == tool.index);
        connect(action, &QAction::triggered, this, [this, &tool, i] { SetListIndex(tool.record.Name, i); });
    }
}

bool CommandBars::HasTool(const QString& name) const {
    return find(name) != nullptr;
}

int CommandBars::ToolID(const QString& name) const {
    const Tool* tool = find(name);
    return tool ? tool->record.ToolID : 0;
}

bool CommandBars::Enabled(const QString& name) const {
    const Tool* tool = find(name);
    return tool && tool->enabled;
}

void CommandBars::SetEnabled(const QString& name, bool enabled) {
    if (Tool* tool = find(name)) {
        tool->enabled = enabled;
        for (QAction* action : tool->actions)
            action->setEnabled(enabled);
        for (const Tool::Combo& combo : tool->combos)
            combo.box->setEnabled(enabled);
    }
}

bool CommandBars::Checked(const QString& name) const {
    const Tool* tool = find(name);
    return tool && tool->checked;
}

void CommandBars::SetChecked(const QString& name, bool checked) {
    if (Tool* tool = find(name)) {
        tool->checked = checked;
        for (QAction* action : tool->actions) {
            action->setCheckable(true);
            action->setChecked(checked);
            // A mark stands where the picture would.
            action->setIconVisibleInMenu(false);
        }
    }
}

void CommandBars::SetVisible(const QString& name, bool visible) {
    if (Tool* tool = find(name)) {
        tool->visible = visible;
        for (QAction* action : tool->actions)
            action->setVisible(visible);
        for (const Tool::Combo& combo : tool->combos)
            combo.action->setVisible(visible);
    }
}

QString CommandBars::Caption(const QString& name) const {
    const Tool* tool = find(name);
    return tool ? tool->record.Caption : QString();
}

void CommandBars::SetCaption(const QString& name, const QString& caption) {
    if (Tool* tool = find(name)) {
        for (QAction* action : tool->actions)
            if (action->text() == tool->record.Caption)
                ::setCaption(*action, caption);
        tool->record.Caption = caption;
    }
}

QString CommandBars::Description(const QString& name) const {
    const Tool* tool = find(name);
    return tool ? tool->record.Description : QString();
}

void CommandBars::SetDescription(const QString& name, const QString& description) {
    if (Tool* tool = find(name)) {
        tool->record.Description = description;
        for (QAction* action : tool->actions)
            action->setStatusTip(description);
        for (const Tool::Combo& combo : tool->combos)
            combo.box->setStatusTip(description);
    }
}

void CommandBars::SetPicture(const QString& name, const QIcon& picture) {
    if (Tool* tool = find(name)) {
        tool->picture = picture;
        for (QAction* action : tool->actions)
            action->setIcon(picture);
    }
}

bool CommandBars::BandVisible(const QString& name) const {
    const Band* band = findBand(name);
    return band && band->Widget().isVisibleTo(&window);
}

void CommandBars::SetBandVisible(const QString& name, bool visible) {
    Band* band = findBand(name);
    if (!band)
        return;
    band->wanted = visible;
    if (visible && band->toolBar && band->toolBar->isFloating())
        window.addToolBar(Qt::TopToolBarArea, band->toolBar);
    band->Widget().setVisible(visible);
}

void CommandBars::SetNote(const QString& name, const QString& text) {
    Band* band = findBand(name);
    if (!band || !band->toolBar)
        return;
    if (!band->note) {
        band->note = new QLabel;
        band->note->setObjectName(name + u"_note"_s);
        band->note->setMargin(band->note->fontMetrics().averageCharWidth());
        band->toolBar->addWidget(band->note);
    }
    band->note->setText(text);
    // It grows with its text and never shrinks, so that the bar doesn't move with each text.
    band->note->setMinimumWidth(std::max(band->note->minimumWidth(), band->note->sizeHint().width()));
}

QStringList CommandBars::BandTools(const QString& name) const {
    QStringList names;
    if (const Band* band = findBand(name))
        for (const Place& place : band->places)
            names.append(place.tool);
    return names;
}

void CommandBars::AddToBand(const QString& bandName, const ToolRecord& record, bool beginGroup) {
    AddTool(record);
    Band* band = findBand(bandName);
    Tool* tool = find(record.Name);
    if (band && tool)
        place(*band, *tool, {record.Name, beginGroup, {}});
}

std::optional<CommandBars::Place> CommandBars::take(const QString& bandName, const QString& toolName) {
    Band* band = findBand(bandName);
    if (!band)
        return {};
    const auto place = std::find_if(band->places.begin(), band->places.end(),
                                    [&](const Place& other) { return other.tool == toolName; });
    if (place == band->places.end())
        return {};
    const Place taken = *place;
    band->Widget().removeAction(taken.action);
    delete taken.separator;
    band->places.erase(place);
    return taken;
}

void CommandBars::RemoveFromBand(const QString& bandName, const QString& toolName) {
    const auto taken = take(bandName, toolName);
    const bool shown = std::any_of(bands.cbegin(), bands.cend(), [&](const std::shared_ptr<Band>& band) {
        return std::any_of(band->places.begin(), band->places.end(),
                           [&](const Place& other) { return taken && other.action == taken->action; });
    });
    if (!taken || shown)
        return;
    Tool& tool = *find(toolName);
    std::erase(tool.actions, taken->action);
    std::erase_if(tool.combos, [&](const Tool::Combo& combo) { return combo.action == taken->action; });
    // Not at once: it may be the one that has just been clicked. Nobody is to find it meanwhile.
    taken->action->setObjectName(QString());
    taken->action->deleteLater();
    if (tool.actions.empty() && tool.combos.empty())
        tools.remove(toolName);
}

void CommandBars::MoveToEnd(const QString& bandName, const QString& toolName, bool beginGroup) {
    if (auto taken = take(bandName, toolName)) {
        taken->separator = nullptr;
        append(*findBand(bandName), *taken, beginGroup);
    }
}

void CommandBars::ShowPopup(const QString& name, QPoint globalPosition) {
    Band* band = findBand(name);
    if (band && band->menu)
        band->menu->popup(globalPosition);
}

void CommandBars::ClearList(const QString& name) {
    SetList(name, {});
}

void CommandBars::SetList(const QString& name, const QStringList& lines) {
    if (Tool* tool = find(name); tool && tool->lines) {
        tool->index = -1;
        tool->lines->setStringList(lines);
        showIndex(*tool);
    }
}

void CommandBars::AddLine(const QString& name, const QString& line) {
    if (Tool* tool = find(name); tool && tool->lines) {
        const int row = tool->lines->rowCount();
        tool->lines->insertRow(row);
        tool->lines->setData(tool->lines->index(row), line);
        showIndex(*tool);
    }
}

int CommandBars::ListCount(const QString& name) const {
    const Tool* tool = find(name);
    return tool && tool->lines ? tool->lines->rowCount() : 0;
}

int CommandBars::ListIndex(const QString& name) const {
    const Tool* tool = find(name);
    return tool ? tool->index : -1;
}

void CommandBars::SetListIndex(const QString& name, int index) {
    Tool* tool = find(name);
    if (!tool || !tool->lines || index < -1 || index >= tool->lines->rowCount())
        return;
    const bool changed = tool->index != index;
    tool->index = index;
    showIndex(*tool);
    if (changed)
        emit ComboSelected(name);
}

void CommandBars::showIndex(Tool& tool) {
    for (const Tool::Combo& combo : tool.combos)
        combo.box->setCurrentIndex(tool.index);
}

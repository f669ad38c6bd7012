#include "platform/CommandBars.h"

#include <QAction>
#include <QComboBox>
#include <QIcon>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QStringListModel>
#include <QToolBar>

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
    std::vector<QComboBox*> combos;
};

struct CommandBars::Band {
    QString name;
    QMenuBar* menuBar = nullptr;
    QToolBar* toolBar = nullptr;
    QMenu* menu = nullptr;
    /// What stands on it; the separator before an entry is its own.
    struct Place {
        QString tool;
        QAction* action;
        QAction* separator;
    };
    std::vector<Place> places;

    QWidget& Widget() const {
        return menuBar ? static_cast<QWidget&>(*menuBar) : toolBar ? static_cast<QWidget&>(*toolBar) : *menu;
    }
};

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
    } else {
        band->menu = new QMenu(caption, &window);
        band->menu->setObjectName(name);
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
    auto* action = new QAction(caption, &window);
    // One of a tool's actions has its plain name and its key; two with a key would make it ambiguous.
    action->setObjectName(tool.actions.empty() ? tool.record.Name : tool.record.Name + u'@' + band.name);
    if (tool.actions.empty())
        action->setShortcut(tool.record.Shortcut);
    action->setStatusTip(tool.record.Description);
    action->setEnabled(tool.enabled);
    action->setVisible(tool.visible);
    action->setIcon(tool.picture);
    if (tool.record.Form == ToolRecord::Kind::Popup) {
        if (Band* popup = findBand(tool.record.Popup))
            action->setMenu(popup->menu);
    } else if (tool.record.Form == ToolRecord::Kind::Combo) {
        auto* menu = new QMenu(&window);
        menu->setObjectName(tool.record.Name + u"_menu"_qs);
        action->setMenu(menu);
        connect(menu, &QMenu::aboutToShow, this, [this, &tool, menu] { fillComboMenu(tool, *menu); });
    } else {
        connect(action, &QAction::triggered, this, [this, &tool, action] {
            // A check mark follows the state that the command's reaction sets, not the click.
            if (action->isCheckable())
                action->setChecked(tool.checked);
            emit Clicked(tool.record.Name);
        });
    }
    tool.actions.push_back(action);
    return action;
}

void CommandBars::place(Band& band, Tool& tool, const BandEntry& entry) {
    QWidget& widget = band.Widget();
    Band::Place place = {tool.record.Name, nullptr, nullptr};
    if (entry.BeginGroup && !band.places.empty()) {
        place.separator = new QAction(&widget);
        place.separator->setSeparator(true);
        widget.addAction(place.separator);
    }
    if (band.toolBar && tool.record.Form == ToolRecord::Kind::Combo) {
        placeCombo(*band.toolBar, tool);
        place.action = band.toolBar->actions().constLast();
    } else {
        place.action = actionFor(band, tool, entry.Caption.isEmpty() ? tool.record.Caption : entry.Caption);
        widget.addAction(place.action);
    }
    band.places.push_back(place);
}

void CommandBars::placeCombo(QToolBar& bar, Tool& tool) {
    auto* combo = new QComboBox(&bar);
    combo->setObjectName(tool.record.Name + u'@' + bar.objectName());
    combo->setModel(tool.lines);
    combo->setCurrentIndex(tool.index);
    combo->setEnabled(tool.enabled);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(14);
    combo->setFocusPolicy(Qt::ClickFocus);
    QString name = tool.record.Caption;
    name.remove(QRegularExpression(u"\\(&.\\)|&"_qs));
    combo->setAccessibleName(name);
    combo->setToolTip(name);
    combo->setStatusTip(tool.record.Description);
    connect(combo, &QComboBox::activated, this, [this, &tool](int index) { SetListIndex(tool.record.Name, index); });
    tool.combos.push_back(combo);
    bar.addWidget(combo);
}

void CommandBars::fillComboMenu(Tool& tool, QMenu& menu) {
    menu.clear();
    // A menu of thousands of lines is of no use: it shows those around the chosen one.
    constexpr int mostLines = 100;
    const int count = tool.lines->rowCount();
    const int first = std::clamp(tool.index - mostLines / 2, 0, std::max(0, count - mostLines));
    for (int i = first; i < std::min(count, first + mostLines); ++i) {
        QString line = tool.lines->stringList().at(i);
        QAction* action = menu.addAction(line.replace(u'&', u"&&"_qs));
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
        for (QComboBox* combo : tool->combos)
            combo->setEnabled(enabled);
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
        }
    }
}

void CommandBars::SetVisible(const QString& name, bool visible) {
    if (Tool* tool = find(name)) {
        tool->visible = visible;
        for (QAction* action : tool->actions)
            action->setVisible(visible);
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
                action->setText(caption);
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
    if (Band* band = findBand(name))
        band->Widget().setVisible(visible);
}

QStringList CommandBars::BandTools(const QString& name) const {
    QStringList names;
    if (const Band* band = findBand(name))
        for (const Band::Place& place : band->places)
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

void CommandBars::RemoveFromBand(const QString& bandName, const QString& toolName) {
    Band* band = findBand(bandName);
    if (!band)
        return;
    const auto place = std::find_if(band->places.begin(), band->places.end(),
                                    [&](const Band::Place& other) { return other.tool == toolName; });
    if (place == band->places.end())
        return;
    band->Widget().removeAction(place->action);
    delete place->separator;
    band->places.erase(place);
    // A tool that stood on this band alone goes with its place.
    const bool elsewhere = std::any_of(bands.cbegin(), bands.cend(), [&](const std::shared_ptr<Band>& other) {
        return BandTools(other->name).contains(toolName);
    });
    if (const auto tool = elsewhere ? nullptr : tools.take(toolName))
        for (QAction* action : tool->actions)
            action->deleteLater();
}

void CommandBars::MoveToEnd(const QString& bandName, const QString& toolName, bool beginGroup) {
    Band* band = findBand(bandName);
    // Held here, so that the tool outlives its last place.
    const std::shared_ptr<Tool> tool = tools.value(toolName);
    if (!band || !tool)
        return;
    const auto place = std::find_if(band->places.begin(), band->places.end(),
                                    [&](const Band::Place& other) { return other.tool == toolName; });
    if (place == band->places.end())
        return;
    band->Widget().removeAction(place->action);
    delete place->separator;
    band->places.erase(place);
    this->place(*band, *tool, {toolName, beginGroup, {}});
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
    for (QComboBox* combo : tool.combos)
        combo->setCurrentIndex(tool.index);
}

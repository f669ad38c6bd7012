// Menu bar, tool bars, popups and combo tools, found by name. A command is one tool however many bands it stands on.
// What a command does, and when it can be used, is for whoever listens.
#pragma once

#include <QHash>
#include <QKeySequence>
#include <QObject>
#include <QPoint>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

class QAction;
class QComboBox;
class QIcon;
class QMainWindow;
class QMenu;
class QToolBar;

/// What a new tool is.
struct ToolRecord {
    enum class Kind {
        Button, ///< clicked
        Popup,  ///< opens the band `Popup`
        Combo   ///< a list of texts of which one is chosen
    };
    QString Name; ///< unique; a second tool of a name is not made
    int ToolID = 0;
    QString Caption; ///< with "&" before the access key
    QString Description;
    QString Category;
    QKeySequence Shortcut;
    Kind Form = Kind::Button;
    QString Popup;
    QList<QKeySequence> OtherKeys = {}; ///< that do the same and are not shown
};

/// A place on a band.
struct BandEntry {
    QString Tool;
    bool BeginGroup = false;
    QString Caption{}; ///< on this band in place of the tool's own; empty for the tool's own
};

/// All calls that name a tool or a band do nothing (and give false, -1, 0 or an empty text) when there is none of that
/// name. Owns everything it shows, in the window given to it, which must outlive it.
class CommandBars : public QObject {
    Q_OBJECT

public:
    enum class BandKind { MenuBar, ToolBar, Popup };

    explicit CommandBars(QMainWindow& window);
    ~CommandBars() override;

    void AddTool(const ToolRecord& record);
    /// Popups first: a tool that opens a popup looks for it when its own band is made.
    void AddBand(const QString& name, BandKind kind, const QString& caption, const std::vector<BandEntry>& entries);

    bool HasTool(const QString& name) const;
    int ToolID(const QString& name) const;
    bool Enabled(const QString& name) const;
    void SetEnabled(const QString& name, bool enabled);
    bool Checked(const QString& name) const;
    void SetChecked(const QString& name, bool checked);
    void SetVisible(const QString& name, bool visible);
    QString Caption(const QString& name) const;
    void SetCaption(const QString& name, const QString& caption);
    QString Description(const QString& name) const;
    void SetDescription(const QString& name, const QString& description);
    void SetPicture(const QString& name, const QIcon& picture);

    bool BandVisible(const QString& band) const;
    /// A tool bar that floats is docked when it is shown.
    void SetBandVisible(const QString& band, bool visible);
    /// A line of text behind the tools of a tool bar.
    void SetNote(const QString& band, const QString& text);
    /// Names of a band's tools in their order.
    QStringList BandTools(const QString& band) const;
    /// Puts a tool at the end of a band, made first when it is new.
    void AddToBand(const QString& band, const ToolRecord& record, bool beginGroup);
    /// A tool that stands nowhere else goes altogether.
    void RemoveFromBand(const QString& band, const QString& tool);
    /// Takes a tool that stands on a band to its end.
    void MoveToEnd(const QString& band, const QString& tool, bool beginGroup);
    void ShowPopup(const QString& band, QPoint globalPosition);

    void ClearList(const QString& combo);
    /// Replaces the list; nothing is selected then.
    void SetList(const QString& combo, const QStringList& lines);
    void AddLine(const QString& combo, const QString& line);
    int ListCount(const QString& combo) const;
    int ListIndex(const QString& combo) const;
    /// Selects a line, -1 none; a change is told as if the user had made it.
    void SetListIndex(const QString& combo, int index);

signals:
    void Clicked(const QString& tool);
    void ComboSelected(const QString& combo);
    void BandOpening(const QString& band);
    /// The user has closed a tool bar.
    void BandClosed(const QString& band);

private:
    struct Tool;
    struct Band;
    struct Place;

    Tool* find(const QString& name) const;
    Band* findBand(const QString& name) const;
    void place(Band& band, Tool& tool, const BandEntry& entry);
    QAction* actionFor(Band& band, Tool& tool, const QString& caption);
    void append(Band& band, Place place, bool beginGroup);
    std::optional<Place> take(const QString& band, const QString& tool);
    QAction* placeCombo(QToolBar& bar, Tool& tool);
    void fillComboMenu(Tool& tool, QMenu& menu);
    void showIndex(Tool& tool);

    QMainWindow& window;
    QHash<QString, std::shared_ptr<Tool>> tools;
    QHash<QString, std::shared_ptr<Band>> bands;
};

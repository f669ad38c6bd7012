// A list whose rows show a picture, a title and a description of several lines, all of the same height; only the rows
// in sight are painted. It knows nothing of what the rows stand for, and the private data are for its owner alone.
#pragma once

#include "platform/base/Geometry.h"
#include "platform/widgets/ListPanelRows.h"

#include <QListView>

class ListPanel : public QListView {
    Q_OBJECT
    Q_PROPERTY(int Appearance READ Appearance WRITE SetAppearance)
    Q_PROPERTY(ColorRef BackColor READ BackColor WRITE SetBackColor)
    Q_PROPERTY(int BorderStyle READ BorderStyle WRITE SetBorderStyle)
    Q_PROPERTY(bool Enabled READ isEnabled WRITE setEnabled)
    Q_PROPERTY(QFont Font READ font WRITE setFont)
    Q_PROPERTY(int PictureExtent READ PictureExtent WRITE SetPictureExtent)
    Q_PROPERTY(ColorRef MaskColor READ MaskColor WRITE SetMaskColor)
    Q_PROPERTY(bool Sorted READ Sorted WRITE SetSorted)

public:
    explicit ListPanel(QWidget* parent = nullptr);

    /// Before the row of `index`, at the end for one below 0 or beyond it; in a sorted list where it belongs. To hold
    /// the list still while many are added: setUpdatesEnabled.
    void AddItem(const QString& text, const QString& description, const QIcon& picture, const QString& privateData,
                 int index = -1);
    void RemoveItem(int index);
    void Clear();
    int ListCount() const { return rows.Count(); }

    /// The selected row, -1 for none, which any number without a row stands for. A write is always told by `Change`.
    int ListIndex();
    void SetListIndex(int index);

    /// Of a row that isn't there nothing is read, and nothing is written to it. A new text leaves the row in its place.
    QString ListText(int index);
    QString ListDescription(int index);
    QString ListPrivateData(int index);
    QIcon ListPicture(int index);
    void SetListText(int index, const QString& text);
    void SetListDescription(int index, const QString& description);
    void SetListPrivateData(int index, const QString& privateData);
    void SetListPicture(int index, const QIcon& picture);

    /// The first row from `start` on with exactly this text, -1 when there is none.
    int FindItem(int start, const QString& text);
    /// The row under a point of the list as it is scrolled, -1 when there is none.
    int HitTest(int x, int y);
    void Refresh();

    bool Sorted() const { return sorted; }
    /// Sorts by the texts, without regard to case, as what is added from now on; the selected row stays selected.
    void SetSorted(bool value);
    /// 0 for large pictures, else small ones.
    int PictureExtent() const { return pictureExtent; }
    void SetPictureExtent(int value);
    /// Where a picture has this colour it is transparent.
    ColorRef MaskColor() const { return maskColor; }
    void SetMaskColor(ColorRef value);
    /// That of the parent unless told otherwise.
    ColorRef BackColor() const;
    void SetBackColor(ColorRef value);
    /// 0 for none, else a line, which is raised unless `Appearance` is 0.
    int BorderStyle() const { return borderStyle; }
    void SetBorderStyle(int value);
    int Appearance() const { return appearance; }
    void SetAppearance(int value);

    /// The height of a line of the font, of a picture's square, of the title's band, of a row: the band and five lines.
    int GetPixelFontSize() const { return fontMetrics().height(); }
    int PictureSize() const { return pictureExtent == 0 ? 32 : 16; }
    int TitleHeight() const { return std::max(GetPixelFontSize(), PictureSize()) + 2; }
    int RowHeight() const;

    void AboutBox();

signals:
    /// With the new index, but after a click with the one before it; a click on the selected row is told as well.
    void Change(int index);
    /// Before the click selects; the position is that of `HitTest`.
    void MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers shift, QPoint position);
    void DblClick();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent*) override {}
    void mouseReleaseEvent(QMouseEvent*) override {}
    void mouseDoubleClickEvent(QMouseEvent*) override;
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void updateGeometries() override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void select(int index);
    void sortNow();
    void updateFrame();

    ListPanelRows rows;
    bool sorted = false;
    bool sortWaits = false; ///< rows have been added to a sorted list since it was last looked at
    bool selecting = false; ///< the selection is changed by the control itself and not by an assistive tool
    int pictureExtent = 0;
    int borderStyle = 1;
    int appearance = 1;
    ColorRef maskColor = 0xffffff;
};

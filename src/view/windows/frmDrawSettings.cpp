#include "view/windows/frmDrawSettings.h"

#include "app/NumberFormat.h"
#include "app/mdApplication.h"
#include "app/mdTips.h"
#include "app/mdTipsDrawing.h"
#include "app/settingsStore.h"
#include "app/windows/ShowMessage.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"
#include "result/ResultModel.h"
#include "view/scene/contour.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <limits>

namespace {
constexpr int tenthsPerMillimetre = 10;
enum : int { DisplacementTab, VectorTab, ContourTab };

QString lengthText(int tenths) {
    return NumberFormat::Format(tenths * 0.1, u"0.0");
}

int lengthOf(const QString& text) {
    constexpr int longest = std::numeric_limits<int>::max() / tenthsPerMillimetre;
    return std::clamp(Round(mdTips::Val(text)), 0, longest) * tenthsPerMillimetre;
}
} // namespace

frmDrawSettings::frmDrawSettings(QWidget* parent, const ResultModel& source, ApplicationSettings& target)
    : QDialog(parent), model(source), settings(target) {
    setObjectName(u"frmDrawSettings"_s);
    setWindowTitle(u"描画設定"_s);
    buildControls();
    connectControls();
    load();
    FormSupport::PlaceOnScreen(*this);
}

void frmDrawSettings::load() {
    for (const ItemInfo& item : model.Items)
        cmbVectorItem[0]->addItem(item.Name);
    cmbVectorItem[0]->setCurrentIndex(-1);
    itemSets = settings.Vector.ItemSets.first(
        std::clamp<qsizetype>(settings.Vector.ItemSetCount, 0, settings.Vector.ItemSets.size()));

    cmbDispScale->setCurrentIndex(settings.Displacement.Fiducial);
    txtDispScale->setText(lengthText(settings.Displacement.Scale));
    chkDispPaintLegend->setChecked(settings.Displacement.Legend);
    chkDispOrgMesh->setChecked(settings.Displacement.Original);
    tbTab->setTabEnabled(DisplacementTab, !model.NoDisplacement);

    cmbVectorScale->setCurrentIndex(settings.Vector.Fiducial);
    txtVectorScale->setText(lengthText(settings.Vector.Scale));
    chkVectorPaintLegend->setChecked(settings.Vector.Legend);
    for (const VectorItemSet& set : itemSets)
        lstVectorItem->addItem(set.Name);
    enableItemSet(!itemSets.isEmpty());

    if (const int index = settings.Contour.ColorIndex; index >= 0 && index < int(optContourColor.size())) {
        optContourColor[index]->setChecked(true);
        // Left to itself the Tab key would first come to an option that isn't chosen.
        for (QRadioButton* option : optContourColor)
            option->setFocusPolicy(option->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    }
    colors = settings.Contour.Colors;
    showColors();
    chkContourPaintLegend->setChecked(settings.Contour.Legend);
    chkContourColorReverse->setChecked(settings.Contour.Reverse);
    tbTab->setTabEnabled(ContourTab, !model.LineElementsOnly);

    Updating = false;
    drawContourPreview();
    selectLine(0);
}

void frmDrawSettings::ReadDialogSettings(ApplicationSettings& target) const {
    target.Displacement.Fiducial = cmbDispScale->currentIndex();
    target.Displacement.Scale = lengthOf(txtDispScale->text());
    target.Displacement.Legend = chkDispPaintLegend->isChecked();
    target.Displacement.Original = chkDispOrgMesh->isChecked();
    target.Vector.Fiducial = cmbVectorScale->currentIndex();
    target.Vector.Scale = lengthOf(txtVectorScale->text());
    target.Vector.Legend = chkVectorPaintLegend->isChecked();
    target.Vector.ItemSetCount = int(itemSets.size());
    target.Vector.ItemSets = itemSets;
    target.Contour.ColorIndex = colorIndex();
    target.Contour.Colors = colors;
    target.Contour.Legend = chkContourPaintLegend->isChecked();
    target.Contour.Reverse = chkContourColorReverse->isChecked();
}

void frmDrawSettings::apply() {
    ReadDialogSettings(settings);
    Result = true;
    accept();
}

void frmDrawSettings::setDefault() {
    const int answer =
        mdApplication::ShowMessage(u"現在の設定値をアプリケーションの規定値として設定します。\n"
                                   u"（ただし、ベクトル図のアイテムセットだけは規定値とは設定されません）"_s,
                                   MessageStyle::AskNoDefault);
    if (answer != MessageAnswer::Yes)
        return;
    ApplicationSettings temporary = settings;
    ReadDialogSettings(temporary);
    if (!settingsStore::SaveDrawingDefaults(temporary))
        mdApplication::ShowMessage(u"規定値を保存することができませんでした。"_s, MessageStyle::Stop);
}

int frmDrawSettings::colorIndex() const {
    for (int i = 0; i < int(optContourColor.size()); ++i)
        if (optContourColor[i]->isChecked())
            return i;
    return settings.Contour.ColorIndex;
}

void frmDrawSettings::showColors() {
    constexpr int middleGrey = 128;
    for (int i = 0; i < int(colors.size()); ++i) {
        const QColor back(redOf(colors[i]), greenOf(colors[i]), blueOf(colors[i]));
        const QString text = qGray(back.rgb()) < middleGrey ? u"white"_s : u"black"_s;
        cmdContourColor[i]->setStyleSheet(
            u"QPushButton { background-color: "_s + back.name() + u"; color: "_s + text +
            u"; border: 1px solid #808080; border-radius: 3px; padding: 5px 16px; }"_s
            u"QPushButton:focus { border: 2px solid palette(highlight); padding: 4px 15px; }"_s);
    }
}

void frmDrawSettings::chooseColor(int index) {
    const std::optional<ColorRef> chosen = Dialogs::ChooseColor(this, u"色の設定"_s, colors[index]);
    if (!chosen)
        return;
    colors[index] = *chosen;
    showColors();
    drawContourPreview();
}

void frmDrawSettings::drawContourPreview() {
    if (Updating)
        return;
    ContourSettings shown;
    shown.ColorIndex = colorIndex();
    shown.Colors = colors;
    shown.Reverse = chkContourColorReverse->isChecked();
    RasterDevice device(picContourPreview->ClearedImage(), picContourPreview->DotsPerInch());
    const DeviceSize size = picContourPreview->PixelSize();
    device.SaveDC();
    for (int x = 0; x <= size.Width; ++x) {
        const float t = float(x) * (1.0f / float(size.Width));
        const Pen old = mdTips::SelectSolidPen(device, mdScene::ContourColor(t, shown), 1, PenStyle::Solid);
        device.MoveTo({x, 0});
        device.LineTo({x, size.Height});
        mdTips::RestoreObject(device, old);
    }
    device.RestoreDC();
    picContourPreview->Refresh();
}

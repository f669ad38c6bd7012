#include "view/windows/frmDrawSettings.h"

#include "app/mdTipsDrawing.h"
#include "app/settingsStore.h"
#include "app/windows/ShowMessage.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"
#include "result/ResultModel.h"
#include "view/scene/contour.h"

#include <QComboBox>
#include <QListWidget>
#include <QTabWidget>

namespace {
enum : int { DisplacementTab, VectorTab, ContourTab };
} // namespace

frmDrawSettings::frmDrawSettings(QWidget* parent, const ResultModel& source, ApplicationSettings& target)
    : QDialog(parent), model(source), settings(target) {
    setObjectName(u"frmDrawSettings"_s);
    setWindowTitle(u"描画設定"_s);
    buildControls();
    bindControls();
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

    for (const VectorItemSet& set : itemSets)
        lstVectorItem->addItem(set.Name);
    enableItemSet(!itemSets.isEmpty());
    rows.Fill(settings);
    tbTab->setTabEnabled(DisplacementTab, !model.NoDisplacement);
    tbTab->setTabEnabled(ContourTab, !model.LineElementsOnly);

    Updating = false;
    drawContourPreview();
    selectLine(0);
}

void frmDrawSettings::ReadDialogSettings(ApplicationSettings& target) const {
    rows.Read(target);
    target.Vector.ItemSetCount = int(itemSets.size());
    target.Vector.ItemSets = itemSets;
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

void frmDrawSettings::showPreset(int preset) {
    for (ColorButton* button : cmdContourColor)
        button->setEnabled(preset == ColorPreset::None);
    drawContourPreview();
}

void frmDrawSettings::drawContourPreview() {
    if (Updating)
        return;
    ApplicationSettings shown = settings;
    rows.Read(shown);
    RasterDevice device(picContourPreview->BlankSheet(), picContourPreview->DotsPerInch());
    const DeviceSize size = picContourPreview->PixelSize();
    device.SaveDC();
    for (int x = 0; x <= size.Width; ++x) {
        const float t = float(x) * (1.0f / float(size.Width));
        const Pen old = mdTips::SelectSolidPen(device, mdScene::ContourColor(t, shown.Contour), 1, PenStyle::Solid);
        device.MoveTo({x, 0});
        device.LineTo({x, size.Height});
        mdTips::RestoreObject(device, old);
    }
    device.RestoreDC();
    picContourPreview->ShowSheet();
}

// The styles of series in frmGraphSetting.
#include "app/mdTipsDrawing.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/PictureBox.h"
#include "plot/windows/frmGraphSetting.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>

namespace {

/// Row of a value in one of the plot's tables; -1 for a value that stands in none.
int rowOf(int value, int (*valueAt)(int), int count) {
    for (int row = 0; row < count; ++row)
        if (valueAt(row) == value)
            return row;
    return -1;
}

} // namespace

void frmGraphSetting::fillStyleLists() {
    constexpr double dotsPerInchAtFullScale = 96;
    const QSize size(fontMetrics().averageCharWidth() * 8, fontMetrics().height());
    const double ratio = devicePixelRatioF();
    const auto picture = [&](const std::function<void(RasterDevice&, DeviceSize)>& draw) {
        QImage image(size * ratio, QImage::Format_RGB32);
        image.fill(Qt::white);
        {
            RasterDevice device(image, qRound(dotsPerInchAtFullScale * ratio));
            draw(device, {image.width(), image.height()});
        }
        image.setDevicePixelRatio(ratio);
        return QIcon(QPixmap::fromImage(image));
    };
    for (int row = 0; row < clsPlot::SupportedLineStyleCount(); ++row)
        cmbLineStyle->addItem(picture([&](RasterDevice& device, DeviceSize box) {
                                  plot.SpecialPlot_Line(device, clsPlot::SupportedLineStyle(row), 0, qRound(ratio), 0,
                                                        box.Height / 2, box.Width, box.Height / 2);
                              }),
                              clsPlot::SupportedLineStyleDescription(row));
    for (int row = 0; row < clsPlot::SupportedDotStyleCount(); ++row)
        cmbMarkerStyle->addItem(picture([&](RasterDevice& device, DeviceSize box) {
                                    plot.SpecialPlot_Dot(device, clsPlot::SupportedDotStyle(row), 0, 0, 8, 0,
                                                         box.Width / 2, box.Height / 2, box.Height / 4);
                                }),
                                clsPlot::SupportedDotStyleDescription(row));
    cmbLineStyle->setIconSize(size);
    cmbMarkerStyle->setIconSize(size);
}

void frmGraphSetting::listSeries() {
    while (lstLegend->count() > styles.size())
        delete lstLegend->takeItem(lstLegend->count() - 1);
    while (lstLegend->count() < styles.size())
        lstLegend->addItem(tr("系列 - ") + QString::number(lstLegend->count() + 1));
    cmdLegend[1]->setEnabled(styles.size() >= 2);
}

void frmGraphSetting::showStyle() {
    if (Updating)
        return;
    const QScopedValueRollback guard(Updating, true);
    const bool any = lstLegend->currentRow() >= 0;
    const LegendStyle style = styles.value(lstLegend->currentRow());
    cmbMarkerStyle->setCurrentIndex(
        any ? rowOf(style.DotStyle, clsPlot::SupportedDotStyle, clsPlot::SupportedDotStyleCount()) : -1);
    cmbLineStyle->setCurrentIndex(
        any ? rowOf(style.LineStyle, clsPlot::SupportedLineStyle, clsPlot::SupportedLineStyleCount()) : -1);
    colors = {style.DotColor, style.LineColor};
    for (QWidget* control : std::initializer_list<QWidget*>{cmbMarkerStyle, cmbLineStyle, cmdColor[0], cmdColor[1]})
        control->setEnabled(any);
    showColors();
    drawSeriesSample();
}

void frmGraphSetting::readStyle() {
    const int row = lstLegend->currentRow();
    if (Updating || row < 0)
        return;
    LegendStyle& style = styles[row];
    // A style that the tables don't have stays until another is chosen.
    if (cmbLineStyle->currentIndex() >= 0)
        style.LineStyle = clsPlot::SupportedLineStyle(cmbLineStyle->currentIndex());
    if (cmbMarkerStyle->currentIndex() >= 0)
        style.DotStyle = clsPlot::SupportedDotStyle(cmbMarkerStyle->currentIndex());
    style.DotColor = colors[Marker];
    style.LineColor = colors[Line];
    drawSeriesSample();
}

void frmGraphSetting::showColors() {
    for (const int i : {Marker, Line}) {
        const QColor color(redOf(colors[i]), greenOf(colors[i]), blueOf(colors[i]));
        picColor[i]->setStyleSheet(u"background-color: %1; border: 1px solid #808080;"_s.arg(color.name()));
    }
}

void frmGraphSetting::chooseColor(int which) {
    const std::optional<ColorRef> chosen = Dialogs::ChooseColor(this, tr("色の設定"), colors[which]);
    if (!chosen)
        return;
    colors[which] = *chosen;
    showColors();
    readStyle();
}

void frmGraphSetting::addStyle() {
    styles.append({.LineStyle = clsPlot::SupportedLineStyle(0), .DotStyle = clsPlot::SupportedDotStyle(0)});
    listSeries();
    lstLegend->setCurrentRow(int(styles.size()) - 1);
}

void frmGraphSetting::removeStyle() {
    const int row = lstLegend->currentRow();
    if (styles.size() < 2 || row < 0)
        return;
    styles.removeAt(row);
    {
        const QScopedValueRollback guard(Updating, true);
        listSeries();
        lstLegend->setCurrentRow(std::min(row, int(styles.size()) - 1));
    }
    showStyle();
}

void frmGraphSetting::drawSeriesSample() {
    RasterDevice device(picLegend->BlankSheet(), picLegend->DotsPerInch());
    const DeviceSize size = picLegend->PixelSize();
    if (const int row = lstLegend->currentRow(); row >= 0) {
        const float perMillimetre = mdTips::UnitsPerMillimetre(device, false);
        const auto length = [&](int which) {
            constexpr double longest = 1e6;
            return std::max(1, int(std::min(mdTips::Val(txtSize[which]->text()) * perMillimetre, longest)));
        };
        const LegendStyle& style = styles.at(row);
        plot.SpecialPlot_Line(device, style.LineStyle, style.LineColor, length(Line), 0, size.Height / 2, size.Width,
                              size.Height / 2);
        plot.SpecialPlot_Dot(device, style.DotStyle, style.DotColor, style.DotColor, 8, 0, size.Width / 2,
                             size.Height / 2, length(Marker));
    }
    picLegend->ShowSheet();
}

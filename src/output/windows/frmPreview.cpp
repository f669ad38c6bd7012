#include "output/windows/frmPreview.h"

#include "app/NumberFormat.h"
#include "output/mdPage.h"
#include "output/pagePreview.h"
#include "output/windows/frmPageLayout.h"
#include "output/windows/printPage.h"
#include "platform/device/Printers.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/LongWork.h"
#include "platform/widgets/PictureBox.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScopeGuard>
#include <QScrollArea>
#include <cmath>

using FormSupport::Named;

namespace {
constexpr QRgb ground = qRgb(0x8c, 0x92, 0x98), edge = qRgb(0x50, 0x54, 0x58);
constexpr int gap = 8;         ///< between the window and the picture
constexpr int shadowWidth = 5; ///< of the sheet, which keeps as much room on all sides
} // namespace

frmPreview::frmPreview(QWidget* parent, Session& shown, Printers& printersToUse)
    : QDialog(parent), session(shown), printers(printersToUse) {
    setObjectName(u"frmPreview"_s);
    setWindowTitle(u"印刷プレビュー"_s);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    buildControls();
    connectControls();
    constexpr int settlingMs = 40;
    redrawing.setSingleShot(true);
    redrawing.setInterval(settlingMs);
    progressBefore = std::exchange(printers.Progress, [this](const QString& text) { lblStatus->setText(text); });
    FormSupport::PlaceOnScreen(*this, {900, 720});
}

frmPreview::~frmPreview() {
    printers.Progress = progressBefore;
}

void frmPreview::buildControls() {
    picScreen = Named(new PictureBox, u"picScreen"_s);
    picScreen->setAccessibleName(u"印刷されるページ"_s);
    picScreen->setAcceptDrops(false);
    auto* room = Named(new QWidget, u"picRoom"_s);
    auto* roomLayout = new QHBoxLayout(room);
    roomLayout->setContentsMargins(gap, gap, gap, gap);
    roomLayout->addWidget(picScreen);
    picContainer = Named(new QScrollArea, u"picContainer"_s);
    picContainer->setFrameShape(QFrame::NoFrame);
    picContainer->setWidgetResizable(true);
    picContainer->setWidget(room);
    QPalette colors = palette();
    colors.setColor(QPalette::Window, QColor(ground));
    for (QWidget* widget : {static_cast<QWidget*>(room), picContainer->viewport()}) {
        widget->setPalette(colors);
        widget->setAutoFillBackground(true);
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(buildTools());
    layout->addWidget(picContainer, 1);
    FormSupport::TabOrder({Command1[0], Command1[1], Command1[2], cmbZoom, picScreen});
}

QWidget* frmPreview::buildTools() {
    auto* tools = Named(new QWidget, u"picTools"_s);
    auto* layout = new QHBoxLayout(tools);
    layout->setContentsMargins(gap, gap / 2, gap, gap / 2);
    const std::array<QString, 3> captions{u"印刷(&P)"_s, u"ページ設定(&U)..."_s, u"閉じる(&X)"_s};
    for (int i = 0; i < int(captions.size()); ++i) {
        Command1[i] = Named(new QPushButton(captions[i]), u"Command1"_s, i);
        Command1[i]->setAutoDefault(false);
        layout->addWidget(Command1[i]);
    }
    auto* caption = Named(new QLabel(u"表示(&Z):"_s), u"lblZoom"_s);
    cmbZoom = Named(new QComboBox, u"cmbZoom"_s);
    cmbZoom->addItems({u"ページ全体"_s, u"100 %"_s});
    caption->setBuddy(cmbZoom);
    layout->addSpacing(gap);
    layout->addWidget(caption);
    layout->addWidget(cmbZoom);
    layout->addSpacing(gap);
    lblPrinter = Named(new QLabel, u"lblPrinter"_s);
    lblPaper = Named(new QLabel, u"lblPaper"_s);
    lblStatus = Named(new QLabel, u"lblStatus"_s);
    for (QLabel* label : {lblPrinter, lblPaper, lblStatus}) {
        label->setTextFormat(Qt::PlainText);
        // A long name must not make the window wide.
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        label->setMinimumWidth(1);
        layout->addWidget(label, label == lblStatus ? 3 : 2);
    }
    return tools;
}

void frmPreview::connectControls() {
    connect(Command1[0], &QPushButton::clicked, this, &frmPreview::print);
    connect(Command1[1], &QPushButton::clicked, this, &frmPreview::setUpPage);
    connect(Command1[2], &QPushButton::clicked, this, &frmPreview::close);
    connect(cmbZoom, &QComboBox::activated, this, &frmPreview::chooseZoom);
    connect(picScreen, &PictureBox::Resized, &redrawing, qOverload<>(&QTimer::start));
    connect(&redrawing, &QTimer::timeout, this, &frmPreview::redraw);
}

void frmPreview::FirstStep() {
    session.Plotter.SetPrinters(&printers);
    printer = mdPage::OpenPrinter(session.Settings.Page, session.Plotter);
    Command1[0]->setEnabled(printer.has_value());
    sheet = {};
    showFacts();
    chooseZoom();
}

void frmPreview::showFacts() {
    const PageSettings& page = session.Settings.Page;
    lblPrinter->setText(printer ? printer->DeviceName() : page.Printer);
    const auto millimetres = [](double length) { return NumberFormat::Shortest(std::round(length * 10) / 10); };
    lblPaper->setText(printer ? u"%1  %2 × %3 mm"_s.arg(printer->Paper().Name, millimetres(printer->PaperWidthMm()),
                                                        millimetres(printer->PaperHeightMm()))
                              : QString());
    lblStatus->setText(printer ? QString() : u"プリンタを開くことができません。"_s);
    if (printer && mdPage::PaperScale(page) > 0)
        lblStatus->setText(u"縮尺 1:%1"_s.arg(page.ScaleDenominator) +
                           (mdPage::Holds(page, *printer, session.Model.Mesh, session.View.ViewBounds)
                                ? QString()
                                : u" では余白の内側に収まりません。"_s));
    for (QLabel* label : {lblPrinter, lblPaper, lblStatus})
        label->setToolTip(label->text());
}

void frmPreview::chooseZoom() {
    QSize least;
    if (printer && cmbZoom->currentIndex() == RealSize) {
        const QSize pixels = pagePreview::RealSize(*printer, picScreen->DotsPerInch());
        const double ratio = picScreen->devicePixelRatioF();
        const int around = 2 * shadowWidth;
        least = {int(std::ceil(pixels.width() / ratio)) + around, int(std::ceil(pixels.height() / ratio)) + around};
    }
    picScreen->setMinimumSize(least.expandedTo({1, 1}));
    redrawing.start();
}

void frmPreview::redraw() {
    if (painting) {
        redrawing.start();
        return;
    }
    const DeviceSize room = picScreen->PixelSize();
    const int around = int(std::lround(2 * shadowWidth * picScreen->devicePixelRatioF()));
    const QSize free(room.Width - around, room.Height - around);
    if (!printer || free.width() < 1 || free.height() < 1) {
        sheet = {};
    } else {
        const QSize pixels = cmbZoom->currentIndex() == RealSize
                                 ? pagePreview::RealSize(*printer, picScreen->DotsPerInch())
                                 : pagePreview::FittingSize(*printer, free);
        if (sheet.size() != pixels)
            paintSheet(pixels);
    }
    compose();
}

/// Until it is painted, and when it isn't to its end, the page stands there as it was in its former size.
void frmPreview::paintSheet(QSize pixels) {
    painting = true;
    const auto done = qScopeGuard([this] { painting = false; });
    if (sheet.isNull()) {
        sheet = QImage(pixels, QImage::Format_RGB32);
        sheet.fill(Qt::white);
    } else {
        sheet = sheet.scaled(pixels);
    }
    compose();
    showFacts();
    QImage painted;
    LongWork work(u"描画中... (Esc で中止)"_s, [this, before = lblStatus->text()](const QString& text) {
        lblStatus->setText(text.isEmpty() ? before : text);
    });
    bool whole = false;
    try {
        whole = work.Run([&](const LongWork::Progress& progress) {
            try {
                painted = pagePreview::Paint(session.Plotter, *printer, pixels, [&] { return progress(0, 0); });
            } catch (const DrawingStopped&) {
                // Run tells.
            }
        });
        if (!whole)
            lblStatus->setText(u"中止しました。"_s);
    } catch (const std::bad_alloc&) {
        lblStatus->setText(u"メモリが足りないため、描画を中止しました。"_s);
    }
    if (whole)
        sheet = painted;
}

void frmPreview::compose() {
    QImage& picture = picScreen->BlankSheet();
    picture.fill(ground);
    if (!sheet.isNull()) {
        const int shadow = int(std::lround(shadowWidth * picScreen->devicePixelRatioF()));
        const QRect place(QPoint((picture.width() - sheet.width()) / 2, (picture.height() - sheet.height()) / 2),
                          sheet.size());
        QPainter painter(&picture);
        // Each ring is darker where the ones before it lie under it, so the shadow fades out.
        for (int i = shadow; i > 0; --i)
            painter.fillRect(place.translated(shadow / 2, shadow / 2).adjusted(-i / 2, -i / 2, i / 2, i / 2),
                             QColor(0, 0, 0, 90 / shadow));
        painter.fillRect(place.adjusted(-1, -1, 1, 1), QColor(edge));
        painter.drawImage(place.topLeft(), sheet);
    }
    picScreen->ShowSheet();
}

void frmPreview::print() {
    if (printer && PrintPage(session, *printer))
        lblStatus->setText(u"印刷しました。"_s);
}

void frmPreview::setUpPage() {
    frmPageLayout form(this, printers, session.Settings.Page);
    form.exec();
    if (form.Result)
        FirstStep();
}

void frmPreview::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && !isMinimized())
        redrawing.start();
}

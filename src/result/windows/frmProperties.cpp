#include "result/windows/frmProperties.h"

#include "app/mdApplication.h"
#include "app/mdTipsDrawing.h"
#include "platform/base/NativePath.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"
#include "result/windows/PropertyRows.h"

#include <QHeaderView>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>

using FormSupport::Named;

namespace {
constexpr int charactersWide = 96;
constexpr int linesHigh = 32;
constexpr int iconSize = 12; ///< whole pixels at 125 % and 150 % as well
constexpr ColorRef signColor = 0x808080;
constexpr ColorRef squareColor = 0xe0e0e0;
} // namespace

frmProperties::frmProperties(QWidget* parent, const ResultModel& model)
    : QDialog(parent, Qt::Dialog | Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint),
      exportPath(mdApplication::PathPart(model.FileName, mdApplication::PathWithoutExtension)),
      rows(new PropertyRows(model, this)) {
    setObjectName(u"frmProperties"_s);
    setWindowTitle(u"プロパティ - "_s +
                   NativePath::Shown(mdApplication::PathPart(model.FileName, mdApplication::BaseName)));
    buildControls();
    DrawPropertyIcons();
    const QFontMetrics metrics = fontMetrics();
    lvProperties->resizeColumnToContents(0);
    lvProperties->setColumnWidth(0, lvProperties->columnWidth(0) + metrics.averageCharWidth() * 3);
    FormSupport::PlaceOnScreen(*this, {metrics.averageCharWidth() * charactersWide, metrics.height() * linesHigh});
}

void frmProperties::buildControls() {
    lvProperties = Named(new QTableView, u"lvProperties"_s);
    lvProperties->setAccessibleName(u"プロパティ"_s);
    lvProperties->setModel(rows);
    lvProperties->setShowGrid(false);
    lvProperties->setTabKeyNavigation(false);
    lvProperties->setSelectionBehavior(QAbstractItemView::SelectRows);
    lvProperties->setSelectionMode(QAbstractItemView::SingleSelection);
    lvProperties->setTextElideMode(Qt::ElideMiddle);
    lvProperties->setWordWrap(false);
    lvProperties->setIconSize({iconSize, iconSize});
    lvProperties->verticalHeader()->hide();
    lvProperties->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    lvProperties->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    lvProperties->horizontalHeader()->setStretchLastSection(true);
    lvProperties->horizontalHeader()->setHighlightSections(false);
    lvProperties->setCurrentIndex(rows->index(0, 0));

    Command1 = Named(new QPushButton(u"閉じる(&C)"_s), u"Command1"_s);
    Command2 = Named(new QPushButton(u"テキスト出力(&T)..."_s), u"Command2"_s);
    Command1->setDefault(true);
    Picture1 = Named(new PictureBox(this), u"Picture1"_s);
    Picture1->setFixedSize(iconSize, iconSize);
    Picture1->hide();

    FormSupport::ButtonWidths({Command1});
    FormSupport::ButtonWidths({Command2});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lvProperties);
    layout->addLayout(FormSupport::ButtonRow({Command2}, {Command1}));
    FormSupport::TabOrder({lvProperties, Command1, Command2});

    connect(lvProperties, &QTableView::clicked, this, [this](const QModelIndex& at) { rows->Toggle(at.row()); });
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        connect(new QShortcut(key, lvProperties, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
                [this] { rows->Toggle(lvProperties->currentIndex().row()); });
    // A table takes these two for its columns.
    const auto goTo = [this](int row) { lvProperties->setCurrentIndex(rows->index(row, 0)); };
    connect(new QShortcut(Qt::Key_Home, lvProperties, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, [goTo] { goTo(0); });
    connect(new QShortcut(Qt::Key_End, lvProperties, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
            [this, goTo] { goTo(rows->rowCount() - 1); });
    connect(Picture1, &PictureBox::Resized, this, &frmProperties::DrawPropertyIcons);
    connect(Command1, &QPushButton::clicked, this, &QDialog::accept);
    connect(Command2, &QPushButton::clicked, this, [this] {
        // The name is asked for and nothing is written: the export has no format yet.
        QString path;
        bool ok = false;
        PromptExportName(path, ok);
    });
}

void frmProperties::DrawPropertyIcons() {
    const auto draw = [this](bool plus) {
        QImage& picture = Picture1->BlankSheet();
        const int size = picture.width();
        const int thickness = std::max(1, size / iconSize);
        // The sign is in the middle only when as much is left on both sides of it.
        const int side = size - (size - thickness) % 2;
        const int middle = (side - thickness) / 2;
        const int margin = side / 4;
        RasterDevice device(picture, Picture1->DotsPerInch());
        device.FillRect({0, 0, side, side}, {.Color = signColor});
        device.FillRect({thickness, thickness, side - thickness, side - thickness}, {.Color = squareColor});
        device.FillRect({margin, middle, side - margin, middle + thickness}, {.Color = signColor});
        if (plus)
            device.FillRect({middle, margin, middle + thickness, side - margin}, {.Color = signColor});
        QPixmap icon(picture.size());
        icon.fill(Qt::transparent);
        QPainter(&icon).drawImage(0, 0, picture, 0, 0, side, side);
        icon.setDevicePixelRatio(Picture1->devicePixelRatioF());
        return icon;
    };
    rows->SetIcons(draw(true), draw(false));
}

void frmProperties::PromptExportName(QString& path, bool& ok) {
    const std::optional<QString> chosen = Dialogs::SaveFileName(
        this, u"テキスト出力"_s, exportPath, u"テキストファイル(*.txt)|*.txt|すべてのファイル(*.*)|*.*"_s);
    ok = chosen.has_value();
    path = chosen.value_or(QString());
}

void frmProperties::RemoveChildRows(const QString& prefix) {
    rows->RemoveChildRows(prefix);
}

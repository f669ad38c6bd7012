#include "output/windows/frmSlideShowSetting.h"

#include "app/mdTips.h"
#include "platform/base/Rounding.h"
#include "platform/widgets/FormSupport.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QStyle>

using FormSupport::Bind;
using FormSupport::Named;

namespace {
enum : int { AtFirst, Restore, Automatic, Header, Step, Time, Contour, Vector };

constexpr int millisecondsPerPosition = 10;
constexpr double positionsPerSecond = 100;
} // namespace

frmSlideShowSetting::frmSlideShowSetting(QWidget* parent, SlideShowSettings& target)
    : QDialog(parent), settings(target), sldSlideShow(Named(new QSlider(Qt::Horizontal), u"sldSlideShow"_s)),
      lblSlideShow(Named(new QLabel, u"lblSlideShow"_s)), txtDivide(Named(new QLineEdit, u"txtDivide"_s)) {
    setObjectName(u"frmSlideShowSetting"_s);
    setWindowTitle(u"スライドショー設定"_s);
    sldSlideShow->setRange(1, 500);
    sldSlideShow->setSingleStep(10);
    sldSlideShow->setPageStep(100);
    sldSlideShow->setTickInterval(50);
    sldSlideShow->setTickPosition(QSlider::TicksBelow);
    sldSlideShow->setMinimumWidth(30 * fontMetrics().averageCharWidth());
    buildControls();
    bindControls();
    FormSupport::PlaceOnScreen(*this);
}

void frmSlideShowSetting::buildControls() {
    const std::array<QString, 8> captions{u"常に１ステップから開始する。(&F)"_s,
                                          u"終了時にステップを復元する。(&R)"_s,
                                          u"コンタ値を自動設定する。(&C)"_s,
                                          u"ヘッダを描画する。(&H)"_s,
                                          u"ステップ番号(&S)"_s,
                                          u"ステップ時間(&T)"_s,
                                          u"コンタアイテム名称(&N)"_s,
                                          u"ベクトルアイテム名称(&E)"_s};
    auto* grid = new QGridLayout(this);
    // What belongs to the box above stands a mark's width further in.
    grid->setColumnMinimumWidth(0, style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                                       style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing));
    grid->setColumnStretch(2, 1);
    const auto addCaption = [&](const QString& caption, QWidget* control, int row, int column, int columns) {
        auto* label = FormSupport::Caption(caption, control);
        grid->addWidget(label, row, column, 1, columns);
    };
    addCaption(u"インターバル(&V):"_s, sldSlideShow, 0, 0, 2);
    grid->addWidget(sldSlideShow, 0, 2);
    grid->addWidget(lblSlideShow, 0, 3);
    int row = 1;
    for (int i = 0; i < int(chkSlideShow.size()); ++i, ++row) {
        chkSlideShow[i] = Named(new QCheckBox(captions[i]), u"chkSlideShow"_s, i);
        const int column = i > Header ? 1 : 0;
        grid->addWidget(chkSlideShow[i], row, column, 1, 4 - column);
        if (i == Automatic) {
            ++row;
            addCaption(u"コンタ値分割数(&D):"_s, txtDivide, row, 1, 1);
            grid->addWidget(txtDivide, row, 2, Qt::AlignLeft);
        }
    }
    auto* ok = Named(new QPushButton(u"OK"_s), u"Command1"_s, 0);
    auto* cancel = Named(new QPushButton(u"キャンセル"_s), u"Command1"_s, 1);
    FormSupport::ButtonWidths({ok, cancel});
    ok->setDefault(true);
    grid->addLayout(FormSupport::ButtonRow({}, {ok, cancel}), row, 0, 1, 4);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    FormSupport::TabOrder({sldSlideShow, chkSlideShow[AtFirst], chkSlideShow[Restore], chkSlideShow[Automatic],
                           txtDivide, chkSlideShow[Header], chkSlideShow[Step], chkSlideShow[Time],
                           chkSlideShow[Contour], chkSlideShow[Vector], ok, cancel});
    connect(ok, &QPushButton::clicked, this, &frmSlideShowSetting::apply);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmSlideShowSetting::bindControls() {
    using S = SlideShowSettings;
    connect(sldSlideShow, &QSlider::valueChanged, lblSlideShow, [this](int position) {
        lblSlideShow->setText(QString::number(position / positionsPerSecond, 'f', 2) + u" 秒"_s);
    });
    connect(chkSlideShow[Automatic], &QCheckBox::toggled, txtDivide, &QLineEdit::setEnabled);
    const FormSupport::Edit<int> divide{txtDivide, [](int bands) { return QString::number(bands); },
                                        [](const QString& text) { return Round(mdTips::Val(text)); }, 2};
    rows = {Bind(FormSupport::SliderSteps{sldSlideShow, millisecondsPerPosition}, &S::Interval),
            Bind(chkSlideShow[AtFirst], &S::AtFirst),
            Bind(chkSlideShow[Restore], &S::RestoreStep),
            Bind(chkSlideShow[Automatic], &S::AutomaticContourValue),
            Bind(divide, &S::ContourDivide),
            Bind(chkSlideShow[Header], &S::PaintHeader),
            Bind(chkSlideShow[Step], &S::HeaderStep),
            Bind(chkSlideShow[Time], &S::HeaderTime),
            Bind(chkSlideShow[Contour], &S::HeaderContour),
            Bind(chkSlideShow[Vector], &S::HeaderVector)};
    // The label takes the room of the longest text.
    sldSlideShow->setValue(sldSlideShow->maximum());
    lblSlideShow->setMinimumWidth(lblSlideShow->sizeHint().width());
    txtDivide->setEnabled(false);
    rows.Fill(settings);
}

void frmSlideShowSetting::apply() {
    rows.Read(settings);
    Result = true;
    accept();
}

#include "view/windows/frmContourValue.h"

#include "app/mdApplication.h"
#include "app/mdTips.h"
#include "platform/base/Rounding.h"
#include "platform/widgets/FormSupport.h"
#include "result/mdVelorinResultModel.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <limits>

using FormSupport::Named;

namespace {
enum : int { Maximum, Minimum, Bands };
enum : int { Ok, Cancel, Automatic };
enum : int { OfBoxes, OfStep, OfAllSteps, OfVisible }; ///< the lines of `cmbRange`

constexpr int shownDigits = 5;

QString valueText(double value) {
    return mdApplication::FormatAutoNumber(value, shownDigits, false);
}

QString orderedValue(const QString& text) {
    return valueText(mdTips::Val(text));
}

QString orderedBands(const QString& text) {
    return QString::number(Round(std::abs(mdTips::Val(text))));
}

/// Nothing for a number beyond the range of a single.
std::optional<float> singleOf(const QString& text) {
    const double value = mdTips::Val(text);
    return std::abs(value) <= std::numeric_limits<float>::max() ? std::optional(float(value)) : std::nullopt;
}

FormSupport::Edit<float> valueEdit(QLineEdit* box) {
    return {box, valueText, singleOf};
}

FormSupport::Edit<int> bandsEdit(QLineEdit* box) {
    return {box, [](int bands) { return QString::number(bands); },
            [](const QString& text) { return Round(mdTips::Val(text)); }};
}
} // namespace

frmContourValue::frmContourValue(QWidget* parent, const ResultModel& source, ApplicationSettings& target)
    : QDialog(parent), model(source), settings(target) {
    setObjectName(u"frmContourValue"_s);
    setWindowTitle(u"コンタ値設定"_s);
    buildControls();
    ItemIndex(-1);
    FormSupport::PlaceOnScreen(*this);
}

void frmContourValue::buildControls() {
    const std::array<QString, 3> defaultCaptions{u"最大値:"_s, u"最小値:"_s, u"分割数:"_s};
    const std::array<QString, 3> valueCaptions{u"最大値(&X):"_s, u"最小値(&N):"_s, u"分割数(&D):"_s};
    const std::array<QString, 3> buttonCaptions{u"OK"_s, u"キャンセル"_s, u"自動設定(&A)"_s};
    auto* defaults = new QGroupBox(u"デフォルト"_s);
    auto* values = new QGroupBox(u"設定値"_s);
    auto* defaultGrid = new QGridLayout(defaults);
    auto* valueGrid = new QGridLayout(values);
    for (int i = 0; i < 3; ++i) {
        txtDefault[i] = Named(new QLineEdit, u"txtDefault"_s, i);
        FormSupport::MakeReadOnly(*txtDefault[i]);
        FormSupport::AddRow(*defaultGrid, i, defaultCaptions[i], txtDefault[i]);
        txtValue[i] = Named(new QLineEdit, u"txtValue"_s, i);
        FormSupport::ReformatOnLeaving(*txtValue[i], i == Bands ? orderedBands : orderedValue);
        FormSupport::AddRow(*valueGrid, i, valueCaptions[i], txtValue[i]);
        Command1[i] = Named(new QPushButton(buttonCaptions[i]), u"Command1"_s, i);
    }
    rows = {FormSupport::Bind(valueEdit(txtValue[Maximum]), &ContourSettings::MaxValue),
            FormSupport::Bind(valueEdit(txtValue[Minimum]), &ContourSettings::MinValue),
            FormSupport::Bind(bandsEdit(txtValue[Bands]), &ContourSettings::Divide)};
    cmbRange = Named(new QComboBox, u"cmbRange"_s);
    cmbRange->addItems({u"固定（設定値）"_s, u"このステップ"_s, u"全ステップ"_s, u"表示部分"_s});
    auto* rangeGrid = new QGridLayout;
    FormSupport::AddRow(*rangeGrid, 0, u"範囲の取り方(&R):"_s, cmbRange);
    rangeGrid->setColumnStretch(1, 1);
    connect(cmbRange, &QComboBox::currentIndexChanged, this, &frmContourValue::showRange);
    FormSupport::ButtonWidths({Command1[Ok], Command1[Cancel], Command1[Automatic]});
    Command1[Ok]->setDefault(true);

    auto* layout = new QGridLayout(this);
    layout->addWidget(defaults, 0, 0);
    layout->addWidget(values, 0, 1);
    layout->addLayout(rangeGrid, 1, 0, 1, 2);
    layout->addLayout(FormSupport::ButtonRow({Command1[Automatic]}, {Command1[Ok], Command1[Cancel]}), 2, 0, 1, 2);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    FormSupport::TabOrder({txtValue[Maximum], txtValue[Minimum], txtValue[Bands], cmbRange, Command1[Ok],
                           Command1[Cancel], Command1[Automatic]});
    connect(Command1[Ok], &QPushButton::clicked, this, &frmContourValue::apply);
    connect(Command1[Cancel], &QPushButton::clicked, this, &QDialog::reject);
    connect(Command1[Automatic], &QPushButton::clicked, this, &frmContourValue::applyAutomatic);
}

void frmContourValue::ItemIndex(int item) {
    itemIndex = item;
    const ContourSettings& contour = settings.Contour;
    if (item >= 0 && item < model.ItemCount) {
        const bool difference = settings.Difference.StandardStep >= 0 && settings.Difference.ApplyContour;
        const ItemValues values = mdVelorinResultModel::GetNodeValues(difference, model.Mesh);
        txtDefault[Maximum]->setText(valueText(values.MaxValue));
        txtDefault[Minimum]->setText(valueText(values.MinValue));
        txtDefault[Bands]->setText(u"20 分割"_s);
    } else {
        for (QLineEdit* box : txtDefault)
            box->setText(u"undefined"_s);
    }
    rows.Fill(contour);
    if (contour.Automatic)
        for (const int end : {Maximum, Minimum})
            txtValue[end]->setText(txtDefault[end]->text());
    // OK holds what the boxes show, unless another range has been chosen; that of the step is behind its own button.
    cmbRange->setCurrentIndex(contour.Range == ContourRange::AllSteps  ? OfAllSteps
                              : contour.Range == ContourRange::Visible ? OfVisible
                                                                       : OfBoxes);
}

void frmContourValue::showRange(int choice) {
    for (const int end : {Maximum, Minimum})
        txtValue[end]->setEnabled(choice == OfBoxes);
    txtValue[Bands]->setEnabled(choice != OfStep);
}

void frmContourValue::apply() {
    if (cmbRange->currentIndex() == OfStep) {
        applyAutomatic();
        return;
    }
    ContourSettings& contour = settings.Contour;
    const float upper = contour.MaxValue, lower = contour.MinValue;
    rows.Read(contour);
    if (cmbRange->currentIndex() != OfBoxes) {
        contour.MaxValue = upper;
        contour.MinValue = lower;
    }
    contour.Automatic = cmbRange->currentIndex() == OfVisible;
    contour.Range = cmbRange->currentIndex() == OfAllSteps  ? ContourRange::AllSteps
                    : cmbRange->currentIndex() == OfVisible ? ContourRange::Visible
                                                            : ContourRange::AsStands;
    Result = true;
    accept();
}

void frmContourValue::applyAutomatic() {
    settings.Contour.Automatic = true;
    settings.Contour.Range = ContourRange::AsStands;
    Result = true;
    accept();
}

#include "view/windows/frmContourValue.h"

#include "app/mdApplication.h"
#include "app/mdTips.h"
#include "platform/base/Rounding.h"
#include "platform/widgets/FormSupport.h"
#include "result/mdVelorinResultModel.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <limits>

using FormSupport::Named;

namespace {
enum : int { Maximum, Minimum, Bands };
enum : int { Ok, Cancel, Automatic };

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
    FormSupport::ButtonWidths({Command1[Ok], Command1[Cancel], Command1[Automatic]});
    Command1[Ok]->setDefault(true);

    auto* layout = new QGridLayout(this);
    layout->addWidget(defaults, 0, 0);
    layout->addWidget(values, 0, 1);
    layout->addLayout(FormSupport::ButtonRow({Command1[Automatic]}, {Command1[Ok], Command1[Cancel]}), 1, 0, 1, 2);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    FormSupport::TabOrder(
        {txtValue[Maximum], txtValue[Minimum], txtValue[Bands], Command1[Ok], Command1[Cancel], Command1[Automatic]});
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
}

void frmContourValue::apply() {
    settings.Contour.Automatic = false;
    rows.Read(settings.Contour);
    Result = true;
    accept();
}

void frmContourValue::applyAutomatic() {
    settings.Contour.Automatic = true;
    Result = true;
    accept();
}

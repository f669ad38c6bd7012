#include "platform/widgets/FontDialog.h"

#include "platform/base/Rounding.h"
#include "platform/device/Fonts.h"
#include "platform/widgets/ColorButton.h"
#include "platform/widgets/FormSupport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>

using FormSupport::Named;

namespace {
QStringList scalableFamilies() {
    QStringList families;
    for (const QString& family : QFontDatabase::families())
        if (QFontDatabase::isSmoothlyScalable(family) && !QFontDatabase::isPrivateFamily(family))
            families.append(family);
    return families;
}
} // namespace

FontDialog::FontDialog(QWidget* parent, const QString& title, const Dialogs::FontChoice& initial)
    : QDialog(parent), firstPoints(initial.Points), cmbFamily(Named(new QComboBox, u"cmbFamily"_s)),
      cmbSize(Named(new QComboBox, u"cmbSize"_s)), cmdColor(Named(new ColorButton(u"文字色(&C)..."_s), u"cmdColor"_s)),
      lblSample(Named(new QLabel(u"Aa1.0 あア亜"_s), u"lblSample"_s)) {
    setObjectName(u"fontDialog"_s);
    setWindowTitle(title);
    cmbFamily->addItems(scalableFamilies());
    if (cmbFamily->findText(initial.Family) < 0)
        cmbFamily->insertItem(0, initial.Family);
    cmbFamily->setCurrentText(initial.Family);
    cmbSize->setEditable(true);
    for (const int points : {6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 36, 48, 72})
        cmbSize->addItem(QString::number(points));
    cmbSize->setCurrentText(QString::number(initial.Points));
    cmdColor->SetColor(initial.Color);

    auto* layout = new QGridLayout(this);
    FormSupport::AddRow(*layout, 0, u"フォント(&F):"_s, cmbFamily);
    FormSupport::AddRow(*layout, 1, u"サイズ(&S):"_s, cmbSize);
    auto* effects = new QHBoxLayout;
    const std::array captions{u"太字(&B)"_s, u"斜体(&I)"_s, u"下線(&U)"_s, u"取り消し線(&K)"_s};
    const std::array set{initial.Bold, initial.Italic, initial.Underline, initial.StrikeOut};
    for (int i = 0; i < int(chkEffect.size()); ++i) {
        chkEffect[i] = Named(new QCheckBox(captions[i]), u"chkEffect"_s, i);
        chkEffect[i]->setChecked(set[i]);
        effects->addWidget(chkEffect[i]);
        connect(chkEffect[i], &QCheckBox::toggled, this, &FontDialog::showSample);
    }
    layout->addLayout(effects, 2, 0, 1, 2);
    layout->addWidget(cmdColor, 3, 0, 1, 2, Qt::AlignLeft);
    constexpr int sampleHeight = 80;
    lblSample->setFixedHeight(sampleHeight);
    lblSample->setAlignment(Qt::AlignCenter);
    lblSample->setFrameShape(QFrame::StyledPanel);
    lblSample->setAutoFillBackground(true);
    lblSample->setMinimumWidth(1); // whatever the size of the sample
    layout->addWidget(lblSample, 4, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    auto* ok = Named(new QPushButton(u"OK"_s), u"Command1"_s, 0);
    auto* cancel = Named(new QPushButton(u"キャンセル"_s), u"Command1"_s, 1);
    FormSupport::ButtonWidths({ok, cancel});
    ok->setDefault(true);
    layout->addLayout(FormSupport::ButtonRow({}, {ok, cancel}), 5, 0, 1, 2);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmbFamily, &QComboBox::currentTextChanged, this, &FontDialog::showSample);
    connect(cmbSize, &QComboBox::currentTextChanged, this, &FontDialog::showSample);
    connect(cmdColor, &ColorButton::ColorChosen, this, &FontDialog::showSample);
    showSample();
    FormSupport::PlaceOnScreen(*this);
}

Dialogs::FontChoice FontDialog::Chosen() const {
    constexpr double largest = 1638;
    const double typed = cmbSize->currentText().trimmed().toDouble();
    return {cmbFamily->currentText(),  typed >= 1 && typed <= largest ? typed : firstPoints,
            chkEffect[0]->isChecked(), chkEffect[1]->isChecked(),
            chkEffect[2]->isChecked(), chkEffect[3]->isChecked(),
            cmdColor->Color()};
}

void FontDialog::showSample() {
    const Dialogs::FontChoice chosen = Chosen();
    constexpr double pointsPerInch = 72;
    constexpr int normal = 400, bold = 700;
    lblSample->setFont(Fonts::ToQFont({.Height = Round(chosen.Points * logicalDpiY() / pointsPerInch),
                                       .Weight = chosen.Bold ? bold : normal,
                                       .Italic = chosen.Italic,
                                       .Underline = chosen.Underline,
                                       .StrikeOut = chosen.StrikeOut,
                                       .Face = chosen.Family}));
    QPalette colors = lblSample->palette();
    colors.setColor(QPalette::WindowText, QColor(redOf(chosen.Color), greenOf(chosen.Color), blueOf(chosen.Color)));
    colors.setColor(QPalette::Window, Qt::white);
    lblSample->setPalette(colors);
}

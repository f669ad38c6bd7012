#include "output/windows/frmSavePicture.h"

#include "platform/base/Rounding.h"
#include "platform/widgets/FormSupport.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>

using FormSupport::Named;

namespace {
constexpr int mostPixelsAcross = 32767;
constexpr int leastDotsPerInch = 24, mostDotsPerInch = 2400;

QSpinBox* numberBox(const QString& name, int least, int most, int value) {
    auto* box = Named(new QSpinBox, name);
    box->setRange(least, most);
    box->setValue(value);
    // A number that is still being typed changes no other one.
    box->setKeyboardTracking(false);
    return box;
}
} // namespace

frmSavePicture::frmSavePicture(QWidget* parent, PictureFile& picture)
    : QDialog(parent), target(picture), ratio(double(picture.Size.Height) / std::max(picture.Size.Width, 1)),
      dotsPerInch(picture.Resolution()) {
    setObjectName(u"frmSavePicture"_s);
    setWindowTitle(tr("画像を保存"));
    buildControls();
    showPaper();
    FormSupport::PlaceOnScreen(*this);
}

void frmSavePicture::buildControls() {
    txtWidth = numberBox(u"txtWidth"_s, 1, mostPixelsAcross, target.Size.Width);
    txtHeight = numberBox(u"txtHeight"_s, 1, mostPixelsAcross, target.Size.Height);
    txtDpi = numberBox(u"txtDpi"_s, leastDotsPerInch, mostDotsPerInch, dotsPerInch);
    chkRatio = Named(new QCheckBox(tr("縦横比を保つ(&K)")), u"chkRatio"_s);
    chkRatio->setChecked(true);
    lblPaper = Named(new QLabel, u"lblPaper"_s);
    Command1 = {Named(new QPushButton(tr("OK")), u"Command1"_s, 0),
                Named(new QPushButton(tr("キャンセル")), u"Command1"_s, 1)};
    Command1[0]->setDefault(true);
    FormSupport::ButtonWidths({Command1[0], Command1[1]});
    auto* grid = new QGridLayout(this);
    FormSupport::AddRow(*grid, 0, tr("解像度 (dpi)(&D):"), txtDpi);
    FormSupport::AddRow(*grid, 1, tr("幅 (ピクセル)(&W):"), txtWidth);
    FormSupport::AddRow(*grid, 2, tr("高さ (ピクセル)(&H):"), txtHeight);
    grid->addWidget(chkRatio, 3, 1);
    grid->addWidget(new QLabel(tr("紙の上の大きさ:")), 4, 0);
    grid->addWidget(lblPaper, 4, 1);
    grid->addLayout(FormSupport::ButtonRow({}, {Command1[0], Command1[1]}), 5, 0, 1, 2);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    for (QSpinBox* box : {txtWidth, txtHeight, txtDpi})
        connect(box, &QSpinBox::valueChanged, this, [this, box] { follow(box); });
    connect(Command1[0], &QPushButton::clicked, this, [this] {
        target.Size = {txtWidth->value(), txtHeight->value()};
        target.DotsPerInch = txtDpi->value();
        Result = true;
        accept();
    });
    connect(Command1[1], &QPushButton::clicked, this, &QDialog::reject);
}

/// A finer picture stays as large on paper; the other side follows when the ratio is kept.
void frmSavePicture::follow(QSpinBox* changed) {
    if (Updating)
        return;
    const QScopedValueRollback busy(Updating, true);
    if (changed == txtDpi) {
        const double finer = double(txtDpi->value()) / dotsPerInch;
        dotsPerInch = txtDpi->value();
        txtWidth->setValue(Round(txtWidth->value() * finer));
        txtHeight->setValue(Round(txtHeight->value() * finer));
    } else if (chkRatio->isChecked()) {
        if (changed == txtWidth)
            txtHeight->setValue(Round(txtWidth->value() * ratio));
        else
            txtWidth->setValue(Round(txtHeight->value() / ratio));
    }
    showPaper();
}

void frmSavePicture::showPaper() {
    constexpr double mmPerInch = 25.4;
    const auto mm = [this](const QSpinBox* box) {
        return QString::number(box->value() * mmPerInch / txtDpi->value(), 'f', 1);
    };
    lblPaper->setText(mm(txtWidth) + u" × "_s + mm(txtHeight) + u" mm"_s);
}

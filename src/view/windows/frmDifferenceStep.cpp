#include "view/windows/frmDifferenceStep.h"

#include "platform/widgets/FormSupport.h"

#include <QGridLayout>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QStringListModel>
#include <QVBoxLayout>

using FormSupport::Named;

frmDifferenceStep::frmDifferenceStep(QWidget* parent) : QDialog(parent), cmbStep(Named(new QComboBox, u"cmbStep"_s)) {
    setObjectName(u"frmDifferenceStep"_s);
    setWindowTitle(u"差分設定"_s);
    // There may be very many steps: a plain list of texts, and nothing that measures each of them.
    cmbStep->setModel(new QStringListModel(cmbStep));
    cmbStep->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbStep->setMinimumContentsLength(20);
    if (auto* list = qobject_cast<QListView*>(cmbStep->view()))
        list->setUniformItemSizes(true);
    auto* layout = new QGridLayout(this);
    layout->setColumnStretch(1, 1);
    FormSupport::AddRow(*layout, 0, u"基準ステップ(&S):"_s, cmbStep);

    auto* checks = new QVBoxLayout;
    const std::array<QString, 4> captions{u"変位図(&D)"_s, u"ベクトル図(&V)"_s, u"コンタ図・分布図・時系列図(&C)"_s,
                                          u"数値(&V)"_s};
    for (int i = 0; i < int(Check1.size()); ++i) {
        Check1[i] = Named(new QCheckBox(captions[i]), u"Check1"_s, i);
        checks->addWidget(Check1[i]);
    }
    layout->addLayout(checks, 1, 1);
    rows = {FormSupport::Bind(FormSupport::LineNumber{cmbStep, -1}, &DifferenceSettings::StandardStep),
            FormSupport::Bind(Check1[Displacement], &DifferenceSettings::ApplyDisplacement),
            FormSupport::Bind(Check1[Vector], &DifferenceSettings::ApplyVector),
            FormSupport::Bind(Check1[Contour], &DifferenceSettings::ApplyContour),
            FormSupport::Bind(Check1[Value], &DifferenceSettings::ApplyValue)};

    auto* ok = Named(new QPushButton(u"OK"_s), u"Command1"_s, 0);
    auto* cancel = Named(new QPushButton(u"キャンセル"_s), u"Command1"_s, 1);
    FormSupport::ButtonWidths({ok, cancel});
    ok->setDefault(true);
    layout->addLayout(FormSupport::ButtonRow({}, {ok, cancel}), 2, 0, 1, 2);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(cmbStep, &QComboBox::currentIndexChanged, this, &frmDifferenceStep::enableChecks);
    connect(ok, &QPushButton::clicked, this, [this] { onCommand(true); });
    connect(cancel, &QPushButton::clicked, this, [this] { onCommand(false); });
    InitDialog(0, -1, {});
    FormSupport::PlaceOnScreen(*this);
}

void frmDifferenceStep::InitDialog(int stepCount, int standardStep, const std::array<bool, 4>& flags) {
    QStringList steps{u"(設定しない)"_s};
    for (int i = 1; i <= stepCount; ++i)
        steps += u"ステップ - "_s + QString::number(i);
    static_cast<QStringListModel*>(cmbStep->model())->setStringList(steps);
    // A step that the file does not have is no reference, and is shown as none.
    rows.Fill({standardStep < stepCount ? standardStep : -1, flags[Displacement], flags[Vector], flags[Contour],
               flags[Value]});
    enableChecks();
}

void frmDifferenceStep::enableChecks() {
    for (QCheckBox* check : Check1)
        check->setEnabled(cmbStep->currentIndex() >= 1);
}

void frmDifferenceStep::onCommand(bool ok) {
    Result = ok;
    done(ok ? Accepted : Rejected);
}

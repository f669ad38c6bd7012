#include "platform/widgets/frmSelDir.h"

#include "platform/base/NativePath.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/ctlDirTree.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using FormSupport::Named;

frmSelDir::frmSelDir(QWidget* parent) : QDialog(parent) {
    setObjectName(u"frmSelDir"_s);
    setWindowTitle(tr("ディレクトリの選択"));
    ctlDirTree1 = Named(new ctlDirTree, u"ctlDirTree1"_s);
    auto* label = FormSupport::Caption(u"ディレクトリ(&D):"_s, ctlDirTree1);
    txtPath = Named(new QLineEdit, u"txtPath"_s);
    txtPath->setAccessibleName(tr("選択されたディレクトリ"));
    FormSupport::MakeReadOnly(*txtPath);
    cmdRefresh = Named(new QPushButton(u"更新(&R)"_s), u"cmdRefresh"_s);
    cmdRefresh->setAutoDefault(false);
    Command1 = {Named(new QPushButton(u"OK"_s), u"Command1"_s, 0),
                Named(new QPushButton(u"キャンセル"_s), u"Command1"_s, 1)};
    Command1[0]->setDefault(true);
    FormSupport::ButtonWidths({cmdRefresh, Command1[0], Command1[1]});
    auto* layout = new QVBoxLayout(this);
    for (QWidget* control : std::initializer_list<QWidget*>{label, ctlDirTree1, txtPath})
        layout->addWidget(control);
    layout->addLayout(FormSupport::ButtonRow({cmdRefresh}, {Command1[0], Command1[1]}));

    connect(ctlDirTree1, &ctlDirTree::Change, this, &frmSelDir::showPath);
    connect(cmdRefresh, &QPushButton::clicked, ctlDirTree1, &ctlDirTree::Refresh);
    connect(Command1[0], &QPushButton::clicked, this, [this] {
        Result = true;
        accept();
    });
    connect(Command1[1], &QPushButton::clicked, this, &QDialog::reject);
    showPath();
    constexpr int widthInCharacters = 76, heightInLines = 36;
    FormSupport::PlaceOnScreen(
        *this, {widthInCharacters * fontMetrics().averageCharWidth(), heightInLines * fontMetrics().height()});
}

QString frmSelDir::Path() const {
    return ctlDirTree1->Path();
}

void frmSelDir::SetPath(const QString& folder) {
    ctlDirTree1->SetPath(folder);
}

void frmSelDir::showPath() {
    const QString path = Path();
    txtPath->setText(NativePath::Shown(path.size() > 1 ? path.chopped(1) : path));
    Command1[0]->setEnabled(!path.isEmpty() && !NativePath::Files(path, {u"index.htm*"_s}).isEmpty());
}

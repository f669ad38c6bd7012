#include "mainwin/frmAbout.h"

#include "app/mdApplication.h"

#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName(u"frmAbout"_s);
    setWindowTitle(u"バージョン情報"_s);
    auto* layout = new QGridLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setHorizontalSpacing(20);
    layout->setContentsMargins(24, 24, 24, 16);
    const auto addLabel = [&](const QString& name, const QString& text, int row) {
        auto* label = new QLabel(text, this);
        label->setObjectName(name);
        layout->addWidget(label, row, 1);
        return label;
    };
    auto* picture = new QLabel(this);
    picture->setObjectName(u"picIcon"_s);
    constexpr int iconSize = 64;
    picture->setPixmap(QIcon(u":/icons/velorin.svg"_s).pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
    layout->addWidget(picture, 0, 0, 3, 1, Qt::AlignTop);
    QLabel* title = addLabel(u"lblTitle"_s, mdApplication::ApplicationTitle, 0);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    title->setFont(large);
    addLabel(u"lblVersion"_s, u"バージョン "_s + QStringLiteral(VELORIN_VERSION), 1);
    addLabel(u"lblCopyright"_s, u"Copyright (c) 2026 The Velorin authors"_s, 2);
    auto* ok = new QPushButton(u"OK"_s, this);
    ok->setObjectName(u"cmdOK"_s);
    ok->setDefault(true);
    layout->setRowMinimumHeight(3, 12);
    layout->addWidget(ok, 4, 1, Qt::AlignRight);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
}

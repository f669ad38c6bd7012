#include "platform/widgets/UpDown.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

UpDown::UpDown(int leastValue, int mostValue, QWidget* parent)
    : QWidget(parent), least(leastValue), most(mostValue), value(leastValue) {
    constexpr int repeatMs = 40;
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const auto& [arrow, step, caption] :
         {std::tuple(Qt::UpArrow, 1, u"増やす"_s), std::tuple(Qt::DownArrow, -1, u"減らす"_s)}) {
        auto* button = new QToolButton;
        button->setArrowType(arrow);
        button->setAccessibleName(caption);
        button->setAutoRepeat(true);
        button->setAutoRepeatInterval(repeatMs);
        button->setFocusPolicy(Qt::NoFocus);
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
        connect(button, &QToolButton::clicked, this, [this, step = step] { SetValue(value + step); });
        layout->addWidget(button);
    }
}

void UpDown::SetValue(int wanted) {
    wanted = std::clamp(wanted, least, most);
    if (std::exchange(value, wanted) != wanted)
        emit Changed();
}

void UpDown::ServeKeysOf(QLineEdit& box) {
    box.installEventFilter(this);
}

bool UpDown::eventFilter(QObject*, QEvent* event) {
    constexpr int page = 10;
    if (event->type() != QEvent::KeyPress)
        return false;
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
        SetValue(value + 1);
        return true;
    case Qt::Key_Down:
        SetValue(value - 1);
        return true;
    case Qt::Key_PageUp:
        SetValue(value + page);
        return true;
    case Qt::Key_PageDown:
        SetValue(value - page);
        return true;
    default:
        return false;
    }
}

#include "platform/widgets/FormBinding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>

namespace FormSupport {

void Put(QCheckBox* box, bool value) {
    box->setChecked(value);
}

void Take(const QCheckBox* box, bool& value) {
    value = box->isChecked();
}

void Put(const LineNumber& line, int value) {
    line.Combo->setCurrentIndex(value - line.First);
}

void Take(const LineNumber& line, int& value) {
    value = line.Combo->currentIndex() + line.First;
}

void Put(const OptionGroup& group, int value) {
    if (value < 0 || value >= int(group.Options.size()))
        return;
    group.Options[std::size_t(value)]->setChecked(true);
    // Left to itself the Tab key would first come to an option that isn't chosen.
    for (QRadioButton* option : group.Options)
        option->setFocusPolicy(option->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
}

void Take(const OptionGroup& group, int& value) {
    const auto chosen =
        std::ranges::find_if(group.Options, [](const QRadioButton* option) { return option->isChecked(); });
    if (chosen != group.Options.end())
        value = int(chosen - group.Options.begin());
}

void Put(QLineEdit* box, const QString& value) {
    box->setText(value);
}

void Take(const QLineEdit* box, QString& value) {
    value = box->text();
}

void Put(ColorButton* button, ColorRef value) {
    button->SetColor(value);
}

void Take(const ColorButton* button, ColorRef& value) {
    value = button->Color();
}

QString TextOf(const QLineEdit* box) {
    return box->text();
}

void Put(const SliderSteps& slider, int value) {
    slider.Slider->setValue(value / slider.Step);
}

void Take(const SliderSteps& slider, int& value) {
    value = slider.Slider->value() * slider.Step;
}

} // namespace FormSupport

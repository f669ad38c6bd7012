// Rows that tie the controls of a form to the fields of a record: they fill the form, read it back, and can be tried
// out without a dialog. What a control does when the user changes it is for the form.
//   FormSupport::Rows<Settings> rows{Bind(chkGrid, &Settings::Grid),
//                                    Bind(cmbScale, &Settings::Vector, &VectorSettings::Fiducial)};
#pragma once

#include "platform/widgets/ColorButton.h"

#include <limits>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;
class QSlider;

namespace FormSupport {

/// A text box for a value that isn't a text. What `Read` can't make a value of leaves the field as it is; what it can
/// is held within `Least` and `Most`.
template<class Value>
struct Edit {
    QLineEdit* Box;
    std::function<QString(Value)> Show;
    std::function<std::optional<Value>(const QString&)> Read;
    Value Least = std::numeric_limits<Value>::lowest();
    Value Most = std::numeric_limits<Value>::max();
};

/// Options of which one is chosen; the field is its index.
struct OptionGroup {
    std::span<QRadioButton* const> Options;
};

/// A combo whose first line stands for the number `First`; the field is the line's number.
struct LineNumber {
    QComboBox* Combo;
    int First = 0;
};

/// A slider whose positions stand for so much each; a value between two of them is shown as the lower one.
struct SliderSteps {
    QSlider* Slider;
    int Step = 1;
};

// How each kind of control shows a value and gives it back. A combo without a chosen line gives -1; a group of which
// nothing is chosen leaves the field as it is.
void Put(QCheckBox* box, bool value);
void Take(const QCheckBox* box, bool& value);
void Put(const LineNumber& line, int value);
void Take(const LineNumber& line, int& value);
void Put(const OptionGroup& group, int value);
void Take(const OptionGroup& group, int& value);
void Put(QLineEdit* box, const QString& value);
void Take(const QLineEdit* box, QString& value);
void Put(ColorButton* button, ColorRef value);
void Take(const ColorButton* button, ColorRef& value);
void Put(const SliderSteps& slider, int value);
void Take(const SliderSteps& slider, int& value);
QString TextOf(const QLineEdit* box);

inline void Put(QComboBox* combo, int value) {
    Put(LineNumber{combo}, value);
}
inline void Take(QComboBox* combo, int& value) {
    Take(LineNumber{combo}, value);
}
template<class Value>
void Put(const Edit<Value>& edit, Value value) {
    Put(edit.Box, edit.Show(value));
}
template<class Value>
void Take(const Edit<Value>& edit, Value& value) {
    if (const std::optional<Value> read = edit.Read(TextOf(edit.Box)))
        value = std::clamp(*read, edit.Least, edit.Most);
}

template<class Record>
struct Row {
    std::function<void(const Record&)> Fill;
    std::function<void(Record&)> Read;
};

/// The field at the end of a path of members; an index goes into an array.
template<class Record>
auto& FieldAt(Record& record) {
    return record;
}
template<class Record, class Step, class... Rest>
auto& FieldAt(Record& record, Step step, Rest... rest) {
    if constexpr (std::is_integral_v<Step>)
        return FieldAt(record[std::size_t(step)], rest...);
    else
        return FieldAt(record.*step, rest...);
}

/// The row for `control` and the field at the end of the path, which begins with a member of the record.
template<class Control, class Record, class Member, class... Path>
Row<Record> Bind(Control control, Member Record::*first, Path... path) {
    return {[=](const Record& record) { Put(control, FieldAt(record, first, path...)); },
            [=](Record& record) { Take(control, FieldAt(record, first, path...)); }};
}

template<class Record>
class Rows : public std::vector<Row<Record>> {
public:
    using std::vector<Row<Record>>::vector;

    void Fill(const Record& record) const {
        for (const Row<Record>& row : *this)
            row.Fill(record);
    }
    void Read(Record& record) const {
        for (const Row<Record>& row : *this)
            row.Read(record);
    }
};

} // namespace FormSupport

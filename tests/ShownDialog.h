// A dialog as its user has it, and the proof that its rows carry what they stand for. No tests here.
#pragma once

#include "platform/base/Literals.h"
#include "platform/widgets/FormBinding.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTabWidget>
#include <QtTest>
#include <gtest/gtest.h>

/// Whatever a record holds must come back from the controls that were filled with it. `one` and `other` differ in every
/// field that the rows stand for and in no other, so that a row that carries nothing, the wrong field or one that
/// another row carries is seen, and so is a field without a row.
template<class Record>
void expectRoundTrip(const FormSupport::Rows<Record>& rows, const Record& one, const Record& other) {
    for (const auto& [from, into] : {std::pair(one, other), std::pair(other, one)}) {
        rows.Fill(from);
        Record all = into;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const Record before = all;
            rows[i].Read(all);
            EXPECT_FALSE(all == before) << "row " << i;
        }
        EXPECT_TRUE(all == from);
    }
}

/// A dialog as its user has it.
template<class Dialog>
struct Shown : Dialog {
    explicit Shown(auto&... arguments) : Dialog(nullptr, arguments...) {
        this->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
    }
    template<class Control>
    Control& Find(const QString& name) const {
        return *this->template findChild<Control*>(name);
    }
    void Click(const QString& name) const {
        // Near the left edge, where a check box or option has its mark.
        auto& control = Find<QWidget>(name);
        QTest::mouseClick(&control, Qt::LeftButton, {}, {8, control.height() / 2});
    }
    void Type(const QString& name, const QString& text, Qt::Key end = Qt::Key_Tab) const {
        auto& box = Find<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, end);
    }
    void Choose(const QString& combo, int index) const {
        QTest::keyClick(&Find<QComboBox>(combo), Qt::Key_Home);
        while (Find<QComboBox>(combo).currentIndex() < index)
            QTest::keyClick(&Find<QComboBox>(combo), Qt::Key_Down);
    }
    void ShowTab(int index) const { Find<QTabWidget>(u"tbTab"_s).setCurrentIndex(index); }
    /// The texts of all boxes, one after the other.
    QString Texts() const {
        QStringList texts;
        for (const auto* box : this->template findChildren<QLineEdit*>())
            texts.append(box->text());
        return texts.join(u'|');
    }
    /// Whether the dialog has closed, and with this result.
    bool HasEnded(bool result) const { return this->Result == result && !this->isVisible(); }
};

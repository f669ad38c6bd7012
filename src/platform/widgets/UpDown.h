// The pair of arrows beside a text box that steps its number up and down. It holds the number; what the box shows of it
// is its owner's business.
#pragma once

#include <QWidget>

class QLineEdit;

class UpDown : public QWidget {
    Q_OBJECT

public:
    UpDown(int least, int most, QWidget* parent = nullptr);

    int Value() const { return value; }
    /// Held between the two ends.
    void SetValue(int wanted);
    int Most() const { return most; }
    /// The keys up and down in the box step as well, with page up and page down by ten.
    void ServeKeysOf(QLineEdit& box);

signals:
    void Changed();

protected:
    bool eventFilter(QObject* box, QEvent* event) override;

private:
    int least, most, value;
};

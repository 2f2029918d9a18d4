// A line edit for one number of a file.
#pragma once

#include <QLineEdit>

namespace ui {

// Shows the shortest text that gives the same single. What nobody typed into keeps its value;
// typed text counts by its numeric prefix.
class ValueField : public QLineEdit {
    Q_OBJECT

public:
    explicit ValueField(float value, QWidget* parent = nullptr);

    void set_value(float value);
    float value() const;
    bool typed() const { return text() != shown_; }

private:
    float value_ = 0;
    QString shown_;
};

// The same for a whole number.
class CountField : public QLineEdit {
    Q_OBJECT

public:
    explicit CountField(int value, QWidget* parent = nullptr);
    int value() const;
};

// Makes a field as wide as so many digits.
void set_digits(QLineEdit& field, int digits);

} // namespace ui

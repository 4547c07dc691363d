#pragma once

#include <QLineEdit>

namespace TORNVALE {

/// What a number input accepts, and how it says so: `rule` with the title and both ends of the range in
/// place of %1, %2 and %3.
struct NumberRange {
    QString title;
    double low;
    double high;
    QString rule;
};

/// A line for one number, written with a point. A text that is no number of the range is coloured and says in
/// its tool tip what belongs there; it is never changed.
class NumberInput : public QLineEdit {
    Q_OBJECT
  public:
    NumberInput(NumberRange range, int decimals, QWidget* parent);

    /// Shows the number with the decimals of this input; value() gives it exactly until the text changes.
    void setValue(double value);
    [[nodiscard]] bool isTouched() const { return text() != shown_; }
    /// True also for a number outside the range that nobody has touched.
    [[nodiscard]] bool isGood() const;
    /// Only for a good input.
    [[nodiscard]] double value() const;
    /// What belongs here.
    [[nodiscard]] QString rule() const;

  private:
    void mark();

    NumberRange range_;
    int decimals_;
    double exact_ = 0;
    QString shown_;
};

}  // namespace TORNVALE

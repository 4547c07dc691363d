#pragma once

#include <QWidget>

class AxisBase;
class QBoxLayout;
class QLineEdit;
class QSlider;

/// What the user can do with one axis. Widgets are named after their language keys of group "Axis". The axis
/// owns the panel and outlives it.
class AxisPanel : public QWidget {
  public:
    explicit AxisPanel(AxisBase& axis);

  private:
    void addOperations(QBoxLayout& layout);
    void addVisibility(QBoxLayout& layout);
    void addInformation(QBoxLayout& layout);
    AxisBase& axis_;
};

/// Moves one axis by hand: a slider over its range, its value as text, and the way home.
class AxisManualWindow : public QWidget {
    Q_OBJECT
  public:
    explicit AxisManualWindow(AxisBase& axis);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void setUpSlider();
    void sliderMoved(int ticks);
    void textChanged(const QString& text);
    void goHome();
    AxisBase& axis_;
    QSlider* slider_;
    QLineEdit* value_;
};

/// `value` in steps of a slider, truncated and held within what a slider can count.
[[nodiscard]] int sliderTicks(double value, double step);

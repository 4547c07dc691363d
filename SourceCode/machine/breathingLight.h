#pragma once

#include <QColor>
#include <QLabel>

class QPropertyAnimation;

/// A round lamp that breathes while its spindle runs.
class breathingLight : public QLabel {
    Q_OBJECT
    Q_PROPERTY(double opacity READ opacity WRITE setOpacity)
  public:
    explicit breathingLight(QWidget* parent = nullptr);

    void showRunning();  ///< green, breathing
    void showStopped();  ///< red, still
    void showChecked();  ///< yellow, still

    [[nodiscard]] QColor color() const { return color_; }
    [[nodiscard]] bool isBreathing() const;
    [[nodiscard]] double opacity() const { return opacity_; }
    void setOpacity(double opacity);
    [[nodiscard]] const QPropertyAnimation& animation() const { return *animation_; }

    const QColor green{0, 200, 0};
    const QColor red{220, 0, 0};
    const QColor yellow{240, 200, 0};
    const QColor white{255, 255, 255};

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void showStill(const QColor& color);
    QColor color_ = red;
    double opacity_ = 1.0;
    QPropertyAnimation* animation_;
};

#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class breathingLight;

/// One spindle's state in a row: name, number, tool number, tool length, tool diameter and speed, read only,
/// then the lamp, each below its caption. The edits' object names are their language keys of group
/// "SpindleStatusWidget".
class SpindleStatusWidget : public QWidget {
    Q_OBJECT
  public:
    explicit SpindleStatusWidget(QWidget* parent = nullptr);

    void setSpindle(const QString& name, int number);
    void setTool(int number, float length_mm, float diameter_mm);

    void showRunning(double speed_rpm);
    void showStopped();  ///< also what the reset button does
    void showChecked();

    [[nodiscard]] breathingLight* lamp() const { return lamp_; }

  private:
    QLabel* addCaption(const char* key, int column);
    QLineEdit* addEdit(const char* key);
    QLineEdit* name_;
    QLineEdit* id_;
    QLineEdit* toolNo_;
    QLineEdit* toolLength_;
    QLineEdit* toolDiameter_;
    QLineEdit* rpm_;
    breathingLight* lamp_;
};

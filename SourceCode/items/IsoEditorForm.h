#pragma once

#include <QString>
#include <array>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;
class QWidget;

namespace TORNVALE {

class IsoSourceEdit;
class NumberInput;

/// The inputs of the ISO editor and their places in its window: placement, program, operation. Each widget
/// carries the language key of its label as object name, those of the two vectors with X, Y or Z behind it;
/// all are owned by the window.
struct IsoEditorForm {
    explicit IsoEditorForm(QWidget& window);

    QComboBox* mirror;  ///< data: degrees
    NumberInput* axisShift;
    QComboBox* userSystem;  ///< data: id
    std::array<NumberInput*, 3> translation;
    std::array<NumberInput*, 3> offset;
    QSlider* percentage;
    QLabel* percentageValue;
    QLineEdit* time;

    QComboBox* tool;
    NumberInput* rpm;
    QLineEdit* file;
    QPushButton* open;
    QLineEdit* annotation;
    IsoSourceEdit* source;
    QLabel* message;  ///< what is wrong; hidden when nothing is

    QPushButton* animation;
    QPushButton* accept;
    QPushButton* apply;
    QPushButton* reject;
    QPushButton* limits;

    /// nullptr when all numbers are good.
    [[nodiscard]] NumberInput* firstBadNumber() const;
    /// An empty text takes the message away.
    void say(const QString& text, bool isFault) const;

    /// Text of the group `IsoEditor`, or of an object in it.
    [[nodiscard]] static QString text(const char* key, const char* box = nullptr);
    /// An entry of the mirror box.
    [[nodiscard]] static QString angleText(int angle_deg);

  private:
    [[nodiscard]] QWidget* placementBox(QWidget& window) const;
    [[nodiscard]] QWidget* programBox(QWidget& window) const;
    [[nodiscard]] QWidget* operationBox(QWidget& window) const;
};

}  // namespace TORNVALE

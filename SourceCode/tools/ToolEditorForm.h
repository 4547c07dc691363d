#pragma once

#include <QString>
#include <array>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QWidget;
class ToolContourPicture;
class ToolSceneView;

/// The inputs of the tool editor and their places in its window. Each widget carries the language key of its
/// label as object name; all are owned by the window.
struct ToolEditorForm {
    static constexpr int kPictureWidth = 170;  ///< pixels of the picture's label
    static constexpr int kPictureHeight = 120;

    explicit ToolEditorForm(QWidget& window);

    QComboBox* spindle;
    QComboBox* toolNo;
    QComboBox* type;
    QComboBox* chainSawType;
    QComboBox* direction;
    QLineEdit* index;
    QLineEdit* diameter;
    QLineEdit* handleDiameter;
    QLineEdit* length;
    QLineEdit* bladeLength;
    QLineEdit* rpm;
    QLineEdit* annotation;
    std::array<QLineEdit*, 6> transform;
    QPlainTextEdit* contour;
    QPushButton* updateContour;
    QLabel* picture;
    QPushButton* importPicture;
    QPushButton* removePicture;
    QPushButton* accept;
    ToolContourPicture* drawing;
    ToolSceneView* view;

    /// Enables the inputs that tools of this type have.
    void enableFor(int toolType) const;

    /// Text of the group `ToolEditor`.
    [[nodiscard]] static QString text(const char* key);

  private:
    void placeAll(QWidget& window) const;
    void setTabOrder() const;
    [[nodiscard]] QWidget* valueGrid(QWidget& window) const;
    [[nodiscard]] QWidget* transformBox(QWidget& window) const;
    [[nodiscard]] QWidget* contourBox(QWidget& window) const;
    [[nodiscard]] QWidget* pictureBox(QWidget& window) const;
};

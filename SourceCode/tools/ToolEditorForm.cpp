#include "tools/ToolEditorForm.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <vector>

#include "core/LanguageReader.h"
#include "tools/ToolContourPicture.h"
#include "tools/ToolSceneView.h"
#include "tools/calc/ToolRecord.h"

namespace {

constexpr int kRowSpacing = 4;  // the whole form fits into 600 pixels

constexpr std::array<const char*, 6> kTransformKeys{"X", "Y", "Z", "Rx", "Ry", "Rz"};

template <typename Widget>
Widget* named(Widget* widget, const char* key) {
    widget->setObjectName(QString::fromLatin1(key));
    return widget;
}

QLineEdit* line(QWidget& window, const char* key) {
    return named(new QLineEdit(&window), key);  // owned by the window
}

QComboBox* box(QWidget& window, const char* key) {
    return named(new QComboBox(&window), key);  // owned by the window
}

QPushButton* button(QWidget& window, const char* key, const char* icon) {
    auto* made = new QPushButton(QIcon(QLatin1String(icon)), ToolEditorForm::text(key),
                                 &window);  // owned by the window
    made->setAutoDefault(false);
    return named(made, key);
}

}  // namespace

QString ToolEditorForm::text(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("ToolEditor"), QLatin1String(key));
}

ToolEditorForm::ToolEditorForm(QWidget& window)
    : spindle(box(window, "Spindle")),
      toolNo(box(window, "ToolNo")),
      type(box(window, "Type")),
      chainSawType(box(window, "ChainSawType")),
      direction(box(window, "Direction")),
      index(line(window, "Index")),
      diameter(line(window, "Diameter")),
      handleDiameter(line(window, "HandleDia")),
      length(line(window, "Length")),
      bladeLength(line(window, "BladeLen")),
      rpm(line(window, "Rpm")),
      annotation(line(window, "Annotation")),
      transform{},
      contour(named(new QPlainTextEdit(&window), "ContourPoint")),  // owned by the window
      updateContour(button(window, "UpdateContourButton", ":/Icon/update.png")),
      picture(named(new QLabel(&window), "Pixmap")),  // owned by the window
      importPicture(button(window, "ImortPixmapButton", ":/Icon/picture.png")),
      removePicture(button(window, "RemovePixmapButton", ":/Icon/delete.png")),
      accept(button(window, "AcceptButton", ":/Icon/accept.png")),
      drawing(new ToolContourPicture(&window)),  // owned by the window
      view(new ToolSceneView(&window)) {         // owned by the window
    for (std::size_t i = 0; i < transform.size(); ++i)
        transform[i] = line(window, kTransformKeys[i]);
    view->setVisible(ToolSceneView::canShow());
    placeAll(window);
}

void ToolEditorForm::placeAll(QWidget& window) const {
    auto* grid = new QGridLayout(&window);  // owned by the window
    auto* values = new QVBoxLayout;         // owned by the grid
    values->addWidget(valueGrid(window));
    values->addWidget(transformBox(window));
    values->addWidget(pictureBox(window));
    values->addStretch();
    grid->addLayout(values, 0, 0);
    auto* shape = new QVBoxLayout;  // owned by the grid
    shape->addWidget(contourBox(window), 1);
    auto* pictures = new QHBoxLayout;  // owned by the shape's layout
    pictures->addWidget(drawing, 2);
    pictures->addWidget(view, 3);
    shape->addLayout(pictures, 1);
    grid->addLayout(shape, 0, 1);
    grid->addWidget(accept, 1, 1, Qt::AlignRight);
    grid->setColumnStretch(1, 1);
    accept->setMinimumWidth(120);
    setTabOrder();
}

/// As the eye goes: down the left column, then the right one.
void ToolEditorForm::setTabOrder() const {
    std::vector<QWidget*> order{index,  spindle,     toolNo, rpm,          diameter,  handleDiameter,
                                length, bladeLength, type,   chainSawType, direction, annotation};
    order.insert(order.end(), transform.begin(), transform.end());
    for (QWidget* input :
         std::initializer_list<QWidget*>{importPicture, removePicture, contour, updateContour, accept})
        order.push_back(input);
    for (std::size_t i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}

QWidget* ToolEditorForm::valueGrid(QWidget& window) const {
    auto* group = new QWidget(&window);   // owned by the window
    auto* grid = new QGridLayout(group);  // owned by the group
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(kRowSpacing);
    const auto place = [&](QWidget* input, int row, int column, int columns) {
        const QByteArray key = input->objectName().toLatin1();
        auto* label = new QLabel(text(key.constData()), group);  // owned by the group
        label->setBuddy(input);
        grid->addWidget(label, row, column);
        grid->addWidget(input, row, column + 1, 1, columns);
        input->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        input->setMinimumWidth(80);
    };
    const std::array<std::array<QWidget*, 2>, 4> pairs{
        {{index, spindle}, {toolNo, rpm}, {diameter, handleDiameter}, {length, bladeLength}}};
    int row = 0;
    for (const auto& [left, right] : pairs) {
        place(left, row, 0, 1);
        place(right, row++, 2, 1);
    }
    for (QWidget* input : {static_cast<QWidget*>(type), static_cast<QWidget*>(chainSawType),
                           static_cast<QWidget*>(direction), static_cast<QWidget*>(annotation)})
        place(input, row++, 0, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return group;
}

QWidget* ToolEditorForm::transformBox(QWidget& window) const {
    auto* group = new QGroupBox(text("Transform"), &window);  // owned by the window
    auto* grid = new QGridLayout(group);                      // owned by the group
    grid->setContentsMargins(8, 4, 8, 6);
    grid->setVerticalSpacing(kRowSpacing);
    for (std::size_t i = 0; i < transform.size(); ++i) {
        const int row = static_cast<int>(i) / 3;
        const int column = 2 * (static_cast<int>(i) % 3);
        grid->addWidget(new QLabel(text(kTransformKeys[i]), group), row, column);  // owned by the group
        grid->addWidget(transform[i], row, column + 1);
    }
    return group;
}

QWidget* ToolEditorForm::contourBox(QWidget& window) const {
    auto* group = new QGroupBox(text("ContourPoint"), &window);  // owned by the window
    contour->setTabChangesFocus(true);
    auto* column = new QVBoxLayout(group);  // owned by the group
    column->addWidget(contour, 1);
    auto* row = new QHBoxLayout;  // owned by the column
    row->addWidget(updateContour);
    row->addStretch();
    column->addLayout(row);
    return group;
}

QWidget* ToolEditorForm::pictureBox(QWidget& window) const {
    auto* group = new QGroupBox(text("Pixmap"), &window);  // owned by the window
    auto* row = new QHBoxLayout(group);                    // owned by the group
    picture->setFixedSize(kPictureWidth, kPictureHeight);
    picture->setFrameShape(QFrame::StyledPanel);
    picture->setAlignment(Qt::AlignCenter);
    row->addWidget(picture);
    auto* buttons = new QVBoxLayout;  // owned by the row
    buttons->addWidget(importPicture);
    buttons->addWidget(removePicture);
    buttons->addStretch();
    row->addLayout(buttons);
    group->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    return group;
}

void ToolEditorForm::enableFor(int toolType) const {
    const bool isSaw = toolType == static_cast<int>(ToolType::ChainSaw);
    for (QLineEdit* input : {index, diameter, handleDiameter, length, bladeLength, rpm, annotation})
        input->setEnabled(!isSaw);
    for (QLineEdit* input : transform)
        input->setEnabled(!isSaw);
    spindle->setEnabled(!isSaw);
    toolNo->setEnabled(!isSaw);
    chainSawType->setEnabled(isSaw);
    contour->setEnabled(!isSaw);
    contour->setReadOnly(toolType != static_cast<int>(ToolType::UserTool));
    updateContour->setEnabled(!isSaw);
    importPicture->setEnabled(!isSaw);
    removePicture->setEnabled(!isSaw);
}

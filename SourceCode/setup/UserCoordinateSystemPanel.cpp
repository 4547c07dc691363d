#include "setup/UserCoordinateSystemPanel.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/LanguageReader.h"
#include "core/WindowKeys.h"
#include "geometry/modelNode.h"
#include "setup/userCoordinateSystem.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("UserCoordinateSystem"),
                                                     QString::fromLatin1(key));
}

QPushButton* addButton(QBoxLayout& layout, const char* key) {
    auto* button = new QPushButton(textOf(key));  // owned by the layout's widget
    button->setObjectName(QString::fromLatin1(key));
    layout.addWidget(button);
    return button;
}

}  // namespace

UserCoordinateSystemPanel::UserCoordinateSystemPanel(userCoordinateSystem& system) : system_(system) {
    setWindowTitle(textOf("Title"));
    closeOnEscape(*this);
    auto* layout = new QVBoxLayout(this);  // owned by this widget
    addOffset(*layout);
    addWorkPieces(*layout);
    layout->addStretch();
    refreshList();
    connect(&system_, &userCoordinateSystem::workPiecesChanged, this,
            &UserCoordinateSystemPanel::refreshList);
}

void UserCoordinateSystemPanel::addOffset(QBoxLayout& layout) {
    static constexpr std::array<const char*, 3> kKeys{"X", "Y", "Z"};
    auto* form = new QFormLayout;  // owned by the layout
    layout.addLayout(form);
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
        offset_[i] = new QLineEdit(QStringLiteral("0.0"));  // owned by this widget
        offset_[i]->setObjectName(QString::fromLatin1(kKeys[i]));
        form->addRow(textOf(kKeys[i]), offset_[i]);
    }
    connect(addButton(layout, "ApplyButton"), &QPushButton::clicked, this, &UserCoordinateSystemPanel::apply);
}

void UserCoordinateSystemPanel::addWorkPieces(QBoxLayout& layout) {
    layout.addWidget(new QLabel(textOf("WorkPieceList")));  // owned by this widget
    workPieces_ = new QComboBox;                            // owned by this widget
    workPieces_->setObjectName(QStringLiteral("WorkPieceList"));
    layout.addWidget(workPieces_);
    connect(addButton(layout, "AddWorkPiece"), &QPushButton::clicked, this,
            [this] { system_.AddWorkPiece(); });
    connect(addButton(layout, "RemoveWorkPiece"), &QPushButton::clicked, this,
            [this] { system_.removeWorkPiece(workPieces_->currentText()); });
}

/// A text that is no number leaves its coordinate as it is.
void UserCoordinateSystemPanel::apply() {
    SbVec3f place = system_.translation();
    for (std::size_t i = 0; i < offset_.size(); ++i) {
        bool converted = false;
        const float value = offset_[i]->text().toFloat(&converted);
        if (converted)
            place[static_cast<int>(i)] = value;
    }
    system_.setTranslation(place);
}

void UserCoordinateSystemPanel::refreshList() {
    const QString chosen = workPieces_->currentText();
    workPieces_->clear();
    for (const UserModelNode* model : system_.userModels())
        workPieces_->addItem(QString::fromUtf8(model->getName().getString()));
    workPieces_->setCurrentText(chosen);
}

#include "setup/WorkCoordinateSystemPanel.h"

#include <QComboBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/LanguageReader.h"
#include "core/WindowKeys.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("WorkCoordinateSystem"),
                                                     QString::fromLatin1(key));
}

}  // namespace

WorkCoordinateSystemPanel::WorkCoordinateSystemPanel(WorkCoordinateSystem& zone)
    : zone_(zone), systems_(new QComboBox) {  // owned by this widget through the layout
    setWindowTitle(textOf("Title"));
    closeOnEscape(*this);
    auto* layout = new QVBoxLayout(this);  // owned by this widget
    const auto addButton = [layout](const char* key) {
        auto* button = new QPushButton(textOf(key));  // owned by this widget
        button->setObjectName(QString::fromLatin1(key));
        layout->addWidget(button);
        return button;
    };
    auto* add = addButton("AddUserCoordinateSystem");
    systems_->setObjectName(QStringLiteral("UserCoordinateSystemList"));
    layout->addWidget(systems_);
    auto* remove = addButton("RemoveUserCoordinateSystem");
    layout->addStretch();
    refreshList();
    connect(&zone_, &WorkCoordinateSystem::systemsChanged, this, &WorkCoordinateSystemPanel::refreshList);
    connect(add, &QPushButton::clicked, this, [this] { zone_.addUserCoordinateSystem(); });
    connect(remove, &QPushButton::clicked, this, [this] {
        if (systems_->currentIndex() >= 0)
            zone_.removeUserCoordinateSystem(systems_->currentData().toInt());
    });
}

void WorkCoordinateSystemPanel::refreshList() {
    const QString chosen = systems_->currentText();
    systems_->clear();
    for (const userCoordinateSystem* system : zone_.ucsList())
        systems_->addItem(system->name(), system->id());
    systems_->setCurrentText(chosen);
}

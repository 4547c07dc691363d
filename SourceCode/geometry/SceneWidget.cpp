#include "geometry/SceneWidget.h"

#include <QEvent>

#include "core/SceneName.h"

SceneWidget::SceneWidget(QWidget* parent) : QWidget(parent) {
    followParent();  // the parent's event came before this class could see it
}

SceneWidget::~SceneWidget() {
    disconnect(parentGoes_);
}

void SceneWidget::setDisplayName(const QString& name) {
    displayName_ = name;
    setName(sceneName(name));
}

bool SceneWidget::event(QEvent* event) {
    if (event->type() == QEvent::ParentChange)
        followParent();
    return QWidget::event(event);
}

void SceneWidget::followParent() {
    disconnect(parentGoes_);
    QObject* const parent = QObject::parent();
    if (parent == nullptr) {
        dropParent();
        return;
    }
    if (!isHeld_) {
        isHeld_ = true;
        ref();
    }
    // `destroyed` comes before a widget deletes its children: leaving in time keeps Coin the only owner.
    parentGoes_ = connect(parent, &QObject::destroyed, this, [this] { setParent(nullptr); });
}

void SceneWidget::dropParent() {
    if (!isHeld_)
        return;
    isHeld_ = false;
    unrefNoDelete();
    if (getRefCount() > 0)
        return;
    // Nobody else holds the object, and it is in the middle of an event of its own: go when that is over.
    ref();
    QMetaObject::invokeMethod(
        this, [this] { unref(); }, Qt::QueuedConnection);
}

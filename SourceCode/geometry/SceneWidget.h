#pragma once

#include <Inventor/nodes/SoSeparator.h>

#include <QPointer>
#include <QWidget>

/// Base of the classes that are a widget (panel, windows, signals) and a group of the scene at once.
///
/// Coin's reference count is the only owner. A Qt parent merely holds one reference: it is taken when the
/// object gets a parent and dropped when it loses it or when the parent goes, so the scene may go on using
/// the object. Create with `new` and hand the object to a scene group, a Qt parent or a reference of your
/// own; never delete it.
class SceneWidget : public QWidget, public SoSeparator {
    Q_OBJECT
  public:
    using QObject::findChild;
    using SoSeparator::setUserData;

    /// Coin keeps only letters, digits and "_" of a name: this one is kept as it was given.
    void setDisplayName(const QString& name);
    [[nodiscard]] const QString& displayName() const { return displayName_; }

  protected:
    explicit SceneWidget(QWidget* parent = nullptr);
    ~SceneWidget() override;  // only Coin's count deletes

    bool event(QEvent* event) override;

  private:
    void followParent();
    void dropParent();

    QString displayName_;
    QMetaObject::Connection parentGoes_;
    bool isHeld_ = false;  ///< the Qt parent's reference is taken
};

#include "core/WindowKeys.h"

#include <QKeyEvent>
#include <QWidget>

namespace {

/// Sees the keys that none of the window's inputs wanted.
class EscapeFilter final : public QObject {
  public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* window = qobject_cast<QWidget*>(watched);
        if (window == nullptr || !window->isWindow() || event->type() != QEvent::KeyPress ||
            static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
            return false;
        window->close();
        return true;
    }
};

}  // namespace

void closeOnEscape(QWidget& window) {
    window.installEventFilter(new EscapeFilter(&window));  // owned by the window
}

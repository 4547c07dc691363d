#include "app/Snapshot.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QTimer>
#include <iostream>

void scheduleSnapshot(QWidget& window) {
    const QString path = qEnvironmentVariable("TORNVALE_SNAPSHOT");
    if (path.isEmpty())
        return;
    static constexpr QSize kReadable(1400, 860);  // a screen without a display is smaller
    constexpr int kUntilPainted_ms = 300;
    QTimer::singleShot(kUntilPainted_ms, &window, [&window, path] {
        if (window.width() < kReadable.width()) {
            window.showNormal();
            window.resize(kReadable);
            QCoreApplication::processEvents();
        }
        const bool written = window.grab().save(path, "PNG");
        if (!written)
            std::cerr << "the picture cannot be written: " << path.toStdString() << std::endl;
        QCoreApplication::exit(written ? 0 : 1);
    });
}

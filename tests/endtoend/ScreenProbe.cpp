// What only a program on the screen can see or do for a test:
//   grab FILE            writes what the whole screen shows as a PNG
//   viewer FOLDER FILE   shows the machine of the installation in FOLDER in a view of 640 x 400 and writes
//                        what its window shows as a PNG, once the machine is drawn and stands still
//   paths FOLDER         shows paths that can be clicked: see ClickProbe
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QMainWindow>
#include <QPixmap>
#include <QScreen>
#include <QSet>
#include <QTimer>
#include <memory>

#include "ClickProbe.h"
#include "app/MachineViewer.h"
#include "machine/MotionNodeManager.h"
#include "machine/readConfig.h"

namespace {

constexpr int kPatience_ms = 90000;

QImage shown(WId window) {
    return QGuiApplication::primaryScreen()->grabWindow(window).toImage().convertToFormat(
        QImage::Format_RGB32);
}

/// More than the background and a text that waits for the first frame.
bool hasManyColours(const QImage& image) {
    constexpr int kMany = 20;
    QSet<QRgb> colours;
    for (int y = 0; y < image.height() && colours.size() <= kMany; ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return colours.size() > kMany;
}

int showMachine(const QString& folder, const QString& file) {
    if (!readMachine(folder))
        return 3;
    const MotionNodeManager machine(ConfigReader::instance().description());
    int status = 4;
    {
        QMainWindow window(nullptr, Qt::FramelessWindowHint);
        window.setWindowTitle(QStringLiteral("ViewOfMachine"));
        auto* const viewer = new MachineViewer(*machine.root(), &window);  // owned by the window
        window.setCentralWidget(viewer);
        window.resize(640, 400);
        viewer->viewAll();
        window.show();
        QElapsedTimer waited;
        waited.start();
        QImage before;
        int still = 0;  // looks that saw the same; the view is framed once more when the window has its size
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            const QImage image = shown(window.winId());
            still = image == before ? still + 1 : 0;
            constexpr int kStill = 8;
            if (viewer->hasViewer() && hasManyColours(image) && still >= kStill)
                status = image.save(file) ? 0 : 5;
            before = image;
            if (status == 0 || waited.hasExpired(kPatience_ms))
                QApplication::quit();
            if (status == 4 && waited.hasExpired(kPatience_ms))
                qWarning("viewer made: %d, machine drawn: %d, looks that saw the same: %d",
                         viewer->hasViewer(), hasManyColours(image), still);
        });
        look.start(100);
        QApplication::exec();
    }
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QLatin1String("grab") && arguments.size() == 3)
        return shown(0).save(arguments[2]) ? 0 : 5;
    if (arguments.value(1) == QLatin1String("viewer") && arguments.size() == 4)
        return showMachine(arguments[2], arguments[3]);
    if (arguments.value(1) == QLatin1String("paths") && arguments.size() == 3)
        return showPaths(arguments[2]);
    return 2;
}

#include "ClickProbe.h"

#include <Inventor/SbViewVolume.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>

#include <QApplication>
#include <QMainWindow>
#include <QTimer>
#include <iostream>

#include "../path/FakeItem.h"
#include "app/MachineScene.h"
#include "app/MachineViewer.h"
#include "core/InstallationFolder.h"
#include "core/ParaReader.h"
#include "machine/MotionNodeManager.h"
#include "machine/readConfig.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"

namespace {

constexpr float kHeight_mm = 4000;

/// Along X in the zone of the small machine.
struct Paths {
    explicit Paths(userCoordinateSystem& system) {
        for (FakeItem* item : {&curve, &other}) {
            item->chain = QStringLiteral("X->C");
            trajNode::addProgram(system, item);
        }
        curve.points = ControlPoints{{100, 0, 0}, {600, 0, 0}, {1100, 0, 0}};
    }
    FakeItem curve{TORNVALE::kCurveItem, QStringLiteral("G1 X100\nG1 X1100\n")};
    FakeItem other{TORNVALE::kIsoItem, QStringLiteral("G1 X-700\nG1 X-400\n")};
};

void lookDown(SoPerspectiveCamera& camera) {
    camera.orientation = SbRotation::identity();
    camera.position.setValue(150, 0, kHeight_mm);
    camera.focalDistance = kHeight_mm;
}

QString onScreen(const MachineViewer& viewer, const char* name, const SbVec3f& place) {
    const float aspect = static_cast<float>(viewer.width()) / static_cast<float>(viewer.height());
    SbVec3f seen;
    viewer.scene().camera()->getViewVolume(aspect).projectToScreen(place, seen);
    const QPoint point =
        viewer.mapToGlobal(QPoint(qRound(seen[0] * static_cast<float>(viewer.width())),
                                  qRound((1 - seen[1]) * static_cast<float>(viewer.height()))));
    const QString key = QLatin1String(name);
    return QStringLiteral("%1_x %2 %1_y %3 ").arg(key).arg(point.x()).arg(point.y());
}

QString state(const MachineViewer& viewer, const Paths& paths) {
    const SbVec3f place = viewer.scene().camera()->position.getValue();
    return onScreen(viewer, "curve", SbVec3f(601, 2, 3)) + onScreen(viewer, "other", SbVec3f(-549, 2, 3)) +
           onScreen(viewer, "free", SbVec3f(-549, 900, 3)) +
           QStringLiteral("shown %1 handle %2 otherShown %3 moves %4 camera %5,%6,%7")
               .arg(paths.curve.node->isShown() ? 1 : 0)
               .arg(paths.curve.node->dragger() != nullptr ? 1 : 0)
               .arg(paths.other.node->isShown() ? 1 : 0)
               .arg(paths.curve.moves.size())
               .arg(double{place[0]}, 0, 'f', 1)
               .arg(double{place[1]}, 0, 'f', 1)
               .arg(double{place[2]}, 0, 'f', 1);
}

}  // namespace

bool readMachine(const QString& folder) {
    setInstallationFolder(folder);
    ConfigReader::instance().SetConfig(
        installationPath(ParaReader().value(QStringLiteral("Config/UsedConfig")).toString()));
    return ConfigReader::instance().isValid();
}

int showPaths(const QString& folder) {
    constexpr int kLook_ms = 30;
    if (!readMachine(folder))
        return 3;
    const MotionNodeManager machine(ConfigReader::instance().description());
    const Paths paths(*machine.findWorkCoordinateSystem(QStringLiteral("G54"))->userCoordinateSystem(0));
    QMainWindow window(nullptr, Qt::FramelessWindowHint);
    window.setWindowTitle(QStringLiteral("Paths"));
    auto* const viewer = new MachineViewer(*machine.root(), &window);  // owned by the window
    window.setCentralWidget(viewer);
    window.resize(640, 400);
    lookDown(*viewer->scene().camera());
    window.show();
    QString before;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        const QString now = state(*viewer, paths);
        if (now != before && viewer->hasViewer())
            std::cout << now.toStdString() << std::endl;
        before = now;
    });
    look.start(kLook_ms);
    return QApplication::exec();
}

// What a played line costs on the first shipped machine: all axes move, and the collision pass runs. A tick
// of the playback is 2 ms.

#include <QApplication>
#include <QDir>
#include <QFile>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

#include "core/InstallationFolder.h"
#include "geometry/calc/CollisionEngine.h"
#include "machine/MotionNodeManager.h"
#include "machine/SpindleClass.h"
#include "machine/calc/MachineFile.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

namespace {

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::time_point from) {
    return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

std::vector<QString> program(int lines) {
    std::vector<QString> text;
    for (int i = 0; i < lines; ++i) {
        const double t = i * 0.002;
        text.push_back(QStringLiteral("X%1Y%2Z%3C%4A%5")
                           .arg(600 + 300 * std::sin(t), 0, 'f', 3)
                           .arg(400 + 200 * std::cos(t), 0, 'f', 3)
                           .arg(430 + 30 * std::sin(3 * t), 0, 'f', 3)
                           .arg(60 * std::sin(0.7 * t), 0, 'f', 3)
                           .arg(30 * std::cos(1.3 * t), 0, 'f', 3));
    }
    return text;
}

void report(const char* what, std::vector<double> times_ms) {
    std::sort(times_ms.begin(), times_ms.end());
    const auto at = [&times_ms](double share) {
        return times_ms[static_cast<std::size_t>(share * static_cast<double>(times_ms.size() - 1))];
    };
    std::printf("%-32s median %.4f ms, 99 %% %.4f ms, largest %.4f ms\n", what, at(0.5), at(0.99), at(1));
}

void play(const char* what, MotionNodeManager& manager, const std::vector<QString>& text) {
    std::vector<double> times;
    times.reserve(text.size());
    for (const QString& line : text) {
        const auto start = Clock::now();
        manager.executeLine(line);
        times.push_back(milliseconds(start));
    }
    report(what, std::move(times));
}

/// Which pairs the pass spends its time on, where the machine stands now.
void reportPairs(const MotionNodeManager& manager) {
    constexpr int kRounds = 50;
    constexpr double kMicroseconds = 1000.0;
    std::vector<std::pair<double, QString>> pairs;
    const QMap<QString, CollisionObjects>& groups = manager.collisionGroups();
    const auto pathOf = [](const fcl::CollisionObject<float>* object) {
        return static_cast<const QStringList*>(object->getUserData())->join(QStringLiteral("->"));
    };
    for (const auto* one : groups.value(QStringLiteral("X"))) {
        for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
            if (group.key() == QStringLiteral("X"))
                continue;
            for (const auto* other : group.value()) {
                const auto start = Clock::now();
                bool hit = false;
                for (int i = 0; i < kRounds; ++i)
                    hit = CollisionEngine::collide(*one, *other);
                pairs.emplace_back(milliseconds(start) / kRounds * kMicroseconds,
                                   pathOf(one) + QStringLiteral(" | ") + pathOf(other) +
                                       (hit ? QStringLiteral(" touch") : QString()));
            }
        }
    }
    std::sort(pairs.rbegin(), pairs.rend());
    for (std::size_t i = 0; i < std::min<std::size_t>(pairs.size(), 5); ++i)
        std::printf("  %8.2f us  %s\n", pairs[i].first, qPrintable(pairs[i].second));
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QApplication application(argc, argv);
    setInstallationFolder(QStringLiteral(TORNVALE_INSTALLATION));
    QFile file(installationPath(QStringLiteral("machineSample/TornBridge5.xml")));
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    Diagnostics diagnostics;
    const std::unique_ptr<MachineDescription> machine = readMachineFile(file.readAll(), diagnostics);
    const auto start = Clock::now();
    MotionNodeManager manager(*machine);
    std::printf("machine built in %.0f ms\n", milliseconds(start));

    const TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    for (int i = 0; i < tools.libraryRoot()->childCount(); ++i) {
        const auto* tool = dynamic_cast<ToolData*>(tools.libraryRoot()->child(i));
        SpindleNode* const spindle =
            tool == nullptr ? nullptr : manager.findSpindle(tool->record().spindleNo);
        if (spindle != nullptr)
            spindle->setTool(*tool);
    }
    int triangles = 0;
    int objects = 0;
    for (const CollisionObjects& group : manager.collisionGroups()) {
        objects += group.size();
        for (const fcl::CollisionObject<float>* object : group)
            triangles += CollisionEngine::triangleCountOf(*object);
    }
    int contacts = 0;
    QObject::connect(&manager, &MotionNodeManager::contactFound,
                     [&contacts](const QStringList& first, const QStringList& second) {
                         if (contacts++ == 0)
                             std::printf("first contact: %s, %s\n", qPrintable(first.join("->")),
                                         qPrintable(second.join("->")));
                     });
    std::printf("%d groups, %d objects, %d triangles\n", int(manager.collisionGroups().size()), objects,
                triangles);
    const std::vector<QString> text = program(20000);
    play("warm up", manager, text);
    play("five axes, collision pass", manager, text);
    std::puts("dearest pairs");
    reportPairs(manager);
    manager.switchCollision(false);
    play("five axes, no collision pass", manager, text);
    std::printf("contacts: %d\n", contacts);
    return 0;
}

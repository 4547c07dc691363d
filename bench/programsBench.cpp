// Jobs of many items, and one item of many lines, on the first shipped machine: opening, saving, memory.

#include <QApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>

#include "app/ProjectFile.h"
#include "app/calc/ProjectDocument.h"
#include "core/InstallationFolder.h"
#include "items/CodeManagerItem.h"
#include "items/IsoItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "machine/MotionNodeManager.h"
#include "machine/calc/MachineFile.h"
#include "machine/readConfig.h"
#include "nc/GCodeConversionStrategy.h"
#include "nc/UserPostProcessor.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

namespace {

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::time_point from) {
    return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

/// Resident memory of the process, MB.
double residentMemory_mb() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    constexpr double kKilobytesPerMegabyte = 1024;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / kKilobytesPerMegabyte;
    }
    return 0;
}

/// A wave of short moves in the middle of the table.
QString isoProgram(int lines, int seed) {
    QString code = QStringLiteral("G0 X%1 Y300 Z220 C0 A0\nG0 Z130\nG1 Z100 F12000\n").arg(300 + seed % 100);
    for (int i = 0; i < lines - 4; ++i)
        code += QStringLiteral("G1 X%1 Y%2\n")
                    .arg(300 + seed % 100 + 40 * std::sin(i * 0.05), 0, 'f', 3)
                    .arg(300 + 40 * std::cos(i * 0.05) + 0.0001 * i, 0, 'f', 3);
    return code + QStringLiteral("G0 Z220\n");
}

QJsonObject itemBlock(const ToolData& tool, const QString& code) {
    return {{QStringLiteral("sourceCodeString"), code}, {QStringLiteral("userCoordinateSystemId"), 0},
            {QStringLiteral("tool"), tool.toJson()},    {QStringLiteral("itemRPM"), 16000},
            {QStringLiteral("checkState"), true},       {QStringLiteral("type"), 1001}};
}

QJsonObject job(int items, int lines, const ToolData& tool) {
    QJsonArray left;
    QJsonArray right;
    for (int i = 0; i < items; ++i)
        (i % 2 == 0 ? left : right).append(itemBlock(tool, isoProgram(lines, i)));
    const QString first = QStringLiteral("G54");
    const QString second = QStringLiteral("G55");
    return {{first, QJsonObject{{first, left}}}, {second, QJsonObject{{second, right}}}};
}

/// Bytes of all texts of all items, as they are held.
double textSize_mb(const TreeWidgetManager& tree) {
    constexpr double kBytesPerMegabyte = 1024 * 1024;
    double bytes = 0;
    for (const UserTopItem* group : tree.root().groups()) {
        for (const TORNVALE::CodeManagerItem* item : group->items()) {
            for (const QString& text : {item->WorkCode(), item->LeadIn(), item->IsoCode(), item->LeadOut()})
                bytes += static_cast<double>(text.size()) * sizeof(QChar);
            if (const auto* iso = dynamic_cast<const TORNVALE::IsoItem*>(item))
                bytes += static_cast<double>(iso->iso().sourceCodeString.size()) * sizeof(QChar);
        }
    }
    return bytes / kBytesPerMegabyte;
}

void reportJob(TreeWidgetManager& tree, const ToolData& tool, int items, int lines) {
    const QJsonObject object = job(items, lines, tool);
    const double before_mb = residentMemory_mb();
    auto start = Clock::now();
    static_cast<void>(tree.Set(object, true));
    const double open_ms = milliseconds(start);
    const double memory_mb = residentMemory_mb() - before_mb;
    const double text_mb = textSize_mb(tree);
    start = Clock::now();
    ProjectDocument document;
    document.tree = tree.Get();
    const QString path = QStringLiteral("/tmp/tornvale-bench.tornvale");
    const bool isSaved = ProjectFile::write(path, writeProject(document, QStringLiteral("3.3.0.5"))) ==
                         ProjectFile::Saved::Yes;
    const double save_ms = milliseconds(start);
    QFile::remove(path);
    std::printf(
        "%4d items of %6d lines: open %8.1f ms, %6.2f ms an item; save %s %6.1f ms; memory %6.1f MB for "
        "%6.1f MB "
        "of text\n",
        items, lines, open_ms, open_ms / items, isSaved ? "" : "FAILED", save_ms, memory_mb, text_mb);
}

/// What an item of so many lines costs beside its conversion.
void reportLongItem(TreeWidgetManager& tree, const ToolData& tool, int lines) {
    const QString code = isoProgram(lines, 0);
    const QString chain =
        ConfigReader::instance().description().workCoordinateSystems.front()->kinematicChain.first();
    HandleIsoCode::GCodeConverter converter(chain);
    converter.WCSName = QStringLiteral("G54");
    ToolData copy(tool.record());
    converter.tool = &copy;
    auto start = Clock::now();
    const bool isDone = converter.doIt(code);
    const double conversion_ms = milliseconds(start);
    reportJob(tree, tool, 1, lines);
    TORNVALE::CodeManagerItem* item = tree.root().groups().first()->items().first();
    start = Clock::now();
    item->doIt();
    const double item_ms = milliseconds(start);
    std::printf("one item of %d lines: generate and refresh %.0f ms, the conversion alone %.0f ms%s\n", lines,
                item_ms, conversion_ms, isDone ? "" : " FAILED");
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    setInstallationFolder(QStringLiteral(TORNVALE_INSTALLATION));
    ConfigReader::instance().SetConfig(installationPath(QStringLiteral("machineSample/TornBridge5.xml")));
    TORNVALE::ToolsManager& tools = TORNVALE::ToolsManager::instance();
    const ToolData* tool = tools.findTool(0, tools.libraryRoot());
    if (tool == nullptr)
        return 1;
    MotionNodeManager machine(ConfigReader::instance().description());
    TreeWidgetManager tree(machine);
    reportJob(tree, *tool, 10, 200);  // warm
    constexpr int kLinesOfAnItem = 200;
    for (const int items : {125, 250, 500})
        reportJob(tree, *tool, items, kLinesOfAnItem);
    reportLongItem(tree, *tool, 100000);
    return 0;
}

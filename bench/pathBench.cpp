// What a program of a million points costs in the scene: its code read into the arrays of the path, shown by
// the node, looked at without OpenGL, clicked on, and drawn off screen.

#include <Inventor/SoOffscreenRenderer.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSwitch.h>

#include <QApplication>
#include <QTreeWidgetItem>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "app/MachineScene.h"
#include "app/OffscreenRenderer.h"
#include "core/InstallationFolder.h"
#include "core/calc/NumberText.h"
#include "core/getUniquelyIdentifies.h"
#include "machine/calc/MachineFile.h"
#include "machine/readConfig.h"
#include "nc/ProgramItem.h"
#include "nc/calc/PathArrays.h"
#include "nc/trajNode.h"

namespace {

using Clock = std::chrono::steady_clock;
const SbViewportRegion kViewport(1000, 800);

double milliseconds(Clock::time_point from) {
    return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

/// A program whose code is a closed figure that fills a room of a work piece's size.
class Program : public QTreeWidgetItem, public TORNVALE::ProgramItem {
  public:
    explicit Program(int points) {
        std::string text;
        for (int i = 0; i < points; ++i) {
            const double t = i * 0.0021;
            const double place[] = {600 + 300 * std::sin(t), 400 + 200 * std::cos(1.1 * t),
                                    430 + 90 * std::sin(0.01 * t), 60 * std::sin(0.7 * t),
                                    30 * std::cos(1.3 * t)};
            const char* letter = "XYZCA";
            text += "G1 ";
            for (const double value : place) {
                text += *letter++;
                appendFixed3(text, value);
                text += ' ';
            }
            text += "F6000\n";
        }
        code_ = QString::fromStdString(text);
    }
    [[nodiscard]] int itemType() const override { return TORNVALE::kIsoItem; }
    [[nodiscard]] const QString& itemName() const override { return name_; }
    [[nodiscard]] const QString& chainName() const override { return chain_; }
    [[nodiscard]] bool isActive() const override { return true; }
    [[nodiscard]] const ToolData* toolData() const override { return nullptr; }
    [[nodiscard]] double rpm() const override { return 0; }
    [[nodiscard]] const QString& LeadIn() const override { return none_; }
    [[nodiscard]] const QString& LeadOut() const override { return none_; }
    [[nodiscard]] const QString& IsoCode() const override { return code_; }
    [[nodiscard]] const QString& WorkCode() const override { return none_; }
    void setTrajNode(trajNode* node) override { node_ = node; }
    [[nodiscard]] trajNode* pathNode() const override { return node_; }

  private:
    QString name_ = QStringLiteral("iso0");
    QString chain_ = QStringLiteral("XYZCA");
    QString code_;
    QString none_;
    trajNode* node_ = nullptr;
};

void measureClicks(const char* what, MachineScene& scene) {
    constexpr int kClicks = 25;
    constexpr short kStep_px = 30;
    int hits = 0;
    const auto start = Clock::now();
    for (short i = 0; i < kClicks; ++i) {
        SoRayPickAction pick(kViewport);
        pick.setPoint(SbVec2s(static_cast<short>(150 + i * kStep_px), static_cast<short>(300 + i * 7)));
        pick.apply(scene.root());
        hits += pick.getPickedPoint() != nullptr ? 1 : 0;
    }
    std::printf("%-56s %8.1f ms (%d of %d hit)\n", what, milliseconds(start) / kClicks, hits, kClicks);
}

/// The first picture is the product's own way, at double size; then a window's: one context, frame by frame.
void measureFrames(MachineScene& scene) {
    QString problem;
    auto start = Clock::now();
    const QImage picture = OffscreenRenderer::render(scene, QSize(1000, 800), Qt::white, problem);
    if (picture.isNull()) {
        std::printf("no picture: %s\n", qPrintable(problem));
        return;
    }
    std::printf("%-56s %8.1f ms\n", "a picture of 1000 x 800, smooth", milliseconds(start));
    if (qEnvironmentVariableIsSet("PATH_BENCH_PICTURE"))
        picture.save(qEnvironmentVariable("PATH_BENCH_PICTURE"));
    SoOffscreenRenderer renderer(kViewport);
    for (const char* what : {"first frame, 1000 x 800", "second frame", "third frame", "fourth frame"}) {
        start = Clock::now();
        renderer.render(scene.root());
        std::printf("%-56s %8.1f ms\n", what, milliseconds(start));
    }
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int kPoints = 1'000'000;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    setInstallationFolder(QStringLiteral(TORNVALE_INSTALLATION));
    getUniquelyIdentifies::instance();
    ConfigReader::instance().SetConfig(installationPath(QStringLiteral("machineSample/TornBridge5.xml")));
    Program program(kPoints);
    std::printf("%d points, %.0f MB of code\n", kPoints, program.IsoCode().size() * 2 / 1e6);

    auto start = Clock::now();
    const PathArrays path =
        pathFromCode(ConfigReader::instance().description(), program.chainName(), program.IsoCode());
    std::printf("%-56s %8.1f ms (%zu vertices)\n", "code to arrays", milliseconds(start),
                path.vertices.size());
    start = Clock::now();
    auto* const node = new trajNode(&program);  // owned by the scene's root
    std::printf("%-56s %8.1f ms\n", "a node made of the item: code to scene", milliseconds(start));
    auto* const root = new SoSeparator;  // owned by its reference
    root->ref();
    root->addChild(node);
    start = Clock::now();
    node->UpdateNode();
    std::printf("%-56s %8.1f ms\n", "the same again, within a scene", milliseconds(start));

    start = Clock::now();
    SoGetBoundingBoxAction box(kViewport);
    box.apply(root);
    std::printf("%-56s %8.1f ms\n", "first traversal: bounding box", milliseconds(start));
    start = Clock::now();
    SoGetPrimitiveCountAction count(kViewport);
    count.apply(root);
    std::printf("%-56s %8.1f ms (%d lines)\n", "primitive count", milliseconds(start), count.getLineCount());

    MachineScene scene(*root);
    scene.camera()->viewAll(scene.root(), kViewport);  // the scene's own one fits bodies, not paths
    scene.addHeadLight();
    measureClicks("a click", scene);
    measureFrames(scene);

    auto* const group = dynamic_cast<SoSwitch*>(node->getChild(1));
    auto* const own = dynamic_cast<SoIndexedLineSet*>(group->getChild(1));
    auto* const plain = new SoIndexedLineSet;  // owned by the switch
    plain->vertexProperty = own->vertexProperty.getValue();
    plain->coordIndex = own->coordIndex;
    group->replaceChild(1, plain);
    measureClicks("a click, the library's own line set", scene);
    measureFrames(scene);
    node->forgetItem();
    root->unref();
    return 0;
}

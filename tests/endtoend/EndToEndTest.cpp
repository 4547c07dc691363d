#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTemporaryDir>
#include <QThread>
#include <functional>

#include "../app/InstallationCopy.h"
#include "VirtualScreen.h"
#include "app/ProjectFile.h"
#include "app/calc/ProjectDocument.h"
#include "support/TestSupport.h"

// The real program in front of a user who knows only windows, keys and the mouse.

namespace {

constexpr int kPatience_ms = 120000;
const char* const kProgram = "G0 X200 Y200 Z150\nG1 Z50 F3000\nG1 X600 F4000\nG1 Y500\nG1 X200\nG0 Z150\n";

/// The shipped machine and its data, with titles and locks that no other test has.
class ShippedCopy : public InstallationCopy {
  public:
    ShippedCopy() {
        const QDir source(shippedInstallation());
        QDirIterator files(source.path(), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            if (!source.relativeFilePath(file).startsWith(
                    "language/"))  // those here have titles of their own
                bring(source, file);
        }
        write("programs/Square.nc", kProgram);
        setLanguage("English");
        markMenus();
    }

    [[nodiscard]] QString log() const { return QString::fromUtf8(read("log.txt")); }

  private:
    void bring(const QDir& source, const QString& file) const {
        const QString target = path(source.relativeFilePath(file));
        QDir().mkpath(QFileInfo(target).absolutePath());
        QFile::remove(target);
        ASSERT_TRUE(QFile::copy(file, target)) << target.toStdString();
    }

    /// Keys that lead to the playback, whatever other entries the menus have.
    void markMenus() const {
        QJsonObject table = QJsonDocument::fromJson(read("language/english.json")).object();
        QJsonObject window = table["Tornvale"].toObject();
        QJsonObject menu = window["OperationMenu"].toObject();
        ASSERT_TRUE(menu.contains("Playback"));
        menu["Title"] = "&Operation";
        menu["Playback"] = "&Playback";
        window["OperationMenu"] = menu;
        table["Tornvale"] = window;
        write("language/english.json", QJsonDocument(table).toJson());
    }
};

int coloursOf(const QImage& image) {
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return colours.size();
}

/// Of the points that differ between two pictures.
int differences(const QImage& one, const QImage& other) {
    if (one.size() != other.size())
        return one.width() * one.height();
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            count += one.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
    }
    return count;
}

}  // namespace

TEST(EndToEnd, ProjectIsOpenedPlayedAndClosed) {
    const ShippedCopy copy;
    const VirtualScreen screen;
    ASSERT_FALSE(screen.display().isEmpty());
    ProjectDocument project;
    project.head.partName = QStringLiteral("door");
    ASSERT_EQ(ProjectFile::write(copy.path("FrontDoor.tornvale"), writeProject(project, "3.3.0.5")),
              ProjectFile::Saved::Yes);

    QProcess program;
    QProcessEnvironment variables = screen.environment();
    variables.insert("TORNVALE_DEMONSTRATION", "programs/Square.nc");
    const QString runtime = copy.path("tmp/runtime");
    ASSERT_TRUE(QDir().mkpath(runtime));
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    variables.insert("XDG_RUNTIME_DIR", runtime);
    program.setProcessEnvironment(variables);
    program.setWorkingDirectory(copy.path());
    program.start(copy.path("Tornvale"), {copy.path("FrontDoor.tornvale")});
    ASSERT_TRUE(program.waitForStarted(kPatience_ms));

    // The demonstration job brings the playback with it. The project's name stands in the title.
    const QString playbackTitle = copy.text("english", "MyTimer", "Title");
    ASSERT_TRUE(waitUntil([&] { return screen.window(playbackTitle) != 0; })) << copy.log().toStdString();
    const int window = screen.window("FrontDoor");
    ASSERT_NE(window, 0) << copy.log().toStdString();

    // Closed by its frame, and opened again from the menu: it comes with its play button below the mouse.
    screen.activate(screen.window(playbackTitle));
    screen.press("alt+F4");
    ASSERT_TRUE(waitUntil([&] { return screen.window(playbackTitle) == 0; }));
    screen.tell({"mousemove", "--sync", "900", "600"});
    screen.activate(window);
    screen.press("alt+o");
    screen.press("p");
    ASSERT_TRUE(waitUntil([&] { return screen.window(playbackTitle) != 0; }));
    QImage still = screen.picture();
    ASSERT_TRUE(waitUntil([&] {  // until nothing appears any more
        const QImage before = std::exchange(still, screen.picture());
        return differences(before, still) == 0;
    }));
    EXPECT_GT(coloursOf(still), 100) << "the machine is drawn";

    // Playing moves the machine; pressing the button again stops it where it is.
    constexpr int kSeen = 200;
    screen.tell({"click", "1"});
    QImage playing;
    ASSERT_TRUE(waitUntil([&] {
        playing = screen.picture();
        return differences(still, playing) > kSeen;
    }));
    ASSERT_TRUE(waitUntil([&] { return differences(playing, screen.picture()) > kSeen; })) << "it goes on";
    screen.tell({"click", "1"});
    QImage stopped = screen.picture();
    ASSERT_TRUE(waitUntil([&] {
        const QImage before = std::exchange(stopped, screen.picture());
        return differences(before, stopped) == 0;
    })) << "it stands";
    EXPECT_GT(differences(still, stopped), kSeen) << "away from home";

    screen.activate(window);
    screen.press("ctrl+q");
    ASSERT_TRUE(program.waitForFinished(kPatience_ms)) << copy.log().toStdString();
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();

    const QString log = copy.log();
    for (const auto& [group, key] : {std::pair{"Tornvale/InitialInfo", "S1"},
                                     {"Tornvale/InitialInfo", "S4"},
                                     {"MotionNodeManager/InitialChainInfo", "S8"},
                                     {"Tornvale/OpenFile", "State1"},
                                     {"Tornvale/OpenFile", "State2"}}) {
        const QString text = copy.text("english", group, key);
        ASSERT_FALSE(text.isEmpty()) << group << ' ' << key;
        EXPECT_TRUE(log.contains(text)) << group << ' ' << key << '\n' << log.toStdString();
    }
    for (const char* level : {"[WARNING]", "[CRITICAL]", "[FATAL]"})
        EXPECT_FALSE(log.contains(level)) << log.toStdString();
    EXPECT_EQ(readProject(copy.read("FrontDoor.tornvale"))->head.partName, QString("door"))
        << "nothing was saved that nobody asked for";
}

namespace {

/// The picture of the machine in a window of 640 x 400, `act` being done once the program has begun.
QImage viewOfMachine(
    const ShippedCopy& copy, const VirtualScreen& screen, const std::function<void()>& act = [] {}) {
    QProcess probe;
    probe.setProcessEnvironment(screen.environment());
    probe.start(QStringLiteral(TORNVALE_SCREEN_PROBE), {"viewer", copy.path(), copy.path("view.png")});
    EXPECT_TRUE(probe.waitForStarted(kPatience_ms));
    act();
    EXPECT_TRUE(probe.waitForFinished(kPatience_ms));
    EXPECT_EQ(probe.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(probe.exitCode(), 0) << probe.readAllStandardError().toStdString();
    return QImage(copy.path("view.png")).convertToFormat(QImage::Format_RGB32);
}

void expectMachineFillsView(const QImage& image) {
    ASSERT_EQ(image.size(), QSize(640, 400));
    EXPECT_GT(coloursOf(image), 50);
    QRect drawn;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0))
                drawn |= QRect(x, y, 1, 1);
        }
    }
    // Framed before the window had its size, and once more with it.
    const double filled = qMax(drawn.width() / 640.0, drawn.height() / 400.0);
    EXPECT_GT(filled, 0.75);
    EXPECT_LT(filled, 0.95);
}

}  // namespace

TEST(EndToEnd, ViewInARealWindow_ShowsTheMachine) {
    const ShippedCopy copy;
    const VirtualScreen screen;
    ASSERT_FALSE(screen.display().isEmpty());
    expectMachineFillsView(viewOfMachine(copy, screen));
}

// A window manager that answers late gives the drawing surface the size that it was made with.
TEST(EndToEnd, ViewInAWindowThatAppearsLate_ShowsTheMachine) {
    const ShippedCopy copy;
    const VirtualScreen screen;
    ASSERT_FALSE(screen.display().isEmpty());
    screen.holdManager(true);
    expectMachineFillsView(viewOfMachine(copy, screen, [&screen] {
        EXPECT_TRUE(waitUntil([&screen] { return screen.isMade("ViewOfMachine"); }));
        constexpr int kLate_ms = 1000;
        QThread::msleep(kLate_ms);
        screen.holdManager(false);
    }));
}

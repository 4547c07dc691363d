#include <gtest/gtest.h>

#include <QMap>
#include <QProcess>

#include "../app/InstallationCopy.h"
#include "VirtualScreen.h"

// Real clicks and drags on paths in a real window.

namespace {

class PathWindow {
  public:
    PathWindow() {
        probe_.setProcessEnvironment(screen_.environment());
        probe_.start(QStringLiteral(TORNVALE_SCREEN_PROBE), {"paths", copy_.path()});
        EXPECT_TRUE(is("shown", "1"));
        EXPECT_TRUE(waitUntil([this] { return screen_.window("Paths") != 0; }));
        screen_.activate(screen_.window("Paths"));
    }
    ~PathWindow() {
        probe_.terminate();
        probe_.waitForFinished();
    }
    PathWindow(const PathWindow&) = delete;
    PathWindow& operator=(const PathWindow&) = delete;

    QString value(const char* key) {
        probe_.waitForReadyRead(0);
        while (probe_.canReadLine()) {
            const QStringList words = QString::fromUtf8(probe_.readLine()).simplified().split(' ');
            for (int i = 0; i + 1 < words.size(); i += 2)
                state_[words[i]] = words[i + 1];
        }
        return state_.value(QLatin1String(key));
    }
    testing::AssertionResult is(const char* key, const QString& wanted) {
        if (waitUntil([&] { return value(key) == wanted; }))
            return testing::AssertionSuccess();
        testing::AssertionResult all = testing::AssertionFailure();
        for (auto pair = state_.cbegin(); pair != state_.cend(); ++pair)
            all << pair.key().toStdString() << ' ' << pair.value().toStdString() << ' ';
        return all;
    }
    void moveTo(const char* place, int dx = 0, int dy = 0) {
        const QByteArray name(place);
        screen_.tell({"mousemove", "--sync", QString::number(value(name + "_x").toInt() + dx),
                      QString::number(value(name + "_y").toInt() + dy)});
    }
    void click(const char* place, const char* button, int dx = 0) {
        moveTo(place, dx);
        screen_.tell({"click", button});
    }
    /// With the left button, in steps as a hand makes them.
    void drag(const char* place, int dx) {
        moveTo(place);
        screen_.tell({"mousedown", "1"});
        for (int step = 1; step <= 4; ++step)
            moveTo(place, dx * step / 4, step);
        screen_.tell({"mouseup", "1"});
    }
    void press(const char* key) { screen_.press(key); }

  private:
    const InstallationCopy copy_;
    const VirtualScreen screen_;
    QProcess probe_;
    QMap<QString, QString> state_;
};

}  // namespace

TEST(ClickOnAPath, WhileTheMouseMovesTheCamera) {
    PathWindow window;
    window.click("other", "3");
    EXPECT_TRUE(window.is("otherShown", "0"));
    EXPECT_EQ(window.value("shown"), "1");
    window.click("curve", "1", 5);
    EXPECT_TRUE(window.is("handle", "1"));
    const QString camera = window.value("camera");

    // The handle takes its drag, the camera every other one.
    window.drag("curve", 24);
    EXPECT_TRUE(waitUntil([&] { return window.value("moves").toInt() > 0; }));
    EXPECT_EQ(window.value("camera"), camera);
    EXPECT_EQ(window.value("handle"), "1");

    window.drag("free", 60);
    EXPECT_TRUE(waitUntil([&] { return window.value("camera") != camera; }));
    EXPECT_EQ(window.value("handle"), "1");
}

TEST(ClickOnAPath, WhilePicking) {
    PathWindow window;
    const QString camera = window.value("camera");
    window.press("Escape");
    window.click("other", "3");
    EXPECT_TRUE(window.is("otherShown", "0"));
    window.click("curve", "1", 5);
    EXPECT_TRUE(window.is("handle", "1"));
    window.drag("curve", 24);
    EXPECT_TRUE(waitUntil([&] { return window.value("moves").toInt() > 0; }));
    window.drag("free", 60);
    window.click("curve", "3", 50);
    EXPECT_TRUE(window.is("shown", "0"));
    EXPECT_EQ(window.value("handle"), "0");
    EXPECT_EQ(window.value("camera"), camera) << "no drag turns anything now";
}

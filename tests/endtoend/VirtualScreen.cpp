#include "VirtualScreen.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QThread>
#include <csignal>

namespace {

constexpr int kPatience_ms = 90000;
constexpr int kBetween_ms = 50;

void end(QProcess& process) {
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(kPatience_ms))
        process.kill();
    process.waitForFinished(kPatience_ms);
}

}  // namespace

bool waitUntil(const std::function<bool()>& isSo) {
    for (int waited_ms = 0; waited_ms < kPatience_ms; waited_ms += kBetween_ms) {
        if (isSo())
            return true;
        QThread::msleep(kBetween_ms);
    }
    return false;
}

VirtualScreen::VirtualScreen() {
    // The server picks a number that is free and tells it. Without -noreset it would start anew, and shake
    // off the window manager, each time that the last program leaves.
    server_.start(QStringLiteral("Xvfb"), {"-displayfd", "1", "-screen", "0", "1280x800x24", "+extension",
                                           "GLX", "-noreset", "-nolisten", "tcp"});
    if (!server_.waitForStarted(kPatience_ms)) {
        ADD_FAILURE() << "Xvfb: " << server_.errorString().toStdString();
        return;
    }
    while (!server_.canReadLine() && server_.waitForReadyRead(kPatience_ms)) {
    }
    const QByteArray number = server_.readLine().trimmed();
    if (number.isEmpty()) {
        ADD_FAILURE() << "Xvfb: " << server_.readAllStandardError().toStdString();
        return;
    }
    display_ = QLatin1Char(':') + QString::fromLatin1(number);
    manager_.setProcessEnvironment(environment());
    manager_.start(QStringLiteral("openbox"), {"--sm-disable"});
    EXPECT_TRUE(manager_.waitForStarted(kPatience_ms)) << "openbox: " << manager_.errorString().toStdString();
    // Until it has done something that it was asked for: while it only starts, new windows can get lost.
    EXPECT_TRUE(waitUntil([this] {
        run("xdotool", {"set_num_desktops", "2"}, true);
        return run("xdotool", {"get_num_desktops"}, true) == "2";
    })) << "openbox does not manage the screen";
}

VirtualScreen::~VirtualScreen() {
    end(manager_);
    end(server_);
}

QProcessEnvironment VirtualScreen::environment() const {
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("DISPLAY"), display_);
    variables.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    variables.remove(QStringLiteral("XAUTHORITY"));
    variables.remove(QStringLiteral("WAYLAND_DISPLAY"));
    return variables;
}

QString VirtualScreen::run(const QString& program, const QStringList& arguments, bool mayFail) const {
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(program, arguments);
    const bool isDone = process.waitForStarted(kPatience_ms) && process.waitForFinished(kPatience_ms) &&
                        process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!isDone && !mayFail)
        ADD_FAILURE() << program.toStdString() << ' ' << arguments.join(' ').toStdString() << ": "
                      << process.errorString().toStdString() << ' '
                      << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

int VirtualScreen::window(const QString& title) const {
    const QString found = run("xdotool", {"search", "--onlyvisible", "--name", title}, true);
    return found.section('\n', -1).toInt();
}

bool VirtualScreen::isMade(const QString& title) const {
    return !run("xdotool", {"search", "--name", title}, true).isEmpty();
}

QString VirtualScreen::tell(const QStringList& arguments) const {
    return run(QStringLiteral("xdotool"), arguments, false);
}

void VirtualScreen::press(const QString& key) const {
    tell({"key", "--clearmodifiers", key});
}

void VirtualScreen::click(int x, int y) const {
    tell({"mousemove", "--sync", QString::number(x), QString::number(y), "click", "1"});
}

void VirtualScreen::activate(int window) const {
    EXPECT_EQ(manager_.state(), QProcess::Running) << "openbox has ended with " << manager_.exitCode();
    tell({"windowactivate", "--sync", QString::number(window)});
}

void VirtualScreen::holdManager(bool isHeld) const {
    EXPECT_EQ(kill(static_cast<pid_t>(manager_.processId()), isHeld ? SIGSTOP : SIGCONT), 0);
}

QImage VirtualScreen::picture() const {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("screen.png"));
    run(QStringLiteral(TORNVALE_SCREEN_PROBE), {"grab", file}, false);
    return QImage(file).convertToFormat(QImage::Format_RGB32);
}

// Plays a long program in the real window and says how soon the play button stops it and how much memory it
// takes: see scripts/measure-playback.sh.
//   tornvale_playback_probe INSTALLATION_FOLDER LINES
#include <TA/Trajectory.h>
#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <iostream>
#include <thread>
#include <vector>

#include "app/Tornvale.h"
#include "core/InstallationFolder.h"
#include "core/ParaReader.h"
#include "nc/myTimer.h"

namespace {

using Clock = std::chrono::steady_clock;
using TORNVALE::myTimer;

void wait(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

int resident_MB() {
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).simplified().split(' ').value(0).toInt() / 1024;
    }
    return 0;
}

void report(const char* what) {
    std::cout << "resident " << what << ": " << resident_MB() << " MB" << std::endl;
}

/// Five axes above the tables, no two neighbouring lines alike.
QString program(int lines) {
    QString text;
    text.reserve(lines * 48);
    for (int i = 0; i < lines; ++i) {
        const double angle = i * 0.0005;
        text += QString::asprintf("X%.3f Y%.3f Z%.3f C%.3f A%.3f\n", 1500 + 600 * std::cos(angle),
                                  -600 + 200 * std::sin(angle), -50 + 20 * std::sin(7 * angle),
                                  40 * std::sin(3 * angle), 20 * std::cos(angle));
    }
    return text;
}

/// From before the mouse button goes down to after the program has reacted, ms. The tool that presses the
/// button starts within that time.
double click_ms(const QAbstractButton& button) {
    Clock::time_point reacted;
    QEventLoop loop;
    const QMetaObject::Connection connection =
        QObject::connect(&button, &QAbstractButton::clicked, &loop, [&] {
            reacted = Clock::now();
            loop.quit();
        });
    const Clock::time_point sent = Clock::now();
    std::thread hand([] { QProcess::execute(QStringLiteral("xdotool"), {"click", "1"}); });
    loop.exec();
    hand.join();
    QObject::disconnect(connection);
    return std::chrono::duration<double, std::milli>(reacted - sent).count();
}

void measureStops(const QAbstractButton& play) {
    constexpr int kStops = 30;
    const Clock::time_point start = Clock::now();
    for (int i = 0; i < kStops; ++i)
        QProcess::execute(QStringLiteral("xdotool"), {"sleep", "0"});
    std::cout << "the tool that clicks takes "
              << std::chrono::duration<double, std::milli>(Clock::now() - start).count() / kStops
              << " ms to start, part of what follows" << std::endl;
    const auto& playback = myTimer::instance();
    std::vector<double> stops_ms;
    int played = 0;
    for (int i = 0; i < kStops; ++i) {
        click_ms(play);
        const int before = myTimer::currentLine();
        wait(400 + 37 * (i % 10));
        stops_ms.push_back(click_ms(play));
        if (playback.isPlaying())
            std::cout << "still playing" << std::endl;
        played += myTimer::currentLine() - before;
    }
    std::sort(stops_ms.begin(), stops_ms.end());
    std::cout << "stop after the click: median " << stops_ms[kStops / 2] << " ms, largest " << stops_ms.back()
              << " ms of " << kStops << "; lines passed " << played << std::endl;
}

void play(const QString& text, const QAbstractButton& button, int seconds) {
    myTimer& playback = myTimer::instance();
    const Clock::time_point start = Clock::now();
    playback.SetAnimationText(text);
    wait(0);
    std::cout << "load: " << std::chrono::duration<double>(Clock::now() - start).count() << " s" << std::endl;
    report("loaded");
    click_ms(button);
    for (int second = 0; second < seconds; second += 10) {
        const std::clock_t worked = std::clock();
        wait(10000);
        std::cout << "line " << myTimer::currentLine() << ", "
                  << static_cast<double>(std::clock() - worked) / CLOCKS_PER_SEC
                  << " s of computing in 10 s, ";
        report("playing");
    }
    click_ms(button);
}

int measure(const QString& folder, int lines) {
    setInstallationFolder(folder);
    Tornvale window(installationPath(ParaReader().value(QStringLiteral("Config/UsedConfig")).toString()));
    window.resize(window.screen()->size());
    window.show();
    // The playback comes with the job, its play button under the mouse.
    QProcess::execute(QStringLiteral("xdotool"), {"mousemove", "600", "700"});
    window.loadDemonstration(QStringLiteral("jobs/Demonstration.tornvale"));
    wait(3000);
    report("with the demonstration job");
    myTimer& playback = myTimer::instance();
    const auto* const button = playback.findChild<QAbstractButton*>(QStringLiteral("PlayButton"));
    auto* const faster = playback.findChild<QAbstractButton*>(QStringLiteral("ForwardButton"));
    auto* const reset = playback.findChild<QAbstractButton*>(QStringLiteral("ResetButton"));
    playback.findChild<QAbstractButton*>(QStringLiteral("StopOnCollised"))->setChecked(false);
    const QString text = program(lines);
    report("with the text of the program");
    for (int round = 1; round <= 3; ++round) {
        std::cout << "round " << round << std::endl;
        while (playback.step() < 10)
            faster->click();
        play(text, *button, 30);
        if (round == 1)
            measureStops(*button);
        reset->click();
        wait(1000);
        report("after reset");
    }
    playback.SetAnimationText(QStringLiteral("X0\nX1\n"));
    wait(1000);
    report("with a short program again");
    playback.close();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    TA::Initialize("zh");
    const QApplication application(argc, argv);
    return measure(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]).toInt());
}

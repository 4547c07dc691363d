// The start of the program with somebody in front of the screen: the same code as the program itself, and a
// timer that writes down every modal box and answers it. Steered by environment variables:
//   TORNVALE_PROBE_RECORD  file that gets one JSON object per box and one for the window
//   TORNVALE_PROBE_ANSWER  "accept" (also when absent), "reject", or the text to choose from a list
//   TORNVALE_PROBE_UNTIL   the program runs until this file exists; absent: until its window is there
//   TORNVALE_PROBE_HOLD    no start: takes the system semaphore of this key and waits to be killed
#include <QApplication>
#include <QFile>
#include <QInputDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageBox>
#include <QSplashScreen>
#include <QSystemSemaphore>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <iostream>
#include <thread>

#include "app/Tornvale.h"
#include "core/StartUp.h"

namespace {

void record(const QJsonObject& object) {
    QFile file(qEnvironmentVariable("TORNVALE_PROBE_RECORD"));
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        file.write(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
}

QString splashText() {
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        const auto* splash = qobject_cast<const QSplashScreen*>(widget);
        if (splash != nullptr && splash->isVisible())
            return splash->message();
    }
    return {};
}

void answer(QMessageBox& box) {
    record({{"kind", "box"},
            {"title", box.windowTitle()},
            {"text", box.text()},
            {"onlyOk", box.standardButtons() == QMessageBox::Ok},
            {"splash", splashText()}});
    box.accept();
}

void answer(QInputDialog& dialog) {
    record({{"kind", "list"},
            {"title", dialog.windowTitle()},
            {"label", dialog.labelText()},
            {"items", QJsonArray::fromStringList(dialog.comboBoxItems())},
            {"current", dialog.textValue()},
            {"editable", dialog.isComboBoxEditable()},
            {"splash", splashText()}});
    const QString choice = qEnvironmentVariable("TORNVALE_PROBE_ANSWER", "accept");
    if (choice == "reject") {
        dialog.reject();
        return;
    }
    if (choice != "accept")
        dialog.setTextValue(choice);
    dialog.accept();
}

Tornvale* shownWindow() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* window = qobject_cast<Tornvale*>(widget);
        if (window != nullptr && window->isVisible())
            return window;
    }
    return nullptr;
}

void watchWindow() {
    static bool recorded = false;
    const Tornvale* window = shownWindow();
    if (window == nullptr || QThread::currentThread()->loopLevel() == 0)
        return;  // the start itself lets events pass: its end is the event loop
    if (!recorded) {
        record({{"kind", "window"}, {"title", window->windowTitle()}, {"maximized", window->isMaximized()}});
        recorded = true;
    }
    const QString until = qEnvironmentVariable("TORNVALE_PROBE_UNTIL");
    if (until.isEmpty() || QFile::exists(until))
        QCoreApplication::quit();
}

void watch() {
    QWidget* modal = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(modal))
        answer(*box);
    else if (auto* dialog = qobject_cast<QInputDialog*>(modal))
        answer(*dialog);
    else
        watchWindow();
}

void startWatching() {
    auto* timer = new QTimer(QCoreApplication::instance());  // owned by the application
    QObject::connect(timer, &QTimer::timeout, timer, &watch);
    timer->start(10);
}

[[noreturn]] void holdSemaphore(const QString& key) {
    QSystemSemaphore semaphore(key, 1, QSystemSemaphore::Open);
    std::cout << (semaphore.acquire() ? "held" : "failed") << std::endl;
    while (true)
        std::this_thread::sleep_for(std::chrono::seconds(1));
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(startWatching)

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    if (qEnvironmentVariableIsSet("TORNVALE_PROBE_HOLD"))
        holdSemaphore(qEnvironmentVariable("TORNVALE_PROBE_HOLD"));
    return startTornvale(argc, argv);
}

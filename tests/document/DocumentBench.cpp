#include "DocumentBench.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>

#include "geometry/GeometryTestSupport.h"
#include "items/CodeManagerItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "tools/ToolData.h"

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

}  // namespace

// --- dialogs ---

void CollectedDialogs::tell(Kind /*kind*/, const QString& /*title*/, const QString& text,
                            QWidget* /*parent*/) {
    told.append(text);
}

bool CollectedDialogs::ask(const QString& /*title*/, const QString& text, QWidget* /*parent*/) {
    asked.append(text);
    return answer;
}

QString CollectedDialogs::openFile(const QString& /*caption*/, const QString& /*folder*/,
                                   const QString& /*filter*/) {
    return std::exchange(openFrom, {});
}

QString CollectedDialogs::saveFile(const QString& /*caption*/, const QString& /*folder*/,
                                   const QString& /*filter*/) {
    return std::exchange(saveTo, {});
}

UserDialogs::Keep CollectedDialogs::askToSave(const QString& /*title*/, const QString& text,
                                              QWidget* /*parent*/) {
    asked.append(text);
    return keep;
}

// --- bench ---

DocumentBench::DocumentBench() : MainWindowBench("machineSample/TornBridge5.xml") {
    ship({"language/english.json", "data/UniquelyIdentifies.json", "oak.jpg",
          "UserPostProcessor/TornBridge5.xml", "Tornvale3.3.0.5.rc", "machineSample/TornBridge5.xml"});
    write("toollib.json", "{}");
    settings({});
    QString machine = QString::fromUtf8(bytes("machineSample/TornBridge5.xml"));
    machine.replace(QRegularExpression(QStringLiteral("<modelPath>[^<]+</modelPath>")),
                    QStringLiteral("<modelPath>models/Box.stl</modelPath>"));
    write("machineSample/TornBridge5.xml", machine.toUtf8());
    write("models/Box.stl", binaryStl(boxTriangles(SbVec3f(1, 1, 1))));
    readAnew();
}

QStringList DocumentBench::saveAs(const QString& name) {
    CollectedDialogs dialogs;
    dialogs.saveTo = file(name);
    trigger("SaveAs");
    return dialogs.told;
}

QStringList DocumentBench::load(const QByteArray& document) {
    write("document.tornvale", document);
    CollectedDialogs dialogs;
    static_cast<void>(window().OpenFile(file("document.tornvale")));  // what it told is what counts
    return dialogs.told;
}

QStringList DocumentBench::programs() const {
    QStringList texts;
    for (const UserTopItem* group : window().programs().root().groups()) {
        for (const TORNVALE::CodeManagerItem* item : group->items())
            texts << group->wcsName() << item->itemName() << item->chainName()
                  << (item->isActive() ? "checked" : "unchecked") << item->tool().displayText()
                  << QString::number(item->rpm()) << item->WorkCode() << item->LeadIn() << item->IsoCode()
                  << item->LeadOut();
    }
    return texts;
}

QString DocumentBench::head(const char* field) const {
    const auto* edit = window().findChild<QLineEdit*>(QLatin1String(field));
    return edit == nullptr ? QStringLiteral("no such field") : edit->text();
}

void DocumentBench::settings(const QByteArray& lines) const {
    write("data.ini",
          "[Config]\nUsedConfig=machineSample/TornBridge5.xml\n[MainInterface]\nLanguage=English\n"
          "[StatusPreProcessing]\nPostProcessor=UserPostProcessor/TornBridge5.xml\nTrajAlgorithem=2\n"
          "ToleranceBlend=0.5\nCurveSampleCount=20\n" +
              lines);
}

bool DocumentBench::waitFor(const QString& name) const {
    constexpr int kPatience_ms = 10000;
    QElapsedTimer clock;
    clock.start();
    while (!QFile::exists(file(name)) && clock.elapsed() < kPatience_ms)
        QTest::qWait(20);
    return QFile::exists(file(name));
}

QByteArray DocumentBench::golden(const QString& name) {
    return contentOf(QStringLiteral(TORNVALE_DOCUMENT_GOLDEN "/") + name);
}

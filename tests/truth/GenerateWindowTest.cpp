#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>

#include "app/WindowTestSupport.h"

// The command "generate" of the main window: the document is saved first, then its NC file is written, and
// the form shows the machining time.

namespace {

using Kind = UserDialogs::Kind;

const char* const kSmallProgram = "%\nM30\n";  // the fixed lines of the small pattern

struct Bench : WindowBench {
    Bench() {
        QDir().mkpath(file(QStringLiteral("output")));
        open();
    }
    QString machiningTime() { return window().findChild<QLineEdit*>(QStringLiteral("LeftHandTime"))->text(); }
    QByteArray bytes(const QString& name) const {
        QFile opened(file(name));
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
    }
};

}  // namespace

TEST(GenerateWindow, DocumentIsSavedFirst_ThenTheNcFileIsWritten) {
    Bench bench;
    ExpectedDialogs dialogs;
    dialogs.answerFile(bench.file(QStringLiteral("door.tornvale")));
    dialogs.expectTell(Kind::Information, QStringLiteral("Save"), QStringLiteral("The file was saved."));
    dialogs.expectTell(
        Kind::Information, QStringLiteral("Generate NC program"),
        QStringLiteral("The NC program was written.\n") + bench.file(QStringLiteral("output/S_door.nc")));
    bench.trigger("IsoCodeGenerator");
    EXPECT_TRUE(QFileInfo::exists(bench.file(QStringLiteral("door.tornvale"))));
    EXPECT_EQ(bench.bytes(QStringLiteral("output/S_door.nc")), kSmallProgram);
    EXPECT_EQ(bench.machiningTime(), QStringLiteral("0.008"));  // two lines of 4 ms
}

TEST(GenerateWindow, SaveThatIsGivenUp_WritesNothing) {
    Bench bench;
    const QString before = bench.machiningTime();
    ExpectedDialogs dialogs;
    dialogs.answerFile(QString());
    bench.trigger("IsoCodeGenerator");
    EXPECT_EQ(QDir(bench.file(QStringLiteral("output"))).entryList(QDir::Files), QStringList());
    EXPECT_EQ(bench.machiningTime(), before);
}

TEST(GenerateWindow, SaveThatFails_WritesNothing) {
    Bench bench;
    bench.write(QStringLiteral("file"), "a file");
    ExpectedDialogs dialogs;
    const QString path = bench.file(QStringLiteral("file/door.tornvale"));
    dialogs.answerFile(path);
    dialogs.expectTell(Kind::Warning, QStringLiteral("Save"),
                       QStringLiteral("The file could not be saved.\n") + path);
    bench.trigger("IsoCodeGenerator");
    EXPECT_EQ(QDir(bench.file(QStringLiteral("output"))).entryList(QDir::Files), QStringList());
}

TEST(GenerateWindow, NcFileThatCannotBeWritten_LeavesTheTimeAndTheSavedDocument) {
    Bench bench;
    QDir(bench.file(QStringLiteral("output"))).removeRecursively();
    const QString before = bench.machiningTime();
    ExpectedDialogs dialogs;
    dialogs.answerFile(bench.file(QStringLiteral("door.tornvale")));
    dialogs.expectTell(Kind::Information, QStringLiteral("Save"), QStringLiteral("The file was saved."));
    dialogs.expectTell(Kind::Warning, QStringLiteral("Generate NC program"),
                       QStringLiteral("The NC program could not be written.\n") +
                           bench.file(QStringLiteral("output/S_door.nc")));
    bench.trigger("IsoCodeGenerator");
    EXPECT_TRUE(QFileInfo::exists(bench.file(QStringLiteral("door.tornvale"))));
    EXPECT_EQ(bench.machiningTime(), before);
}

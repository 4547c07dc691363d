#include "app/RecoveryFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

#include "DocumentBench.h"
#include "app/UserInfoForm.h"
#include "items/CodeManagerItem.h"
#include "items/GenerationProgress.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"

// The copy of the unsaved job: from the edit to the next start.

namespace {

const char* const kCopy = "recovery.tornvale";
const char* const kAside = "recovery.previous.tornvale";

struct Bench : DocumentBench {
    Bench() { open(); }

    void edit() {
        UserTopItem* group = window().programs().root().group("G54");
        group->items().first()->setSelected(true);
        group->removeSelected();
        window().programs().commitEdits();
    }
    /// A start that finds the copy.
    QStringList offered(bool answer) {
        open();
        CollectedDialogs dialogs;
        dialogs.answer = answer;
        window().offerRecovery();
        asked = dialogs.asked.size();
        return dialogs.told;
    }
    int asked = 0;
};

}  // namespace

TEST(RecoveryFile, IsWrittenAMomentAfterAChange) {
    const TemporaryInstallation folder;
    int calls = 0;
    RecoveryFile recovery([&calls] { return QJsonObject{{"call", ++calls}}; });
    EXPECT_FALSE(RecoveryFile::leftBehind().has_value());
    recovery.jobChanged();
    recovery.jobChanged();
    recovery.flush();
    EXPECT_EQ(calls, 1) << "changes one after another make one copy";
    ASSERT_EQ(RecoveryFile::leftBehind(), folder.file(kCopy));
    EXPECT_EQ(QJsonDocument::fromJson(folder.read(kCopy)).object()["call"].toInt(), 1);
    recovery.flush();
    EXPECT_EQ(calls, 1) << "nothing has changed";
    recovery.remove();
    EXPECT_FALSE(RecoveryFile::leftBehind().has_value());
}

TEST(RecoveryFile, AChangeThatIsTakenBackBeforeTheCopyMakesNone) {
    const TemporaryInstallation folder;
    RecoveryFile recovery([] { return QJsonObject(); });
    recovery.jobChanged();
    recovery.remove();
    recovery.flush();
    EXPECT_FALSE(RecoveryFile::leftBehind().has_value());
}

TEST(RecoveryFile, SetAsideReplacesWhatWasKeptBefore) {
    const TemporaryInstallation folder;
    folder.write(kCopy, "first");
    RecoveryFile::setAside();
    EXPECT_EQ(folder.read(kAside), "first");
    folder.write(kCopy, "second");
    RecoveryFile::setAside();
    EXPECT_EQ(folder.read(kAside), "second");
    EXPECT_FALSE(RecoveryFile::leftBehind().has_value());
}

TEST(Recovery, AnEditIsThereAfterAKill) {
    Bench bench;
    bench.load(DocumentBench::golden("current.tornvale"));
    EXPECT_FALSE(RecoveryFile::leftBehind().has_value()) << "a job as it is on disk needs no copy";
    bench.edit();
    const QStringList edited = bench.programs();
    ASSERT_TRUE(bench.waitFor(kCopy));
    bench.discardWindow();
    ASSERT_TRUE(RecoveryFile::leftBehind().has_value());

    EXPECT_EQ(bench.offered(true), QStringList());
    EXPECT_EQ(bench.asked, 2) << "to open the copy, and about its tools";
    EXPECT_EQ(bench.programs(), edited);
    EXPECT_EQ(bench.head("PartName"), "Door");
    EXPECT_EQ(bench.window().documentPath(), "") << "it is saved under no name yet";
    {
        CollectedDialogs dialogs;
        dialogs.keep = UserDialogs::Keep::Cancel;
        EXPECT_FALSE(bench.window().close()) << "the copy is not lost on the way out";
        EXPECT_EQ(dialogs.asked.size(), 1);
    }
    EXPECT_EQ(bench.saveAs("saved.tornvale"), QStringList("The file was saved."));
    EXPECT_FALSE(RecoveryFile::leftBehind().has_value()) << "the job is safe elsewhere";
}

TEST(Recovery, TwoKillsInARowLoseNothing) {
    Bench bench;
    bench.load(DocumentBench::golden("current.tornvale"));
    bench.edit();
    const QStringList edited = bench.programs();
    ASSERT_TRUE(bench.waitFor(kCopy));
    bench.discardWindow();
    bench.offered(true);
    bench.discardWindow();
    ASSERT_TRUE(RecoveryFile::leftBehind().has_value());
    bench.offered(true);
    EXPECT_EQ(bench.programs(), edited);
}

TEST(Recovery, ATypedWordIsThereAfterAKill) {
    Bench bench;
    QTest::keyClicks(bench.window().findChild<QWidget*>("PartName"), "gate");
    ASSERT_TRUE(bench.waitFor(kCopy));
    bench.discardWindow();
    bench.offered(true);
    EXPECT_EQ(bench.head("PartName"), "gate");
}

TEST(Recovery, NoKeepsTheCopyAside) {
    Bench bench;
    bench.load(DocumentBench::golden("current.tornvale"));
    bench.edit();
    ASSERT_TRUE(bench.waitFor(kCopy));
    const QByteArray copy = bench.bytes(kCopy);
    bench.discardWindow();
    EXPECT_EQ(bench.offered(false), QStringList());
    EXPECT_EQ(bench.programs(), QStringList());
    EXPECT_FALSE(RecoveryFile::leftBehind().has_value()) << "it is not offered twice";
    EXPECT_EQ(bench.bytes(kAside), copy);
}

TEST(Recovery, GarbageIsToldAndSetAside) {
    Bench bench;
    for (const QByteArray& garbage : {QByteArray(), QByteArray("\xff\xfe"), QByteArray("[1,2]"),
                                      DocumentBench::golden("current.tornvale").left(3000)}) {
        bench.discardWindow();
        bench.write(kCopy, garbage);
        EXPECT_EQ(bench.offered(true),
                  QStringList("The file is not a JSON document in UTF-8.\n" + bench.file(kCopy)));
        EXPECT_FALSE(RecoveryFile::leftBehind().has_value());
        EXPECT_EQ(bench.bytes(kAside), garbage);
        EXPECT_EQ(bench.programs(), QStringList());
        CollectedDialogs dialogs;
        EXPECT_TRUE(bench.window().close());
        EXPECT_EQ(dialogs.asked, QStringList()) << "nothing has changed";
    }
}

TEST(Recovery, ACleanExitLeavesNone) {
    Bench bench;
    bench.load(DocumentBench::golden("current.tornvale"));
    bench.edit();
    ASSERT_TRUE(bench.waitFor(kCopy));
    CollectedDialogs dialogs;
    dialogs.keep = UserDialogs::Keep::Discard;
    EXPECT_TRUE(bench.window().close());
    EXPECT_FALSE(RecoveryFile::leftBehind().has_value());
}

TEST(Recovery, AnotherJobLeavesNone) {
    Bench bench;
    bench.load(DocumentBench::golden("current.tornvale"));
    bench.edit();
    ASSERT_TRUE(bench.waitFor(kCopy));
    bench.load(DocumentBench::golden("middle.tornvale"));
    EXPECT_FALSE(RecoveryFile::leftBehind().has_value());
}

TEST(Recovery, AJobThatIsBeingReadMakesNone) {
    Bench bench;
    bench.load(Bench::golden("current.tornvale"));
    bench.edit();  // a copy is due, of a job that is let go

    /// Waits longer than a copy does, in the middle of the job.
    class LongGeneration final : public TORNVALE::GenerationProgress {
      public:
        void begin(int /*count*/) override {}
        bool step(const QString& /*itemName*/) override {
            if (steps_++ == 1)
                QTest::qWait(2500);
            wasCopied = wasCopied || RecoveryFile::leftBehind().has_value();
            return true;
        }
        void end() override {}
        bool wasCopied = false;

      private:
        int steps_ = 0;
    } generation;
    TORNVALE::GenerationProgress* const before = TORNVALE::GenerationProgress::current();
    TORNVALE::GenerationProgress::set(&generation);
    bench.load(Bench::golden("middle.tornvale"));
    TORNVALE::GenerationProgress::set(before);
    EXPECT_FALSE(generation.wasCopied);
    EXPECT_FALSE(QFile::exists(bench.file(kCopy)));
}

TEST(Recovery, OnlyWhatIsTypedIntoTheHeadIsAnEdit) {
    const Bench bench;
    UserInfoForm form;
    int edits = 0;
    QObject::connect(&form, &UserInfoForm::edited, [&edits] { ++edits; });
    ProjectHead head;
    head.partName = QStringLiteral("door");
    head.marked = QStringLiteral("two\nlines");
    form.setHead(head);
    form.setMachiningTime(QStringLiteral("3.000"));
    form.clear();
    EXPECT_EQ(edits, 0);
    QTest::keyClicks(form.findChild<QPlainTextEdit*>(), "ab");
    EXPECT_EQ(edits, 2);
    QTest::keyClicks(form.findChild<QLineEdit*>(), "c");
    EXPECT_EQ(edits, 3);
}

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "InstallationCopy.h"
#include "core/calc/LockKeys.h"
#include "support/TestSupport.h"

// The program as a process, on an installation of its own.

namespace {

constexpr int kRefused = 255;  // -1 as a status

const QString kWindowTitle = QStringLiteral("Tornvale - 3.3.0.5");

/// Settings that name no machine.
const QByteArray kBareSettings =
    "[StatusPreProcessing]\nPostProcessor=UserPostProcessor/Small.xml\n[MainInterface]\nLanguage=English\n";

QString kindsOf(const ProgramResult& result) {
    QStringList kinds;
    for (const QJsonObject& entry : result.record)
        kinds.append(entry["kind"].toString());
    return kinds.join(' ');
}

void expectBox(const QJsonObject& entry, const QString& title, const QString& text) {
    EXPECT_EQ(entry["kind"].toString(), QString("box"));
    EXPECT_EQ(entry["title"].toString(), title);
    EXPECT_EQ(entry["text"].toString(), text);
    EXPECT_TRUE(entry["onlyOk"].toBool());
}

void expectRefusedAsSecond(const InstallationCopy& copy, const ProgramResult& result) {
    EXPECT_EQ(result.status, kRefused);
    ASSERT_EQ(kindsOf(result), QString("box"));
    expectBox(result.record[0], copy.text("english", "Main", "Title"),
              copy.text("english", "Main", "SingleInstanceGuardErrorMsg"));
    EXPECT_EQ(result.record[0]["splash"].toString(), QString()) << "the splash comes behind the guard";
}

void expectRuns(const ProgramResult& result) {
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(kindsOf(result), QString("window"))
        << (result.record.isEmpty() ? "" : result.record[0]["text"].toString().toStdString());
}

}  // namespace

TEST(StartUp, ProgramWithItsMachine_RunsAndReturnsTheLoopsStatus) {
    const InstallationCopy copy;
    const ProgramResult result = copy.probe();
    EXPECT_EQ(result.status, 0);
    ASSERT_EQ(kindsOf(result), QString("window"));
    EXPECT_EQ(result.record[0]["title"].toString(), kWindowTitle);
    EXPECT_TRUE(result.record[0]["maximized"].toBool());
    EXPECT_EQ(result.output,
              (QStringList{"set ta logger level", "call ta initialize", "ta initialize finished!", ""}));
    EXPECT_EQ(copy.setting("Config/UsedConfig"), QString("machineSample/Small.xml"));
}

TEST(StartUp, EveryLanguage_Starts) {
    const InstallationCopy copy;
    for (const char* language : {"Chinese", "Russia", "English"}) {
        copy.setLanguage(language);
        expectRuns(copy.probe());
    }
}

TEST(StartUp, SecondInstance_IsRefusedWhileTheFirstRuns) {
    const InstallationCopy copy;
    const auto owner = copy.start("Tornvale");
    ASSERT_TRUE(InstallationCopy::waitForOwner(copy.text("english", "Main", "Title")));
    expectRefusedAsSecond(copy, copy.probe());
    expectRefusedAsSecond(copy, copy.probe());
    EXPECT_EQ(owner->state(), QProcess::Running) << "the first one goes on";
    owner->kill();
    owner->waitForFinished();
}

TEST(StartUp, AnotherLanguage_IsNotRefused) {
    const InstallationCopy copy;
    const auto owner = copy.start("Tornvale");
    ASSERT_TRUE(InstallationCopy::waitForOwner(copy.text("english", "Main", "Title")));
    copy.setLanguage("Russia");
    expectRuns(copy.probe());
    copy.setLanguage("English");
    expectRefusedAsSecond(copy, copy.probe());
    owner->kill();
    owner->waitForFinished();
}

TEST(StartUp, CrashedInstance_DoesNotBlockTheNext) {
    const InstallationCopy copy;
    for (int round = 0; round < 2; ++round) {
        const auto owner = copy.start("Tornvale");
        ASSERT_TRUE(InstallationCopy::waitForOwner(copy.text("english", "Main", "Title")));
        owner->kill();
        ASSERT_TRUE(owner->waitForFinished());
        EXPECT_EQ(owner->exitStatus(), QProcess::CrashExit);
        EXPECT_FALSE(QDir(copy.path("tmp")).entryList({"qipc_sharedmemory*"}).isEmpty())
            << "the segment is left behind";
        expectRuns(copy.probe());  // at once: a look at the segment from here would clear it
    }
}

TEST(StartUp, CrashWithTheSemaphoreHeld_DoesNotHangTheNext) {
    const InstallationCopy copy;
    const QString key = lockKeys(copy.text("english", "Main", "Title")).memLockKey;
    const auto holder = copy.start("probe", {}, {"TORNVALE_PROBE_HOLD=" + key});
    ASSERT_TRUE(holder->waitForReadyRead());
    ASSERT_EQ(holder->readAllStandardOutput(), QByteArray("held\n"));
    holder->kill();
    ASSERT_TRUE(holder->waitForFinished());
    expectRuns(copy.probe());
}

TEST(StartUp, EndedInstance_MakesRoomForTheNext) {
    const InstallationCopy copy;
    expectRuns(copy.probe());
    expectRuns(copy.probe());
    EXPECT_TRUE(QDir(copy.path("tmp")).entryList({"qipc_*"}).isEmpty()) << "segment and semaphore are gone";
}

TEST(StartUp, ManyAtOnce_OneRuns) {
    const InstallationCopy copy;
    std::vector<std::unique_ptr<QProcess>> processes;
    for (int i = 0; i < 6; ++i) {
        processes.push_back(copy.start("probe", {},
                                       {QString("TORNVALE_PROBE_RECORD=") + copy.path(QString::number(i)),
                                        "TORNVALE_PROBE_UNTIL=" + copy.path("enough")}));
    }
    int refused = 0;
    for (int look = 0; look < 5000 && processes.size() > 1; ++look) {  // all but the one that runs end
        for (const auto& process : processes)
            process->waitForFinished(10);
        const auto ended = std::find_if(processes.begin(), processes.end(), [](const auto& process) {
            return process->state() == QProcess::NotRunning;
        });
        if (ended != processes.end()) {
            refused += InstallationCopy::finish(**ended).status == kRefused ? 1 : 0;
            processes.erase(ended);
        }
    }
    EXPECT_EQ(refused, 5);
    EXPECT_EQ(processes[0]->state(), QProcess::Running);
    copy.write("enough", "");
    EXPECT_EQ(InstallationCopy::finish(*processes[0]).status, 0);
}

TEST(StartUp, NoMachineInTheSettings_OffersAllButTheTemplate) {
    const InstallationCopy copy;
    copy.write("data.ini", kBareSettings);
    copy.write("machineSample/Another.xml", smallMachine());
    copy.write("machineSample/notes.txt", "no machine");
    const ProgramResult result = copy.probe({}, {"TORNVALE_PROBE_ANSWER=Small.xml"});
    EXPECT_EQ(result.status, 0);
    ASSERT_EQ(kindsOf(result), QString("list window"));
    const QJsonObject list = result.record[0];
    EXPECT_EQ(list["title"].toString(), copy.text("english", "Main", "SelectConfig"));
    EXPECT_EQ(list["label"].toString(), copy.text("english", "Main", "SelectConfig"));
    EXPECT_EQ(list["items"].toArray(), (QJsonArray{"Another.xml", "Small.xml"}));
    EXPECT_EQ(list["current"].toString(), QString("Another.xml"));
    EXPECT_FALSE(list["editable"].toBool());
    EXPECT_EQ(list["splash"].toString(), copy.text("english", "Main", "Loading"));
    EXPECT_EQ(copy.setting("Config/UsedConfig"), QString("machineSample/Small.xml"));
    expectRuns(copy.probe());
}

TEST(StartUp, MachineThatIsAFolderOrGone_OffersTheList) {
    const InstallationCopy copy;
    for (const char* machine : {"machineSample", "machineSample/Gone.xml", ""}) {
        copy.write("data.ini", kBareSettings + "[Config]\nUsedConfig=" + machine + "\n");
        EXPECT_EQ(kindsOf(copy.probe({}, {"TORNVALE_PROBE_ANSWER=Small.xml"})), QString("list window"));
    }
}

TEST(StartUp, AbsoluteMachinePath_IsTaken) {
    const InstallationCopy copy;
    const QTemporaryDir elsewhere;
    QFile(copy.path("machineSample/Small.xml")).rename(elsewhere.filePath("M.xml"));
    copy.write("data.ini",
               kBareSettings + "[Config]\nUsedConfig=" + elsewhere.filePath("M.xml").toUtf8() + "\n");
    expectRuns(copy.probe());
}

TEST(StartUp, CancelledList_EndsSilently) {
    const InstallationCopy copy;
    copy.write("data.ini", kBareSettings);
    const ProgramResult result = copy.probe({}, {"TORNVALE_PROBE_ANSWER=reject"});
    EXPECT_EQ(result.status, kRefused);
    EXPECT_EQ(kindsOf(result), QString("list"));
    EXPECT_EQ(copy.setting("Config/UsedConfig"), QString());
}

TEST(StartUp, NoMachineAtAll_EndsSilently) {
    const InstallationCopy copy;
    copy.remove("machineSample/Small.xml");
    for (int round = 0; round < 2; ++round) {  // with the template alone, then without the folder
        const ProgramResult result = copy.probe();
        EXPECT_EQ(result.status, kRefused);
        ASSERT_EQ(kindsOf(result), QString("list"));
        EXPECT_EQ(result.record[0]["items"].toArray(), QJsonArray());
        EXPECT_EQ(copy.setting("Config/UsedConfig"), QString("machineSample/Small.xml"));
        QDir(copy.path("machineSample")).removeRecursively();
    }
}

// The list is made from the executable's folder, the choice is looked up from the working directory.
TEST(StartUp, ChosenMachine_IsLookedUpFromTheWorkingDirectory) {
    const InstallationCopy copy;
    copy.write("data.ini", kBareSettings);
    const QTemporaryDir elsewhere;
    const ProgramResult result = copy.probe({}, {}, elsewhere.path());
    EXPECT_EQ(result.status, kRefused);
    ASSERT_EQ(kindsOf(result), QString("list box"));
    expectBox(result.record[1], copy.text("english", "Main", "Title"),
              copy.text("english", "Main", "ConfigFileErrorMsg"));
    EXPECT_EQ(copy.setting("Config/UsedConfig"), QString());

    QDir(elsewhere.path()).mkdir("machineSample");
    ASSERT_TRUE(
        QFile::copy(copy.path("machineSample/Small.xml"), elsewhere.filePath("machineSample/Small.xml")));
    EXPECT_EQ(kindsOf(copy.probe({}, {}, elsewhere.path())), QString("list window"));
    EXPECT_EQ(copy.setting("Config/UsedConfig"), QString("machineSample/Small.xml"));
}

TEST(StartUp, MissingSettings_AreLoggedAndTheListComesUp) {
    const InstallationCopy copy;
    copy.remove("data.ini");
    const ProgramResult result = copy.probe({}, {"TORNVALE_PROBE_ANSWER=Small.xml"});
    EXPECT_EQ(result.status, 0);
    ASSERT_EQ(kindsOf(result), QString("list box window"));
    EXPECT_TRUE(result.record[1]["text"].toString().startsWith("Not defined user post processor"))
        << result.record[1]["text"].toString().toStdString();
    EXPECT_EQ(result.record[0]["title"].toString(), QString()) << "no language is chosen either";
    EXPECT_EQ(copy.setting("Config/UsedConfig"), QString("machineSample/Small.xml"));
    const QString log = QString::fromUtf8(copy.read("log.txt"));
    EXPECT_TRUE(log.contains(QRegularExpression("\\[WARNING\\] .*data\\.ini"))) << log.toStdString();
    EXPECT_TRUE(log.contains("[DEBUG]"));
    EXPECT_TRUE(log.contains("Read Translation File Failed.TranslationFilePath:Chinese"));
}

TEST(StartUp, EmptyTitle_StillGuards) {
    const InstallationCopy copy;
    copy.setLanguage("");
    const auto owner = copy.start("Tornvale");
    ASSERT_TRUE(InstallationCopy::waitForOwner(QString()));
    const ProgramResult second = copy.probe();
    EXPECT_EQ(second.status, kRefused);
    ASSERT_EQ(kindsOf(second), QString("box"));
    expectBox(second.record[0], QString(), QString());
    owner->kill();
    owner->waitForFinished();
}

TEST(StartUp, BrokenLanguageFile_StillRuns) {
    const InstallationCopy copy;
    copy.write("language/english.json", "{\"Main\": ");
    expectRuns(copy.probe());
    EXPECT_TRUE(copy.read("log.txt").contains("Parse Translation File Failed:"));
}

TEST(StartUp, SplashPicture_MayBeMissingOrBroken) {
    const InstallationCopy copy;
    expectRuns(copy.probe());
    copy.write("LogoInfo.jpg", "this is no picture");
    expectRuns(copy.probe());
    QImage picture(64, 32, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    ASSERT_TRUE(picture.save(copy.path("LogoInfo.jpg")));
    expectRuns(copy.probe());
}

TEST(StartUp, LogThatCannotBeWritten_LosesMessagesOnly) {
    const InstallationCopy copy;
    QDir().mkpath(copy.path("log.txt"));
    expectRuns(copy.probe());
}

TEST(StartUp, ProjectArgument_IsOpened) {
    const InstallationCopy copy;
    const QTemporaryDir work;
    for (const char* name : {"Job.tornvale", "JOB2.TORNVALE"}) {
        QFile file(work.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(R"({"version":"3.3.0.5","StandardCorvane_4S":{"partName":"door"}})");
    }
    for (const QString& argument :
         {work.filePath("Job.tornvale"), QString("Job.tornvale"), QString("JOB2.TORNVALE")}) {
        const ProgramResult result = copy.probe({argument, "ignored"}, {}, work.path());
        EXPECT_EQ(result.status, 0);
        ASSERT_EQ(kindsOf(result), QString("window"));
        EXPECT_EQ(result.record[0]["title"].toString(),
                  "Tornvale - " + QFileInfo(argument).completeBaseName());
    }
}

TEST(StartUp, ProjectArgumentThatIsNoProject_IsTold) {
    const InstallationCopy copy;
    copy.write("Job.tornvale", "this is no JSON");
    const ProgramResult result = copy.probe({"Job.tornvale"});
    ASSERT_EQ(kindsOf(result), QString("box window"));
    expectBox(result.record[0], copy.text("english", "Tornvale/OpenFile", "Title"),
              copy.text("english", "Tornvale/OpenFile", "EncodingErrorMsg") + "\nJob.tornvale");
}

TEST(StartUp, MissingModel_EndsWithItsName) {
    const InstallationCopy copy;
    copy.remove("models/Box.stl");
    const ProgramResult result = copy.probe();
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(QString::fromUtf8(copy.read("log.txt")).contains("[FATAL]"));
    EXPECT_TRUE(QString::fromUtf8(copy.read("log.txt")).contains("Name:X"));
}

TEST(StartUp, MissingVersionFile_IsTold) {
    const InstallationCopy copy;
    copy.remove("Tornvale3.3.0.5.rc");
    const ProgramResult result = copy.probe();
    ASSERT_EQ(kindsOf(result), QString("box window"));
    expectBox(result.record[0], QString::fromUtf8("错误"),
              QString::fromUtf8("获取软件版本文件错误:Tornvale.rc"));
}

TEST(StartUp, OtherArguments_AreIgnored) {
    const InstallationCopy copy;
    copy.write("notes.txt", "");
    copy.write("tornvale", "");
    copy.write("job.tornvale.bak", "");
    QDir().mkpath(copy.path("folder.tornvale"));
    for (const char* argument :
         {"missing.tornvale", "notes.txt", "tornvale", "job.tornvale.bak", "folder.tornvale", ""})
        expectRuns(copy.probe({argument}));
}

TEST(StartUp, BrokenMachine_IsToldAndEndsWithStatus1) {
    const InstallationCopy copy;
    for (const QByteArray& machine : {QByteArray("this is no XML"), QByteArray(""), QByteArray("<root/>")}) {
        copy.write("machineSample/Small.xml", machine);
        const ProgramResult result = copy.probe();
        EXPECT_EQ(result.status, 1);
        ASSERT_EQ(kindsOf(result), QString("box"));
        expectBox(result.record[0], "Fatal", copy.text("english", "Tornvale", "ConfigFileErrorMsg"));
    }
    // An exit in the middle of the start leaves nothing in the way of the next one.
    copy.write("machineSample/Small.xml", smallMachine());
    expectRuns(copy.probe());
}

TEST(StartUp, FatalMessage_IsLoggedAndEndsWithStatus1) {
    const InstallationCopy copy;
    const auto process = copy.start("Tornvale", {}, {"QT_QPA_PLATFORM=noSuchScreen"});
    const ProgramResult result = InstallationCopy::finish(*process);
    EXPECT_EQ(result.status, 1);
    const QStringList lines = QString::fromUtf8(copy.read("log.txt")).split('\n', Qt::SkipEmptyParts);
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const QString& line) {
        return line.contains("] [FATAL] [") && line.contains("no Qt platform plugin could be initialized");
    })) << lines.join('\n').toStdString();
}

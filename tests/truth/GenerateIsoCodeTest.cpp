#include "items/GenerateIsoCode.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTreeWidgetItem>
#include <csignal>

#include "core/ParaReader.h"
#include "core/WholeFile.h"
#include "items/IsoItem.h"
#include "items/TreeWidgetManager.h"
#include "items/UserTopItem.h"
#include "items/UserTopItemManager.h"
#include "machine/readConfig.h"
#include "nc/UserPostProcessor.h"
#include "programs/ProgramBench.h"
#include "tools/ToolData.h"

// The NC file of a document, written from the program tree: what is written, and what keeps it from being
// written. An NC file that is there already stays whole then.

namespace {

using Kind = UserDialogs::Kind;
using TORNVALE::UserPostProcessor;

const QByteArray kOldProgram = "%\nM2\n";

/// Two patterns: "left" with the slot of G54, "both" with G54 and G55.
QByteArray postProcessor(const QByteArray& attributes = {}, const QByteArray& root = {}) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root " + root +
           "><Regulation RapidMovement=\"G1\" UserHeaderTail=\"true\" MultiChain=\"0\" OutputDir=\"nc\" " +
           attributes +
           "/><PrePostActions/>"
           "<Configulation Name=\"left\" Prefix=\"L_\" Suffix=\".nc\"><Line>;\xE5\xB7\xA6</Line>"
           "<Coordinate>G54</Coordinate><Line>M2</Line></Configulation>"
           "<Configulation Name=\"both\" Prefix=\"L_\" Suffix=\".nc\"><Line>%</Line>"
           "<Coordinate>G54</Coordinate><Coordinate>G55</Coordinate></Configulation>"
           "<Configulation Name=\"fixed\" Prefix=\"L_\" Suffix=\".nc\"><Line>G90</Line><Line>M2</Line>"
           "</Configulation><Configulation Name=\"empty\" Prefix=\"L_\" Suffix=\".nc\"/></root>";
}

class GenerateIsoCode : public ::testing::Test {
  protected:
    GenerateIsoCode() {
        QDir(folder().file(QStringLiteral("nc"))).removeRecursively();
        QFile::remove(folder().file(QStringLiteral("nc")));
        use(postProcessor());
        choose("left");
        folder().write(QStringLiteral("nc/L_door.nc"), kOldProgram);
    }
    ~GenerateIsoCode() override {
        ParaReader().setValue(QStringLiteral("StatusPreProcessing/PostProcessor"),
                              QStringLiteral("post.xml"));
    }

    static TemporaryInstallation& folder() { return ProgramBench::installation(); }
    static void use(const QByteArray& xml, const char* file = "post.xml") {
        const LogCapture quiet;
        folder().write(QStringLiteral("post.xml"), xml);
        ParaReader().setValue(QStringLiteral("StatusPreProcessing/PostProcessor"), QLatin1String(file));
        UserPostProcessor::instance().reload();
    }
    static void choose(const char* pattern) {
        EXPECT_TRUE(UserPostProcessor::instance().choosePattern(QLatin1String(pattern))) << pattern;
    }
    static QString outputFile() { return folder().file(QStringLiteral("nc/L_door.nc")); }

    /// What the user reads; the machining time comes back.
    std::optional<QString> generate(Kind kind, const QString& title, const QString& text) {
        ExpectedDialogs dialogs;
        dialogs.expectTell(kind, title, text);
        return bench.tree().GenerateIsoCode(QStringLiteral("/jobs/door.tornvale"));
    }
    std::optional<QString> generateWell() {
        return generate(Kind::Information, QStringLiteral("Generate NC program"),
                        QStringLiteral("The NC program was written.\n") + outputFile());
    }
    void expectNotWritten() {
        EXPECT_EQ(generate(Kind::Warning, QStringLiteral("Generate NC program"),
                           QStringLiteral("The NC program could not be written.\n") + outputFile()),
                  std::nullopt);
    }
    void expectNoPattern(const char* what) {
        EXPECT_EQ(generate(Kind::Critical, QStringLiteral("Error"),
                           QStringLiteral("Not defined user post processor.\n"
                                          "check:data.ini->StatusPreProcessing->PostProcessor existed?")),
                  std::nullopt)
            << what;
        EXPECT_EQ(folder().read(QStringLiteral("nc/L_door.nc")), kOldProgram) << what;
    }
    static void expectOldFile() {
        EXPECT_EQ(folder().read(QStringLiteral("nc/L_door.nc")), kOldProgram);
        EXPECT_EQ(QDir(folder().file(QStringLiteral("nc"))).entryList(QDir::Files | QDir::Hidden),
                  QStringList{QStringLiteral("L_door.nc")});
    }

    ProgramBench bench;
};

}  // namespace

// --- what is written ---

TEST_F(GenerateIsoCode, NcFile_IsWrittenWholeAndItsTimeComesBack) {
    bench.add(bench.left());
    const TORNVALE::NcProgram program = TORNVALE::makeNcProgram(bench.tree().root());
    const std::optional<QString> seconds = generateWell();
    const QByteArray written = folder().read(QStringLiteral("nc/L_door.nc"));
    EXPECT_EQ(QString::fromUtf8(written), program.text);
    EXPECT_TRUE(written.startsWith(";\xE5\xB7\xA6\n")) << "UTF-8";
    EXPECT_TRUE(written.endsWith("M2\n"));
    EXPECT_GT(written.count('\n'), 100);
    ASSERT_EQ(ConfigReader::instance().description().interpolationParameters.interpolationTime, 4U);
    EXPECT_EQ(seconds.value_or(QString()), QString::number(written.count('\n') * 0.004, 'f', 3));
    EXPECT_EQ(QDir(folder().file(QStringLiteral("nc"))).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(GenerateIsoCode, SpindleThatTheMachineLacks_IsNamedAndNothingIsJoined) {
    ToolData foreign(*ProgramBench::tool(0));
    foreign.record().spindleNo = 9;
    TORNVALE::IsoItem& item = bench.add(bench.left());
    item.SetTool(&foreign, false);
    const QString text = QStringLiteral(
        "userCodeItem0 of G54 needs the spindle T9, which this machine does not have. Choose another tool "
        "for it.");
    EXPECT_EQ(generate(Kind::Warning, QStringLiteral("Generate NC program"), text), std::nullopt);
    expectOldFile();
    for (const bool whole : {false, true}) {
        ExpectedDialogs dialogs;
        dialogs.expectTell(Kind::Warning, QStringLiteral("Programs"), text);
        if (whole)
            bench.tree().root().play();
        else
            bench.left().play();
    }
    item.setChecked(false);  // then it takes no part
    EXPECT_TRUE(generateWell().has_value());
}

TEST_F(GenerateIsoCode, GroupsStand_InTheOrderOfTheSlots) {
    bench.add(bench.right());
    bench.add(bench.left());
    choose("both");
    ASSERT_TRUE(generateWell().has_value());
    const QByteArray text = folder().read(QStringLiteral("nc/L_door.nc"));
    EXPECT_GT(text.indexOf(" Y"), 0);  // the tables' axes tell the groups apart
    EXPECT_LT(text.lastIndexOf(" Y"), text.indexOf(" V"));
}

TEST_F(GenerateIsoCode, SlotWithoutAGroup_IsSkipped) {
    bench.add(bench.left());
    use(postProcessor().replace("<Coordinate>G54", "<Coordinate>G59</Coordinate><Coordinate>G54"));
    choose("left");
    const LogCapture log;
    EXPECT_TRUE(generateWell().has_value());
    EXPECT_TRUE(log.contains(QStringLiteral("G59")));
}

TEST_F(GenerateIsoCode, NothingChecked_WritesTheFixedLines) {
    bench.add(bench.left()).setChecked(false);
    EXPECT_EQ(generateWell().value_or(QString()), QStringLiteral("0.008"));
    EXPECT_EQ(folder().read(QStringLiteral("nc/L_door.nc")), ";\xE5\xB7\xA6\nM2\n");
}

TEST_F(GenerateIsoCode, PatternWithoutSlots_WritesItsFixedLines) {
    bench.add(bench.left());
    choose("fixed");
    EXPECT_EQ(generateWell().value_or(QString()), QStringLiteral("0.008"));
    EXPECT_EQ(folder().read(QStringLiteral("nc/L_door.nc")), "G90\nM2\n");
}

TEST_F(GenerateIsoCode, OtherMultiChain_LeavesTheSlotsEmpty) {
    bench.add(bench.left());
    use(postProcessor().replace("MultiChain=\"0\"", "MultiChain=\"2\""));
    choose("left");
    EXPECT_EQ(generateWell().value_or(QString()), QStringLiteral("0.008"));
    EXPECT_EQ(folder().read(QStringLiteral("nc/L_door.nc")), ";\xE5\xB7\xA6\nM2\n");
}

TEST_F(GenerateIsoCode, RubbishInTheSequences_CountsAsNone) {
    bench.add(bench.left());
    ASSERT_TRUE(generateWell().has_value());
    const QByteArray plain = folder().read(QStringLiteral("nc/L_door.nc"));
    use(postProcessor("EntrySequence=\";;->x->;99999999999;1.5\" ExitSequence=\"\xE5\xB7\xA6;-&gt;\""));
    choose("left");
    ASSERT_TRUE(generateWell().has_value());
    EXPECT_EQ(folder().read(QStringLiteral("nc/L_door.nc")), plain);
}

TEST_F(GenerateIsoCode, SequencesOfAxesTheChainLacks_StandStillOnce) {
    bench.add(bench.left());
    use(postProcessor("EntrySequence=\"6;-1;77->0\" ExitSequence=\"8;9\""));
    choose("left");
    EXPECT_TRUE(generateWell().has_value());
    EXPECT_TRUE(folder().read(QStringLiteral("nc/L_door.nc")).endsWith("M2\n"));
}

// --- over the limits ---

TEST_F(GenerateIsoCode, ItemsOverTheLimit_StopTheOutput) {
    bench.add(bench.left(), ProgramBench::square(5000));
    bench.add(bench.left());
    bench.add(bench.left(), ProgramBench::square(6000));
    bench.add(bench.right(), ProgramBench::square(5000));
    choose("both");
    EXPECT_EQ(generate(Kind::Warning, QStringLiteral("Generate NC program"),
                       QStringLiteral("G54 Item:0 2 \nover limited.")),
              std::nullopt);
    expectOldFile();
}

TEST_F(GenerateIsoCode, LaterGroupOverTheLimit_StopsTheOutputToo) {
    bench.add(bench.left());
    bench.add(bench.right());
    bench.add(bench.right(), ProgramBench::square(5000));
    choose("both");
    EXPECT_EQ(generate(Kind::Warning, QStringLiteral("Generate NC program"),
                       QStringLiteral("G55 Item:1 \nover limited.")),
              std::nullopt);
    expectOldFile();
}

TEST_F(GenerateIsoCode, GroupThatThePatternDoesNotWrite_MayBeOverTheLimit) {
    bench.add(bench.left());
    bench.add(bench.right(), ProgramBench::square(5000));
    EXPECT_TRUE(generateWell().has_value());
}

TEST_F(GenerateIsoCode, UncheckedItemOverTheLimit_StopsNothing) {
    bench.add(bench.left());
    bench.add(bench.left(), ProgramBench::square(5000)).setChecked(false);
    EXPECT_TRUE(generateWell().has_value());
}

// --- a file that cannot be written ---

TEST_F(GenerateIsoCode, MissingOutputFolder_IsTold) {
    bench.add(bench.left());
    ASSERT_TRUE(QDir(folder().file(QStringLiteral("nc"))).removeRecursively());
    expectNotWritten();
    EXPECT_FALSE(QFileInfo::exists(folder().file(QStringLiteral("nc"))));
}

TEST_F(GenerateIsoCode, OutputFolderThatIsAFile_IsTold) {
    bench.add(bench.left());
    ASSERT_TRUE(QDir(folder().file(QStringLiteral("nc"))).removeRecursively());
    folder().write(QStringLiteral("nc"), "a file");
    expectNotWritten();
    EXPECT_EQ(folder().read(QStringLiteral("nc")), "a file");
}

TEST_F(GenerateIsoCode, FolderOfTheFilesName_IsTold) {
    bench.add(bench.left());
    ASSERT_TRUE(QFile::remove(outputFile()));
    ASSERT_TRUE(QDir().mkpath(outputFile()));
    expectNotWritten();
    EXPECT_TRUE(QFileInfo(outputFile()).isDir());
    EXPECT_EQ(QDir(folder().file(QStringLiteral("nc"))).entryList(QDir::Files | QDir::Hidden), QStringList());
}

// A disk that runs full: no file of this process may grow beyond 1000 bytes.
TEST_F(GenerateIsoCode, DiskThatRunsFull_LeavesTheOldFileWhole) {
    bench.add(bench.left());
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit low = before;
    low.rlim_cur = 1000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
    const bool isWritten = writeWhole(outputFile(), QByteArray("G1 X1\n").repeated(10000));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(isWritten);
    expectOldFile();
}

// --- no post-processor, no pattern ---

TEST_F(GenerateIsoCode, PostProcessorWithoutPatterns_IsToldAndWritesNothing) {
    bench.add(bench.left());
    const QStringList files = QDir::current().entryList(QDir::Files | QDir::Hidden);
    for (const char* xml : {"", "no XML", "<root", "<root/>", "<root><Regulation OutputDir=\"nc\"/></root>",
                            "<root><other><Configulation Name=\"left\"/></other></root>"}) {
        use(xml);
        expectNoPattern(xml);
    }
    use("<root/>", "none.xml");
    expectNoPattern("a missing file");
    use("<root/>", "");
    expectNoPattern("no setting");
    use("<root/>", "nc");
    expectNoPattern("a folder");
    EXPECT_EQ(QDir::current().entryList(QDir::Files | QDir::Hidden), files);
}

TEST_F(GenerateIsoCode, NoPatternChosen_IsToldAndWritesNothing) {
    bench.add(bench.left());
    use(postProcessor());
    expectNoPattern("none chosen");
    expectOldFile();
}

TEST_F(GenerateIsoCode, PatternThatWritesNothing_LeavesTheOldFileWhole) {
    bench.add(bench.left());
    choose("empty");
    expectNotWritten();
    expectOldFile();
}

#include "nc/PostProcessorConfigulation.h"

#include <gtest/gtest.h>

#include <QDir>

#include "OutputTestSupport.h"

using namespace TORNVALE;

namespace {

const char* const kFile =
    "<root><Regulation Rapid=';R' OutputDir='out' EntrySequence='3;1->2' ExitSequence='1' "
    "UserHeaderTail='true'/>"
    "<PrePostActions><Chain Name='XY'><PreAction><Item>M80</Item></PreAction></Chain><Chain Name='XY'/>"
    "</PrePostActions><Configulation Name='p' NickName='P' Image='p.png'/></root>";

/// Settings that name the file "post.xml" with this content.
struct ConfigurationFolder {
    explicit ConfigurationFolder(const QByteArray& xml) {
        installation.write("data.ini", "[StatusPreProcessing]\nPostProcessor=post.xml\n");
        installation.write("post.xml", xml);
    }
    TemporaryInstallation installation;
};

/// A bad file: defaults, warnings and no patterns.
void expectDefaults(const QByteArray& xml, const QString& warning) {
    const ConfigurationFolder folder(xml);
    const LogCapture log;
    const PostProcessorConfigulation configuration;
    EXPECT_TRUE(log.contains(warning)) << log.all().toStdString();
    EXPECT_EQ(log.count("Initial regulation failed"), 1);
    EXPECT_EQ(log.count("Initial PrePostActions failed"), 1);
    EXPECT_TRUE(configuration.root.isNull());
    EXPECT_EQ(configuration.RapidMovement, QString("G1"));
    EXPECT_EQ(configuration.AccelerationScheme, 1);
    EXPECT_TRUE(configuration.UserHeaderTail);
    EXPECT_EQ(configuration.MultiChain, 0);
    EXPECT_TRUE(configuration.prePostActions().isEmpty());
    EXPECT_TRUE(PostProcessorConfigulation::GetPatternData().isEmpty());
}

}  // namespace

TEST(PostProcessorConfigulation, File_IsReadWhole) {
    const ConfigurationFolder folder(kFile);
    const LogCapture log;
    const PostProcessorConfigulation configuration;
    EXPECT_EQ(log.count("failed"), 0) << log.all().toStdString();
    EXPECT_EQ(configuration.root.tagName(), QString("root"));
    EXPECT_EQ(configuration.Rapid, QString(";R"));
    EXPECT_EQ(configuration.entrySequences(), (AxisSequences{{3}, {1, 2}}));
    EXPECT_EQ(configuration.exitSequences(), (AxisSequences{{1}}));
    EXPECT_EQ(configuration.pattern("p").attribute("NickName"), QString("P"));
    EXPECT_TRUE(configuration.pattern("q").isNull());
    ASSERT_EQ(configuration.prePostActions().size(), 2);
    ASSERT_NE(configuration.actionsOf("XY"), nullptr);
    EXPECT_EQ(configuration.actionsOf("XY")->PreAction, QString("M80\n"));  // the first of two
    EXPECT_EQ(configuration.actionsOf("X"), nullptr);
}

TEST(PostProcessorConfigulation, RelativeOutputDir_LiesInTheInstallation) {
    const ConfigurationFolder folder(kFile);
    EXPECT_EQ(PostProcessorConfigulation().OutputDir.path(), folder.installation.file("out"));
}

TEST(PostProcessorConfigulation, AbsentOutputDir_IsTheCurrentDirectory) {
    const ConfigurationFolder folder("<root><Regulation/><PrePostActions/></root>");
    EXPECT_EQ(PostProcessorConfigulation().OutputDir.absolutePath(), QDir::currentPath());
}

TEST(PostProcessorConfigulation, AbsolutePath_IsTakenAsItStands) {
    const ConfigurationFolder folder("<root/>");
    folder.installation.write("elsewhere/other.xml", kFile);
    folder.installation.write("data.ini", "[StatusPreProcessing]\nPostProcessor=" +
                                              folder.installation.file("elsewhere/other.xml").toUtf8() +
                                              "\n");
    EXPECT_EQ(PostProcessorConfigulation().Rapid, QString(";R"));
}

TEST(PostProcessorConfigulation, MissingFile_LeavesDefaultsAndWarns) {
    const TemporaryInstallation installation;
    installation.write("data.ini", "[StatusPreProcessing]\nPostProcessor=none.xml\n");
    const LogCapture log;
    const PostProcessorConfigulation configuration;
    ASSERT_GE(log.lines().size(), 3U);
    EXPECT_EQ(log.lines()[0].type, QtWarningMsg);
    EXPECT_TRUE(log.contains("Open file failed"));
    EXPECT_TRUE(log.contains("PostProcessorConfigulation::readFile"));
    EXPECT_TRUE(log.contains("\tUserPostProcessor: " + installation.file("none.xml")));
    EXPECT_EQ(log.count("Initial regulation failed"), 1);
    EXPECT_EQ(log.count("Initial PrePostActions failed"), 1);
    EXPECT_TRUE(configuration.root.isNull());
    EXPECT_TRUE(configuration.UserHeaderTail);
}

TEST(PostProcessorConfigulation, BrokenXml_WarnsWithThePlace) {
    expectDefaults("<root>\n<Regulation></root>", "errorLine:2 errorColumn:19");
    expectDefaults("no XML at all", "errorLine:1 errorColumn:1");
    expectDefaults("", "errorLine:");
}

TEST(PostProcessorConfigulation, HostileXml_IsRefused) {
    QByteArray deep = "<root>";
    for (int i = 0; i < 5000; ++i)
        deep += "<a>";
    expectDefaults(deep, "errorLine:1");
    expectDefaults("<!DOCTYPE r [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;&a;&a;'>]><root>&b;</root>",
                   "errorLine:1");
    expectDefaults("<root><Regulation Rapid='" + QByteArray(200000, 'x') + "'/></root>", "errorLine:1");
    expectDefaults(QByteArray(5 << 20, ' '), "errorLine:0 errorColumn:0");
    expectDefaults(QByteArray("<root>\0\xff\xfe</root>", 16), "errorLine:");
}

TEST(PostProcessorConfigulation, NoRegulation_KeepsTheDefaultTrueOfUserHeaderTail) {
    const ConfigurationFolder folder("<root><PrePostActions/></root>");
    const LogCapture log;
    EXPECT_TRUE(PostProcessorConfigulation().UserHeaderTail);
    EXPECT_EQ(log.count("Initial regulation failed"), 1);
    EXPECT_EQ(log.count("Initial PrePostActions failed"), 0);
}

TEST(PostProcessorConfigulation, NoPrePostActions_WarnsAndHasNone) {
    const ConfigurationFolder folder("<root><Regulation/></root>");
    const LogCapture log;
    EXPECT_TRUE(PostProcessorConfigulation().prePostActions().isEmpty());
    EXPECT_EQ(log.count("Initial regulation failed"), 0);
    EXPECT_EQ(log.count("Initial PrePostActions failed"), 1);
}

TEST(PrePostAction, Destructor_LogsItsTypeName) {
    const LogCapture log;
    { const PrePostAction action(ChainActions{"X", "M80\n", ""}); }
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0].type, QtInfoMsg);
    EXPECT_EQ(log.lines()[0].text, QString("TORNVALE::PrePostAction has be deconstructed"));
}

TEST(GetPatternData, FileChangedMeanwhile_IsReadAfresh) {
    const ConfigurationFolder folder(kFile);
    const QVector<PatternRow> rows = PostProcessorConfigulation::GetPatternData();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].name, QString("p"));
    EXPECT_EQ(rows[0].nickName, QString("P"));
    EXPECT_EQ(rows[0].image, QString("p.png"));
    folder.installation.write("post.xml", "<root><Configulation Name='q'/><Configulation Name='r'/></root>");
    EXPECT_EQ(PostProcessorConfigulation::GetPatternData().size(), 2);
}

TEST(GetPatternData, EmptySetting_IsLogged) {
    const TemporaryInstallation installation;
    installation.write("data.ini", "[StatusPreProcessing]\nPostProcessor=\n");
    const LogCapture log;
    EXPECT_TRUE(PostProcessorConfigulation::GetPatternData().isEmpty());
    EXPECT_TRUE(log.contains("\tGet post processor failed"));
    EXPECT_TRUE(log.contains(installation.file("data.ini")));
    EXPECT_EQ(log.lines().back().type, QtDebugMsg);
}

TEST(GetPatternData, UnreadableFiles_AreLogged) {
    const ConfigurationFolder folder("<root>");
    {
        const LogCapture log;
        EXPECT_TRUE(PostProcessorConfigulation::GetPatternData().isEmpty());
        EXPECT_TRUE(log.contains("\tSet content failed"));
        EXPECT_EQ(log.lines().back().type, QtDebugMsg);
    }
    folder.installation.write("data.ini", "[StatusPreProcessing]\nPostProcessor=missing.xml\n");
    const LogCapture log;
    EXPECT_TRUE(PostProcessorConfigulation::GetPatternData().isEmpty());
    EXPECT_TRUE(log.contains("\tOpen file failed"));
    EXPECT_EQ(log.lines().back().type, QtDebugMsg);
}

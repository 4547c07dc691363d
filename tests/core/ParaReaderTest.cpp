#include "core/ParaReader.h"

#include <gtest/gtest.h>

#include <QDir>

#include "core/LanguageReader.h"
#include "support/TestSupport.h"

namespace {

const QByteArray kTexts =
    R"({"ParaReader": {"InvalidErrorMsg": "missing:", "ReadFailedErrorMsg": "unreadable:",
                                             "WriteFailedErrorMsg": "refused:"}})";

/// An installation with the given settings, whose language table has the messages of this class.
class Settings {
  public:
    explicit Settings(const QByteArray& content) {
        installation.write("data.ini", "[MainInterface]\nLanguage=English\n");
        installation.write("language/english.json", kTexts);
        TORNVALE::LanguageReader::instance().reload();
        installation.write("data.ini", content);
    }
    TemporaryInstallation installation;
};

}  // namespace

TEST(ParaReader, MissingFile_WarnsAndHasNoValues) {
    const Settings settings("");
    QFile::remove(settings.installation.file("data.ini"));
    const LogCapture log;
    const ParaReader reader;
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0].type, QtWarningMsg);
    EXPECT_EQ(log.lines()[0].text, "missing: " + settings.installation.file("data.ini"));
    EXPECT_FALSE(reader.value("Config/UsedConfig").isValid());
    EXPECT_EQ(reader.value("Config/UsedConfig").toString(), QString());
    EXPECT_FALSE(reader.isNewToolDialog());
    EXPECT_EQ(reader.integer("StatusPreProcessing/TrajAlgorithem", 2), 2);
    EXPECT_EQ(reader.number("StatusPreProcessing/PreLaunchTime", 0.0), 0.0);
}

TEST(ParaReader, UnreadableFile_WarnsAndHasNoValues) {
    const Settings settings("");
    QFile::remove(settings.installation.file("data.ini"));
    QDir().mkpath(settings.installation.file("data.ini"));  // a folder cannot be read as a file
    const LogCapture log;
    const ParaReader reader;
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0].type, QtWarningMsg);
    EXPECT_EQ(log.lines()[0].text, "unreadable: " + settings.installation.file("data.ini"));
    EXPECT_FALSE(reader.value("Config/UsedConfig").isValid());
}

TEST(ParaReader, MalformedFile_Warns) {
    const Settings settings(QByteArray("[MainInterface\nLanguage English\n\xff\x00\xfe no setting\n", 46));
    const LogCapture log;
    const ParaReader reader;
    EXPECT_EQ(log.count("unreadable:"), 1);
    EXPECT_FALSE(reader.value("MainInterface/Language").isValid());
}

TEST(ParaReader, Language_IsCheckedToTheLetter) {
    const Settings settings("[MainInterface]\nLanguage=English\n");
    for (const char* name : {"english", "Deutsch", "", "Russian", "Chinese "}) {
        const LogCapture log;
        EXPECT_FALSE(ParaReader().SetLanguage(name)) << name;
        ASSERT_EQ(log.lines().size(), 1U) << name;
        EXPECT_EQ(log.lines()[0].type, QtWarningMsg);
        EXPECT_EQ(log.lines()[0].text, QString("refused: ") + name);
        EXPECT_EQ(ParaReader().value("MainInterface/Language").toString(), QString("English"));
    }
    for (const char* name : {"Chinese", "English", "Russia"}) {
        const LogCapture log;
        EXPECT_TRUE(ParaReader().SetLanguage(name)) << name;
        EXPECT_TRUE(log.lines().empty());
        EXPECT_EQ(ParaReader().value("MainInterface/Language").toString(), QString(name));
    }
    EXPECT_TRUE(settings.installation.read("data.ini").contains("Language=Russia"));
}

TEST(ParaReader, Booleans_AreTrueOnlyForTheTextTrue) {
    const Settings settings(
        "[MainInterface]\nIsNewToolDialog=true\n[DebugFunction]\nIsShowAxisInfo=True\n"
        "[StatusPreProcessing]\nIsPreLaunch=\" true \"\n[MotionNode]\nIsRepeatNodesEnable=\" true \"\n");
    const ParaReader reader;
    EXPECT_TRUE(reader.isNewToolDialog());
    EXPECT_FALSE(reader.isShowAxisInfo());
    EXPECT_TRUE(reader.isTrue("StatusPreProcessing/IsPreLaunch"));
    EXPECT_FALSE(reader.isTrue("MotionNode/IsRepeatNodesEnable"));
    EXPECT_FALSE(reader.isTrue("DebugFunction/IsAllowReadIsoCode"));
}

TEST(ParaReader, PresentButEmptyNumbers_TakeTheFallback) {
    const Settings settings("[StatusPreProcessing]\nToleranceBlend=\nCurveSampleCount=\n");
    const ParaReader reader;
    EXPECT_EQ(reader.number("StatusPreProcessing/ToleranceBlend", 0.5), 0.5);
    EXPECT_EQ(reader.integer("StatusPreProcessing/CurveSampleCount", 20), 20);
}

TEST(ParaReader, Zero_StaysZero) {
    const Settings settings("[StatusPreProcessing]\nToleranceBlend=0\nCurveSampleCount=0\n");
    const ParaReader reader;
    EXPECT_EQ(reader.number("StatusPreProcessing/ToleranceBlend", 0.5), 0.0);
    EXPECT_EQ(reader.integer("StatusPreProcessing/CurveSampleCount", 20), 0);
}

TEST(ParaReader, Value_IsThereForTheNextReader) {
    const Settings settings("[Config]\nUsedConfig=a.xml\n");
    ParaReader().setValue("Config/UsedConfig", "machineSample/b.xml");
    EXPECT_EQ(ParaReader().value("Config/UsedConfig").toString(), QString("machineSample/b.xml"));
    EXPECT_TRUE(settings.installation.read("data.ini").contains("UsedConfig=machineSample/b.xml"));
}

TEST(ParaReader, OtherValues_SurviveAWrite) {
    const Settings settings("[Config]\nUsedConfig=a.xml\n[MainInterface]\nTabPosition=East\n");
    ParaReader().setValue("MainInterface/Language", "Russia");
    EXPECT_EQ(ParaReader().value("Config/UsedConfig").toString(), QString("a.xml"));
    EXPECT_EQ(ParaReader().value("MainInterface/TabPosition").toString(), QString("East"));
}

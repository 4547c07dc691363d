#include <gtest/gtest.h>

#include "MachineSamples.h"
#include "core/LanguageReader.h"
#include "machine/readConfig.h"
#include "support/TestSupport.h"

namespace {

/// An installation with the texts of the reader; the process's machine starts empty.
class ConfigReaderTest : public ::testing::Test {
  protected:
    ConfigReaderTest() {
        installation_.write("data.ini", "[MainInterface]\nLanguage=English\n");
        installation_.write("language/English.json", R"({
            "ConfigReader": {
                "InvalidErrorMsg": "cannot open", "ParseErrorMsg": "parse: %1 at %2:%3",
                "MachParaIsEmptyMsg": "no parameters", "AxisNCNodeIsEmptyMsg": "no axes",
                "AxisNonNCNodeIsEmptyMsg": "no parts", "SpindleNodeIsEmptyMsg": "no spindles",
                "InterpolationNodeIsEmpty": "no interpolation", "UserCommandIsEmpty": "no commands" },
            "Tv": { "RotationDirection": { "CW": "clockwise", "CCW": "against the clock" } } })");
        TORNVALE::LanguageReader::instance().reload();
        ConfigReader::instance().setDescription(nullptr);
    }
    ~ConfigReaderTest() override { ConfigReader::instance().setDescription(nullptr); }

    /// Writes a machine file, reads it, and gives back the log.
    QString logOf(const QByteArray& file) {
        installation_.write("machine.xml", file);
        const LogCapture log;
        ConfigReader::instance().SetConfig(path());
        for (const LogCapture::Line& line : log.lines())
            EXPECT_EQ(static_cast<int>(line.type), static_cast<int>(QtDebugMsg)) << line.text.toStdString();
        return log.all();
    }

    [[nodiscard]] QString path() const { return installation_.file("machine.xml"); }

  private:
    TemporaryInstallation installation_;
};

}  // namespace

TEST_F(ConfigReaderTest, CompleteFile_IsKeptWithoutAMessage) {
    EXPECT_EQ(logOf(sampleMachineFile()), QString());
    const ConfigReader& reader = ConfigReader::instance();
    EXPECT_TRUE(reader.isValid());
    EXPECT_EQ(reader.description().path, path());
    ASSERT_EQ(reader.numericalAxes().size(), 1);
    EXPECT_EQ(reader.numericalAxes()[0], reader.description().findAxis('X'));
    ASSERT_EQ(reader.spindles().size(), 1);
    EXPECT_EQ(reader.spindles()[0], reader.description().findSpindle(1));
    ASSERT_EQ(reader.workCoordinateSystems().size(), 1);
    EXPECT_EQ(reader.workCoordinateSystems()[0]->name, QStringLiteral("G54"));
}

TEST_F(ConfigReaderTest, BeforeAnyFile_TheReaderIsEmptyAndValid) {
    EXPECT_TRUE(ConfigReader::instance().isValid());
    EXPECT_EQ(ConfigReader::instance().numericalAxes().size(), 0);
}

TEST_F(ConfigReaderTest, MissingFile_IsLoggedAndLeavesTheFlag) {
    const LogCapture log;
    ConfigReader::instance().SetConfig(path());
    EXPECT_EQ(log.all(), "cannot open\tFile:" + path() + '\n');
    EXPECT_TRUE(ConfigReader::instance().isValid());
    EXPECT_EQ(ConfigReader::instance().description().path, path());
}

TEST_F(ConfigReaderTest, MissingFileAfterABadOne_LeavesTheFlagCleared) {
    logOf("no XML");
    ConfigReader::instance().SetConfig(path() + "x");
    EXPECT_FALSE(ConfigReader::instance().isValid());
}

TEST_F(ConfigReaderTest, FileThatIsNoXml_LogsTheParseMessageAndClearsTheFlag) {
    EXPECT_EQ(logOf("<root>\n  <a></b>\n</root>"), QStringLiteral("parse: tag mismatch at 2:9\n"));
    EXPECT_FALSE(ConfigReader::instance().isValid());
}

TEST_F(ConfigReaderTest, RefusedFile_LeavesTheMachineAsItWas) {
    logOf(sampleMachineFile());
    logOf("<root>");
    EXPECT_FALSE(ConfigReader::instance().isValid());
    EXPECT_EQ(ConfigReader::instance().numericalAxes().size(), 1);
}

TEST_F(ConfigReaderTest, PercentSignsInTheParsersText_AreNoPlaces) {
    const QString log = logOf("<root>&%2;</root>");
    EXPECT_TRUE(log.startsWith("parse: ")) << log.toStdString();
    EXPECT_TRUE(log.contains(" at 1:")) << log.toStdString();
}

TEST_F(ConfigReaderTest, MissingElements_AreLoggedInReadingOrder) {
    EXPECT_EQ(logOf("<root><userCoordinateSystem/></root>"),
              QStringLiteral("no parameters\nno axes\nno parts\nno spindles\nno interpolation\n"));
    EXPECT_FALSE(ConfigReader::instance().isValid());
    EXPECT_EQ(logOf(sampleMachineFileWithout("userCommand")), QStringLiteral("no commands\n"));
    EXPECT_FALSE(ConfigReader::instance().isValid());
}

TEST_F(ConfigReaderTest, FileWithoutUserCoordinateSystem_StartsWithoutAMessage) {
    EXPECT_EQ(logOf(sampleMachineFileWithout("userCoordinateSystem")), QString());
    EXPECT_TRUE(ConfigReader::instance().isValid());
    EXPECT_EQ(ConfigReader::instance().workCoordinateSystems().size(), 0);
}

TEST_F(ConfigReaderTest, StrangeId_IsLoggedAsItStands) {
    QByteArray file = sampleMachineFile();
    file.replace("<id>1</id>", "<id>17</id>");
    EXPECT_EQ(logOf(file), QStringLiteral("axis X: id 17 is none of 1 to 6\n"));
    EXPECT_TRUE(ConfigReader::instance().isValid());
}

TEST_F(ConfigReaderTest, RotationDirection_IsInTheUsersLanguage) {
    EXPECT_EQ(ConfigReader::rotationDirection(0), QStringLiteral("clockwise"));
    EXPECT_EQ(ConfigReader::rotationDirection(1), QStringLiteral("against the clock"));
    EXPECT_EQ(ConfigReader::rotationDirection(2), QStringLiteral("Unknown"));
    EXPECT_EQ(ConfigReader::rotationDirection(-1), QStringLiteral("Unknown"));
}

TEST_F(ConfigReaderTest, FixtureEntry_PrintsItsFourValues) {
    const LogCapture log;
    UserFixtureList{QStringLiteral("V%1"), QStringLiteral("a b.xml"), 3, 1.5F}.print();
    EXPECT_EQ(log.all(), QStringLiteral("Name:V%1 Path:a b.xml Number:3 Distance:1.5\n"));
}

#include "core/LanguageReader.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonDocument>

#include "core/calc/LanguageTable.h"
#include "support/TestSupport.h"

using TORNVALE::LanguageReader;

namespace {

/// The process-wide reader, which has read what it found at its first use.
LanguageReader& existing() {
    return LanguageReader::instance();
}

/// The same, having read the installation in force.
LanguageReader& reread() {
    existing().reload();
    return existing();
}

void writeLanguage(const TemporaryInstallation& installation, const QByteArray& language) {
    installation.write("data.ini", "[MainInterface]\nLanguage=" + language + "\n");
}

}  // namespace

TEST(LanguageTable, FileName_IsComparedWithoutCapitals) {
    EXPECT_EQ(languageFile({"chinese.json", "russia.json"}, "Russia"), QString("russia.json"));
    EXPECT_EQ(languageFile({"chinese.json", "RUSSIA.JSON"}, "Russia"), QString("RUSSIA.JSON"));
    EXPECT_EQ(languageFile({"chinese.json"}, "russia"), QString());
}

TEST(LanguageTable, FirstMatch_Wins) {
    EXPECT_EQ(languageFile({"English.json", "english.json"}, "english"), QString("English.json"));
}

TEST(LanguageTable, EmptyLanguage_LooksForAFileWithoutAName) {
    EXPECT_EQ(languageFile({"chinese.json"}, ""), QString());
    EXPECT_EQ(languageFile({"chinese.json", ".json"}, ""), QString(".json"));
}

TEST(LanguageTable, BadJson_NamesErrorAndOffset) {
    for (const char* json : {"{\"a\": }", "", "{", "{\"a\": 1} tail", "nonsense"}) {
        QJsonParseError error;
        QJsonDocument::fromJson(json, &error);
        Diagnostics diagnostics;
        EXPECT_TRUE(parseLanguageTable(json, diagnostics).isEmpty());
        ASSERT_EQ(diagnostics.entries.size(), 1U) << json;
        EXPECT_EQ(diagnostics.entries[0].severity, Severity::Debug);
        EXPECT_EQ(diagnostics.entries[0].text, "Parse Translation File Failed:" + error.errorString() +
                                                   " offset:" + QString::number(error.offset));
    }
}

TEST(LanguageTable, DeepNesting_IsRefused) {
    Diagnostics diagnostics;
    EXPECT_TRUE(parseLanguageTable(QByteArray(200000, '['), diagnostics).isEmpty());
    EXPECT_EQ(diagnostics.entries.size(), 1U);
}

TEST(LanguageReader, Language_SelectsItsFile) {
    const TemporaryInstallation installation;
    writeLanguage(installation, "Russia");
    installation.write("language/english.json", R"({"Main": {"Title": "wrong"}})");
    installation.write("language/RUSSIA.JSON", R"({"Main": {"Title": "right"}})");
    const LanguageReader& reader = reread();
    EXPECT_EQ(reader.text("Main", "Title"), QString("right"));
    EXPECT_EQ(reader.path(), installation.file("language/RUSSIA.JSON"));
}

TEST(LanguageReader, MissingGroupOrKey_IsEmpty) {
    const TemporaryInstallation installation;
    writeLanguage(installation, "English");
    installation.write("language/english.json",
                       R"({"Main": {"Title": "t", "Number": 5, "List": ["a"]}, "Flat": "text"})");
    const LanguageReader& reader = reread();
    EXPECT_EQ(reader.text("Main", "title"), QString());
    EXPECT_EQ(reader.text("main", "Title"), QString());
    EXPECT_EQ(reader.text("Main", "Number"), QString());
    EXPECT_EQ(reader.text("Main", "List"), QString());
    EXPECT_EQ(reader.text("Flat", "Title"), QString());
    EXPECT_EQ(reader.text("", ""), QString());
    EXPECT_TRUE(reader.group("None").isEmpty());
    EXPECT_TRUE(reader.tornvale().isEmpty());
}

TEST(LanguageReader, Groups_AreReadableWholeAndNested) {
    const TemporaryInstallation installation;
    writeLanguage(installation, "English");
    installation.write("language/english.json",
                       R"({"Tornvale": {"Title": "a", "TabTitle": {"ToolManager": "b"}},
                           "UserFixtureBlock": {"ConnerTopLeft": "c"},
                           "UserFixtureEditor": {"HeaderTailGroupBox": {"Pre/After Code": "d"}}})");
    const LanguageReader& reader = reread();
    EXPECT_EQ(reader.tornvale()["Title"].toString(), QString("a"));
    EXPECT_EQ(reader.userFixtureBlock()["ConnerTopLeft"].toString(), QString("c"));
    EXPECT_EQ(reader.text("Tornvale/TabTitle", "ToolManager"), QString("b"));
    EXPECT_EQ(reader.group("Tornvale/TabTitle").size(), 1);
    EXPECT_EQ(reader.text("UserFixtureEditor/HeaderTailGroupBox", "Pre/After Code"), QString("d"));
}

TEST(LanguageReader, EmptyLanguage_LeavesEveryTextEmpty) {
    const TemporaryInstallation installation;
    writeLanguage(installation, "");
    installation.write("language/chinese.json", R"({"Main": {"Title": "t"}})");
    existing();
    const LogCapture log;
    const LanguageReader& reader = reread();
    EXPECT_EQ(reader.text("Main", "Title"), QString());
    EXPECT_EQ(reader.path(), QString("Chinese"));
    EXPECT_EQ(log.count("Read Translation File Failed.TranslationFilePath:Chinese"), 1);
}

TEST(LanguageReader, EmptyLanguage_TakesAFileWithoutAName) {
    const TemporaryInstallation installation;
    writeLanguage(installation, "");
    installation.write("language/.json", R"({"Main": {"Title": "t"}})");
    // A name that begins with a point is a hidden file here, and a listing of files does not show it.
    EXPECT_EQ(
        reread().text("Main", "Title"),
        QDir(installation.file("language")).entryList(QDir::Files).isEmpty() ? QString() : QString("t"));
}

TEST(LanguageReader, NoSettingsFile_LeavesEveryTextEmpty) {
    const TemporaryInstallation installation;
    installation.write("language/english.json", R"({"Main": {"Title": "t"}})");
    existing();
    const LogCapture log;
    EXPECT_EQ(reread().text("Main", "Title"), QString());
    EXPECT_EQ(log.count("data.ini"), 1);
}

TEST(LanguageReader, FileThatDoesNotParse_IsLoggedAndLeavesEveryTextEmpty) {
    const TemporaryInstallation installation;
    writeLanguage(installation, "English");
    for (const QByteArray& content : {QByteArray(""), QByteArray("{"),
                                      QByteArray("{\"Main\": {\"Title\": \"t\"}"), QByteArray("\xff\xff")}) {
        installation.write("language/english.json", content);
        existing();
        const LogCapture log;
        EXPECT_EQ(reread().text("Main", "Title"), QString());
        EXPECT_EQ(log.count("Parse Translation File Failed:"), 1);
        EXPECT_EQ(log.count(" offset:"), 1);
        EXPECT_EQ(log.lines().back().type, QtDebugMsg);
    }
}

TEST(LanguageReader, RootThatIsNoObject_LeavesEveryTextEmpty) {
    const TemporaryInstallation installation;
    writeLanguage(installation, "English");
    installation.write("language/english.json", R"(["Main"])");
    EXPECT_EQ(reread().text("Main", "Title"), QString());
}

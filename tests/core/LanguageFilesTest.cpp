#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>

#include "support/TestSupport.h"

// The three shipped languages say the same things.

namespace {

void flatten(const QJsonObject& object, const QString& prefix, QMap<QString, QString>& texts) {
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (entry->isObject())
            flatten(entry->toObject(), prefix + entry.key() + " > ", texts);
        else
            texts.insert(prefix + entry.key(), entry->toString());
    }
}

QJsonObject language(const QString& name) {
    QFile file(shippedInstallation() + "/language/" + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << name.toStdString();
    return document.object();
}

QMap<QString, QString> texts(const QString& name) {
    QMap<QString, QString> all;
    flatten(language(name), {}, all);
    return all;
}

QStringList placeMarkers(const QString& text) {
    static const QRegularExpression marker("%\\d+");
    QStringList found;
    for (auto match = marker.globalMatch(text); match.hasNext();)
        found.append(match.next().captured());
    found.sort();
    return found;
}

const QStringList kFiles{"chinese.json", "english.json", "russia.json"};

}  // namespace

TEST(LanguageFiles, AllThree_HaveTheSameKeys) {
    const QStringList keys = texts("english.json").keys();
    EXPECT_GT(keys.size(), 400);
    EXPECT_EQ(texts("chinese.json").keys(), keys);
    EXPECT_EQ(texts("russia.json").keys(), keys);
}

TEST(LanguageFiles, NoText_IsEmptyOrPadded) {
    for (const QString& name : kFiles) {
        const QMap<QString, QString> all = texts(name);
        for (auto text = all.begin(); text != all.end(); ++text) {
            EXPECT_FALSE(text->trimmed().isEmpty()) << name.toStdString() << ": " << text.key().toStdString();
            EXPECT_FALSE(text->contains(QChar::ReplacementCharacter)) << text.key().toStdString();
        }
    }
}

TEST(LanguageFiles, PlaceMarkers_Agree) {
    const QMap<QString, QString> english = texts("english.json");
    const QMap<QString, QString> chinese = texts("chinese.json");
    const QMap<QString, QString> russian = texts("russia.json");
    for (auto text = english.begin(); text != english.end(); ++text) {
        EXPECT_EQ(placeMarkers(chinese[text.key()]), placeMarkers(*text)) << text.key().toStdString();
        EXPECT_EQ(placeMarkers(russian[text.key()]), placeMarkers(*text)) << text.key().toStdString();
    }
}

TEST(LanguageFiles, TextsWithArguments_HaveThem) {
    for (const QString& name : kFiles) {
        const QMap<QString, QString> all = texts(name);
        EXPECT_EQ(placeMarkers(all["ConfigReader > ParseErrorMsg"]), (QStringList{"%1", "%2", "%3"}));
        EXPECT_EQ(placeMarkers(all["Axis > ManualTranslation"]), QStringList{"%1"});
        EXPECT_EQ(placeMarkers(all["Axis > GenerateFixtureIsoCodeSuccessMsg"]), QStringList{"%1"});
        EXPECT_EQ(placeMarkers(all["Tornvale > ExportPackage > Notice"]), QStringList{"%1"});
        EXPECT_EQ(placeMarkers(all["Tornvale > Contact > FoundMsg"]), (QStringList{"%1", "%2"}));
    }
}

TEST(LanguageFiles, Lists_HaveOneLabelPerColumn) {
    for (const QString& name : kFiles) {
        const QMap<QString, QString> all = texts(name);
        const auto count = [&all](const char* key) { return all[key].split('-').size(); };
        EXPECT_EQ(count("TreeWidgetManager > HeaderLabels"), 8) << name.toStdString();
        EXPECT_EQ(count("ToolsManager > HeaderLables"), 13) << name.toStdString();
        EXPECT_EQ(count("MultiImportIsoCode > windows > HeaderLabels"), 6) << name.toStdString();
        EXPECT_EQ(count("MachineNodeTreeWidget > HeaderList"), 3) << name.toStdString();
    }
}

// The single-instance keys come from the title: instances in different languages must not see each other.
TEST(LanguageFiles, Titles_Differ) {
    const QString chinese = texts("chinese.json")["Main > Title"];
    const QString english = texts("english.json")["Main > Title"];
    const QString russian = texts("russia.json")["Main > Title"];
    EXPECT_NE(chinese, english);
    EXPECT_NE(chinese, russian);
    EXPECT_NE(english, russian);
}

TEST(LanguageFiles, EveryGroupOfTheSystem_IsThere) {
    const QStringList groups{"Main",
                             "CodePanel",
                             "HeaderTailEditor",
                             "Progress",
                             "Undo",
                             "Tornvale",
                             "Tv",
                             "Axis",
                             "AxisTitle",
                             "CodeManagerItem",
                             "CollisionObjectBuilder",
                             "ConfigReader",
                             "CurveEditor",
                             "DrillEditor",
                             "DrillItem",
                             "GetToolWidget",
                             "IsoEditor",
                             "IsoItem",
                             "MachineNodeTreeWidget",
                             "MotionNodeManager",
                             "MultiImportIsoCode",
                             "MyTimer",
                             "OperationPanel",
                             "OperationWizard",
                             "ParaReader",
                             "RecEditor",
                             "RecItem",
                             "SpindleNode",
                             "SpindleStatusWidget",
                             "ToolData",
                             "ToolEditor",
                             "ToolsManager",
                             "TreeWidgetManager",
                             "UiLanguage",
                             "UserCoordinateSystem",
                             "UserFixture",
                             "UserFixtureBlock",
                             "UserFixtureEditor",
                             "UserFixtureManager",
                             "UserModelNode",
                             "UserPostProcessor",
                             "UserTopItem",
                             "UserTopItemManager",
                             "WorkCoordinateSystem"};
    const QJsonObject english = language("english.json");
    for (const QString& group : groups)
        EXPECT_TRUE(english[group].isObject()) << group.toStdString();
    EXPECT_EQ(english.size(), groups.size());
    for (const char* step : {"S1", "S2", "S3", "S4", "S5", "S6", "S7", "S8", "S9"})
        EXPECT_TRUE(english["MotionNodeManager"].toObject()["InitialChainInfo"].toObject().contains(step));
    EXPECT_EQ(english["Tornvale"].toObject()["TabTitle"].toObject().size(), 5);
}

TEST(LanguageFiles, ChineseAndRussian_AreTranslated) {
    const QMap<QString, QString> chinese = texts("chinese.json");
    const QMap<QString, QString> russian = texts("russia.json");
    static const QRegularExpression han("\\p{Han}");
    static const QRegularExpression cyrillic("\\p{Cyrillic}");
    int untranslatedChinese = 0;
    int untranslatedRussian = 0;
    for (const QString& key : chinese.keys()) {
        untranslatedChinese += chinese[key].contains(han) ? 0 : 1;
        untranslatedRussian += russian[key].contains(cyrillic) ? 0 : 1;
    }
    // Axis letters and the program's own name read the same in every language.
    EXPECT_LT(untranslatedChinese, 40);
    EXPECT_LT(untranslatedRussian, 40);
}

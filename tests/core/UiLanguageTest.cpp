#include "core/UiLanguage.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QPushButton>
#include <QTest>

#include "core/AboutTornvale.h"
#include "core/LanguageReader.h"
#include "core/ParaReader.h"
#include "core/Version.h"
#include "support/TestSupport.h"

namespace {

struct Fixture {
    Fixture() {
        installation.write("data.ini", "[MainInterface]\nLanguage=English\n");
        installation.write("language/english.json",
                           R"({"UiLanguage": {"Title": "Language", "AcceptButton": "Take it",
                               "Success": "Success", "Failed": "Failed"}})");
        TORNVALE::LanguageReader::instance().reload();
    }
    TemporaryInstallation installation;
    ExpectedDialogs dialogs;
};

QString storedLanguage() {
    return ParaReader().value("MainInterface/Language").toString();
}

}  // namespace

TEST(UiLanguage, Window_OffersTheThreeLanguages) {
    const Fixture fixture;
    UiLanguage window;
    const auto* box = window.findChild<QComboBox*>();
    ASSERT_NE(box, nullptr);
    ASSERT_EQ(box->count(), 3);
    EXPECT_EQ(box->itemText(0), QString("Chinese"));
    EXPECT_EQ(box->itemText(1), QString("English"));
    EXPECT_EQ(box->itemText(2), QString("Russia"));
    EXPECT_EQ(box->currentText(), QString("English"));
    EXPECT_EQ(window.findChild<QPushButton*>()->text(), QString("Take it"));
}

TEST(UiLanguage, Accepting_StoresTellsAndCloses) {
    Fixture fixture;
    UiLanguage window;
    window.show();
    window.findChild<QComboBox*>()->setCurrentText("Russia");
    fixture.dialogs.expectTell(UserDialogs::Kind::Information, "Language", "Success");
    QTest::mouseClick(window.findChild<QPushButton*>(), Qt::LeftButton);
    EXPECT_EQ(storedLanguage(), QString("Russia"));
    EXPECT_FALSE(window.isVisible());
}

TEST(UiLanguage, RefusedLanguage_IsTold) {
    Fixture fixture;
    UiLanguage window;
    window.show();
    window.findChild<QComboBox*>()->addItem("Deutsch");
    window.findChild<QComboBox*>()->setCurrentText("Deutsch");
    fixture.dialogs.expectTell(UserDialogs::Kind::Warning, "Language", "Failed");
    window.accept();
    EXPECT_EQ(storedLanguage(), QString("English"));
    EXPECT_FALSE(window.isVisible());
}

TEST(UiLanguage, EscapeAndEnter_CloseAndOtherKeysDoNothing) {
    const Fixture fixture;
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Enter}) {
        UiLanguage window;
        window.show();
        QTest::keyClick(&window, key);
        EXPECT_FALSE(window.isVisible()) << key;
    }
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_A, Qt::Key_F1, Qt::Key_Delete}) {
        UiLanguage window;
        window.show();
        QTest::keyClick(&window, key);
        EXPECT_TRUE(window.isVisible()) << key;
    }
    EXPECT_EQ(storedLanguage(), QString("English"));
}

TEST(AboutTornvale, Text_FollowsTheLanguage) {
    const TemporaryInstallation installation;
    const QString version = applicationVersion();
    EXPECT_EQ(version, QString("3.3.0.5"));
    for (const char* language : {"Chinese", "English", "Russia", ""})
        EXPECT_TRUE(AboutTornvale::text(language).startsWith("Tornvale " + version)) << language;
    EXPECT_TRUE(AboutTornvale::text("English").contains("machining centres"));
    EXPECT_TRUE(AboutTornvale::text("Russia").contains("обрабатывающих центров"));
    EXPECT_TRUE(AboutTornvale::text("Chinese").contains("加工中心"));
    EXPECT_EQ(AboutTornvale::text(""), AboutTornvale::text("Chinese"));
}

#include "core/RecentFiles.h"

#include <gtest/gtest.h>

#include <QSettings>
#include <QSignalSpy>

#include "core/calc/RecentPaths.h"
#include "support/TestSupport.h"

TEST(RecentPaths, EqualEntry_MovesToTheEnd) {
    EXPECT_EQ(withRecentPath({"a", "b", "c"}, "a"), (QStringList{"b", "c", "a"}));
    EXPECT_EQ(withRecentPath({"a", "a"}, "a"), QStringList{"a"});
}

TEST(RecentPaths, Sixth_PushesTheOldestOut) {
    EXPECT_EQ(withRecentPath({"a", "b", "c", "d", "e"}, "f"), (QStringList{"b", "c", "d", "e", "f"}));
    EXPECT_EQ(withRecentPath({"0", "1", "2", "3", "4", "5", "6"}, "7"),
              (QStringList{"3", "4", "5", "6", "7"}));
}

TEST(RecentPaths, EmptyPath_IsNotRemembered) {
    EXPECT_EQ(withRecentPath({"a"}, ""), QStringList{"a"});
}

TEST(RecentPaths, MenuText_HasNumberAndPath) {
    EXPECT_EQ(recentPathText(1, "/jobs/door.tornvale"), QString("&1 /jobs/door.tornvale"));
    EXPECT_EQ(recentPathText(2, "/a%1b&c"), QString("&2 /a%1b&&c"));
}

TEST(RecentFiles, Paths_SurviveInHistoryIni) {
    const TemporaryInstallation installation;
    {
        RecentFiles files;
        EXPECT_EQ(files.paths(), QStringList());
        for (const char* path : {"/1", "/2", "/3", "/4", "/5", "/6"})
            files.add(path);
    }
    EXPECT_EQ(RecentFiles().paths(), (QStringList{"/2", "/3", "/4", "/5", "/6"}));
    QSettings settings(installation.file("history.ini"), QSettings::IniFormat);
    EXPECT_EQ(settings.beginReadArray("General"), 5);
    settings.setArrayIndex(4);
    EXPECT_EQ(settings.value("history").toString(), QString("/6"));
}

TEST(RecentFiles, Menu_OffersOnlyFilesThatExist) {
    const TemporaryInstallation installation;
    installation.write("a.tornvale", "{}");
    installation.write("b.tornvale", "{}");
    RecentFiles files;
    EXPECT_FALSE(files.menu()->menuAction()->isEnabled()) << "an empty menu cannot be opened";
    files.add(installation.file("a.tornvale"));
    EXPECT_TRUE(files.menu()->menuAction()->isEnabled());
    files.add(installation.file("gone.tornvale"));
    files.add(installation.file("b.tornvale"));
    ASSERT_EQ(files.menu()->actions().size(), 2);
    EXPECT_EQ(files.menu()->actions()[0]->text(), "&1 " + installation.file("a.tornvale"));
    EXPECT_EQ(files.menu()->actions()[1]->text(), "&2 " + installation.file("b.tornvale"));
}

TEST(RecentFiles, Choice_NamesThePath) {
    const TemporaryInstallation installation;
    installation.write("a.tornvale", "{}");
    RecentFiles files;
    files.add(installation.file("a.tornvale"));
    const QSignalSpy chosen(&files, &RecentFiles::fileChosen);
    files.menu()->actions()[0]->trigger();
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen[0][0].toString(), installation.file("a.tornvale"));
}

TEST(RecentFiles, DamagedHistory_GivesNoEntries) {
    const TemporaryInstallation installation;
    for (const QByteArray& content : {QByteArray("[%General]\nsize=2000000000\n"),
                                      QByteArray("\x00\xff[[[=", 7), QByteArray("[General]\nsize=x\n")}) {
        installation.write("history.ini", content);
        RecentFiles files;
        EXPECT_EQ(files.paths(), QStringList());
        files.add("/a");
        EXPECT_EQ(files.paths(), QStringList{"/a"});
    }
}

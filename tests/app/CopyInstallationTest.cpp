#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

// The data of the installation are copied anew by each build in which they have changed: what a user has
// made of the copies beside the program must outlive that.

namespace {

class CopyInstallation : public ::testing::Test {
  protected:
    void write(const QString& name, const QByteArray& content) const {
        const QString path = folder_.filePath(name);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
        file.write(content);
    }
    [[nodiscard]] QByteArray read(const QString& name) const {
        QFile file(folder_.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    void remove(const QString& name) const { ASSERT_TRUE(QFile::remove(folder_.filePath(name))); }
    /// What the copying says.
    QByteArray copy() const {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(TORNVALE_CMAKE),
                      {"-DSOURCE=" + folder_.filePath("shipped"), "-DTARGET=" + folder_.filePath("app"),
                       "-DRECORD=" + folder_.filePath("record"), "-P", QStringLiteral(TORNVALE_COPY_SCRIPT)});
        EXPECT_TRUE(process.waitForFinished());
        const QByteArray said = process.readAll();
        EXPECT_EQ(process.exitCode(), 0) << said.toStdString();
        return said;
    }

  private:
    QTemporaryDir folder_;
};

}  // namespace

TEST_F(CopyInstallation, TheFirstCopyBringsEverything) {
    write("shipped/data.ini", "a");
    write("shipped/models/Bridge 5/Bed.stl", "bed");
    copy();
    EXPECT_EQ(read("app/data.ini"), "a");
    EXPECT_EQ(read("app/models/Bridge 5/Bed.stl"), "bed");
}

TEST_F(CopyInstallation, WhatNobodyTouched_FollowsTheShippedFile) {
    write("shipped/language/english.json", "1");
    copy();
    write("shipped/language/english.json", "2");
    EXPECT_EQ(copy(), "");
    EXPECT_EQ(read("app/language/english.json"), "2");
    EXPECT_EQ(read("app/language/english.json.old"), "(no file)");
}

TEST_F(CopyInstallation, WhatTheUserChanged_Stays) {
    write("shipped/camera.txt", "front");
    write("shipped/machineSample/Own.xml", "lower -10");
    copy();
    write("app/camera.txt", "mine");
    write("app/machineSample/Own.xml", "lower -20");
    write("app/jobs/Own.tornvale", "a job");
    EXPECT_EQ(copy(), "") << "nothing shipped is new";
    EXPECT_EQ(read("app/camera.txt"), "mine");
    EXPECT_EQ(read("app/machineSample/Own.xml"), "lower -20");
    EXPECT_EQ(read("app/jobs/Own.tornvale"), "a job");
}

TEST_F(CopyInstallation, BothChanged_TheUsersStaysAndTheShippedOneStandsBesideIt) {
    write("shipped/data.ini", "1");
    copy();
    write("app/data.ini", "mine");
    write("shipped/data.ini", "2");
    EXPECT_TRUE(copy().contains("data.ini.shipped"));
    EXPECT_EQ(read("app/data.ini"), "mine");
    EXPECT_EQ(read("app/data.ini.shipped"), "2");
    EXPECT_EQ(copy(), "") << "said once";
    EXPECT_EQ(read("app/data.ini"), "mine");
}

TEST_F(CopyInstallation, AFolderFromBeforeTheRecord_LosesNothing) {
    write("shipped/data.ini", "1");
    write("shipped/camera.txt", "front");
    write("shipped/language/english.json", "2");
    write("app/data.ini", "mine");
    write("app/camera.txt", "my view");
    write("app/language/english.json", "1 or mine");
    EXPECT_TRUE(copy().contains("english.json.old"));
    EXPECT_EQ(read("app/data.ini"), "mine");
    EXPECT_EQ(read("app/camera.txt"), "my view");
    EXPECT_EQ(read("app/language/english.json"), "2");
    EXPECT_EQ(read("app/language/english.json.old"), "1 or mine");
}

TEST_F(CopyInstallation, WhatTheUserDeleted_ComesBack) {
    write("shipped/toollib.json", "{}");
    copy();
    remove("app/toollib.json");
    copy();
    EXPECT_EQ(read("app/toollib.json"), "{}");
}

#include "app/Packages.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "support/TestSupport.h"

namespace {

void put(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(content);
}

QByteArray get(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

struct Data : TemporaryInstallation {
    Data() {
        write("machineSample/a.xml", "a");
        write("machineSample/sub/b.xml", "b");
        write("UserPostProcessor/p.xml", "p");
        write("data.ini", "ini");
        write("toollib.json", "tools");
        write("models/big.stl", "model");
    }
    QTemporaryDir target;
};

}  // namespace

TEST(Packages, ExportCopiesFoldersAndFilesOverWhatIsThere) {
    const Data data;
    put(data.target.filePath("data.ini"), "old");
    put(data.target.filePath("machineSample/kept.xml"), "kept");
    const QStringList failed = Packages::exportTo(data.target.path());
    EXPECT_EQ(failed, QStringList());
    EXPECT_EQ(get(data.target.filePath("machineSample/a.xml")), "a");
    EXPECT_EQ(get(data.target.filePath("machineSample/sub/b.xml")), "b");
    EXPECT_EQ(get(data.target.filePath("UserPostProcessor/p.xml")), "p");
    EXPECT_EQ(get(data.target.filePath("data.ini")), "ini");
    EXPECT_EQ(get(data.target.filePath("machineSample/kept.xml")), "kept");
    EXPECT_FALSE(QFile::exists(data.target.filePath("models")));
}

TEST(Packages, ExportIntoItselfEndsAndKeepsTheFiles) {
    const Data data;
    EXPECT_EQ(Packages::exportTo(data.path()), QStringList());
    EXPECT_EQ(get(data.file("machineSample/a.xml")), "a");
    EXPECT_EQ(Packages::exportTo(data.file("machineSample/inner")), QStringList());
    EXPECT_EQ(get(data.file("machineSample/inner/machineSample/a.xml")), "a");
    EXPECT_FALSE(QFile::exists(data.file("machineSample/inner/machineSample/inner")));
}

TEST(Packages, WhatCannotBeCopiedIsNamed) {
    const Data data;
    put(data.target.filePath("machineSample"), "a file where a folder must be");
    EXPECT_EQ(Packages::exportTo(data.target.path()), (QStringList{"a.xml", "sub/b.xml"}));
    EXPECT_EQ(get(data.target.filePath("data.ini")), "ini");
}

TEST(Packages, ImportCopiesEverythingOverTheData) {
    const Data data;
    put(data.target.filePath("machineSample/a.xml"), "new");
    put(data.target.filePath("deep/er/file"), "deep");
    EXPECT_EQ(Packages::importFrom(data.target.path()), QStringList());
    EXPECT_EQ(get(data.file("machineSample/a.xml")), "new");
    EXPECT_EQ(get(data.file("deep/er/file")), "deep");
    EXPECT_EQ(get(data.file("toollib.json")), "tools");
}

TEST(Packages, TheWorkingDirectoryCountsWhenItHoldsMachines) {
    const Data data;
    EXPECT_EQ(QDir(Packages::dataFolder()).absolutePath(), data.path());
    const QString before = QDir::currentPath();
    QDir(data.target.path()).mkpath("machineSample");
    QDir::setCurrent(data.target.path());
    EXPECT_EQ(Packages::dataFolder(), QDir::currentPath());
    QDir::setCurrent(before);
}

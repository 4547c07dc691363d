#include "core/WholeFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

}  // namespace

TEST(WholeFile, TakesThePlaceOfTheFileThatWasThere) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("a.nc");
    EXPECT_TRUE(writeWhole(path, "one"));
    EXPECT_EQ(contentOf(path), "one");
    EXPECT_TRUE(writeWhole(path, ""));
    EXPECT_EQ(contentOf(path), "");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("a.nc"));
}

TEST(WholeFile, FolderAndPlaceThatIsNotThereGiveTheReason) {
    const QTemporaryDir folder;
    for (const QString& path : {folder.path(), folder.filePath("none/a.nc")}) {
        QString problem;
        EXPECT_FALSE(writeWhole(path, "one", &problem));
        EXPECT_NE(problem, QString()) << path.toStdString();
        EXPECT_FALSE(writeWhole(path, "one"));
    }
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(WholeFile, PipeStaysAPipe) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("pipe");
    ASSERT_EQ(mkfifo(path.toUtf8().constData(), 0600), 0);
    QString problem;
    EXPECT_FALSE(writeWhole(path, "one", &problem));
    EXPECT_EQ(problem, QString("it is no file"));
    struct stat entry {};
    ASSERT_EQ(stat(path.toUtf8().constData(), &entry), 0);
    EXPECT_TRUE(S_ISFIFO(entry.st_mode));
}

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <random>

#include "DocumentBench.h"
#include "app/ProjectFile.h"

// A save that fails, or dies half way, leaves the document that was there.

namespace {

using ProjectFile::Saved;

struct Folder {
    QTemporaryDir folder;
    [[nodiscard]] QString path(const char* name = "job.tornvale") const {
        return folder.filePath(QLatin1String(name));
    }
    [[nodiscard]] QByteArray bytes(const char* name = "job.tornvale") const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void put(const QByteArray& content) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
};

/// A document of about 300 kB whose remarks are all one letter.
QByteArray documentOf(char letter) {
    ProjectDocument document;
    document.head.marked = QString(300000, QLatin1Char(letter));
    return writeProject(document, "3.3.0.5");
}

/// A process that saves one document after the other until it is killed.
class EndlessSaver {
  public:
    /// Comes back when `saves` of them are done; the process is then on its way into the next one.
    EndlessSaver(const QString& path, int saves) {
        static const QByteArray documents[] = {documentOf('a'), documentOf('b'), documentOf('c')};
        int told[2];
        EXPECT_EQ(pipe(told), 0);
        child_ = fork();
        EXPECT_GE(child_, 0);
        for (int i = 0; child_ == 0; ++i) {
            const bool isSaved = ProjectFile::write(path, documents[i % 3]) == Saved::Yes;
            if (!isSaved || (i < saves && write(told[1], "1", 1) != 1))
                _exit(1);
        }
        close(told[1]);
        char done = 0;
        for (int i = 0; i < saves; ++i)
            EXPECT_EQ(read(told[0], &done, 1), 1) << "save " << i << " has failed";
        close(told[0]);
    }
    /// False when it has given up before.
    [[nodiscard]] bool kill() const {
        ::kill(child_, SIGKILL);
        int status = 0;
        waitpid(child_, &status, 0);
        return WIFSIGNALED(status);
    }

  private:
    pid_t child_ = -1;
};

/// No file of this process may grow beyond `bytes` while it lives.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit before_{};
    void (*handler_)(int);
};

}  // namespace

TEST(DocumentSave, KilledAtAnyMomentLeavesAWholeDocument) {
    const Folder folder;
    ASSERT_EQ(ProjectFile::write(folder.path(), documentOf('0')), Saved::Yes);
    constexpr int kRuns = 200;
    constexpr unsigned kLongest_us = 6000;
    std::mt19937 random(20261121);
    QSet<QChar> seen;
    for (int run = 0; run < kRuns; ++run) {
        const EndlessSaver saver(folder.path(), 1 + run % 3);
        const auto moment_us = static_cast<unsigned>(random() % kLongest_us);
        usleep(moment_us);
        ASSERT_TRUE(saver.kill()) << "run " << run << ": the save gave up";
        const auto document = readProject(folder.bytes());
        ASSERT_TRUE(document.has_value()) << "run " << run << ", killed after " << moment_us << " us";
        ASSERT_EQ(document->head.marked.size(), 300000);
        ASSERT_EQ(document->head.marked, QString(300000, document->head.marked[0]));
        seen.insert(document->head.marked[0]);
    }
    EXPECT_EQ(seen, (QSet<QChar>{'a', 'b', 'c'}));
}

TEST(DocumentSave, AFolderInPlaceOfTheFileIsTold) {
    const Folder folder;
    ASSERT_TRUE(QDir().mkpath(folder.path()));
    EXPECT_EQ(ProjectFile::write(folder.path(), "new"), Saved::CannotOpen);
    EXPECT_TRUE(QDir(folder.path()).exists());
}

TEST(DocumentSave, APipeOrADeviceIsNeverReplaced) {
    const Folder folder;
    ASSERT_EQ(mkfifo(folder.path().toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(ProjectFile::write(folder.path(), "new"), Saved::CannotOpen);
    EXPECT_FALSE(QFileInfo(folder.path()).isFile());
}

TEST(DocumentSave, APathWithoutANameIsTold) {
    EXPECT_EQ(ProjectFile::write({}, "new"), Saved::NoName);
    EXPECT_EQ(ProjectFile::write("/tmp/", "new"), Saved::NoName);
}

TEST(DocumentSave, TooLittleSpaceIsToldAndKeepsTheOldDocument) {
    const Folder folder;
    folder.put("old");
    QString asked;
    const auto space = [&asked](qint64 bytes) {
        return [&asked, bytes](const QString& place) {
            asked = place;
            return bytes;
        };
    };
    EXPECT_EQ(ProjectFile::write(folder.path(), "12345", space(4)), Saved::NoSpace);
    EXPECT_EQ(asked, folder.folder.path());
    EXPECT_EQ(folder.bytes(), "old");
    EXPECT_EQ(QDir(folder.folder.path()).entryList(QDir::Files).size(), 1) << "nothing is left over";
    EXPECT_EQ(ProjectFile::write(folder.path(), "12345", space(5)), Saved::Yes) << "just enough is enough";
    EXPECT_EQ(folder.bytes(), "12345");
}

TEST(DocumentSave, ADiskThatFillsUpIsToldAndKeepsTheOldDocument) {
    const Folder folder;
    folder.put("old");
    {
        const FileSizeLimit limit(65536);
        EXPECT_EQ(ProjectFile::write(folder.path(), documentOf('x')), Saved::CannotWrite);
    }
    EXPECT_EQ(folder.bytes(), "old");
    EXPECT_EQ(QDir(folder.folder.path()).entryList(QDir::Files).size(), 1) << "nothing is left over";
    EXPECT_EQ(ProjectFile::write(folder.path(), documentOf('x')), Saved::Yes);
}

TEST(DocumentSave, ALinkStaysALink) {
    const Folder folder;
    folder.put("old");
    ASSERT_TRUE(QFile::link(folder.path(), folder.path("link.tornvale")));
    EXPECT_EQ(ProjectFile::write(folder.path("link.tornvale"), "new"), Saved::Yes);
    EXPECT_EQ(folder.bytes(), "new");
    EXPECT_TRUE(QFileInfo(folder.path("link.tornvale")).isSymLink());
}

// --- in the window ---

TEST(DocumentSave, WhatFailsInTheWindowKeepsJobAndName) {
    DocumentBench bench;
    bench.open();
    bench.load(DocumentBench::golden("current.tornvale"));
    const QStringList programs = bench.programs();
    const QString title = bench.window().windowTitle();
    ASSERT_TRUE(QDir().mkpath(bench.file("folder.tornvale")));
    for (const char* name : {"folder.tornvale", "none/job.tornvale"}) {
        EXPECT_EQ(bench.saveAs(name), QStringList("The file could not be saved.\n" + bench.file(name)))
            << name;
        EXPECT_EQ(bench.window().documentPath(), bench.file("document.tornvale")) << name;
        EXPECT_EQ(bench.window().windowTitle(), title) << name;
        EXPECT_EQ(bench.head("CreatedTime"), "2024-03-01 10:20:30") << name;
        EXPECT_EQ(bench.programs(), programs) << name;
    }
    EXPECT_EQ(bench.bytes("document.tornvale"), DocumentBench::golden("current.tornvale"));
}

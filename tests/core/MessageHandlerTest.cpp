#include "core/MessageHandler.h"

#include <gtest/gtest.h>

#include <QDebug>
#include <QDir>
#include <QRegularExpression>
#include <thread>
#include <vector>

#include "support/TestSupport.h"

namespace {

/// The handler of the program in force while the object lives.
class Handler {
  public:
    Handler() : previous_(qInstallMessageHandler(writeLogMessage)) {}
    ~Handler() { qInstallMessageHandler(previous_); }
    Handler(const Handler&) = delete;
    Handler& operator=(const Handler&) = delete;

  private:
    QtMessageHandler previous_;
};

QStringList logLines(const TemporaryInstallation& installation) {
    QStringList lines = QString::fromUtf8(installation.read("log.txt")).split('\n');
    EXPECT_EQ(lines.takeLast(), QString()) << "every line has its line end";
    return lines;
}

constexpr qint64 kLimit_bytes = 10485760;

}  // namespace

TEST(MessageHandler, Messages_AreAppendedLineByLine) {
    const TemporaryInstallation installation;
    const Handler handler;
    qDebug().noquote() << "first";
    qInfo().noquote() << QString::fromUtf8("第二 строка");
    qWarning("third %d", 3);
    qCritical("fourth");
    const QStringList lines = logLines(installation);
    ASSERT_EQ(lines.size(), 4);
    const QString head = "^\\[\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\] ";
    EXPECT_TRUE(lines[0].contains(QRegularExpression(head + "\\[DEBUG\\] \\[.*TestBody.*\\] first$")))
        << lines[0].toStdString();
    EXPECT_TRUE(lines[1].endsWith(QString::fromUtf8("第二 строка")));
    EXPECT_TRUE(lines[1].contains("] [INFO] ["));
    EXPECT_TRUE(lines[2].contains(QRegularExpression(head + "\\[WARNING\\] \\[.*\\] third 3$")));
    EXPECT_TRUE(lines[3].contains(QRegularExpression(head + "\\[CRITICAL\\] \\[.*\\] fourth$")));
}

TEST(MessageHandler, ContextWithoutFunction_IsUnknown) {
    const TemporaryInstallation installation;
    writeLogMessage(QtDebugMsg, QMessageLogContext(), "m");
    EXPECT_TRUE(logLines(installation)[0].endsWith("[DEBUG] [unknown] m"));
}

TEST(MessageHandler, LogOfExactlyTheLimit_IsKept) {
    const TemporaryInstallation installation;
    installation.write("log.txt", QByteArray(kLimit_bytes, 'x'));
    const Handler handler;
    qInfo("more");
    const QByteArray log = installation.read("log.txt");
    EXPECT_GT(log.size(), kLimit_bytes);
    EXPECT_TRUE(log.startsWith("xxx"));
    EXPECT_TRUE(log.endsWith("more\n"));
}

TEST(MessageHandler, LogOneByteAboveTheLimit_GivesWayToANewOne) {
    const TemporaryInstallation installation;
    installation.write("log.txt", QByteArray(kLimit_bytes + 1, 'x'));
    const Handler handler;
    qInfo("alone");
    const QStringList lines = logLines(installation);
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].endsWith("alone"));
}

TEST(MessageHandler, LogThatCannotBeWritten_LosesTheMessageOnly) {
    const TemporaryInstallation installation;
    QDir().mkpath(installation.file("log.txt"));
    const Handler handler;
    qInfo("lost");
    EXPECT_TRUE(QDir(installation.file("log.txt")).isEmpty());
}

TEST(MessageHandler, ManyThreads_WriteWholeLines) {
    const TemporaryInstallation installation;
    {
        const Handler handler;
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([thread] {
                for (int i = 0; i < 50; ++i)
                    qInfo("thread %d message %d end", thread, i);
            });
        }
        for (std::thread& thread : threads)
            thread.join();
    }
    const QStringList lines = logLines(installation);
    EXPECT_EQ(lines.size(), 200);
    for (int thread = 0; thread < 4; ++thread) {
        int next = 0;
        for (const QString& line : lines) {
            if (line.endsWith(QString("thread %1 message %2 end").arg(thread).arg(next)))
                ++next;
        }
        EXPECT_EQ(next, 50) << "the messages of one thread stand in their order";
    }
}

TEST(MessageHandler, FatalMessage_IsWrittenAndEndsTheProcessWithStatus1) {
    const TemporaryInstallation installation;
    EXPECT_EXIT(
        {
            const Handler handler;
            qFatal("the end %d", 7);
        },
        ::testing::ExitedWithCode(1), "");
    const QStringList lines = logLines(installation);
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].contains("] [FATAL] ["));
    EXPECT_TRUE(lines[0].endsWith("the end 7"));
}

TEST(MessageHandler, FatalMessageOfAnotherThread_EndsTheProcessWithStatus1) {
    const TemporaryInstallation installation;
    EXPECT_EXIT(
        {
            const Handler handler;
            std::thread([] { qFatal("from a thread"); }).join();
        },
        ::testing::ExitedWithCode(1), "");
    EXPECT_TRUE(logLines(installation)[0].endsWith("from a thread"));
}

TEST(MessageHandler, FatalMessagesOfTwoThreads_EndTheProcessOnce) {
    const TemporaryInstallation installation;
    EXPECT_EXIT(
        {
            const Handler handler;
            std::thread first([] { qFatal("one"); });
            std::thread second([] { qFatal("two"); });
            first.join();
            second.join();
        },
        ::testing::ExitedWithCode(1), "");
    const QStringList lines = logLines(installation);
    ASSERT_EQ(lines.size(), 1) << "the second one waits for the lock until the process is gone";
    EXPECT_TRUE(lines[0].endsWith("one") || lines[0].endsWith("two")) << lines[0].toStdString();
}

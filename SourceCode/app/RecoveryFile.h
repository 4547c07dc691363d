#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <optional>
#include <thread>

/// A copy of the unsaved job beside the log, so that a crash costs nothing that was typed. Written a little
/// after each edit, on a thread of its own, whole or not at all; gone when the job is saved or let go.
class RecoveryFile : public QObject {
    Q_OBJECT
  public:
    /// `content` gives the document of this moment.
    explicit RecoveryFile(std::function<QJsonObject()> content, QObject* parent = nullptr);
    ~RecoveryFile() override;
    RecoveryFile(const RecoveryFile&) = delete;
    RecoveryFile& operator=(const RecoveryFile&) = delete;

    /// The job has changed; the copy follows in a moment.
    void jobChanged();
    /// Writes now what is still to be written, and waits for it.
    void flush();
    /// The job is safe elsewhere, or not wanted any more. A copy that an earlier process has left stays.
    void remove();
    /// The job is now the one of the copy that was left behind.
    void adopt();

    /// Path of the copy that a process which did not end well has left; nothing when there is none.
    [[nodiscard]] static std::optional<QString> leftBehind();
    /// Takes the copy out of the way, but keeps it under another name beside the log.
    static void setAside();

  private:
    void write();
    void join();

    std::function<QJsonObject()> content_;
    QTimer timer_;
    std::thread writer_;
    bool isOurs_ = false;  ///< the copy on disk is this process's
};

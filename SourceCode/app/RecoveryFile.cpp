#include "app/RecoveryFile.h"

#include <QFile>
#include <QJsonDocument>
#include <utility>

#include "core/InstallationFolder.h"
#include "core/WholeFile.h"

namespace {

constexpr int kDelay_ms = 2000;
const QString kName = QStringLiteral("recovery.tornvale");
const QString kAside = QStringLiteral("recovery.previous.tornvale");

/// A copy that cannot be written is tried again after the next edit.
void writeCopy(const QString& path, const QJsonObject& job) {
    static_cast<void>(writeWhole(path, QJsonDocument(job).toJson(QJsonDocument::Compact)));
}

}  // namespace

RecoveryFile::RecoveryFile(std::function<QJsonObject()> content, QObject* parent)
    : QObject(parent), content_(std::move(content)) {
    timer_.setSingleShot(true);
    timer_.setInterval(kDelay_ms);
    connect(&timer_, &QTimer::timeout, this, &RecoveryFile::write);
}

RecoveryFile::~RecoveryFile() {
    join();
}

void RecoveryFile::join() {
    if (writer_.joinable())
        writer_.join();
}

void RecoveryFile::jobChanged() {
    // Not started anew by each edit: who types without a pause is copied too.
    if (!timer_.isActive())
        timer_.start();
}

void RecoveryFile::write() {
    timer_.stop();
    join();
    isOurs_ = true;
    writer_ = std::thread(writeCopy, installationPath(kName), content_());
}

void RecoveryFile::flush() {
    if (timer_.isActive())
        write();
    join();
}

void RecoveryFile::adopt() {
    isOurs_ = true;
    jobChanged();
}

void RecoveryFile::remove() {
    timer_.stop();
    join();
    // Until the user has been asked about it, the copy of an earlier process stays whatever happens here.
    if (std::exchange(isOurs_, false))
        QFile::remove(installationPath(kName));
}

std::optional<QString> RecoveryFile::leftBehind() {
    const QString path = installationPath(kName);
    return QFile::exists(path) ? std::optional(path) : std::nullopt;
}

void RecoveryFile::setAside() {
    const QString aside = installationPath(kAside);
    QFile::remove(aside);
    QFile::rename(installationPath(kName), aside);
}

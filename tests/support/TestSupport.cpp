#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>

#include "core/InstallationFolder.h"

void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace {
LogCapture*& activeCapture() {
    static LogCapture* capture = nullptr;
    return capture;
}
}  // namespace

LogCapture::LogCapture() {
    activeCapture() = this;
    previous_ = qInstallMessageHandler(&LogCapture::handle);
}

LogCapture::~LogCapture() {
    qInstallMessageHandler(previous_);
    activeCapture() = nullptr;
}

void LogCapture::handle(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    activeCapture()->lines_.push_back({type, text});
    if (type == QtFatalMsg) {
        std::fputs(text.toUtf8().constData(), stderr);
        std::fflush(stderr);
        std::_Exit(1);
    }
}

bool LogCapture::contains(const QString& part) const {
    return count(part) > 0;
}

int LogCapture::count(const QString& part) const {
    int found = 0;
    for (const Line& line : lines_)
        found += line.text.contains(part) ? 1 : 0;
    return found;
}

QString LogCapture::all() const {
    QString text;
    for (const Line& line : lines_)
        text += line.text + QLatin1Char('\n');
    return text;
}

ExpectedDialogs::ExpectedDialogs() {
    setUserDialogs(this);
}

ExpectedDialogs::~ExpectedDialogs() {
    setUserDialogs(nullptr);
    for (const Told& box : told_)
        ADD_FAILURE() << "expected a box that was not shown: " << box.text.toStdString();
    EXPECT_TRUE(asks_.empty()) << "a prepared answer was not asked for";
    EXPECT_TRUE(items_.empty()) << "a prepared item was not asked for";
    EXPECT_TRUE(numbers_.empty()) << "a prepared number was not asked for";
    EXPECT_TRUE(files_.empty()) << "a prepared file was not asked for";
    EXPECT_TRUE(colors_.empty()) << "a prepared colour was not asked for";
    EXPECT_TRUE(keeps_.empty()) << "a prepared answer about changes was not asked for";
}

void ExpectedDialogs::expectTell(Kind kind, const QString& title, const QString& text) {
    told_.push_back({kind, title, text});
}

void ExpectedDialogs::tell(Kind kind, const QString& title, const QString& text, QWidget* /*parent*/) {
    if (told_.empty()) {
        ADD_FAILURE() << "unexpected box: " << title.toStdString() << " / " << text.toStdString();
        return;
    }
    EXPECT_EQ(static_cast<int>(told_.front().kind), static_cast<int>(kind));
    EXPECT_EQ(told_.front().title, title);
    EXPECT_EQ(told_.front().text, text);
    told_.pop_front();
}

bool ExpectedDialogs::ask(const QString& title, const QString& text, QWidget* parent) {
    return askOrCancel(title, text, parent).value_or(false);
}

std::optional<bool> ExpectedDialogs::askOrCancel(const QString& title, const QString& text,
                                                 QWidget* /*parent*/) {
    if (asks_.empty()) {
        ADD_FAILURE() << "unexpected question: " << title.toStdString() << " / " << text.toStdString();
        return std::nullopt;
    }
    const std::optional<bool> answer = asks_.front();
    asks_.pop_front();
    return answer;
}

std::optional<QString> ExpectedDialogs::chooseItem(const QString& title, const QString& /*label*/,
                                                   const QStringList& items) {
    offered_ = items;
    if (items_.empty()) {
        ADD_FAILURE() << "unexpected choice: " << title.toStdString();
        return std::nullopt;
    }
    const std::optional<QString> item = items_.front();
    items_.pop_front();
    return item;
}

std::optional<double> ExpectedDialogs::askNumber(const QString& title, const QString& /*label*/,
                                                 double /*value*/, double /*low*/, double /*high*/,
                                                 int /*decimals*/) {
    if (numbers_.empty()) {
        ADD_FAILURE() << "unexpected number dialog: " << title.toStdString();
        return std::nullopt;
    }
    const std::optional<double> number = numbers_.front();
    numbers_.pop_front();
    return number;
}

QString ExpectedDialogs::openFile(const QString& caption, const QString& /*folder*/,
                                  const QString& /*filter*/) {
    if (files_.empty()) {
        ADD_FAILURE() << "unexpected file dialog: " << caption.toStdString();
        return {};
    }
    const QString path = files_.front();
    files_.pop_front();
    return path;
}

QString ExpectedDialogs::saveFile(const QString& caption, const QString& folder, const QString& filter) {
    return openFile(caption, folder, filter);
}

QString ExpectedDialogs::chooseFolder(const QString& caption, const QString& folder) {
    return openFile(caption, folder, {});
}

std::optional<QColor> ExpectedDialogs::chooseColor(const QString& title, const QColor& /*initial*/) {
    if (colors_.empty()) {
        ADD_FAILURE() << "unexpected colour dialog: " << title.toStdString();
        return std::nullopt;
    }
    const std::optional<QColor> color = colors_.front();
    colors_.pop_front();
    return color;
}

UserDialogs::Keep ExpectedDialogs::askToSave(const QString& title, const QString& text, QWidget* /*parent*/) {
    if (keeps_.empty()) {
        ADD_FAILURE() << "unexpected question: " << title.toStdString() << " / " << text.toStdString();
        return Keep::Cancel;
    }
    const Keep keep = keeps_.front();
    keeps_.pop_front();
    return keep;
}

TemporaryInstallation::TemporaryInstallation() {
    setInstallationFolder(folder_.path());
    write(QStringLiteral("Tornvale3.3.0.5.rc"), "FILEVERSION 3,3,0,5\n");
}

TemporaryInstallation::~TemporaryInstallation() {
    setInstallationFolder({});
}

void TemporaryInstallation::write(const QString& name, const QByteArray& content) const {
    const QString path = file(name);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile out(path);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(out.write(content), content.size());
}

QByteArray TemporaryInstallation::read(const QString& name) const {
    QFile in(file(name));
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

QString shippedInstallation() {
    return QStringLiteral(TORNVALE_SOURCE_DIR "/installation");
}

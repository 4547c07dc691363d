#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QtGlobal>
#include <deque>
#include <ostream>
#include <utility>
#include <vector>

#include "core/UserDialogs.h"

// What all test programs share: a log that can be looked at, dialogs that must have been expected, and an
// installation folder of the test's own.

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds the printer by this name.
void PrintTo(const QString& text, std::ostream* out);

/// Collects every message of the Qt log while it lives. qFatal writes its text to standard error and ends
/// the process with status 1, as the program's own handler does; look at it with EXPECT_FATAL.
class LogCapture {
  public:
    struct Line {
        QtMsgType type;
        QString text;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    [[nodiscard]] const std::vector<Line>& lines() const { return lines_; }
    [[nodiscard]] bool contains(const QString& part) const;
    [[nodiscard]] int count(const QString& part) const;
    [[nodiscard]] QString all() const;

  private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text);
    std::vector<Line> lines_;
    QtMessageHandler previous_ = nullptr;
};

/// Passes when the statement ends the process through qFatal with a text that contains `text`.
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): a death test needs the statement itself.
#define EXPECT_FATAL(statement, text) \
    EXPECT_EXIT(                      \
        {                             \
            const LogCapture capture; \
            statement;                \
        },                            \
        ::testing::ExitedWithCode(1), text)

/// Dialogs with prepared answers. A box that was not expected fails the test; so does an answer that
/// nobody asked for.
class ExpectedDialogs final : public UserDialogs {
  public:
    ExpectedDialogs();
    ~ExpectedDialogs() override;
    ExpectedDialogs(const ExpectedDialogs&) = delete;
    ExpectedDialogs& operator=(const ExpectedDialogs&) = delete;

    void expectTell(Kind kind, const QString& title, const QString& text);
    void answerAsk(bool answer) { asks_.push_back(answer); }
    /// Gives up the question of the next askOrCancel.
    void answerCancel() { asks_.push_back(std::nullopt); }
    void answerChooseItem(std::optional<QString> item) { items_.push_back(std::move(item)); }
    void answerNumber(std::optional<double> number) { numbers_.push_back(number); }
    /// Also the answer of the next folder dialog.
    void answerFile(const QString& path) { files_.push_back(path); }
    void answerColor(std::optional<QColor> color) { colors_.push_back(std::move(color)); }
    void answerKeep(Keep keep) { keeps_.push_back(keep); }
    /// The list that the last chooseItem offered.
    [[nodiscard]] const QStringList& offeredItems() const { return offered_; }

    void tell(Kind kind, const QString& title, const QString& text, QWidget* parent) override;
    bool ask(const QString& title, const QString& text, QWidget* parent) override;
    std::optional<bool> askOrCancel(const QString& title, const QString& text, QWidget* parent) override;
    std::optional<QString> chooseItem(const QString& title, const QString& label,
                                      const QStringList& items) override;
    std::optional<double> askNumber(const QString& title, const QString& label, double value, double low,
                                    double high, int decimals) override;
    QString openFile(const QString& caption, const QString& folder, const QString& filter) override;
    QString saveFile(const QString& caption, const QString& folder, const QString& filter) override;
    QString chooseFolder(const QString& caption, const QString& folder) override;
    std::optional<QColor> chooseColor(const QString& title, const QColor& initial) override;
    Keep askToSave(const QString& title, const QString& text, QWidget* parent) override;

  private:
    struct Told {
        Kind kind;
        QString title;
        QString text;
    };
    std::deque<Told> told_;
    std::deque<std::optional<bool>> asks_;
    std::deque<std::optional<QString>> items_;
    std::deque<std::optional<double>> numbers_;
    std::deque<QString> files_;
    std::deque<std::optional<QColor>> colors_;
    std::deque<Keep> keeps_;
    QStringList offered_;
};

/// An installation folder with nothing in it but the version file, in force while the object lives.
class TemporaryInstallation {
  public:
    TemporaryInstallation();
    ~TemporaryInstallation();
    TemporaryInstallation(const TemporaryInstallation&) = delete;
    TemporaryInstallation& operator=(const TemporaryInstallation&) = delete;

    [[nodiscard]] QString path() const { return folder_.path(); }
    [[nodiscard]] QString file(const QString& name) const { return folder_.filePath(name); }
    /// Writes a file below the folder, making the folders on the way.
    void write(const QString& name, const QByteArray& content) const;
    [[nodiscard]] QByteArray read(const QString& name) const;

  private:
    QTemporaryDir folder_;
};

/// The installation data in the source tree.
[[nodiscard]] QString shippedInstallation();

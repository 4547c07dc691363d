#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "core/UserDialogs.h"

// How tornvale-batch speaks: errors, boxes and fatal messages as single lines on standard error.

enum class ExitStatus {
    Done = 0,
    ProgramAtFault = 1,
    WrongCall = 2,
    BadInput = 3,
    BadInstallation = 4,
};

/// Why a command ends early.
struct Failure {
    ExitStatus status = ExitStatus::BadInput;
    QString place;  ///< file, option or, with a line, "file:line"
    QString text;
};

/// What a command hands over: bytes for the result, or why there are none; and what is wrong with the
/// program.
struct Outcome {
    std::optional<QByteArray> result;
    std::optional<Failure> failure;
    QString summary = {};  ///< for standard error, once the result is written; empty: none
};

/// "tornvale-batch: PLACE: TEXT" as one line: line feeds and other control characters become blanks.
void printError(const QString& place, const QString& text);

/// The summary of a result, in the same form.
void printSummary(const QString& place, const QString& text);

/// Progress and notes, in the same form; nothing with `setQuiet`.
void printNote(const QString& place, const QString& text);
/// Progress: like printNote, but only when standard error is a terminal.
void printProgress(const QString& place, const QString& text);
void setQuiet(bool isQuiet);

/// Sends the log nowhere but into memory: warnings wait to explain an error. A fatal message becomes an error
/// line and ends the process.
void installBatchLog();

/// Whom a fatal message is about. The machine, unless the program itself called for axes that are not there.
void setFatalPlaces(const QString& machineFile, const QString& programFile);

/// The warning that was logged last, empty when there was none since forgetWarnings.
[[nodiscard]] QString lastWarning();
void forgetWarnings();

/// Nobody is there: boxes become lines, questions take the answer that changes nothing.
class BatchDialogs final : public UserDialogs {
  public:
    explicit BatchDialogs(QString place) : place_(std::move(place)) {}

    void tell(Kind kind, const QString& title, const QString& text, QWidget* parent) override;
    bool ask(const QString& title, const QString& text, QWidget* parent) override;
    std::optional<QString> chooseItem(const QString& title, const QString& label,
                                      const QStringList& items) override;
    std::optional<double> askNumber(const QString& title, const QString& label, double value, double low,
                                    double high, int decimals) override;
    QString openFile(const QString& caption, const QString& folder, const QString& filter) override;
    QString saveFile(const QString& caption, const QString& folder, const QString& filter) override;

  private:
    QString place_;
};

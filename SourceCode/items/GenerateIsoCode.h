#pragma once

#include <QString>
#include <QVector>

class UserTopItem;
class UserTopItemManager;

namespace TORNVALE {

/// The NC program of a job, or why there is none.
struct NcProgram {
    QString text;
    int lines = 0;
    double seconds = 0;  ///< machining time: a line lasts one interpolation period
    /// Names the first group with items over a limit and their row numbers, or is what missingSpindleText
    /// gives; empty when all is well.
    QString refusal;
};

/// Names the first checked item whose spindle the machine lacks: no program can be joined with it. Empty when
/// all are there.
[[nodiscard]] QString missingSpindleText(const QVector<UserTopItem*>& groups);

/// Merges the groups that the chosen pattern of the post-processor asks for, in its order. Items over a limit
/// stop it.
[[nodiscard]] NcProgram makeNcProgram(const UserTopItemManager& root);

}  // namespace TORNVALE

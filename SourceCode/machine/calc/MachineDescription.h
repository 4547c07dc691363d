#pragma once

#include <Inventor/SbVec3f.h>
#include <Inventor/SbVec4f.h>

#include <QChar>
#include <QHash>
#include <QStringView>
#include <QVector>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "machine/calc/MachineRecords.h"

/// Axis id -> letter, by rising id.
using AxisMap = QMap<int, QChar>;

/// A whole machine as read from its file, with look-ups that cost an array access. Calculations get this
/// object passed; they never reach for the process-wide reader.
///
/// The records stay where they are for the life of the description, so pointers to them stay valid. After
/// changing `numericalAxes` by hand (tests do) call `rebuildIndex`.
class MachineDescription {
  public:
    QString path;
    std::vector<std::unique_ptr<numericalAxisStruct>> numericalAxes;
    std::vector<std::unique_ptr<nonNumericalAxisStruct>> nonNumericalAxes;
    std::vector<std::unique_ptr<spindleStruct>> spindles;
    machineParametersStruct machineParameters;
    std::vector<std::unique_ptr<workCoordinateSystemStruct>> workCoordinateSystems;
    userCommandStruct userCommand;
    interpolationParametersStruct interpolationParameters;
    QMap<QString, bool> collisionObjectList;
    std::vector<UserFixtureList> fixtures;
    bool valid = true;

    void rebuildIndex();

    /// The axis whose `name` is exactly this one character; nullptr when there is none.
    [[nodiscard]] const numericalAxisStruct* findAxis(QChar letter) const;
    /// The spindle whose `name` without its first "T" is this number; nullptr when there is none.
    [[nodiscard]] const spindleStruct* findSpindle(int number) const;
    /// The spindle's `initialization` when it has exactly four parts, otherwise zeros.
    [[nodiscard]] SbVec4f spindleOffset(int number) const;
    [[nodiscard]] const workCoordinateSystemStruct* findWorkCoordinateSystem(const QString& name) const;
    /// Origin of the named system, mm; zeros when there is none or its text is not three numbers.
    [[nodiscard]] SbVec3f workCoordinateOrigin(const QString& name) const;

    /// id -> letter for each A..Z of `text` that names an axis; a later letter of the same id replaces an
    /// earlier one; id 6 only when asked for. Ids other than 1 to 6 are in no map: a way point has no entry
    /// for them.
    [[nodiscard]] AxisMap axisMap(QStringView text, bool withAuxiliary) const;
    /// The letters A..Z of `text`, in their order, that name an axis.
    [[nodiscard]] QVector<QChar> axisLetters(QStringView text) const;
    /// `acceleration` / `jerk` of the chain's axes in id order, id 6 left out.
    [[nodiscard]] std::vector<double> accelerations(QStringView chain) const;
    [[nodiscard]] std::vector<double> jerks(QStringView chain) const;
    /// "G1 X0 Y0 Z100 C0 A0 F7000": `homePosition` (`lower` for id 6) of every axis of the chain, then the
    /// rapid feed. Texts of the file, as they stand.
    [[nodiscard]] QString homeLine(QStringView chain) const;
    /// First name of the machine chain that contains `nodeName`; empty when none does.
    [[nodiscard]] QString chainHead(const QString& nodeName) const;

  private:
    std::array<const numericalAxisStruct*, 128> axisByLetter_{};
    QHash<char16_t, const numericalAxisStruct*> axisByOtherLetter_;  ///< names outside ASCII
};

/// Three numbers separated by blanks (empty parts dropped); nothing when the text has not exactly three
/// parts. A part that is no number counts as 0.
[[nodiscard]] std::optional<SbVec3f> threeNumbers(const QString& text);

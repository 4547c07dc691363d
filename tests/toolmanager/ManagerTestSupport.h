#pragma once

#include <Inventor/SbVec3f.h>

#include <QAction>
#include <QByteArray>
#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>
#include <iosfwd>

#include "support/TestSupport.h"
#include "tools/ToolData.h"
#include "tools/ToolManager.h"

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds the printer by this name.
void PrintTo(const SbVec3f& vector, std::ostream* out);

/// The shipped English texts, a chain saw library of the groups "Saw1" and "Saw2", no tool library, and a
/// machine of three spindles: T1 reverses and has 12 places, T2 does not reverse and has one, T3 has a
/// reversing flag of "TRUE" and 3 places.
class ManagerInstallation : public TemporaryInstallation {
  public:
    ManagerInstallation();
    ~ManagerInstallation();
    ManagerInstallation(const ManagerInstallation&) = delete;
    ManagerInstallation& operator=(const ManagerInstallation&) = delete;

    /// A library file of tools with these indices, in the current form.
    void writeLibrary(const QList<int>& indices) const;
};

/// The machine above; `names` other than "T1" to "T3" are left out.
void setMachine(const QStringList& names);

/// A tool with this index; the other numbers follow from it so that tools differ.
[[nodiscard]] ToolRecord toolOfIndex(int index);
[[nodiscard]] ToolData* newTool(int index);
[[nodiscard]] QByteArray pictureFile(QSize size);

/// Text of the English table.
[[nodiscard]] QString english(const char* group, const char* key);

[[nodiscard]] QList<int> indicesUnder(const QTreeWidgetItem* root);
[[nodiscard]] QAction* actionOf(const TORNVALE::ToolsManager& manager, const char* name);
/// Selects exactly these tools.
void select(TORNVALE::ToolsManager& manager, const QList<QTreeWidgetItem*>& rows);

/// Keeps what it is told, and vetoes the removal of one index.
class TestObserver : public TORNVALE::ToolObserver {
  public:
    void UpdateToolList(QList<ToolData*> tools) override;
    bool canRemoveTool(ToolData* tool) override;

    int vetoedIndex = -1000;
    int updates = 0;
    QList<int> lastIndices;
    QList<int> askedIndices;
};

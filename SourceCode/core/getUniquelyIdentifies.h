#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include "core/calc/UniqueNames.h"

class SoNode;

/// The names of the installation ("data/UniquelyIdentifies.json") and the numbers behind them. Read once, at
/// first use, which may happen on any thread; initialises the scene library, since scene names need it.
class getUniquelyIdentifies {
  public:
    static getUniquelyIdentifies& instance();

    /// The prefixes, words and flags.
    [[nodiscard]] const UniqueNames& names() const { return names_; }
    /// The file that was read.
    [[nodiscard]] QString path() const { return path_; }

    /// Number of the next name among the given nodes: see nextNumberOfSceneNames. -1, with a debug line, when
    /// a suffix does not convert.
    [[nodiscard]] int makeUniquelyIdentifies(const QVector<SoNode*>& nodes) const;
    /// Number of the next name among texts: see nextNumberOfTexts.
    [[nodiscard]] int makeUniquelyIdentifies(const QStringList& names) const;

    /// Reads the file anew: for tests, which change the installation folder within one process.
    void reload();

  private:
    getUniquelyIdentifies();
    QString path_;
    UniqueNames names_;
};

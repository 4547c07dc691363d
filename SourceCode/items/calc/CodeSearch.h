#pragma once

#include <QString>
#include <QStringView>

/// Finds a plain text in a program. Without regard to case a letter matches its small and its capital form.
/// Matches may overlap, so that the way back meets the same ones as the way forth.
class CodeSearch {
  public:
    CodeSearch() = default;
    CodeSearch(const QString& needle, Qt::CaseSensitivity sensitivity);

    /// True when there is nothing to search for; such a search finds nothing.
    [[nodiscard]] bool isEmpty() const { return lower_.isEmpty(); }
    [[nodiscard]] int length() const { return lower_.size(); }

    /// Offset of the first match that starts at `from` or behind it; -1 when there is none.
    [[nodiscard]] int next(QStringView text, int from) const;
    /// Offset of the last match that starts at `from` or before it; -1 when there is none.
    [[nodiscard]] int previous(QStringView text, int from) const;

    struct Found {
        int offset = -1;
        bool wrapped = false;  ///< the search went on at the other end
    };
    [[nodiscard]] Found nextWrapped(QStringView text, int from) const;
    [[nodiscard]] Found previousWrapped(QStringView text, int from) const;

    struct Count {
        int total = 0;
        int number = 0;  ///< matches that start at the asked offset or before it: the match's number from 1
    };
    [[nodiscard]] Count count(QStringView text, int offset) const;

  private:
    [[nodiscard]] bool matchesAt(const char16_t* place) const;
    /// Of the kBlock places from `place`, how many have the first and the last letter of the needle.
    [[nodiscard]] int candidates(const char16_t* place) const;
    static constexpr int kBlock = 64;

    QString lower_;
    QString upper_;
};

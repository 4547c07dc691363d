#pragma once

#include <QChar>
#include <QString>
#include <QStringList>
#include <QVector>
#include <string>
#include <vector>

/// One line of an NC program, read by hand.
struct NcLine {
    enum class Kind { Motion, Command, Delay, Remark, Other };
    Kind kind = Kind::Other;
    QString text;
    int number = 0;                ///< in the file, from 1
    std::vector<double> position;  ///< behind a motion line, NaN for axes that no line has named yet
    double feed = 0;               ///< of a motion line, mm per minute
    bool isRapid = false;          ///< G0, or a G1 at the rapid feed

    /// The same place at the same feed.
    [[nodiscard]] bool isSameMotion(const NcLine& other) const;
};

/// How the lines of a program are read.
struct NcDialect {
    QVector<QChar> letters;  ///< of the axes, in the order of the positions
    QString order;           ///< the order in which they stand on a line
    double rapidFeed = 0;
    QString delay;
};

/// A program as its controller reads it: words are modal, G0 and G1 move alike. Knows nothing of the code
/// that wrote it. Empty lines are left out. What no controller would understand is written to `faults`: words
/// twice or out of order, numbers without three decimals, axes that are not there.
struct NcText {
    NcText(const QString& text, const NcDialect& dialect);

    std::vector<NcLine> lines;
    std::vector<std::string> faults;

    [[nodiscard]] std::vector<const NcLine*> motions() const;

  private:
    void readMotion(NcLine& line, const NcDialect& dialect);
    void object(const NcLine& line, const char* text);

    std::vector<double> position_;
    double feed_ = 0;
};

/// "10 M3 S6000" for equal lines; motion lines of one feed as their number, the last of them, and a checksum
/// of all. One entry per line: what a golden file holds.
QString listing(const QString& program);

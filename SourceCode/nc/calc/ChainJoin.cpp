#include "nc/calc/ChainJoin.h"

#include <algorithm>
#include <vector>

#include "nc/calc/OutputText.h"
#include "nc/calc/OutputWords.h"

namespace {

qsizetype lengthOf(const QVector<QString>& chains) {
    qsizetype length = 0;
    for (const QString& chain : chains)
        length += chain.size() + 1;
    return length;
}

QString finished(OutputText& out, Diagnostics& diagnostics) {
    if (out.isFull())
        diagnostics.add(Severity::Warning, QStringLiteral("The program is too long and is left out."));
    return out.take();
}

bool isRemark(QStringView line) {
    return line.startsWith(u';') || line.startsWith(u'(');
}

/// Walks all chains in step and writes their lines of one instant together.
class TandemMerge {
  public:
    TandemMerge(const QVector<QString>& chains, Diagnostics& diagnostics) : diagnostics_(diagnostics) {
        for (const QString& chain : chains)
            walks_.emplace_back(chain);
    }

    /// Lines of the next instant; false when every chain is at its end.
    bool next() {
        lines_.clear();
        for (LineWalk& walk : walks_) {
            if (walk.next())
                lines_.push_back(walk.line());
        }
        ++number_;
        return !lines_.empty();
    }

    void write(OutputText& out) {
        const bool equal = std::all_of(lines_.begin() + 1, lines_.end(),
                                       [this](QStringView line) { return line == lines_.front(); });
        if (equal) {
            out.append(lines_.front());
            return;
        }
        // A command shares no block.
        const bool command = std::any_of(lines_.begin(), lines_.end(), holdsCommand);
        if (!command)
            warnOfRemark();
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            if (i > 0)
                out.append(command ? u'\n' : u' ');
            out.append(lines_[i]);
        }
    }

  private:
    /// A comment takes the rest of its block out of the program, a directive is one only on its own line.
    void warnOfRemark() {
        if (warned_ || std::none_of(lines_.begin(), lines_.end(), isRemark))
            return;
        const bool motion = std::any_of(lines_.begin(), lines_.end(), isMotionLine);
        if (!motion)
            return;
        warned_ = true;
        diagnostics_.add(
            Severity::Warning,
            QStringLiteral("Line %1: a comment or directive shares the block of another chain's motion.")
                .arg(number_),
            number_);
    }

    std::vector<LineWalk> walks_;
    std::vector<QStringView> lines_;
    Diagnostics& diagnostics_;
    int number_ = 0;
    bool warned_ = false;
};

}  // namespace

QString joinChains(const QVector<QString>& chains, Diagnostics& diagnostics) {
    OutputText out(lengthOf(chains));
    for (const QString& chain : chains)
        out.appendLine(chain);
    return finished(out, diagnostics);
}

QString mergeTandem(const QVector<QString>& chains, std::uint32_t bound, Diagnostics& diagnostics) {
    if (chains.size() == 1)
        return chains.front();
    OutputText out(lengthOf(chains));
    TandemMerge merge(chains, diagnostics);
    std::uint32_t written = 0;
    while (written < bound && merge.next()) {
        if (written > 0)
            out.append(u'\n');
        merge.write(out);
        ++written;
    }
    // The first of the lines that are left ends the last one that was written.
    out.append(static_cast<qsizetype>(bound) - std::max<std::uint32_t>(written, 1), u'\n');
    return finished(out, diagnostics);
}

#include "machine/calc/AxisLimits.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "core/calc/NumberText.h"

namespace {

bool belongsToNumbers(QChar c) {
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('.') || c == QLatin1Char('-');
}

/// Finds, in one walk over a line, the number behind the first place of each wanted letter.
class LineWords {
  public:
    struct Word {
        QChar letter;
        std::uint64_t line = 0;  ///< line in which the letter was last seen
        std::optional<double> value;
    };

    explicit LineWords(const std::vector<AxisLimitRow>& rows) {
        for (const AxisLimitRow& row : rows)
            wordOfRow_.push_back(add(row.letter));
    }

    /// Reads the line at `position`; the result is the place of its line feed or the end of the text.
    qsizetype read(QStringView text, qsizetype position) {
        ++line_;
        const char16_t* const characters = text.utf16();
        const qsizetype size = text.size();
        for (; position < size && characters[position] != u'\n'; ++position) {
            const std::uint16_t index = indexOf(characters[position]);
            if (index == kNone || words_[index].line == line_)
                continue;
            const QStringView run = numberRun(text, position + 1);
            words_[index].line = line_;
            words_[index].value = numberFromRun(run);
            if (runsCanBeSkipped_)
                position += run.size();
        }
        return position;
    }

    /// The value of this row's word in the line that was read last.
    [[nodiscard]] std::optional<double> valueOf(std::size_t row) const {
        const Word& word = words_[wordOfRow_[row]];
        return word.line == line_ ? word.value : std::nullopt;
    }

  private:
    static constexpr std::uint16_t kNone = 0xFFFF;

    std::uint16_t add(QChar letter) {
        const std::uint16_t known = indexOf(letter.unicode());
        if (known != kNone)
            return known;
        const auto index = static_cast<std::uint16_t>(words_.size());
        words_.push_back({letter, 0, std::nullopt});
        if (letter.unicode() < indexOfAscii_.size())
            indexOfAscii_[letter.unicode()] = index;
        else
            hasOtherLetters_ = true;
        // An axis may be called "1" or "-": its first place can then lie inside another word's number.
        runsCanBeSkipped_ = runsCanBeSkipped_ && !belongsToNumbers(letter);
        return index;
    }

    [[nodiscard]] std::uint16_t indexOf(char16_t c) const {
        if (c < indexOfAscii_.size())
            return indexOfAscii_[c];
        return hasOtherLetters_ ? indexOfOther(c) : kNone;
    }

    [[nodiscard]] std::uint16_t indexOfOther(char16_t c) const {
        const auto isIt = [c](const Word& word) { return word.letter.unicode() == c; };
        const auto found = std::find_if(words_.begin(), words_.end(), isIt);
        return found == words_.end() ? kNone : static_cast<std::uint16_t>(found - words_.begin());
    }

    static constexpr std::array<std::uint16_t, 128> noIndices() {
        std::array<std::uint16_t, 128> indices{};
        indices.fill(kNone);
        return indices;
    }

    std::array<std::uint16_t, 128> indexOfAscii_ = noIndices();
    std::vector<Word> words_;
    std::vector<std::uint16_t> wordOfRow_;
    std::uint64_t line_ = 0;
    bool hasOtherLetters_ = false;
    bool runsCanBeSkipped_ = true;
};

}  // namespace

std::optional<std::vector<AxisLimitRow>> axisLimitRows(const MachineDescription& machine,
                                                       const AxisMap& letters, Diagnostics& diagnostics) {
    std::vector<AxisLimitRow> rows;
    for (const QChar letter : letters) {
        const numericalAxisStruct* axis = machine.findAxis(letter);
        if (axis == nullptr)
            break;
        if (!threeNumbers(axis->direction)) {
            diagnostics.add(Severity::Fatal, QStringLiteral("axis direction format error."));
            return std::nullopt;
        }
        // Single precision must stay: 0.1 as a limit is the float next to it.
        rows.push_back({axis->name[0], double{axis->lower.toFloat()}, double{axis->upper.toFloat()}, 0, 0});
    }
    return rows;
}

bool checkAxisLimits(std::vector<AxisLimitRow>& rows, QStringView code) {
    for (AxisLimitRow& row : rows)
        row.min = row.max = 0;
    LineWords words(rows);
    for (qsizetype position = 0; position < code.size(); ++position) {
        if (code[position] == QLatin1Char('\n'))
            continue;
        position = words.read(code, position);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (const std::optional<double> value = words.valueOf(i)) {
                rows[i].min = std::min(rows[i].min, *value);
                rows[i].max = std::max(rows[i].max, *value);
            }
            if (rows[i].belowLower() || rows[i].aboveUpper())
                return true;
        }
    }
    return false;
}

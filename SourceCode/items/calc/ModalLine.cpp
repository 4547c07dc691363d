#include "items/calc/ModalLine.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "items/calc/CodeLines.h"
#include "items/calc/CodeWords.h"

namespace {

void appendWord(QString& line, QStringView word) {
    if (word.isEmpty())
        return;
    if (!line.isEmpty())
        line.append(QLatin1Char(' '));
    line.append(word);
}

/// The words still wanted, one place for each capital letter.
class AxisWords {
  public:
    explicit AxisWords(QStringView letters) {
        for (const QChar letter : letters) {
            if (isCapital(letter) && !wanted_[place(letter)]) {
                wanted_[place(letter)] = true;
                ++missing_;
            }
        }
    }
    [[nodiscard]] bool complete() const { return missing_ == 0; }
    [[nodiscard]] QStringView of(QChar letter) const {
        return isCapital(letter) ? words_[place(letter)] : QStringView();
    }

    /// Takes from `line` the words of letters that have none yet; of two in one line the last one counts.
    void take(QStringView line) {
        std::array<QStringView, kLetters> found{};
        CodeWordReader reader(line);
        while (reader.next()) {
            if (!reader.isComment())
                found[place(reader.letter())] = reader.word();
        }
        for (std::size_t i = 0; i < kLetters; ++i) {
            if (!wanted_[i] || !words_[i].isEmpty() || found[i].isEmpty())
                continue;
            words_[i] = found[i];
            --missing_;
        }
    }

  private:
    static constexpr std::size_t kLetters = 26;
    static bool isCapital(QChar letter) { return letter >= QLatin1Char('A') && letter <= QLatin1Char('Z'); }
    static std::size_t place(QChar letter) { return static_cast<std::size_t>(letter.unicode() - u'A'); }

    std::array<bool, kLetters> wanted_{};
    std::array<QStringView, kLetters> words_{};
    int missing_ = 0;
};

/// The words of the line itself that go along with the axis words; `command` tells of an M word.
QString ownWords(QStringView line, bool& command) {
    QString text;
    CodeWordReader reader(line);
    while (reader.next()) {
        if (reader.isComment() || reader.letter() == QLatin1Char('N'))
            continue;
        command = command || reader.letter() == QLatin1Char('M');
        appendWord(text, reader.word());
    }
    return text;
}

}  // namespace

QString modalLine(const CodeLines& lines, int index, QStringView axisLetters, const ModalWalk& walk) {
    if (index < 0 || index >= lines.count())
        return {};
    AxisWords axes(axisLetters);
    const QStringView own = lines.line(index);
    axes.take(own);
    const AxisWords ofLine = axes;
    qint64 letters = own.size();
    const int last = std::max(0, index - walk.lines);
    for (int at = index - 1; at >= last && !axes.complete() && letters < walk.letters; --at) {
        const QStringView line = lines.line(at);
        const QStringView shown = line.left(std::min<qsizetype>(line.size(), walk.letters));
        letters += shown.size();
        axes.take(shown);
    }
    bool command = false;
    QString text = ownWords(own, command);
    if (command)
        text.clear();
    for (const QChar letter : axisLetters) {
        if (command || ofLine.of(letter).isEmpty())
            appendWord(text, axes.of(letter));
    }
    return text;
}

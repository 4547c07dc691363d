#include <algorithm>
#include <cmath>
#include <limits>

#include "core/calc/NumberText.h"
#include "machine/calc/Kinematics.h"

namespace {

QStringView viewOf(const std::u16string& line) {
    return {line.data(), static_cast<qsizetype>(line.size())};
}

/// `line` with every stretch of white space as one blank, and none at either end.
void simplify(QStringView line, std::u16string& out) {
    out.clear();
    bool pending = false;
    for (const QChar c : line) {
        if (c.isSpace()) {
            pending = !out.empty();
            continue;
        }
        if (pending)
            out.push_back(u' ');
        pending = false;
        out.push_back(c.unicode());
    }
}

/// The run as a float; what a normal float cannot hold is no number, as with QString::toFloat.
std::optional<float> floatFromRun(QStringView run) {
    const std::optional<double> value = numberFromRun(run);
    if (!value || std::abs(*value) > double{std::numeric_limits<float>::max()})
        return std::nullopt;
    if (*value != 0.0 && std::abs(*value) < double{std::numeric_limits<float>::min()})
        return std::nullopt;
    return static_cast<float>(*value);
}

}  // namespace

/// One ISO line whose words are read and rewritten in place. The first place of a letter is its word.
class KinematicTransform::EditableLine {
  public:
    void set(QStringView line) { simplify(line, line_); }
    [[nodiscard]] QStringView text() const { return viewOf(line_); }

    [[nodiscard]] std::optional<float> read(QChar letter) const {
        const std::optional<QStringView> run = runBehind(letter);
        return run ? floatFromRun(*run) : std::nullopt;
    }

    /// Writes old + `change` with three decimals behind the letter, when there is a number.
    void shift(QChar letter, double change) {
        const std::optional<QStringView> run = runBehind(letter);
        const std::optional<float> old = run ? floatFromRun(*run) : std::nullopt;
        if (!old)
            return;
        digits_.clear();
        appendFixed3(digits_, double{*old} + change);
        const auto place = static_cast<std::size_t>(run->utf16() - line_.data());
        line_.replace(place, static_cast<std::size_t>(run->size()), digits_.size(), u'0');
        std::copy(digits_.begin(), digits_.end(), line_.begin() + static_cast<std::ptrdiff_t>(place));
    }

  private:
    [[nodiscard]] std::optional<QStringView> runBehind(QChar letter) const {
        const std::size_t place = letter.isNull() ? std::u16string::npos : line_.find(letter.unicode());
        if (place == std::u16string::npos)
            return std::nullopt;
        return numberRun(viewOf(line_), static_cast<qsizetype>(place) + 1);
    }

    std::u16string line_;
    std::string digits_;
};

namespace {

/// What is added to a number: the value or its opposite by mode; -0.0 keeps every number, -0.0 too.
double changeBy(int mode, float value) {
    if (mode == KinematicTransform::kToMachine)
        return double{value};
    return mode == KinematicTransform::kToTip ? -double{value} : -0.0;
}

}  // namespace

QString KinematicTransform::transformText(const QString& text) {
    const QStringView all(text);
    QString result;
    result.reserve(text.size() + text.size() / 4);
    OffsetCache cache;
    EditableLine line;
    bool isFirst = true;
    for (qsizetype begin = 0; begin < all.size();) {
        const qsizetype lineFeed = all.indexOf(u'\n', begin);
        const qsizetype end = lineFeed < 0 ? all.size() : lineFeed;
        if (end > begin) {
            line.set(all.mid(begin, end - begin));
            transformLine(line, cache);
            if (!isFirst)
                result.append(QLatin1Char('\n'));
            isFirst = false;
            const QStringView done = line.text();
            result.append(done.data(), static_cast<int>(done.size()));
        }
        begin = end + 1;
    }
    return result;
}

void KinematicTransform::transformLine(EditableLine& line, OffsetCache& cache) {
    const QChar letter4 = letters_[kIds - 2];
    const QChar letter5 = letters_[kIds - 1];
    modal4_deg_ = line.read(letter4).value_or(modal4_deg_);
    modal5_deg_ = line.read(letter5).value_or(modal5_deg_);
    const SbVec3f offset = cache.at(*this, modal4_deg_, modal5_deg_);
    for (std::size_t i = 0; i < kIds - 2; ++i)
        line.shift(letters_[i], changeBy(mode_, offset[static_cast<int>(i)]));
    line.shift(letter4, changeBy(mode_, compensation4_deg_));
    line.shift(letter5, changeBy(mode_, compensation5_deg_));
    // Last, so that a carrier that is axis 5 itself shifts the number that was just written.
    if (mode_ == kToMachine || mode_ == kToTip)
        line.shift(carrierLetter_, -changeBy(mode_, spindleAngle_deg_));
}

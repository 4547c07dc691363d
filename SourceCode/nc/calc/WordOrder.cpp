#include "nc/calc/WordOrder.h"

#include <array>
#include <vector>

#include "nc/calc/OutputText.h"
#include "nc/calc/OutputWords.h"

namespace {

bool isBlank(QChar c) {
    return c == u' ' || c == u'\t';
}

/// `line` behind leading blanks and the text that an earlier pass put in front.
QStringView behindPrepended(QStringView line, const QString& prepend) {
    line = line.trimmed();
    if (!prepend.isEmpty() && line.startsWith(prepend))
        line = line.mid(prepend.size());
    return line;
}

/// Calls `write(line)` for each line that differs from the one before.
template <typename Write>
void forDifferentLines(QStringView text, OutputText& out, const Write& write) {
    LineWalk lines(text);
    QStringView before;
    for (bool first = true; lines.next(); first = false) {
        if (!first) {
            if (lines.line() == before)
                continue;
            out.append(u'\n');
        }
        before = lines.line();
        write(before);
    }
}

/// The words of one motion line, found in a single walk over it.
class MotionWords {
  public:
    explicit MotionWords(const QVector<QChar>& letters) {
        index_.fill(-1);
        for (const QChar letter : letters) {
            const char16_t code = letter.unicode();
            const bool known = code < index_.size() && code != u'G' && code != u'F';
            if (known && index_[code] < 0) {
                index_[code] = static_cast<int>(axes_.size());
                axes_.emplace_back();
            }
        }
    }

    /// False when the line is no motion line, or holds something that would be lost.
    bool read(QStringView line) {
        motion_ = line.left(motionWordLength(line));
        if (motion_.isEmpty())
            return false;
        feed_ = {};
        axes_.assign(axes_.size(), {});
        differ_ = false;
        bool hasAxis = false;
        for (qsizetype place = motion_.size(); place < line.size();) {
            if (isBlank(line[place])) {
                ++place;
                continue;
            }
            const qsizetype length = wordLength(line, place);
            if (length == 0 || !take(line.mid(place, length)))
                return false;
            hasAxis = hasAxis || axisOf(line[place]) >= 0;
            place += length;
        }
        return hasAxis;
    }

    void write(OutputText& out) const {
        out.append(motion_);
        for (const QStringView& axis : axes_)
            appendWord(axis, out);
        appendWord(feed_, out);
    }

    [[nodiscard]] bool differ() const { return differ_; }

  private:
    static qsizetype wordLength(QStringView line, qsizetype place) {
        const qsizetype number = numberLength(line, place + 1);
        return number == 0 ? 0 : number + 1;
    }

    static void appendWord(QStringView word, OutputText& out) {
        if (word.isEmpty())
            return;
        out.append(u' ');
        out.append(word);
    }

    [[nodiscard]] int axisOf(QChar letter) const {
        return letter.unicode() < index_.size() ? index_[letter.unicode()] : -1;
    }

    bool take(QStringView word) {
        if (word.front() == u'G')
            return word == motion_;
        const int axis = axisOf(word.front());
        if (axis < 0 && word.front() != u'F')
            return false;
        QStringView& known = axis < 0 ? feed_ : axes_[static_cast<std::size_t>(axis)];
        differ_ = differ_ || (axis >= 0 && !known.isEmpty() && known != word);
        if (known.isEmpty())
            known = word;
        return true;
    }

    std::array<int, 128> index_{};
    std::vector<QStringView> axes_;
    QStringView motion_;
    QStringView feed_;
    bool differ_ = false;
};

QString toolWord(int tool) {
    return QStringLiteral(" t%1").arg(static_cast<double>(tool), 0, 'f', 3);
}

}  // namespace

QString withOrderedWords(const QString& text, const QVector<QChar>& letters, const QString& prepend,
                         Diagnostics& diagnostics) {
    OutputText out(text.size());
    MotionWords words(letters);
    int lineNumber = 0;
    bool warned = false;
    forDifferentLines(text, out, [&](QStringView line) {
        ++lineNumber;
        const QStringView motion = behindPrepended(line, prepend);
        if (!words.read(motion)) {
            out.append(line);
            return;
        }
        if (words.differ() && !warned) {
            warned = true;
            diagnostics.add(
                Severity::Warning,
                QStringLiteral("Line %1: two chains move one axis; the first word is kept.").arg(lineNumber),
                lineNumber);
        }
        const QStringView whole = line.trimmed();
        out.append(whole.left(whole.size() - motion.size()));
        words.write(out);
    });
    return out.take();
}

QString withToolWords(const QString& text, const QString& prepend, std::optional<int> firstTool,
                      std::optional<int> lastTool) {
    OutputText out(text.size() + 64);
    bool found = false;
    qsizetype lastEnd = -1;  // of the last motion line, when it is not the first too
    forDifferentLines(text, out, [&](QStringView line) {
        out.append(line);
        if (motionWordLength(behindPrepended(line, prepend)) == 0)
            return;
        if (found) {
            lastEnd = out.size();
            return;
        }
        found = true;
        if (firstTool)
            out.append(toolWord(*firstTool));
    });
    if (lastEnd >= 0 && lastTool)
        out.insert(lastEnd, toolWord(*lastTool));
    return out.take();
}

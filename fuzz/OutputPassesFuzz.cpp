#include <QString>
#include <QVector>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "nc/calc/ChainJoin.h"
#include "nc/calc/ChainPosition.h"
#include "nc/calc/SegmentText.h"

namespace {

constexpr qsizetype kEnds = 64;  ///< the first mark and the words of both ends

/// No pass writes without bound, or loses a command.
void process(const QString& text, const SegmentRules& rules) {
    Diagnostics diagnostics;
    const QString result = processedSegment(text, rules, diagnostics);
    const qsizetype lines = text.count(QLatin1Char('\n')) + 1;
    const qsizetype most = 3 * text.size() + kEnds +
                           lines * (rules.rapid.size() + rules.linear.size() + 2 + rules.prepend.size());
    if (result.size() > most * (1 + rules.rapidMovement.size()))
        std::abort();
    if (text.isEmpty() != result.isEmpty())
        std::abort();
    // Words other than repeated ones stay: an M that was there is there.
    if (text.contains(QLatin1Char('M')) != result.contains(QLatin1Char('M')))
        std::abort();
}

}  // namespace

// The first byte picks the rules, the rest is the text: its halves are two chains.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data + 1), static_cast<int>(size - 1));
    const int half = text.size() / 2;
    const QVector<QString> chains = {text.left(half), text.mid(half)};
    Diagnostics diagnostics;
    const auto lineFeeds = static_cast<std::uint32_t>(text.count(QLatin1Char('\n')));
    const QString tandem = mergeTandem(chains, lineFeeds * (1U + data[0] % 4U), diagnostics);
    const QString sequential = joinChains(chains, diagnostics);
    if (sequential.size() != text.size() + 2)
        std::abort();

    SegmentRules rules;
    rules.rapid = QStringLiteral(";RAPID");
    rules.linear = (data[0] & 4) != 0 ? QStringLiteral(";LINEAR") : QString();
    rules.prepend = (data[0] & 8) != 0 ? QStringLiteral("/") : QString();
    rules.rapidMovement = (data[0] & 16) != 0 ? QStringLiteral("G0") : QStringLiteral("G1");
    rules.rapidThreshold_mmPerMin = 50000;
    rules.letters = {u'X', u'Z', u'C', u'A', u'Y', u'V'};
    rules.userHeaderTail = (data[0] & 32) != 0;
    rules.firstTool = 1;
    rules.lastTool = 2;
    process(tandem, rules);
    process(sequential, rules);
    const QStringView first = firstMotionLine(text);
    const QStringView last = lastMotionLine(text);
    if (first.isEmpty() != last.isEmpty())
        std::abort();
    return 0;
}

#include "core/calc/UniqueNumber.h"

#include <QRegularExpression>
#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

int asNumber(std::int64_t number) {
    return number <= std::numeric_limits<int>::max() ? static_cast<int>(number) : -1;
}

}  // namespace

int nextUniqueNumber(std::vector<int> numbers) {
    if (numbers.empty())
        return 0;
    std::sort(numbers.begin(), numbers.end());
    std::int64_t candidate = std::int64_t{numbers.front()} + 1;
    if (candidate < numbers.back()) {
        for (std::size_t i = 0; i + 1 < numbers.size(); ++i, ++candidate) {
            if (numbers[i] < candidate && candidate < numbers[i + 1])
                return numbers[i] + 1;
        }
    }
    return asNumber(std::int64_t{numbers.back()} + 1);
}

int nextNumberOfSceneNames(const QStringList& names) {
    // The first group is greedy and leaves the second one digit only; the numbering must stay so.
    static const QRegularExpression pattern(QStringLiteral("(\\w+)(\\d+)"));
    std::vector<int> numbers;
    for (const QString& name : names) {
        const QRegularExpressionMatch match = pattern.match(name);
        if (!match.hasMatch())
            continue;
        bool converted = false;
        numbers.push_back(match.captured(2).toInt(&converted));
        if (!converted)
            return -1;
    }
    return nextUniqueNumber(std::move(numbers));
}

int nextNumberOfTexts(const QStringList& names) {
    static const QRegularExpression pattern(QStringLiteral(".*?(\\d+)"));
    std::vector<int> numbers;
    for (const QString& name : names) {
        bool converted = false;
        const int number = pattern.match(name).captured(1).toInt(&converted);
        if (converted)
            numbers.push_back(number);
    }
    return nextUniqueNumber(std::move(numbers));
}

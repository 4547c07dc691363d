#include "nc/calc/HeaderTail.h"

#include <QJsonValue>
#include <algorithm>

#include "machine/calc/MachineDescription.h"

namespace {

// Keys of a record in project documents; the chain is the key of the record itself.
const QString kHeader = QStringLiteral("header");
const QString kTail = QStringLiteral("tail");
const QString kItemHeader = QStringLiteral("itemHeader");
const QString kItemTail = QStringLiteral("itemTail");

}  // namespace

namespace TORNVALE {

HeaderTailRecord& HeaderTailManager::add(const MachineDescription& machine, const QString& chain) {
    if (HeaderTailRecord* present = record(chain))
        return *present;
    const QString home = machine.homeLine(chain);
    return records_.emplace_back(HeaderTailRecord{chain, home, home, {}, {}});
}

HeaderTailRecord* HeaderTailManager::record(const QString& chain) {
    const auto it = std::find_if(records_.begin(), records_.end(),
                                 [&](const HeaderTailRecord& entry) { return entry.chain == chain; });
    return it == records_.end() ? nullptr : &*it;
}

const HeaderTailRecord* HeaderTailManager::record(const QString& chain) const {
    const auto it = std::find_if(records_.begin(), records_.end(),
                                 [&](const HeaderTailRecord& entry) { return entry.chain == chain; });
    return it == records_.end() ? nullptr : &*it;
}

QStringList HeaderTailManager::chains() const {
    QStringList names;
    for (const HeaderTailRecord& entry : records_)
        names.append(entry.chain);
    return names;
}

QJsonObject HeaderTailManager::toJson() const {
    QJsonObject object;
    for (const HeaderTailRecord& entry : records_)
        object[entry.chain] = QJsonObject{{kHeader, entry.header},
                                          {kTail, entry.tail},
                                          {kItemHeader, entry.itemHeader},
                                          {kItemTail, entry.itemTail}};
    return object;
}

void HeaderTailManager::fromJson(const QJsonObject& object) {
    records_.clear();
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (!it.value().isObject())
            continue;
        const QJsonObject texts = it.value().toObject();
        records_.push_back({it.key(), texts[kHeader].toString(), texts[kTail].toString(),
                            texts[kItemHeader].toString(), texts[kItemTail].toString()});
    }
}

}  // namespace TORNVALE

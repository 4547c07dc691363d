#include "items/ItemMaker.h"

#include "core/getUniquelyIdentifies.h"
#include "items/IsoItem.h"
#include "nc/ProgramItem.h"

namespace TORNVALE {

std::unique_ptr<CodeManagerItem> makeItem(int type) {
    if (type == kIsoItem)
        return std::make_unique<IsoItem>();
    return nullptr;
}

QString itemNamePrefix(int type) {
    const UniqueNames& names = getUniquelyIdentifies::instance().names();
    switch (type) {
        case kIsoItem:
            return names.userCodeItemNamePrefix;
        case kCurveItem:
            return names.megerItemNamePrefix;
        case kDrillItem:
            return names.drillItemNamePrefix;
        case kRectangleItem:
            return names.rectangularSpiralItemNamePrefix;
        default:
            return {};
    }
}

int itemTypeOf(const QJsonObject& block) {
    const int type = block.value(QStringLiteral("type")).toInt();
    if (type >= kIsoItem && type <= kRectangleItem)
        return type;
    const QString name = block.value(QStringLiteral("itemName")).toString();
    for (const auto& [prefix, kind] : {std::pair{"userCodeItem", kIsoItem},
                                       {"megerItem", kCurveItem},
                                       {"drillItem", kDrillItem},
                                       {"rectangularSpiralItem", kRectangleItem}}) {
        if (name.startsWith(QLatin1String(prefix)))
            return kind;
    }
    return 0;
}

}  // namespace TORNVALE

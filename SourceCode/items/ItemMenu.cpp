#include <QPoint>

#include "core/ParaReader.h"
#include "items/CodeManagerItem.h"
#include "items/IsoItem.h"
#include "items/TreeMenu.h"
#include "items/UserTopItem.h"

namespace TORNVALE {

void CodeManagerItem::popupMenu(const QPoint& place) {
    UserTopItem* parent = group();
    if (parent == nullptr)
        return;
    const auto index = [this, parent] { return parent->indexOfChild(this); };
    std::vector<TreeMenuEntry> entries{
        treeEntry("AnimationAction", "play.png", [this] { play(); }),
        treeEntry("EditItemAction", "editItem.png", [this] { openEditor(); }),
        treeEntry("InsertIsoItemAction", "iso.png", [this, parent] { parent->InsertIsoItem(this); }),
        treeEntry("RemoveItemAction", "delete.png", [parent] { parent->removeSelected(); }),
        treeEntry("CopyItemAction", "Copy.png", [parent] { parent->copySelection(); }),
        treeEntry("CutItemAction", "Cut.png", [parent] { parent->cutSelection(); }),
        treeEntry("PasteItemAction", "paste.png", [parent, index] { parent->paste(index()); }),
    };
    if (ParaReader().isShowAxisInfo()) {
        entries.push_back({QStringLiteral("写出Item"), "export.png", "WriteTo", [this] { WriteTo(); }});
        entries.push_back({QStringLiteral("输出对比文件"), "export.png", "WriteComparisonFiles", [this] {
                               if (const auto* iso = dynamic_cast<const IsoItem*>(this))
                                   iso->writeComparisonFiles();
                           }});
    }
    popupTreeMenu(entries, place);
}

}  // namespace TORNVALE

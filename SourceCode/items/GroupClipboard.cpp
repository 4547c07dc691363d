#include <QClipboard>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

#include "items/CodeManagerItem.h"
#include "items/GenerationProgress.h"
#include "items/ItemMaker.h"
#include "items/UserTopItem.h"

// Copy, cut and paste of a group's items through the system's clipboard.

using TORNVALE::CodeManagerItem;

namespace {

const QString kItemsKey = QStringLiteral("class FormatItems");

}  // namespace

QVector<CodeManagerItem*> UserTopItem::itemsToCopy() const {
    QVector<CodeManagerItem*> chosen = selectedItems();
    if (chosen.isEmpty()) {
        for (CodeManagerItem* item : items()) {
            if (item->isActive())
                chosen.append(item);
        }
    }
    return chosen;
}

void UserTopItem::copyItems(const QVector<CodeManagerItem*>& chosen) const {
    QJsonArray blocks;
    for (const CodeManagerItem* item : chosen) {
        if (item->type() != TORNVALE::kCurveItem)
            blocks.append(item->Get());
    }
    const QJsonDocument document(QJsonObject{{kItemsKey, blocks}});
    QGuiApplication::clipboard()->setText(QString::fromUtf8(document.toJson(QJsonDocument::Compact)));
}

void UserTopItem::copySelection() {
    copyItems(itemsToCopy());
}

void UserTopItem::cutSelection() {
    QVector<CodeManagerItem*> chosen = itemsToCopy();
    copyItems(chosen);
    chosen.erase(
        std::remove_if(chosen.begin(), chosen.end(),
                       [](const CodeManagerItem* item) { return item->type() == TORNVALE::kCurveItem; }),
        chosen.end());
    takeOut(chosen);
    Q_EMIT edited(QStringLiteral("CutItem"));
}

void UserTopItem::paste(int index) {
    const QJsonDocument document = QJsonDocument::fromJson(QGuiApplication::clipboard()->text().toUtf8());
    const QJsonArray blocks = document.object().value(kItemsKey).toArray();
    if (blocks.isEmpty())
        return;
    TORNVALE::GenerationRun run(blocks.size());
    CodeManagerItem* last = nullptr;
    for (const QJsonValue& value : blocks) {
        const QJsonObject block = value.toObject();
        std::unique_ptr<CodeManagerItem> made =
            TORNVALE::makeItem(block.value(QStringLiteral("type")).toInt());
        if (made == nullptr)
            continue;
        if (!run.step(block.value(QStringLiteral("itemName")).toString()))
            break;
        last = made.get();
        adopt(std::move(made), index < 0 ? -1 : index++);
        last->editRecord().WCSName = record_.name;
        last->Set(block);
        last->reactToNewPlace();
        last->doIt();
    }
    if (last == nullptr)
        return;
    regenerateAfter(last);
    Q_EMIT edited(QStringLiteral("PasteItem"));
}

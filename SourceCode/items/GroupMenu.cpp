#include <QFile>
#include <QTextStream>

#include "core/LanguageReader.h"
#include "core/ParaReader.h"
#include "core/UserDialogs.h"
#include "items/CodeManagerItem.h"
#include "items/TreeMenu.h"
#include "items/UserTopItem.h"
#include "machine/MotionNodeManager.h"
#include "nc/calc/AuxiliaryAxis.h"
#include "nc/calc/HeaderTail.h"
#include "setup/WorkCoordinateSystem.h"

// The context menu of a group, and its report for inspection.

using TORNVALE::treeEntry;

void UserTopItem::popupMenu(const QPoint& place) {
    std::vector<TORNVALE::TreeMenuEntry> entries{
        treeEntry("AnimationAction", "play.png", [this] { play(); }),
        treeEntry("InsertIsoItemAction", "iso.png", [this] { InsertIsoItem(nullptr); }),
        treeEntry("RemoveItemAction", "delete.png", [this] { removeSelected(); }),
        treeEntry("CopyItemAction", "Copy.png", [this] { copySelection(); }),
        treeEntry("CutItemAction", "Cut.png", [this] { cutSelection(); }),
        treeEntry("PasteItemAction", "paste.png", [this] { paste(-1); }),
        treeEntry("HeaderTailAction", "startEnd.png", [this] { editHeaderTail(); }),
    };
    if (ParaReader().isShowAxisInfo())
        entries.push_back(treeEntry("WriteToAction", "export.png", [this] { writeReport(); }));
    TORNVALE::popupTreeMenu(entries, place);
}

QString UserTopItem::report() const {
    QString text;
    QTextStream out(&text);
    out << "-----------------------------\n";
    out << "WCS->name:" << record_.name << "\nWCS->nickName:" << record_.nickName
        << "\nWCS->parent:" << record_.parent << "\nWCS->initial:" << record_.initialization << '\n';
    const MotionNodeManager* manager = MotionNodeManager::instance();
    if (const WorkCoordinateSystem* zone =
            manager ? manager->findWorkCoordinateSystem(record_.name) : nullptr) {
        const QMap<int, SbVec3f> origins = zone->ucsTranslations();
        for (auto origin = origins.begin(); origin != origins.end(); ++origin) {
            const SbVec3f& at = origin.value();
            out << QStringLiteral("\tId:%1 -> value:%2 %3 %4\n")
                       .arg(origin.key())
                       .arg(double(at[0]))
                       .arg(double(at[1]))
                       .arg(double(at[2]));
        }
    }
    if (auxiliaryAxis_)
        out << auxiliaryAxisText(*auxiliaryAxis_, Chain) << '\n';
    for (const HeaderTailRecord& record : headerTail_->headerTail.records())
        out << QStringLiteral("%1:%2\n").arg(record.chain, record.header)
            << QStringLiteral("%1:%2\n").arg(record.chain, record.tail);
    for (const TORNVALE::CodeManagerItem* item : items())
        out << QStringLiteral("Type: %1\n").arg(item->type());
    return text;
}

void UserTopItem::writeReport() {
    const QString title =
        TORNVALE::LanguageReader::instance().text(QStringLiteral("CodeManagerItem"), QStringLiteral("Title"));
    const QString path =
        userDialogs().saveFile(title, QStringLiteral("."), QStringLiteral("Text Files(*.txt)"));
    if (path.isEmpty())
        return;
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Text) && file.write(report().toUtf8()) >= 0)
        return;
    userDialogs().tell(UserDialogs::Kind::Warning, title,
                       TORNVALE::LanguageReader::instance().text(QStringLiteral("CodeManagerItem"),
                                                                 QStringLiteral("SaveErrorMsg")) +
                           QLatin1Char('\n') + path);
}

#include "machine/MotionNodeTreeWidget.h"

#include <QHeaderView>
#include <QIcon>
#include <QMenu>
#include <QStyleFactory>

#include "core/LanguageReader.h"
#include "geometry/modelNode.h"
#include "machine/AxisBase.h"
#include "machine/MotionNodeManager.h"
#include "machine/NodeTreeItem.h"
#include "machine/SpindleClass.h"
#include "machine/SpindlePanel.h"
#include "setup/WorkCoordinateSystem.h"
#include "setup/userCoordinateSystem.h"

namespace {

QString textOf(const char* key) {
    return TORNVALE::LanguageReader::instance().text(QStringLiteral("MachineNodeTreeWidget"),
                                                     QString::fromLatin1(key));
}

/// The window by which a node is moved, set or read; nullptr for what has none.
QWidget* windowOf(SoNode* node) {
    if (auto* axis = dynamic_cast<AxisBase*>(node))
        return axis->operationPanel();
    if (auto* spindle = dynamic_cast<SpindleNode*>(node))
        return spindle->panel();
    if (auto* zone = dynamic_cast<WorkCoordinateSystem*>(node))
        return zone->panel();
    if (auto* system = dynamic_cast<userCoordinateSystem*>(node))
        return system->panel();
    if (auto* model = dynamic_cast<UserModelNode*>(node))
        return model->panel();
    return nullptr;
}

}  // namespace

MotionNodeTreeWidget::MotionNodeTreeWidget(MotionNodeManager& manager, QWidget* parent)
    : QTreeWidget(parent), manager_(manager), machineRow_(new QTreeWidgetItem(this)) {  // owned by this tree
    setStyle(QStyleFactory::create(QStringLiteral("windows")));
    style()->setParent(this);
    setHeaderLabels(textOf("HeaderList").split(QLatin1Char('-')));
    const QString type = manager.machine().machineParameters.machineType;
    machineRow_->setText(0, type.isEmpty() ? QStringLiteral("unnamed") : type);
    for (QTreeWidgetItem* row : manager.treeItems()) {
        NodeTreeItem::detach(row);
        machineRow_->addChild(row);
    }
    expandAll();
    for (int column = 0; column < columnCount(); ++column)
        resizeColumnToContents(column);
    header()->setStretchLastSection(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &MotionNodeTreeWidget::showMenu);
    connect(this, &QTreeWidget::itemActivated, this, &MotionNodeTreeWidget::openNode);
}

MotionNodeTreeWidget::~MotionNodeTreeWidget() {
    while (machineRow_->childCount() > 0)
        machineRow_->takeChild(0);
}

void MotionNodeTreeWidget::showMenu(const QPoint& place) {
    QMenu menu(this);
    connect(menu.addAction(textOf("Expand")), &QAction::triggered, this, &QTreeWidget::expandAll);
    connect(menu.addAction(textOf("Collapse")), &QAction::triggered, this, &QTreeWidget::collapseAll);
    menu.exec(viewport()->mapToGlobal(place));
}

void MotionNodeTreeWidget::openNode(QTreeWidgetItem* item) {
    QStringList path;
    for (QTreeWidgetItem* row = item; row != nullptr && row != machineRow_; row = row->parent())
        path.prepend(row->text(NodeTreeItem::kNameColumn));
    QWidget* const window = windowOf(manager_.findNodeByPath(path));
    if (window == nullptr)
        return;
    if (window->parentWidget() != nullptr && window->isVisible())
        return;  // it stands in some other window already
    window->setWindowFlags(Qt::Tool);
    window->setWindowTitle(path.join(QStringLiteral("->")));
    window->setWindowIcon(QIcon(QStringLiteral(":/Icon/Logo.png")));
    window->move(mapToGlobal(QPoint(width(), 0)));  // beside the tree
    window->show();
    window->raise();
    window->activateWindow();
}

#include "machine/CollisionMarks.h"

#include <QDebug>

#include "geometry/modelNode.h"
#include "machine/MachineNodes.h"

namespace {

/// A tool that touches is the whole head's matter: every axis above it shows it.
void showOnSpindle(SpindleNode& spindle, bool collided) {
    spindle.setCollided(collided);
    for (AxisBase* axis = spindle.parentAxis(); axis != nullptr; axis = axis->parentAxis())
        axis->setCollided(collided);
}

/// False for a kind of node that has no collision colour.
bool show(SoNode* node, bool collided) {
    if (auto* axis = dynamic_cast<AxisBase*>(node))
        axis->setCollided(collided);
    else if (auto* spindle = dynamic_cast<SpindleNode*>(node))
        showOnSpindle(*spindle, collided);
    else if (auto* model = dynamic_cast<UserModelNode*>(node))
        model->setCollided(collided);
    else
        return false;
    return true;
}

}  // namespace

void CollisionMarks::mark(const QStringList& chain) {
    SoNode* const node = nodes_.findNodeByPath(chain);
    if (node == nullptr)
        return;
    show(node, true);
    marked_.append(node);
}

void CollisionMarks::reset() {
    for (SoNode* node : qAsConst(marked_)) {
        if (!show(node, false)) {
            qDebug().noquote() << QStringLiteral("文件:%1 行号:%2 未知的碰撞节点类型....")
                                      .arg(QStringLiteral(__FILE__), QString::number(__LINE__));
        }
    }
    marked_.clear();
}

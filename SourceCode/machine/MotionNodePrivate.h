#pragma once

#include <QMap>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QToolBar>

#include "machine/CollisionGroups.h"
#include "machine/CollisionMarks.h"
#include "machine/MachineNodes.h"
#include "machine/MotionNodeManager.h"
#include "nc/commandProcessor.h"

/// What the manager's two source files share.
struct MotionNodeManager::Private {
    explicit Private(const MachineDescription& description)
        : machine(description),
          nodes(description.machineParameters.type),
          groups(description, nodes),
          marks(nodes) {}

    const MachineDescription& machine;
    MachineNodes nodes;  ///< with the root
    bool collisionEnabled = true;
    CollisionGroups groups;
    CollisionMarks marks;
    QString lastLine;
    CommandProcessor* processor = nullptr;  ///< owned by the manager
    QPointer<QToolBar> toolBar;
    QPointer<QWidget> spindleStatus;
    PlaybackStop* playback = nullptr;
    FixtureMounter* mounter = nullptr;
};

/// Text of the group MotionNodeManager.
[[nodiscard]] QString managerText(const char* key);

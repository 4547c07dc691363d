#include "machine/calc/CollisionPlan.h"

CollisionPlan makeCollisionPlan(const QStringList& keys, const QStringList& spindleHeads) {
    CollisionPlan plan;
    for (int i = 0; i < keys.size(); ++i) {
        if (spindleHeads.contains(keys[i]))
            plan.heads.append(i);
        else
            plan.others.append(i);
    }
    return plan;
}

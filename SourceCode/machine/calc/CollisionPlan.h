#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// The order of the collision pass, as pure functions over indices. Groups are numbered in the order of their
// keys; `count(g)` says how many objects group g has, `touches(g, i, h, j)` tests object i of g against
// object j of h and may have effects (marks, a stop): it is called for exactly the pairs that the pass is to
// look at.

/// Which groups meet which: heads that carry a spindle against all others.
struct CollisionPlan {
    QVector<int> heads;   ///< groups with a spindle, rising
    QVector<int> others;  ///< all other groups, rising
};

/// `keys` are sorted.
[[nodiscard]] CollisionPlan makeCollisionPlan(const QStringList& keys, const QStringList& spindleHeads);

/// True when one group's objects touch the other's; the first contact ends the search.
template <typename Count, typename Touches>
bool groupsTouch(int one, int other, const Count& count, const Touches& touches) {
    for (int i = 0; i < count(one); ++i) {
        for (int j = 0; j < count(other); ++j) {
            if (touches(one, i, other, j))
                return true;
        }
    }
    return false;
}

/// A head after an earlier head's contact: only its first object, only against the first other group. That
/// must stay so; it marks a few more parts at most.
template <typename Count, typename Touches>
void testLateHead(int head, int other, const Count& count, const Touches& touches) {
    if (count(head) == 0)
        return;
    for (int j = 0; j < count(other); ++j) {
        if (touches(head, 0, other, j))
            return;
    }
}

/// One pass. Each head against each other group until the head's first contact; the heads behind it are then
/// only sampled. Without any contact, the first head against the last; heads between these never meet.
template <typename Count, typename Touches>
bool runCollisionPass(const CollisionPlan& plan, const Count& count, const Touches& touches) {
    bool hit = false;
    for (const int head : plan.heads) {
        if (hit) {
            if (!plan.others.isEmpty())
                testLateHead(head, plan.others.first(), count, touches);
            continue;
        }
        for (const int other : plan.others) {
            hit = groupsTouch(head, other, count, touches);
            if (hit)
                break;
        }
    }
    if (hit || plan.heads.size() < 2)
        return hit;
    return groupsTouch(plan.heads.first(), plan.heads.last(), count, touches);
}

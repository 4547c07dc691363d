#include "machine/Transform.h"

#include "machine/calc/Kinematics.h"
#include "machine/readConfig.h"
#include "tools/ToolData.h"

struct TransformationOperator::Private {
    KinematicTransform transform;
};

namespace {

KinematicTransform makeOrDie(const KinematicTool& tool, double extraLength_mm, const SbVec3f& userOffset_mm,
                             const QString& chain, const QString& workCoordinateName, int mode) {
    Diagnostics diagnostics;
    auto transform = KinematicTransform::make(ConfigReader::instance().description(), tool, extraLength_mm,
                                              userOffset_mm, chain, workCoordinateName, mode, diagnostics);
    if (!transform)
        qFatal("%s", qPrintable(diagnostics.entries.back().text));
    return std::move(*transform);
}

}  // namespace

TransformationOperator::TransformationOperator(ToolData* tool, double extraLength_mm,
                                               const SbVec3f& userOffset_mm, const QString& chain,
                                               const QString& workCoordinateName, int mode)
    : pimpl(std::make_shared<Private>(
          Private{makeOrDie(tool != nullptr ? kinematicTool(tool->record()) : KinematicTool(), extraLength_mm,
                            userOffset_mm, chain, workCoordinateName, mode)})) {}

TransformationOperator::~TransformationOperator() = default;

QString TransformationOperator::transformText(const QString& text) {
    return pimpl->transform.transformText(text);
}

void TransformationOperator::transformPoints(WayPoints& points) const {
    pimpl->transform.transformPoints(points);
}

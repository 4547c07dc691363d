#include "nodes/NodesTestSupport.h"

#include <Inventor/SoPath.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <gtest/gtest.h>

#include <QFile>

#include "core/LanguageReader.h"
#include "core/getUniquelyIdentifies.h"

NodesInstallation::NodesInstallation() {
    for (const char* name :
         {"language/english.json", "data/UniquelyIdentifies.json", "data.ini", "oak.jpg"}) {
        QFile shipped(shippedInstallation() + QLatin1Char('/') + QLatin1String(name));
        EXPECT_TRUE(shipped.open(QIODevice::ReadOnly)) << name;
        write(QLatin1String(name), shipped.readAll());
    }
    write(QStringLiteral("models/Box.stl"), binaryStl(boxTriangles(SbVec3f(10, 10, 10))));
    TORNVALE::LanguageReader::instance().reload();
    getUniquelyIdentifies::instance().reload();
}

QString NodesInstallation::cube(const QString& name, float half_mm) const {
    write(name, binaryStl(boxTriangles(SbVec3f(half_mm, half_mm, half_mm))));
    return file(name);
}

numericalAxisStruct axisRecord(const QString& name, const QString& type) {
    numericalAxisStruct record;
    record.name = name;
    record.nickName = name;
    record.homePosition = QStringLiteral("0");
    record.lower = QStringLiteral("-100");
    record.upper = QStringLiteral("250");
    record.color = QStringLiteral("0.25 0.5 0.75");
    record.initialization = QStringLiteral("0 0 0");
    record.direction = QStringLiteral("0 0 1");
    record.type = type;
    record.modelPath = QStringLiteral("models/Box.stl");
    record.id = 3;
    return record;
}

nonNumericalAxisStruct partRecord(const QString& name, const QString& type) {
    nonNumericalAxisStruct record;
    record.name = name;
    record.color = QStringLiteral("0.25 0.5 0.75");
    record.initialization = QStringLiteral("0 0 0");
    record.direction = QStringLiteral("0 0 1");
    record.type = type;
    record.lower = QStringLiteral("-100");
    record.upper = QStringLiteral("250");
    record.modelPath = QStringLiteral("models/Box.stl");
    return record;
}

numericalAxis* makeAxis(numericalAxisStruct record) {
    auto* axis = new numericalAxis;  // owned by the caller
    EXPECT_EQ(axis->set(record), 0);
    return axis;
}

numericalAxis* makeAxis(const QString& name, const QString& type) {
    return makeAxis(axisRecord(name, type));
}

NonNumericalAxis* makePart(nonNumericalAxisStruct record) {
    auto* part = new NonNumericalAxis;  // owned by the caller
    EXPECT_EQ(part->set(record), 0);
    return part;
}

Eigen::Vector3d placeInScene(SoNode* root, SoNode* node, const Eigen::Vector3d& point) {
    SoSearchAction search;
    search.setNode(node);
    search.setSearchingAll(TRUE);
    search.apply(root);
    if (search.getPath() == nullptr) {
        ADD_FAILURE() << "the node is not in the scene";
        return {};
    }
    SoGetMatrixAction action(SbViewportRegion(100, 100));
    action.apply(search.getPath());
    const SbMatrix matrix = action.getMatrix();
    search.reset();
    Eigen::Vector3d place;
    for (int column = 0; column < 3; ++column) {
        place[column] = double{matrix[3][column]};
        for (int row = 0; row < 3; ++row)
            place[column] += point[row] * double{matrix[row][column]};
    }
    return place;
}

Eigen::Vector3d placeOf(const CollisionTransform& pose, const Eigen::Vector3d& point) {
    return pose.cast<double>() * point;
}

double deviation(const SbMatrix& matrix, const Eigen::Affine3d& expected) {
    double largest = 0;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column)
            largest =
                std::max(largest, std::abs(double{matrix[column][row]} - expected.matrix()(row, column)));
    }
    return largest;
}

double deviation(const CollisionTransform& pose, const Eigen::Affine3d& expected) {
    return (pose.matrix().cast<double>() - expected.matrix()).cwiseAbs().maxCoeff();
}

Eigen::Affine3d turned(const Eigen::Vector3d& direction, double angle_deg) {
    constexpr double kDegree = 3.14159265358979323846 / 180.0;
    return Eigen::Affine3d(Eigen::AngleAxisd(angle_deg * kDegree, direction.normalized()));
}

Eigen::Affine3d shifted(double x, double y, double z) {
    return Eigen::Affine3d(Eigen::Translation3d(x, y, z));
}

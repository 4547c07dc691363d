#include "KinematicOracle.h"

#include <cmath>
#include <random>
#include <stdexcept>

#include "MachineSamples.h"

namespace {

using Vector = std::array<double, 3>;

Vector doubles(const SbVec3f& v) {
    return {double{v[0]}, double{v[1]}, double{v[2]}};
}

/// v cos t + (d x v) sin t + d (d.v)(1 - cos t) about the unit vector d.
Vector turned(const Vector& v, const SbVec3f& axis, double angle_deg) {
    Vector d = doubles(axis);
    const double length = std::hypot(d[0], d[1], d[2]);
    if (length == 0.0)
        return v;
    for (double& each : d)
        each /= length;
    const double angle = angle_deg * std::acos(-1.0) / 180.0;
    const double dot = d[0] * v[0] + d[1] * v[1] + d[2] * v[2];
    Vector result{};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t j = (i + 1) % 3;
        const std::size_t k = (i + 2) % 3;
        const double cross = d[j] * v[k] - d[k] * v[j];
        result[i] = v[i] * std::cos(angle) + cross * std::sin(angle) + d[i] * dot * (1 - std::cos(angle));
    }
    return result;
}

QString shown(const SbVec3f& v) {
    return QStringLiteral("%1 %2 %3")
        .arg(double{v[0]}, 0, 'g', 9)
        .arg(double{v[1]}, 0, 'g', 9)
        .arg(double{v[2]}, 0, 'g', 9);
}

class Numbers {
  public:
    explicit Numbers(unsigned seed) : random_(seed) {}
    float between(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random_); }
    SbVec3f vector(float size) { return {between(-size, size), between(-size, size), between(-size, size)}; }

  private:
    std::mt19937 random_;
};

/// Place of the first number behind `letter`, and whether it reads.
struct LiteralWord {
    int place = 0;
    int length = 0;
    float value = 0;
    bool ok = false;
};

LiteralWord literalWord(const QString& line, QChar letter) {
    LiteralWord word;
    const int place = letter.isNull() ? -1 : line.indexOf(letter);
    if (place < 0)
        return word;
    word.place = place + 1;
    while (word.place + word.length < line.size() &&
           QStringLiteral("0123456789.-").contains(line[word.place + word.length]))
        ++word.length;
    word.value = line.mid(word.place, word.length).toFloat(&word.ok);
    return word;
}

void replaceWord(QString& line, QChar letter, int mode, float change) {
    const LiteralWord word = literalWord(line, letter);
    if (!word.ok)
        return;
    double value = double{word.value};
    if (mode == 0)
        value += double{change};
    if (mode == 1)
        value -= double{change};
    line.replace(word.place, word.length, QString::number(value, 'f', 3));
}

}  // namespace

KinematicTransform KinematicCase::make(int mode) const {
    Diagnostics diagnostics;
    auto made = KinematicTransform::make(*machine, tool, extraLength_mm, userOffset_mm, chain, workSystem,
                                         mode, diagnostics);
    if (!made)
        throw std::runtime_error(diagnostics.entries.back().text.toStdString());
    return *made;
}

KinematicCase plainCase() {
    KinematicCase data;
    data.machine = fiveAxisMachine();
    data.tool.length = 100;
    data.tool.installationName = QStringLiteral("A");
    data.extraLength_mm = 10;
    data.base_mm = SbVec3f(111, 222, 333);
    data.toolVector_mm = SbVec3f(1, 2, 140);
    data.direction4 = SbVec3f(0, 0, 1);
    data.direction5 = SbVec3f(1, 0, 0);
    data.offset5_mm = SbVec3f(0, 0, 150);
    data.spindleAngle_deg = 5;
    return data;
}

KinematicCase randomCase(unsigned seed, bool compensated) {
    Numbers numbers(seed);
    KinematicCase data = plainCase();
    data.direction4 = numbers.vector(1);
    data.direction5 = numbers.vector(1);
    data.offset5_mm = numbers.vector(200);
    // With more decimals than a text has, a rewritten angle could not come back exactly.
    data.spindleAngle_deg = std::round(numbers.between(-90, 90) * 1000) / 1000;
    const SbVec3f spindle = numbers.vector(50);
    const SbVec3f origin = numbers.vector(1000);
    data.userOffset_mm = numbers.vector(100);
    data.extraLength_mm = double{numbers.between(0, 50)};
    data.tool.length = numbers.between(20, 300);
    data.tool.mount.setTransform(numbers.vector(20), SbRotation(SbVec3f(1, 1, 0), numbers.between(-1, 1)),
                                 SbVec3f(1, 1, 1));
    if (compensated) {
        data.tool.ax4Compensation = numbers.between(-10, 10);
        data.tool.ax5Compensation = numbers.between(-10, 10);
    }
    MachineDescription& machine = *data.machine;
    machine.numericalAxes[3]->direction = shown(data.direction4);
    machine.numericalAxes[4]->direction = shown(data.direction5);
    machine.numericalAxes[4]->initialization = shown(data.offset5_mm);
    machine.spindles[0]->initialization =
        shown(spindle) + ' ' + QString::number(double{data.spindleAngle_deg}, 'g', 9);
    machine.workCoordinateSystems[0]->initialization = shown(origin);
    data.base_mm = origin + data.userOffset_mm;
    for (const SbVec3f& place : {SbVec3f(1, 2, 3), SbVec3f(10, 0, 0), SbVec3f(0, 20, 30)})
        data.base_mm += place;
    SbVec3f tip;
    data.tool.mount.multVecMatrix(
        SbVec3f(0, 0, static_cast<float>(data.extraLength_mm + double{data.tool.length})), tip);
    data.toolVector_mm = tip + spindle;
    return data;
}

SbVec3f literalOffset(const KinematicCase& data, int mode, float a4_deg, float a5_deg) {
    float angle4 = data.tool.ax4Compensation + a4_deg;
    float angle5 = data.tool.ax5Compensation + a5_deg;
    if (mode == 1) {
        angle4 = a4_deg - data.tool.ax4Compensation;
        angle5 = a5_deg - data.tool.ax5Compensation + data.spindleAngle_deg;
    }
    const SbRotation turn4(data.direction4, angle4 / 180.0F * 3.1415927F);
    const SbRotation turn5(data.direction5, angle5 / 180.0F * 3.1415927F);
    SbMatrix combined;
    combined.setRotate(turn5 * turn4);
    SbMatrix axis4;
    axis4.setRotate(turn4);
    SbVec3f v;
    SbVec3f u;
    combined.multVecMatrix(data.toolVector_mm, v);
    axis4.multVecMatrix(data.offset5_mm, u);
    return data.base_mm + v + u;
}

std::array<double, 3> exactOffset(const KinematicCase& data, int mode, double a4_deg, double a5_deg) {
    const double sign = mode == 1 ? -1.0 : 1.0;
    const double angle4 = a4_deg + sign * double{data.tool.ax4Compensation};
    const double angle5 =
        a5_deg + sign * double{data.tool.ax5Compensation} + (mode == 1 ? double{data.spindleAngle_deg} : 0.0);
    const Vector v =
        turned(turned(doubles(data.toolVector_mm), data.direction5, angle5), data.direction4, angle4);
    const Vector u = turned(doubles(data.offset5_mm), data.direction4, angle4);
    const Vector base = doubles(data.base_mm);
    return {base[0] + v[0] + u[0], base[1] + v[1] + u[1], base[2] + v[2] + u[2]};
}

QString literalText(const KinematicCase& data, int mode, const QString& text) {
    const AxisMap letters = data.machine->axisMap(data.chain, false);
    float modal4 = 0;
    float modal5 = 0;
    QStringList result;
    for (const QString& raw : text.split('\n', Qt::SkipEmptyParts)) {
        QString line = raw.simplified();
        const LiteralWord word4 = literalWord(line, letters.value(4));
        const LiteralWord word5 = literalWord(line, letters.value(5));
        modal4 = word4.ok ? word4.value : modal4;
        modal5 = word5.ok ? word5.value : modal5;
        const SbVec3f offset = literalOffset(data, mode, modal4, modal5);
        for (int id = 1; id <= 3; ++id)
            replaceWord(line, letters.value(id), mode, offset[id - 1]);
        replaceWord(line, letters.value(4), mode, data.tool.ax4Compensation);
        replaceWord(line, letters.value(5), mode, data.tool.ax5Compensation);
        const QString& name = data.tool.installationName;
        if (!name.isEmpty() && (mode == 0 || mode == 1))
            replaceWord(line, name.back(), 1 - mode, data.spindleAngle_deg);
        result.append(line);
    }
    return result.join('\n');
}

#pragma once

#include <cmath>
#include <numbers>

// Plane and space vectors and rigid placements, in millimetres and degrees. Column vectors throughout:
// a placement maps p to rotation * p + shift.

namespace modelgen {

struct Vec2 {
    double x = 0.0;
    double y = 0.0;
};

inline Vec2 operator+(Vec2 a, Vec2 b) {
    return {a.x + b.x, a.y + b.y};
}
inline Vec2 operator-(Vec2 a, Vec2 b) {
    return {a.x - b.x, a.y - b.y};
}
inline Vec2 operator*(Vec2 a, double s) {
    return {a.x * s, a.y * s};
}
inline double cross(Vec2 a, Vec2 b) {
    return a.x * b.y - a.y * b.x;
}
inline double dot(Vec2 a, Vec2 b) {
    return a.x * b.x + a.y * b.y;
}
inline double length(Vec2 a) {
    return std::hypot(a.x, a.y);
}
inline Vec2 unit(Vec2 a) {
    return a * (1.0 / length(a));
}

struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline Vec3 operator+(Vec3 a, Vec3 b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec3 operator-(Vec3 a, Vec3 b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec3 operator*(Vec3 a, double s) {
    return {a.x * s, a.y * s, a.z * s};
}
inline Vec3 cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double dot(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline double length(Vec3 a) {
    return std::sqrt(dot(a, a));
}
inline Vec3 unit(Vec3 a) {
    return a * (1.0 / length(a));
}

inline double radians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}

/// A rigid motion: first the rotation (its three columns), then the shift.
struct Placement {
    Vec3 ex{1.0, 0.0, 0.0};
    Vec3 ey{0.0, 1.0, 0.0};
    Vec3 ez{0.0, 0.0, 1.0};
    Vec3 shift;

    Vec3 turn(Vec3 p) const { return ex * p.x + ey * p.y + ez * p.z; }
    Vec3 map(Vec3 p) const { return turn(p) + shift; }
};

/// `second` after `first`.
inline Placement operator*(const Placement& second, const Placement& first) {
    return {second.turn(first.ex), second.turn(first.ey), second.turn(first.ez), second.map(first.shift)};
}

inline Placement at(double x, double y, double z) {
    return {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {x, y, z}};
}
inline Placement turnX(double degrees) {
    const double c = std::cos(radians(degrees));
    const double s = std::sin(radians(degrees));
    return {{1, 0, 0}, {0, c, s}, {0, -s, c}, {}};
}
inline Placement turnY(double degrees) {
    const double c = std::cos(radians(degrees));
    const double s = std::sin(radians(degrees));
    return {{c, 0, -s}, {0, 1, 0}, {s, 0, c}, {}};
}
inline Placement turnZ(double degrees) {
    const double c = std::cos(radians(degrees));
    const double s = std::sin(radians(degrees));
    return {{c, s, 0}, {-s, c, 0}, {0, 0, 1}, {}};
}

/// The Z axis of a part comes to lie along +X; its X and Y become Y and Z.
inline Placement alongX() {
    return {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {}};
}
/// The Z axis of a part comes to lie along -Y; its X and Y become X and Z.
inline Placement alongMinusY() {
    return {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {}};
}

}  // namespace modelgen

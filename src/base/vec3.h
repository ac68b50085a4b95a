// A point or direction of three floats, and the arithmetic on it.
#pragma once

#include <cmath>

// World units, Y up; also angles in radians about x, y and z, and scales per axis.
struct Vec3 {
    float x = 0, y = 0, z = 0;

    friend constexpr bool operator==(const Vec3&, const Vec3&) = default;
};

constexpr Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
constexpr Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
constexpr Vec3 operator*(Vec3 a, float s) { return {a.x * s, a.y * s, a.z * s}; }

// Each component raised to `low` if it is less or not a number.
constexpr Vec3 AtLeast(Vec3 v, float low) {
    return {v.x > low ? v.x : low, v.y > low ? v.y : low, v.z > low ? v.z : low};
}

constexpr float Dot(Vec3 a, Vec3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

constexpr Vec3 Cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline float Length(Vec3 a) { return std::sqrt(Dot(a, a)); }

// A vector of at most this length has no direction.
constexpr float kZeroLength = 1e-5f;

// The vector at length 1, or the zero vector.
inline Vec3 Normalise(Vec3 a) {
    const float length = Length(a);
    if (length <= kZeroLength) return {};
    return {a.x / length, a.y / length, a.z / length};
}

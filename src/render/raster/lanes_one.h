// One lane: the definition of every operation. Included by lanes.h only.
#pragma once

#include <math.h>

namespace {

struct Floats {
    float v;
};
struct Ints {
    int32_t v;
};
struct Mask {
    bool v;
};

ZEL_INLINE Floats Splat(float a) { return {a}; }
ZEL_INLINE Ints Splat(int32_t a) { return {a}; }
ZEL_INLINE Ints LaneNumbers() { return {0}; }
ZEL_INLINE Floats Load(const float* from) { return {*from}; }
// Pixels are loaded and stored as integers, so integers go by their bytes.
ZEL_INLINE Ints Load(const void* from) {
    Ints loaded;
    memcpy(&loaded.v, from, sizeof loaded.v);
    return loaded;
}
ZEL_INLINE void Store(float* to, Floats a) { *to = a.v; }
ZEL_INLINE void Store(void* to, Ints a) { memcpy(to, &a.v, sizeof a.v); }

ZEL_INLINE Floats operator+(Floats a, Floats b) { return {a.v + b.v}; }
ZEL_INLINE Floats operator-(Floats a, Floats b) { return {a.v - b.v}; }
ZEL_INLINE Floats operator*(Floats a, Floats b) { return {a.v * b.v}; }
ZEL_INLINE Floats operator/(Floats a, Floats b) { return {a.v / b.v}; }
// The second one if either is not a number or both are zeros, as the instructions do it.
ZEL_INLINE Floats Least(Floats a, Floats b) { return a.v < b.v ? a : b; }
ZEL_INLINE Floats Most(Floats a, Floats b) { return a.v > b.v ? a : b; }
ZEL_INLINE Floats SquareRoot(Floats a) { return {sqrtf(a.v)}; }
ZEL_INLINE Floats Floor(Floats a) { return {floorf(a.v)}; }
ZEL_INLINE Floats Ceil(Floats a) { return {ceilf(a.v)}; }
ZEL_INLINE Floats Magnitude(Floats a) { return {fabsf(a.v)}; }
ZEL_INLINE Mask operator<(Floats a, Floats b) { return {a.v < b.v}; }
ZEL_INLINE Mask operator>(Floats a, Floats b) { return {a.v > b.v}; }
ZEL_INLINE Mask operator<=(Floats a, Floats b) { return {a.v <= b.v}; }
ZEL_INLINE Mask operator>=(Floats a, Floats b) { return {a.v >= b.v}; }
ZEL_INLINE Mask operator==(Floats a, Floats b) { return {a.v == b.v}; }
// True if both are numbers.
ZEL_INLINE Mask AreNumbers(Floats a, Floats b) { return {a.v == a.v && b.v == b.v}; }

ZEL_INLINE Ints operator+(Ints a, Ints b) { return {a.v + b.v}; }
ZEL_INLINE Ints operator*(Ints a, Ints b) { return {a.v * b.v}; }
ZEL_INLINE Ints operator&(Ints a, Ints b) { return {a.v & b.v}; }
ZEL_INLINE Ints operator|(Ints a, Ints b) { return {a.v | b.v}; }
ZEL_INLINE Ints operator^(Ints a, Ints b) { return {a.v ^ b.v}; }
ZEL_INLINE Ints Least(Ints a, Ints b) { return a.v < b.v ? a : b; }
ZEL_INLINE Mask operator<(Ints a, Ints b) { return {a.v < b.v}; }
template <int bits>
ZEL_INLINE Ints ShiftedRight(Ints a) {
    return {static_cast<int32_t>(static_cast<uint32_t>(a.v) >> bits)};
}

// Of each byte, rounded down.
ZEL_INLINE Ints AverageOfBytes(Ints a, Ints b) {
    return (a & b) + ShiftedRight<1>((a ^ b) & Ints{~0x01010101});
}

// Each byte but the highest times factor / 65536, rounded down; the highest becomes 0.
struct ByteFactor {
    uint32_t factor;
};
ZEL_INLINE ByteFactor PrepareByteFactor(uint32_t factor) { return {factor}; }
ZEL_INLINE Ints ScaledBytes(Ints colors, const ByteFactor& by) {
    const auto bits = static_cast<uint32_t>(colors.v);
    const uint32_t low = (bits & 0xFF) * by.factor >> 16, middle = (bits >> 8 & 0xFF) * by.factor >> 16,
                   high = (bits >> 16 & 0xFF) * by.factor >> 16;
    return {static_cast<int32_t>(high << 16 | middle << 8 | low)};
}

// Towards zero; the numbers lie in the range of integers, or the lane is not used.
ZEL_INLINE Ints Truncated(Floats a) { return {_mm_cvttss_si32(_mm_set_ss(a.v))}; }
ZEL_INLINE Floats Converted(Ints a) { return {static_cast<float>(a.v)}; }
ZEL_INLINE Floats BitsAsFloats(Ints a) {
    float bits;
    memcpy(&bits, &a.v, sizeof bits);
    return {bits};
}
ZEL_INLINE Ints BitsAsInts(Floats a) {
    int32_t bits;
    memcpy(&bits, &a.v, sizeof bits);
    return {bits};
}

// `a`, negated if `sign` is negative.
ZEL_INLINE Floats Signed(Floats a, Floats sign) {
    return BitsAsFloats(BitsAsInts(a) ^ (BitsAsInts(sign) & BitsAsInts(Splat(-0.0f))));
}

ZEL_INLINE Mask NoLanes() { return {false}; }
ZEL_INLINE Mask AllLanes() { return {true}; }
ZEL_INLINE Mask operator&(Mask a, Mask b) { return {a.v && b.v}; }
ZEL_INLINE Mask operator|(Mask a, Mask b) { return {a.v || b.v}; }
// In `a` and not in `b`.
ZEL_INLINE Mask Without(Mask a, Mask b) { return {a.v && !b.v}; }
// Bit i stands for lane i.
ZEL_INLINE uint32_t BitsOf(Mask a) { return a.v ? 1 : 0; }
ZEL_INLINE Floats Select(Mask mask, Floats yes, Floats no) { return mask.v ? yes : no; }

// One byte per lane: 1 where the mask is set.
ZEL_INLINE void StoreFlags(uint8_t* to, Mask mask) { *to = mask.v ? 1 : 0; }

// Stores the lanes of the mask one after the other and returns how many they are. May write a whole
// vector.
ZEL_INLINE size_t StoreCompressed(uint32_t* to, Ints numbers, Mask mask) {
    *to = static_cast<uint32_t>(numbers.v);
    return mask.v ? 1 : 0;
}

// The elements at the indices, in the lanes of the mask; nothing is read for the others.
ZEL_INLINE Ints Gather(const Pixel* from, Ints indices, Mask mask) {
    return mask.v ? Load(from + indices.v) : Ints{0};
}

// Records of four floats, one per lane, taken apart into four vectors. `at` gives the record of a lane.
template <typename RecordAt>
ZEL_INLINE void LoadRecords(const RecordAt& at, Floats& a, Floats& b, Floats& c, Floats& d) {
    const float* record = at(0);
    a = {record[0]};
    b = {record[1]};
    c = {record[2]};
    d = {record[3]};
}

// The way back: four vectors into records that follow one another.
ZEL_INLINE void StoreRecords(float* to, Floats a, Floats b, Floats c, Floats d) {
    to[0] = a.v;
    to[1] = b.v;
    to[2] = c.v;
    to[3] = d.v;
}

ZEL_INLINE float LeastLane(Floats a) { return a.v; }
ZEL_INLINE float MostLane(Floats a) { return a.v; }

// A block of pixels as one vector: `rows` rows of kLanes / rows pixels, `stride` pixels apart.
template <int rows>
ZEL_INLINE Floats LoadBlock(const float* from, int64_t) {
    return Load(from);
}
template <int rows>
ZEL_INLINE Ints LoadBlock(const void* from, int64_t) {
    return Load(from);
}

// Replaces the pixels of the mask. For floats the caller has loaded the others before, as `old`.
template <int rows>
ZEL_INLINE void StoreBlock(float* to, int64_t, Mask mask, Floats values, Floats) {
    if (mask.v) Store(to, values);
}
template <int rows>
ZEL_INLINE void StoreBlock(void* to, int64_t, Mask mask, Ints values) {
    if (mask.v) Store(to, values);
}

// A divisor for three numbers at a time, prepared once for many. Numbers and divisor are `ordinary` if
// each number is zero or at least 2^-69 in size, the divisor 2^-14 .. 2^40, and the sign of a zero does not
// matter: AVX-512 then has a faster way with the same bits.
struct Divisor {
    Floats value;
};
ZEL_INLINE Divisor PrepareDivisor(Floats value, bool) { return {value}; }
ZEL_INLINE void Divide(Floats (&numbers)[3], const Divisor& by) {
    for (int i = 0; i < 3; ++i) numbers[i] = numbers[i] / by.value;
}

// To be called before functions that are compiled for other vectors.
ZEL_INLINE void LeaveVectors() {}

}  // namespace

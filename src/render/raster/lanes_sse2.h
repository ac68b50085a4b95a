// Four lanes: SSE2, which every 64-bit processor has. Included by lanes.h only; lanes_one.h says what each
// operation does.
#pragma once

namespace {

struct Floats {
    __m128 v;
};
struct Ints {
    __m128i v;
};
struct Mask {
    __m128 v;
};

ZEL_INLINE Floats Splat(float a) { return {_mm_set1_ps(a)}; }
ZEL_INLINE Ints Splat(int32_t a) { return {_mm_set1_epi32(a)}; }
ZEL_INLINE Ints LaneNumbers() { return {_mm_setr_epi32(0, 1, 2, 3)}; }
ZEL_INLINE Floats Load(const float* from) { return {_mm_loadu_ps(from)}; }
ZEL_INLINE Ints Load(const void* from) { return {_mm_loadu_si128(static_cast<const __m128i*>(from))}; }
ZEL_INLINE void Store(float* to, Floats a) { _mm_storeu_ps(to, a.v); }
ZEL_INLINE void Store(void* to, Ints a) { _mm_storeu_si128(static_cast<__m128i*>(to), a.v); }

ZEL_INLINE Floats operator+(Floats a, Floats b) { return {_mm_add_ps(a.v, b.v)}; }
ZEL_INLINE Floats operator-(Floats a, Floats b) { return {_mm_sub_ps(a.v, b.v)}; }
ZEL_INLINE Floats operator*(Floats a, Floats b) { return {_mm_mul_ps(a.v, b.v)}; }
ZEL_INLINE Floats operator/(Floats a, Floats b) { return {_mm_div_ps(a.v, b.v)}; }
ZEL_INLINE Floats Least(Floats a, Floats b) { return {_mm_min_ps(a.v, b.v)}; }
ZEL_INLINE Floats Most(Floats a, Floats b) { return {_mm_max_ps(a.v, b.v)}; }
ZEL_INLINE Floats SquareRoot(Floats a) { return {_mm_sqrt_ps(a.v)}; }
ZEL_INLINE Floats Magnitude(Floats a) { return {_mm_andnot_ps(_mm_set1_ps(-0.0f), a.v)}; }
ZEL_INLINE Floats Signed(Floats a, Floats sign) {
    return {_mm_xor_ps(a.v, _mm_and_ps(sign.v, _mm_set1_ps(-0.0f)))};
}

ZEL_INLINE Mask operator<(Floats a, Floats b) { return {_mm_cmplt_ps(a.v, b.v)}; }
ZEL_INLINE Mask operator>(Floats a, Floats b) { return {_mm_cmpgt_ps(a.v, b.v)}; }
ZEL_INLINE Mask operator<=(Floats a, Floats b) { return {_mm_cmple_ps(a.v, b.v)}; }
ZEL_INLINE Mask operator>=(Floats a, Floats b) { return {_mm_cmpge_ps(a.v, b.v)}; }
ZEL_INLINE Mask operator==(Floats a, Floats b) { return {_mm_cmpeq_ps(a.v, b.v)}; }
ZEL_INLINE Mask AreNumbers(Floats a, Floats b) { return {_mm_cmpord_ps(a.v, b.v)}; }

ZEL_INLINE Ints operator+(Ints a, Ints b) { return {_mm_add_epi32(a.v, b.v)}; }
// SSE2 multiplies only every other lane.
ZEL_INLINE Ints operator*(Ints a, Ints b) {
    const __m128i even = _mm_mul_epu32(a.v, b.v);
    const __m128i odd = _mm_mul_epu32(_mm_srli_si128(a.v, 4), _mm_srli_si128(b.v, 4));
    return {_mm_unpacklo_epi32(_mm_shuffle_epi32(even, _MM_SHUFFLE(0, 0, 2, 0)),
                               _mm_shuffle_epi32(odd, _MM_SHUFFLE(0, 0, 2, 0)))};
}
ZEL_INLINE Ints operator&(Ints a, Ints b) { return {_mm_and_si128(a.v, b.v)}; }
ZEL_INLINE Ints operator|(Ints a, Ints b) { return {_mm_or_si128(a.v, b.v)}; }
ZEL_INLINE Ints operator^(Ints a, Ints b) { return {_mm_xor_si128(a.v, b.v)}; }
ZEL_INLINE Mask operator<(Ints a, Ints b) { return {_mm_castsi128_ps(_mm_cmplt_epi32(a.v, b.v))}; }
ZEL_INLINE Ints Least(Ints a, Ints b) {
    const __m128i isLess = _mm_cmplt_epi32(a.v, b.v);
    return {_mm_or_si128(_mm_and_si128(isLess, a.v), _mm_andnot_si128(isLess, b.v))};
}
template <int bits>
ZEL_INLINE Ints ShiftedRight(Ints a) {
    return {_mm_srli_epi32(a.v, bits)};
}

// The instruction rounds up, so it is given what is missing to 255.
ZEL_INLINE Ints AverageOfBytes(Ints a, Ints b) {
    const __m128i all = _mm_set1_epi32(-1);
    return {_mm_xor_si128(_mm_avg_epu8(_mm_xor_si128(a.v, all), _mm_xor_si128(b.v, all)), all)};
}

struct ByteFactor {
    __m128i factors;
};
ZEL_INLINE ByteFactor PrepareByteFactor(uint32_t factor) {
    return {_mm_set1_epi64x(static_cast<int64_t>(factor * 0x1'0001'0001))};
}
ZEL_INLINE Ints ScaledBytes(Ints colors, const ByteFactor& by) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i low = _mm_mulhi_epu16(_mm_unpacklo_epi8(colors.v, zero), by.factors);
    const __m128i high = _mm_mulhi_epu16(_mm_unpackhi_epi8(colors.v, zero), by.factors);
    return {_mm_packus_epi16(low, high)};
}

ZEL_INLINE Ints Truncated(Floats a) { return {_mm_cvttps_epi32(a.v)}; }
ZEL_INLINE Floats Converted(Ints a) { return {_mm_cvtepi32_ps(a.v)}; }
ZEL_INLINE Floats BitsAsFloats(Ints a) { return {_mm_castsi128_ps(a.v)}; }
ZEL_INLINE Ints BitsAsInts(Floats a) { return {_mm_castps_si128(a.v)}; }

ZEL_INLINE Mask NoLanes() { return {_mm_setzero_ps()}; }
ZEL_INLINE Mask AllLanes() { return {_mm_castsi128_ps(_mm_set1_epi32(-1))}; }
ZEL_INLINE Mask operator&(Mask a, Mask b) { return {_mm_and_ps(a.v, b.v)}; }
ZEL_INLINE Mask operator|(Mask a, Mask b) { return {_mm_or_ps(a.v, b.v)}; }
ZEL_INLINE Mask Without(Mask a, Mask b) { return {_mm_andnot_ps(b.v, a.v)}; }
ZEL_INLINE uint32_t BitsOf(Mask a) { return static_cast<uint32_t>(_mm_movemask_ps(a.v)); }
ZEL_INLINE Floats Select(Mask mask, Floats yes, Floats no) {
    return {_mm_or_ps(_mm_and_ps(mask.v, yes.v), _mm_andnot_ps(mask.v, no.v))};
}

// SSE2 has no instruction for it. Numbers from 2^23 on have no fraction and stay as they are.
ZEL_INLINE Floats Floor(Floats a) {
    const Floats whole = Converted(Truncated(a));
    const Floats down = {_mm_sub_ps(whole.v, _mm_and_ps((whole > a).v, _mm_set1_ps(1)))};
    return Select(Magnitude(a) < Splat(8388608.0f), down, a);
}
ZEL_INLINE Floats Ceil(Floats a) {
    const Floats whole = Converted(Truncated(a));
    const Floats up = {_mm_add_ps(whole.v, _mm_and_ps((whole < a).v, _mm_set1_ps(1)))};
    return Select(Magnitude(a) < Splat(8388608.0f), up, a);
}

ZEL_INLINE void StoreFlags(uint8_t* to, Mask mask) {
    const uint32_t lanes = BitsOf(mask);
    for (int lane = 0; lane < 4; ++lane) to[lane] = lanes >> lane & 1;
}

// Writes every lane, and moves on only past those that are set: no branch depends on the mask.
ZEL_INLINE size_t StoreCompressed(uint32_t* to, Ints numbers, Mask mask) {
    alignas(16) uint32_t all[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(all), numbers.v);
    const uint32_t lanes = BitsOf(mask);
    size_t count = 0;
    for (int lane = 0; lane < 4; ++lane) {
        to[count] = all[lane];
        count += lanes >> lane & 1;
    }
    return count;
}

ZEL_INLINE Ints Gather(const Pixel* from, Ints indices, Mask mask) {
    alignas(16) int32_t at[4], found[4] = {};
    _mm_store_si128(reinterpret_cast<__m128i*>(at), indices.v);
    const uint32_t lanes = BitsOf(mask);
    for (int lane = 0; lane < 4; ++lane) {
        if ((lanes >> lane & 1) != 0) found[lane] = static_cast<int32_t>(from[at[lane]]);
    }
    return {_mm_load_si128(reinterpret_cast<const __m128i*>(found))};
}

template <typename RecordAt>
ZEL_INLINE void LoadRecords(const RecordAt& at, Floats& a, Floats& b, Floats& c, Floats& d) {
    a.v = _mm_loadu_ps(at(0));
    b.v = _mm_loadu_ps(at(1));
    c.v = _mm_loadu_ps(at(2));
    d.v = _mm_loadu_ps(at(3));
    _MM_TRANSPOSE4_PS(a.v, b.v, c.v, d.v);
}

ZEL_INLINE void StoreRecords(float* to, Floats a, Floats b, Floats c, Floats d) {
    _MM_TRANSPOSE4_PS(a.v, b.v, c.v, d.v);
    _mm_storeu_ps(to, a.v);
    _mm_storeu_ps(to + 4, b.v);
    _mm_storeu_ps(to + 8, c.v);
    _mm_storeu_ps(to + 12, d.v);
}

ZEL_INLINE float LeastLane(Floats a) {
    const __m128 two = _mm_min_ps(a.v, _mm_movehl_ps(a.v, a.v));
    return _mm_cvtss_f32(_mm_min_ss(two, _mm_shuffle_ps(two, two, 1)));
}
ZEL_INLINE float MostLane(Floats a) {
    const __m128 two = _mm_max_ps(a.v, _mm_movehl_ps(a.v, a.v));
    return _mm_cvtss_f32(_mm_max_ss(two, _mm_shuffle_ps(two, two, 1)));
}

template <int rows>
ZEL_INLINE Floats LoadBlock(const float* from, int64_t) {
    static_assert(rows == 1);
    return Load(from);
}
template <int rows>
ZEL_INLINE Ints LoadBlock(const void* from, int64_t) {
    return Load(from);
}
template <int rows>
ZEL_INLINE void StoreBlock(float* to, int64_t, Mask mask, Floats values, Floats old) {
    Store(to, Select(mask, values, old));
}
template <int rows>
ZEL_INLINE void StoreBlock(void* to, int64_t, Mask mask, Ints values) {
    Store(to, BitsAsInts(Select(mask, BitsAsFloats(values), BitsAsFloats(Load(to)))));
}

struct Divisor {
    Floats value;
};
ZEL_INLINE Divisor PrepareDivisor(Floats value, bool) { return {value}; }
ZEL_INLINE void Divide(Floats (&numbers)[3], const Divisor& by) {
    for (int i = 0; i < 3; ++i) numbers[i] = numbers[i] / by.value;
}

ZEL_INLINE void LeaveVectors() {}

}  // namespace

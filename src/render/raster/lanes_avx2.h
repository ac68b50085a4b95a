// Eight lanes: AVX2. Included by lanes.h only; lanes_one.h says what each operation does.
#pragma once

namespace {

struct Floats {
    __m256 v;
};
struct Ints {
    __m256i v;
};
struct Mask {
    __m256 v;
};

ZEL_INLINE Floats Splat(float a) { return {_mm256_set1_ps(a)}; }
ZEL_INLINE Ints Splat(int32_t a) { return {_mm256_set1_epi32(a)}; }
ZEL_INLINE Ints LaneNumbers() { return {_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7)}; }
ZEL_INLINE Floats Load(const float* from) { return {_mm256_loadu_ps(from)}; }
ZEL_INLINE Ints Load(const void* from) { return {_mm256_loadu_si256(static_cast<const __m256i*>(from))}; }
ZEL_INLINE void Store(float* to, Floats a) { _mm256_storeu_ps(to, a.v); }
ZEL_INLINE void Store(void* to, Ints a) { _mm256_storeu_si256(static_cast<__m256i*>(to), a.v); }

ZEL_INLINE Floats operator+(Floats a, Floats b) { return {_mm256_add_ps(a.v, b.v)}; }
ZEL_INLINE Floats operator-(Floats a, Floats b) { return {_mm256_sub_ps(a.v, b.v)}; }
ZEL_INLINE Floats operator*(Floats a, Floats b) { return {_mm256_mul_ps(a.v, b.v)}; }
ZEL_INLINE Floats operator/(Floats a, Floats b) { return {_mm256_div_ps(a.v, b.v)}; }
ZEL_INLINE Floats Least(Floats a, Floats b) { return {_mm256_min_ps(a.v, b.v)}; }
ZEL_INLINE Floats Most(Floats a, Floats b) { return {_mm256_max_ps(a.v, b.v)}; }
ZEL_INLINE Floats SquareRoot(Floats a) { return {_mm256_sqrt_ps(a.v)}; }
ZEL_INLINE Floats Floor(Floats a) { return {_mm256_floor_ps(a.v)}; }
ZEL_INLINE Floats Ceil(Floats a) { return {_mm256_ceil_ps(a.v)}; }
ZEL_INLINE Floats Magnitude(Floats a) { return {_mm256_andnot_ps(_mm256_set1_ps(-0.0f), a.v)}; }
ZEL_INLINE Floats Signed(Floats a, Floats sign) {
    return {_mm256_xor_ps(a.v, _mm256_and_ps(sign.v, _mm256_set1_ps(-0.0f)))};
}

ZEL_INLINE Mask operator<(Floats a, Floats b) { return {_mm256_cmp_ps(a.v, b.v, _CMP_LT_OQ)}; }
ZEL_INLINE Mask operator>(Floats a, Floats b) { return {_mm256_cmp_ps(a.v, b.v, _CMP_GT_OQ)}; }
ZEL_INLINE Mask operator<=(Floats a, Floats b) { return {_mm256_cmp_ps(a.v, b.v, _CMP_LE_OQ)}; }
ZEL_INLINE Mask operator>=(Floats a, Floats b) { return {_mm256_cmp_ps(a.v, b.v, _CMP_GE_OQ)}; }
ZEL_INLINE Mask operator==(Floats a, Floats b) { return {_mm256_cmp_ps(a.v, b.v, _CMP_EQ_OQ)}; }
ZEL_INLINE Mask AreNumbers(Floats a, Floats b) { return {_mm256_cmp_ps(a.v, b.v, _CMP_ORD_Q)}; }

ZEL_INLINE Ints operator+(Ints a, Ints b) { return {_mm256_add_epi32(a.v, b.v)}; }
ZEL_INLINE Ints operator*(Ints a, Ints b) { return {_mm256_mullo_epi32(a.v, b.v)}; }
ZEL_INLINE Ints operator&(Ints a, Ints b) { return {_mm256_and_si256(a.v, b.v)}; }
ZEL_INLINE Ints operator|(Ints a, Ints b) { return {_mm256_or_si256(a.v, b.v)}; }
ZEL_INLINE Ints operator^(Ints a, Ints b) { return {_mm256_xor_si256(a.v, b.v)}; }
ZEL_INLINE Mask operator<(Ints a, Ints b) { return {_mm256_castsi256_ps(_mm256_cmpgt_epi32(b.v, a.v))}; }
ZEL_INLINE Ints Least(Ints a, Ints b) { return {_mm256_min_epi32(a.v, b.v)}; }
template <int bits>
ZEL_INLINE Ints ShiftedRight(Ints a) {
    return {_mm256_srli_epi32(a.v, bits)};
}

// The instruction rounds up, so it is given what is missing to 255.
ZEL_INLINE Ints AverageOfBytes(Ints a, Ints b) {
    const __m256i all = _mm256_set1_epi32(-1);
    return {_mm256_xor_si256(_mm256_avg_epu8(_mm256_xor_si256(a.v, all), _mm256_xor_si256(b.v, all)), all)};
}

struct ByteFactor {
    __m256i factors;
};
ZEL_INLINE ByteFactor PrepareByteFactor(uint32_t factor) {
    return {_mm256_set1_epi64x(static_cast<int64_t>(factor * 0x1'0001'0001))};
}
ZEL_INLINE Ints ScaledBytes(Ints colors, const ByteFactor& by) {
    const __m256i zero = _mm256_setzero_si256();
    const __m256i low = _mm256_mulhi_epu16(_mm256_unpacklo_epi8(colors.v, zero), by.factors);
    const __m256i high = _mm256_mulhi_epu16(_mm256_unpackhi_epi8(colors.v, zero), by.factors);
    return {_mm256_packus_epi16(low, high)};
}

ZEL_INLINE Ints Truncated(Floats a) { return {_mm256_cvttps_epi32(a.v)}; }
ZEL_INLINE Floats Converted(Ints a) { return {_mm256_cvtepi32_ps(a.v)}; }
ZEL_INLINE Floats BitsAsFloats(Ints a) { return {_mm256_castsi256_ps(a.v)}; }
ZEL_INLINE Ints BitsAsInts(Floats a) { return {_mm256_castps_si256(a.v)}; }

ZEL_INLINE Mask NoLanes() { return {_mm256_setzero_ps()}; }
ZEL_INLINE Mask AllLanes() { return {_mm256_castsi256_ps(_mm256_set1_epi32(-1))}; }
ZEL_INLINE Mask operator&(Mask a, Mask b) { return {_mm256_and_ps(a.v, b.v)}; }
ZEL_INLINE Mask operator|(Mask a, Mask b) { return {_mm256_or_ps(a.v, b.v)}; }
ZEL_INLINE Mask Without(Mask a, Mask b) { return {_mm256_andnot_ps(b.v, a.v)}; }
ZEL_INLINE uint32_t BitsOf(Mask a) { return static_cast<uint32_t>(_mm256_movemask_ps(a.v)); }
ZEL_INLINE Floats Select(Mask mask, Floats yes, Floats no) { return {_mm256_blendv_ps(no.v, yes.v, mask.v)}; }

ZEL_INLINE void StoreFlags(uint8_t* to, Mask mask) {
    const __m256i ones = _mm256_srli_epi32(_mm256_castps_si256(mask.v), 31);
    const __m128i words = _mm_packs_epi32(_mm256_castsi256_si128(ones), _mm256_extracti128_si256(ones, 1));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(words, words));
}

// For each of the 256 masks, the lanes that are set, one byte each.
struct CompressedLanes {
    uint64_t lanes[256];
};
constexpr CompressedLanes MakeCompressedLanes() {
    CompressedLanes made{};
    for (uint32_t mask = 0; mask < 256; ++mask) {
        int count = 0;
        for (uint64_t lane = 0; lane < 8; ++lane) {
            if ((mask >> lane & 1) != 0) made.lanes[mask] |= lane << 8 * count++;
        }
    }
    return made;
}
constexpr CompressedLanes kCompressedLanes = MakeCompressedLanes();

ZEL_INLINE size_t StoreCompressed(uint32_t* to, Ints numbers, Mask mask) {
    const uint32_t lanes = BitsOf(mask);
    const auto* set = reinterpret_cast<const __m128i*>(&kCompressedLanes.lanes[lanes]);
    const __m256i order = _mm256_cvtepu8_epi32(_mm_loadl_epi64(set));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), _mm256_permutevar8x32_epi32(numbers.v, order));
    return static_cast<size_t>(_mm_popcnt_u32(lanes));
}

ZEL_INLINE Ints Gather(const Pixel* from, Ints indices, Mask mask) {
    return {_mm256_mask_i32gather_epi32(_mm256_setzero_si256(), reinterpret_cast<const int*>(from), indices.v,
                                        _mm256_castps_si256(mask.v), 4)};
}

// Two records into one vector.
ZEL_INLINE __m256 LoadPair(const float* low, const float* high) {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(low)), _mm_loadu_ps(high), 1);
}

// Eight records of four floats into four vectors of eight, and back: the same steps undo themselves. Record i
// and record i + 4 share a vector.
ZEL_INLINE void Transpose(__m256& a, __m256& b, __m256& c, __m256& d) {
    const __m256 low0 = _mm256_unpacklo_ps(a, b), high0 = _mm256_unpackhi_ps(a, b);
    const __m256 low1 = _mm256_unpacklo_ps(c, d), high1 = _mm256_unpackhi_ps(c, d);
    a = _mm256_shuffle_ps(low0, low1, _MM_SHUFFLE(1, 0, 1, 0));
    b = _mm256_shuffle_ps(low0, low1, _MM_SHUFFLE(3, 2, 3, 2));
    c = _mm256_shuffle_ps(high0, high1, _MM_SHUFFLE(1, 0, 1, 0));
    d = _mm256_shuffle_ps(high0, high1, _MM_SHUFFLE(3, 2, 3, 2));
}

// Single loads put together cost a third of what the gather instruction does.
template <typename RecordAt>
ZEL_INLINE void LoadRecords(const RecordAt& at, Floats& a, Floats& b, Floats& c, Floats& d) {
    a.v = LoadPair(at(0), at(4));
    b.v = LoadPair(at(1), at(5));
    c.v = LoadPair(at(2), at(6));
    d.v = LoadPair(at(3), at(7));
    Transpose(a.v, b.v, c.v, d.v);
}

ZEL_INLINE void StoreRecords(float* to, Floats a, Floats b, Floats c, Floats d) {
    Transpose(a.v, b.v, c.v, d.v);
    const __m256 records[] = {a.v, b.v, c.v, d.v};
    for (int i = 0; i < 4; ++i) {
        _mm_storeu_ps(to + 4 * i, _mm256_castps256_ps128(records[i]));
        _mm_storeu_ps(to + 16 + 4 * i, _mm256_extractf128_ps(records[i], 1));
    }
}

ZEL_INLINE float LeastLane(Floats a) {
    const __m128 four = _mm_min_ps(_mm256_castps256_ps128(a.v), _mm256_extractf128_ps(a.v, 1));
    const __m128 two = _mm_min_ps(four, _mm_movehl_ps(four, four));
    return _mm_cvtss_f32(_mm_min_ss(two, _mm_shuffle_ps(two, two, 1)));
}
ZEL_INLINE float MostLane(Floats a) {
    const __m128 four = _mm_max_ps(_mm256_castps256_ps128(a.v), _mm256_extractf128_ps(a.v, 1));
    const __m128 two = _mm_max_ps(four, _mm_movehl_ps(four, four));
    return _mm_cvtss_f32(_mm_max_ss(two, _mm_shuffle_ps(two, two, 1)));
}

// One row of eight pixels, or two of four.
template <int rows>
ZEL_INLINE Floats LoadBlock(const float* from, int64_t stride) {
    if constexpr (rows == 1) return Load(from);
    return {LoadPair(from, from + stride)};
}
template <int rows>
ZEL_INLINE Ints LoadBlock(const void* from, int64_t stride) {
    return BitsAsInts(LoadBlock<rows>(static_cast<const float*>(from), stride));
}
template <int rows>
ZEL_INLINE void StoreBlock(float* to, int64_t stride, Mask mask, Floats values, Floats old) {
    const Floats all = Select(mask, values, old);
    if constexpr (rows == 1) {
        Store(to, all);
    } else {
        _mm_storeu_ps(to + stride, _mm256_extractf128_ps(all.v, 1));
        _mm_storeu_ps(to, _mm256_castps256_ps128(all.v));
    }
}
template <int rows>
ZEL_INLINE void StoreBlock(void* to, int64_t stride, Mask mask, Ints values) {
    auto* first = static_cast<float*>(to);
    StoreBlock<rows>(first, stride, mask, BitsAsFloats(values), LoadBlock<rows>(first, stride));
}

struct Divisor {
    Floats value;
};
ZEL_INLINE Divisor PrepareDivisor(Floats value, bool) { return {value}; }
ZEL_INLINE void Divide(Floats (&numbers)[3], const Divisor& by) {
    for (int i = 0; i < 3; ++i) numbers[i] = numbers[i] / by.value;
}

ZEL_INLINE void LeaveVectors() {
#if defined(_MSC_VER) && !defined(__clang__)
    _mm256_zeroupper();  // the other compilers write it themselves
#endif
}

}  // namespace

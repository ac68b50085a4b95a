// Sixteen lanes: AVX-512 (F, BW, DQ, VL). Included by lanes.h only; lanes_one.h says what each operation
// does.
#pragma once

namespace {

struct Floats {
    __m512 v;
};
struct Ints {
    __m512i v;
};
struct Mask {
    __mmask16 v;
};

ZEL_INLINE Floats Splat(float a) { return {_mm512_set1_ps(a)}; }
ZEL_INLINE Ints Splat(int32_t a) { return {_mm512_set1_epi32(a)}; }
ZEL_INLINE Ints LaneNumbers() {
    return {_mm512_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15)};
}
ZEL_INLINE Floats Load(const float* from) { return {_mm512_loadu_ps(from)}; }
ZEL_INLINE Ints Load(const void* from) { return {_mm512_loadu_si512(from)}; }
ZEL_INLINE void Store(float* to, Floats a) { _mm512_storeu_ps(to, a.v); }
ZEL_INLINE void Store(void* to, Ints a) { _mm512_storeu_si512(to, a.v); }

ZEL_INLINE Floats operator+(Floats a, Floats b) { return {_mm512_add_ps(a.v, b.v)}; }
ZEL_INLINE Floats operator-(Floats a, Floats b) { return {_mm512_sub_ps(a.v, b.v)}; }
ZEL_INLINE Floats operator*(Floats a, Floats b) { return {_mm512_mul_ps(a.v, b.v)}; }
ZEL_INLINE Floats operator/(Floats a, Floats b) { return {_mm512_div_ps(a.v, b.v)}; }
ZEL_INLINE Floats Least(Floats a, Floats b) { return {_mm512_min_ps(a.v, b.v)}; }
ZEL_INLINE Floats Most(Floats a, Floats b) { return {_mm512_max_ps(a.v, b.v)}; }
ZEL_INLINE Floats SquareRoot(Floats a) { return {_mm512_sqrt_ps(a.v)}; }
ZEL_INLINE Floats Floor(Floats a) { return {_mm512_roundscale_ps(a.v, _MM_FROUND_TO_NEG_INF)}; }
ZEL_INLINE Floats Ceil(Floats a) { return {_mm512_roundscale_ps(a.v, _MM_FROUND_TO_POS_INF)}; }
ZEL_INLINE Floats Magnitude(Floats a) { return {_mm512_andnot_ps(_mm512_set1_ps(-0.0f), a.v)}; }
ZEL_INLINE Floats Signed(Floats a, Floats sign) {
    return {_mm512_xor_ps(a.v, _mm512_and_ps(sign.v, _mm512_set1_ps(-0.0f)))};
}

ZEL_INLINE Mask operator<(Floats a, Floats b) { return {_mm512_cmp_ps_mask(a.v, b.v, _CMP_LT_OQ)}; }
ZEL_INLINE Mask operator>(Floats a, Floats b) { return {_mm512_cmp_ps_mask(a.v, b.v, _CMP_GT_OQ)}; }
ZEL_INLINE Mask operator<=(Floats a, Floats b) { return {_mm512_cmp_ps_mask(a.v, b.v, _CMP_LE_OQ)}; }
ZEL_INLINE Mask operator>=(Floats a, Floats b) { return {_mm512_cmp_ps_mask(a.v, b.v, _CMP_GE_OQ)}; }
ZEL_INLINE Mask operator==(Floats a, Floats b) { return {_mm512_cmp_ps_mask(a.v, b.v, _CMP_EQ_OQ)}; }
ZEL_INLINE Mask AreNumbers(Floats a, Floats b) { return {_mm512_cmp_ps_mask(a.v, b.v, _CMP_ORD_Q)}; }

ZEL_INLINE Ints operator+(Ints a, Ints b) { return {_mm512_add_epi32(a.v, b.v)}; }
ZEL_INLINE Ints operator*(Ints a, Ints b) { return {_mm512_mullo_epi32(a.v, b.v)}; }
ZEL_INLINE Ints operator&(Ints a, Ints b) { return {_mm512_and_si512(a.v, b.v)}; }
ZEL_INLINE Ints operator|(Ints a, Ints b) { return {_mm512_or_si512(a.v, b.v)}; }
ZEL_INLINE Ints operator^(Ints a, Ints b) { return {_mm512_xor_si512(a.v, b.v)}; }
ZEL_INLINE Mask operator<(Ints a, Ints b) { return {_mm512_cmplt_epi32_mask(a.v, b.v)}; }
ZEL_INLINE Ints Least(Ints a, Ints b) { return {_mm512_min_epi32(a.v, b.v)}; }
template <int bits>
ZEL_INLINE Ints ShiftedRight(Ints a) {
    return {_mm512_srli_epi32(a.v, bits)};
}

// The instruction rounds up, so it is given what is missing to 255.
ZEL_INLINE Ints AverageOfBytes(Ints a, Ints b) {
    const __m512i all = _mm512_set1_epi32(-1);
    return {_mm512_xor_si512(_mm512_avg_epu8(_mm512_xor_si512(a.v, all), _mm512_xor_si512(b.v, all)), all)};
}

struct ByteFactor {
    __m512i factors;
};
ZEL_INLINE ByteFactor PrepareByteFactor(uint32_t factor) {
    return {_mm512_set1_epi64(static_cast<int64_t>(factor * 0x1'0001'0001))};
}
ZEL_INLINE Ints ScaledBytes(Ints colors, const ByteFactor& by) {
    const __m512i zero = _mm512_setzero_si512();
    const __m512i low = _mm512_mulhi_epu16(_mm512_unpacklo_epi8(colors.v, zero), by.factors);
    const __m512i high = _mm512_mulhi_epu16(_mm512_unpackhi_epi8(colors.v, zero), by.factors);
    return {_mm512_packus_epi16(low, high)};
}

ZEL_INLINE Ints Truncated(Floats a) { return {_mm512_cvttps_epi32(a.v)}; }
ZEL_INLINE Floats Converted(Ints a) { return {_mm512_cvtepi32_ps(a.v)}; }
ZEL_INLINE Floats BitsAsFloats(Ints a) { return {_mm512_castsi512_ps(a.v)}; }
ZEL_INLINE Ints BitsAsInts(Floats a) { return {_mm512_castps_si512(a.v)}; }

ZEL_INLINE Mask NoLanes() { return {0}; }
ZEL_INLINE Mask AllLanes() { return {0xFFFF}; }
ZEL_INLINE Mask operator&(Mask a, Mask b) { return {_kand_mask16(a.v, b.v)}; }
ZEL_INLINE Mask operator|(Mask a, Mask b) { return {_kor_mask16(a.v, b.v)}; }
ZEL_INLINE Mask Without(Mask a, Mask b) { return {_kandn_mask16(b.v, a.v)}; }
ZEL_INLINE uint32_t BitsOf(Mask a) { return _cvtmask16_u32(a.v); }
ZEL_INLINE Floats Select(Mask mask, Floats yes, Floats no) {
    return {_mm512_mask_blend_ps(mask.v, no.v, yes.v)};
}

ZEL_INLINE void StoreFlags(uint8_t* to, Mask mask) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_maskz_set1_epi8(mask.v, 1));
}

ZEL_INLINE size_t StoreCompressed(uint32_t* to, Ints numbers, Mask mask) {
    _mm512_storeu_si512(to, _mm512_maskz_compress_epi32(mask.v, numbers.v));
    return static_cast<size_t>(_mm_popcnt_u32(BitsOf(mask)));
}

ZEL_INLINE Ints Gather(const Pixel* from, Ints indices, Mask mask) {
    return {_mm512_mask_i32gather_epi32(_mm512_setzero_si512(), mask.v, indices.v, from, 4)};
}

// Four records into one vector.
ZEL_INLINE __m512 LoadFour(const float* a, const float* b, const float* c, const float* d) {
    const __m256 low = _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(a)), _mm_loadu_ps(b), 1);
    const __m256 high = _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(c)), _mm_loadu_ps(d), 1);
    return _mm512_insertf32x8(_mm512_castps256_ps512(low), high, 1);
}

// Sixteen records of four floats into four vectors of sixteen, and back: the same steps undo themselves.
// Records i, i + 4, i + 8 and i + 12 share a vector.
ZEL_INLINE void Transpose(__m512& a, __m512& b, __m512& c, __m512& d) {
    const __m512 low0 = _mm512_unpacklo_ps(a, b), high0 = _mm512_unpackhi_ps(a, b);
    const __m512 low1 = _mm512_unpacklo_ps(c, d), high1 = _mm512_unpackhi_ps(c, d);
    a = _mm512_shuffle_ps(low0, low1, _MM_SHUFFLE(1, 0, 1, 0));
    b = _mm512_shuffle_ps(low0, low1, _MM_SHUFFLE(3, 2, 3, 2));
    c = _mm512_shuffle_ps(high0, high1, _MM_SHUFFLE(1, 0, 1, 0));
    d = _mm512_shuffle_ps(high0, high1, _MM_SHUFFLE(3, 2, 3, 2));
}

template <typename RecordAt>
ZEL_INLINE void LoadRecords(const RecordAt& at, Floats& a, Floats& b, Floats& c, Floats& d) {
    a.v = LoadFour(at(0), at(4), at(8), at(12));
    b.v = LoadFour(at(1), at(5), at(9), at(13));
    c.v = LoadFour(at(2), at(6), at(10), at(14));
    d.v = LoadFour(at(3), at(7), at(11), at(15));
    Transpose(a.v, b.v, c.v, d.v);
}

ZEL_INLINE void StoreRecords(float* to, Floats a, Floats b, Floats c, Floats d) {
    Transpose(a.v, b.v, c.v, d.v);
    const __m512 records[] = {a.v, b.v, c.v, d.v};
    for (int i = 0; i < 4; ++i) {
        _mm_storeu_ps(to + 4 * i, _mm512_castps512_ps128(records[i]));
        _mm_storeu_ps(to + 16 + 4 * i, _mm512_extractf32x4_ps(records[i], 1));
        _mm_storeu_ps(to + 32 + 4 * i, _mm512_extractf32x4_ps(records[i], 2));
        _mm_storeu_ps(to + 48 + 4 * i, _mm512_extractf32x4_ps(records[i], 3));
    }
}

ZEL_INLINE float LeastLane(Floats a) { return _mm512_reduce_min_ps(a.v); }
ZEL_INLINE float MostLane(Floats a) { return _mm512_reduce_max_ps(a.v); }

// One row of sixteen pixels, two of eight, or four of four.
template <int rows>
ZEL_INLINE Floats LoadBlock(const float* from, int64_t stride) {
    if constexpr (rows == 1) {
        return Load(from);
    } else if constexpr (rows == 2) {
        return {_mm512_insertf32x8(_mm512_castps256_ps512(_mm256_loadu_ps(from)),
                                   _mm256_loadu_ps(from + stride), 1)};
    } else {
        return {LoadFour(from, from + stride, from + 2 * stride, from + 3 * stride)};
    }
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
    } else if constexpr (rows == 2) {
        _mm256_storeu_ps(to, _mm512_castps512_ps256(all.v));
        _mm256_storeu_ps(to + stride, _mm512_extractf32x8_ps(all.v, 1));
    } else {
        _mm_storeu_ps(to, _mm512_castps512_ps128(all.v));
        _mm_storeu_ps(to + stride, _mm512_extractf32x4_ps(all.v, 1));
        _mm_storeu_ps(to + 2 * stride, _mm512_extractf32x4_ps(all.v, 2));
        _mm_storeu_ps(to + 3 * stride, _mm512_extractf32x4_ps(all.v, 3));
    }
}
template <int rows>
ZEL_INLINE void StoreBlock(void* to, int64_t stride, Mask mask, Ints values) {
    auto* first = static_cast<float*>(to);
    StoreBlock<rows>(first, stride, mask, BitsAsFloats(values), LoadBlock<rows>(first, stride));
}

// A division of sixteen lanes takes ten cycles, as long as twenty other operations. Ordinary numbers are
// divided by fused multiplications instead, with the same bits. The reciprocal in two parts gives a quotient
// less than one unit off; the rest of that quotient is then exact, and adding rest / divisor rounds as the
// division does.
struct Divisor {
    Floats value, reciprocal, rest;  // the rest is what rounding took off the reciprocal
    bool isOrdinary;
};
ZEL_INLINE Divisor PrepareDivisor(Floats value, bool isOrdinary) {
    if (!isOrdinary) return {value, value, value, false};
    const __m512 one = _mm512_set1_ps(1), reciprocal = _mm512_div_ps(one, value.v);
    const __m512 rest = _mm512_mul_ps(_mm512_fnmadd_ps(reciprocal, value.v, one), reciprocal);
    return {value, {reciprocal}, {rest}, true};
}
ZEL_INLINE void Divide(Floats (&numbers)[3], const Divisor& by) {
    if (by.isOrdinary) {
        for (Floats& number : numbers) {
            const __m512 near =
                _mm512_fmadd_ps(number.v, by.reciprocal.v, _mm512_mul_ps(number.v, by.rest.v));
            const __m512 off = _mm512_fnmadd_ps(near, by.value.v, number.v);
            number.v = _mm512_fmadd_ps(off, by.reciprocal.v, near);
        }
    } else {
        for (Floats& number : numbers) number = number / by.value;
    }
}

ZEL_INLINE void LeaveVectors() {
#if defined(_MSC_VER) && !defined(__clang__)
    _mm256_zeroupper();  // the other compilers write it themselves
#endif
}

}  // namespace

#include "base/numbers.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

// FLT_MAX has 39 digits before the point; sign, point and six decimals come on top.
constexpr size_t kNumberBuffer = 64;

// From this magnitude on a float is a whole number, and a million times it may not fit 64 bits.
constexpr float kLargeFloat = 17592186044416.0f;  // 2 to the 44th

// Larger exponents act like infinity; sums with this one stay far from overflow.
constexpr int64_t kExponentLimit = 1'000'000'000'000;

constexpr double kPowersOfTen[] = {1, 10, 100, 1000, 10'000, 100'000, 1'000'000};

// Writes the digits of a whole number backwards, so that they stop at `end`. Returns where they begin.
static wchar_t* WriteDigits(uint64_t number, wchar_t* end) {
    do {
        *--end = static_cast<wchar_t>(L'0' + number % 10);
        number /= 10;
    } while (number != 0);
    return end;
}

// Likewise for a float of at least 2 to the 44th, which is always whole: its 24 bits are shifted into a
// number of 128 bits, which is divided by ten until nothing is left.
static wchar_t* WriteLargeDigits(float magnitude, wchar_t* end) {
    int exponent = 0;
    const auto mantissa = static_cast<uint32_t>(std::ldexp(std::frexp(magnitude, &exponent), 24));
    const int shift = exponent - 24;  // 21 .. 104

    uint32_t words[4] = {};  // lowest first
    const uint64_t shifted = static_cast<uint64_t>(mantissa) << (shift % 32);
    words[shift / 32] = static_cast<uint32_t>(shifted);
    if (shift / 32 < 3) words[shift / 32 + 1] = static_cast<uint32_t>(shifted >> 32);

    bool isZero = false;
    while (!isZero) {
        uint64_t rest = 0;
        isZero = true;
        for (int i = 3; i >= 0; --i) {
            const uint64_t part = rest << 32 | words[i];
            words[i] = static_cast<uint32_t>(part / 10);
            rest = part % 10;
            isZero = isZero && words[i] == 0;
        }
        *--end = static_cast<wchar_t>(L'0' + rest);
    }
    return end;
}

// The nearest whole number, an exact half to the even one. `value` lies below 2 to the 64th.
static uint64_t RoundHalfToEven(double value) {
    const auto whole = static_cast<uint64_t>(value);
    const double fraction = value - static_cast<double>(whole);
    const bool up = fraction > 0.5 || (fraction == 0.5 && whole % 2 == 1);
    return whole + (up ? 1 : 0);
}

// Written without the library, whose result depends on the locale and, for an exact half, on the compiler.
// Digits are made from the last to the first in a buffer: the decimals, the point, the whole part.
void AppendFixed(std::wstring& text, float value, int32_t decimals) {
    assert(decimals >= 0 && decimals <= 6);
    if (std::isnan(value)) {
        text += L"nan";
        return;
    }
    if (std::signbit(value)) text += L'-';
    if (std::isinf(value)) {
        text += L"inf";
        return;
    }

    wchar_t buffer[kNumberBuffer];
    wchar_t* const end = std::end(buffer);
    wchar_t* begin = end;
    const float magnitude = std::fabs(value);
    if (magnitude >= kLargeFloat) {
        if (decimals > 0) {
            begin = std::fill_n(begin - decimals, decimals, L'0') - decimals;
            *--begin = L'.';
        }
        begin = WriteLargeDigits(magnitude, begin);
    } else {
        // Exact: a float has 24 significant bits, a power of ten up to a million at most 14, a double 53.
        uint64_t scaled = RoundHalfToEven(static_cast<double>(magnitude) * kPowersOfTen[decimals]);
        for (int32_t i = 0; i < decimals; ++i) {
            *--begin = static_cast<wchar_t>(L'0' + scaled % 10);
            scaled /= 10;
        }
        if (decimals > 0) *--begin = L'.';
        begin = WriteDigits(scaled, begin);
    }
    text.append(begin, end);
}

std::wstring Fixed(float value, int32_t decimals) {
    std::wstring text;
    AppendFixed(text, value, decimals);
    return text;
}

void AppendInteger(std::wstring& text, int64_t number) {
    wchar_t buffer[kNumberBuffer];
    wchar_t* const end = std::end(buffer);
    // Negated as unsigned, because the lowest number has no positive twin.
    const auto magnitude = number < 0 ? 0 - static_cast<uint64_t>(number) : static_cast<uint64_t>(number);
    if (number < 0) text += L'-';
    text.append(WriteDigits(magnitude, end), end);
}

std::wstring Padded(int32_t number, int32_t digits) {
    std::wstring text;
    AppendInteger(text, number);
    const auto width = static_cast<size_t>(std::max(digits, 0));
    if (text.size() < width) text.insert(number < 0 ? 1 : 0, width - text.size(), L'0');
    return text;
}

template <typename Char>
static bool IsBlank(Char c) {
    return c == Char(' ') || (c >= Char('\t') && c <= Char('\r'));
}

template <typename Char>
static bool IsDigit(Char c) {
    return c >= Char('0') && c <= Char('9');
}

// Takes leading blanks and a sign off. True for a minus.
template <typename Char>
static bool TakeSign(std::basic_string_view<Char>& text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    if (text.empty() || (text.front() != Char('-') && text.front() != Char('+'))) return false;
    const bool isMinus = text.front() == Char('-');
    text.remove_prefix(1);
    return isMinus;
}

// Takes an integer off the front, limited to low .. high. False when there is no digit.
template <typename Char>
static bool TakeLimited(std::basic_string_view<Char>& text, int64_t low, int64_t high, int64_t& value) {
    const bool isMinus = TakeSign(text);
    if (text.empty() || !IsDigit(text.front())) return false;
    int64_t number = 0;
    while (!text.empty() && IsDigit(text.front())) {
        number = std::min(number * 10 + static_cast<int64_t>(text.front() - Char('0')), kExponentLimit);
        text.remove_prefix(1);
    }
    value = std::clamp(isMinus ? -number : number, low, high);
    return true;
}

namespace {
// How long the text of a number is, and how large its value.
struct NumberText {
    size_t length = 0;      // characters, exponent included; 0 when there is no digit
    bool isZero = true;     // every digit is zero
    int64_t magnitude = 0;  // ten to this power is above the value and at most ten times it
};
}  // namespace

// Measures digits, a point, digits, and an exponent if digits follow its letter and sign.
template <typename Char>
static NumberText MeasureNumber(std::basic_string_view<Char> text) {
    NumberText number;
    size_t i = 0;
    bool anyDigit = false, afterPoint = false;
    for (; i < text.size(); ++i) {
        const Char c = text[i];
        if (c == Char('.') && !afterPoint) {
            afterPoint = true;
            continue;
        }
        if (!IsDigit(c)) break;
        anyDigit = true;
        if (c != Char('0')) number.isZero = false;
        if (!afterPoint && !number.isZero) ++number.magnitude;
        if (afterPoint && number.isZero) --number.magnitude;
    }
    if (!anyDigit) return {};
    number.length = i;

    if (i >= text.size() || (text[i] != Char('e') && text[i] != Char('E'))) return number;
    const auto exponentText = text.substr(i + 1);
    if (exponentText.empty() || IsBlank(exponentText.front())) return number;
    auto rest = exponentText;
    int64_t exponent = 0;
    if (!TakeLimited(rest, -kExponentLimit, kExponentLimit, exponent)) return number;
    number.length = text.size() - rest.size();
    number.magnitude += exponent;
    return number;
}

// The value of a number's text without a sign; infinite if it is too large. The library converts exactly and
// without a locale, but it says the same about numbers that are too large and too small. So the magnitude
// decides, and far out it decides alone, however long the text is.
template <typename Char>
static float ConvertNumber(std::basic_string_view<Char> text, const NumberText& number) {
    if (number.isZero || number.magnitude < -50) return 0;
    if (number.magnitude > 50) return std::numeric_limits<float>::infinity();

    // from_chars reads narrow characters. All of them are ASCII here.
    char buffer[kNumberBuffer];
    std::string longBuffer;
    char* narrow = buffer;
    if (number.length > kNumberBuffer) {
        longBuffer.resize(number.length);
        narrow = longBuffer.data();
    }
    for (size_t i = 0; i < number.length; ++i) narrow[i] = static_cast<char>(text[i]);

    float value = 0;
    const auto result = std::from_chars(narrow, narrow + number.length, value);
    if (result.ec == std::errc{}) return value;
    return number.magnitude > 0 ? std::numeric_limits<float>::infinity() : 0;
}

int32_t ReadInteger(std::wstring_view text, int32_t fallback) {
    int64_t value = fallback;
    TakeLimited<wchar_t>(text, INT32_MIN, INT32_MAX, value);
    return static_cast<int32_t>(value);
}

uint32_t ReadUnsigned(std::wstring_view text, uint32_t fallback) {
    int64_t value = fallback;
    TakeLimited<wchar_t>(text, 0, UINT32_MAX, value);
    return static_cast<uint32_t>(value);
}

float ReadFloat(std::wstring_view text, float fallback) {
    const bool isMinus = TakeSign(text);
    const NumberText number = MeasureNumber(text);
    if (number.length == 0) return fallback;
    const float magnitude = ConvertNumber(text, number);
    if (!std::isfinite(magnitude)) return fallback;
    return isMinus ? -magnitude : magnitude;
}

bool TakeInteger(std::string_view& text, int32_t& value) {
    std::string_view rest = text;
    int64_t number = 0;
    if (!TakeLimited<char>(rest, INT32_MIN, INT32_MAX, number)) return false;
    text = rest;
    value = static_cast<int32_t>(number);
    return true;
}

// Takes a word in lower case, whatever case the text has. False, with `text` as it was, when it is not there.
static bool TakeWord(std::string_view& text, std::string_view word) {
    const auto isSame = [](char c, char lower) { return c == lower || c == lower - 'a' + 'A'; };
    if (text.size() < word.size() || !std::equal(word.begin(), word.end(), text.begin(),
                                                 [isSame](char lower, char c) { return isSame(c, lower); })) {
        return false;
    }
    text.remove_prefix(word.size());
    return true;
}

// "inf" and "infinity", but not half of the longer word; "nan", and behind it letters and digits in brackets.
static bool TakeWordForNumber(std::string_view& text, float& value) {
    if (TakeWord(text, "inf")) {
        value = std::numeric_limits<float>::infinity();
        return TakeWord(text, "inity") || text.empty() || (text.front() != 'i' && text.front() != 'I');
    }
    if (!TakeWord(text, "nan")) return false;
    value = std::numeric_limits<float>::quiet_NaN();
    if (text.empty() || text.front() != '(') return true;
    const size_t end =
        text.find_first_not_of("0123456789_ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", 1);
    if (end == std::string_view::npos || text[end] != ')') return false;
    text.remove_prefix(end + 1);
    return true;
}

bool TakeFloat(std::string_view& text, float& value) {
    std::string_view rest = text;
    const bool isMinus = TakeSign(rest);
    const NumberText number = MeasureNumber(rest);
    float magnitude = 0;
    if (number.length > 0) {
        magnitude = ConvertNumber(rest, number);
        rest.remove_prefix(number.length);
    } else if (!TakeWordForNumber(rest, magnitude)) {
        return false;
    }
    value = isMinus ? -magnitude : magnitude;
    text = rest;
    return true;
}

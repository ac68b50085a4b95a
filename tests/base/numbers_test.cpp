#include "base/numbers.h"

#include "doctest/doctest.h"

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

static std::string Narrow(const std::wstring& text) { return {text.begin(), text.end()}; }
static std::wstring Wide(const std::string& text) { return {text.begin(), text.end()}; }

TEST_CASE("a fixed number has the decimals asked for and is rounded to the nearest") {
    struct {
        float value;
        int32_t decimals;
        const wchar_t* text;
    } cases[] = {
        {0, 6, L"0.000000"},
        {-0.0f, 6, L"-0.000000"},
        {1, 6, L"1.000000"},
        {-2.5f, 6, L"-2.500000"},
        {0.1f, 6, L"0.100000"},
        {9.8f, 6, L"9.800000"},
        {0.0000004f, 6, L"0.000000"},
        {-0.0000004f, 6, L"-0.000000"},
        {0.0000006f, 6, L"0.000001"},
        {0.9999999f, 6, L"1.000000"},
        {123456.789f, 6, L"123456.789062"},
        {16777216, 6, L"16777216.000000"},
        {2.5f, 0, L"2"},  // an exact half goes to the even digit
        {3.5f, 0, L"4"},
        {0.125f, 2, L"0.12"},
        {0.375f, 2, L"0.38"},
        {-1.005f, 2, L"-1.00"},  // the float lies below 1.005
        {18, 1, L"18.0"},
        {8589934592.0f, 2, L"8589934592.00"},
        {8589933568.0f, 2, L"8589933568.00"},
        {1e10f, 0, L"10000000000"},
        {17592184995840.0f, 6, L"17592184995840.000000"},  // the last below 2 to the 44th
        {17592186044416.0f, 6, L"17592186044416.000000"},
        {-17592188141568.0f, 1, L"-17592188141568.0"},
        {FLT_MAX, 6, L"340282346638528859811704183484516925440.000000"},
        {-FLT_MAX, 6, L"-340282346638528859811704183484516925440.000000"},
        {FLT_MIN, 6, L"0.000000"},
        {std::numeric_limits<float>::denorm_min(), 6, L"0.000000"},
        {std::numeric_limits<float>::infinity(), 6, L"inf"},
        {-std::numeric_limits<float>::infinity(), 6, L"-inf"},
        {std::numeric_limits<float>::quiet_NaN(), 6, L"nan"},
    };
    for (auto [value, decimals, text] : cases) CHECK(Fixed(value, decimals) == text);
}

TEST_CASE("random floats are written as the C library writes them") {
    std::mt19937 random(20'240'117);
    for (int32_t i = 0; i < 200'000; ++i) {
        const auto bits = static_cast<uint32_t>(random());
        const auto value = std::bit_cast<float>(bits);
        if (!std::isfinite(value)) continue;
        const auto decimals = static_cast<int32_t>(random() % 7);
        char expected[128];
        std::snprintf(expected, sizeof expected, "%.*f", static_cast<int>(decimals),
                      static_cast<double>(value));
        const std::string text = Narrow(Fixed(value, decimals));
        if (text != expected) FAIL_CHECK("seed 20240117, bits ", bits, ": ", text, " is not ", expected);
    }
}

TEST_CASE("a number is padded with zeros behind its sign and never cut") {
    struct {
        int32_t number, digits;
        const wchar_t* text;
    } cases[] = {{1, 2, L"01"},
                 {12, 2, L"12"},
                 {123, 2, L"123"},
                 {0, 2, L"00"},
                 {-5, 2, L"-5"},
                 {-5, 3, L"-05"},
                 {INT32_MIN, 2, L"-2147483648"},
                 {7, 0, L"7"},
                 {7, -3, L"7"}};
    for (auto [number, digits, text] : cases) CHECK(Padded(number, digits) == text);
}

TEST_CASE("an integer is read from the start of a text and limited to 32 bits") {
    struct {
        const wchar_t* text;
        int32_t value;
    } cases[] = {
        {L"42", 42},
        {L"-7", -7},
        {L"+7", 7},
        {L"  12 px", 12},
        {L"\v\f\r\n 5", 5},
        {L"007", 7},
        {L"3.9", 3},
        {L"1e5", 1},
        {L"", -1},
        {L" ", -1},
        {L"-", -1},
        {L"+-3", -1},
        {L"- 3", -1},
        {L"abc", -1},
        {L"2147483647", INT32_MAX},
        {L"2147483648", INT32_MAX},
        {L"-2147483648", INT32_MIN},
        {L"-2147483649", INT32_MIN},
        {L"99999999999999999999999999", INT32_MAX},
        {L"-99999999999999999999999999", INT32_MIN},
        {L"0x10", 0},
        {L"\x0663", -1},  // an Arabic digit is none of ours
    };
    for (auto [text, value] : cases) CHECK(ReadInteger(text, -1) == value);
    CHECK(ReadInteger(std::wstring(100'000, L'9'), -1) == INT32_MAX);
}

TEST_CASE("a colour is read as an unsigned number and limited to 32 bits") {
    CHECK(ReadUnsigned(L"12897614", 1) == 0xC4CD4E);
    CHECK(ReadUnsigned(L"4294967295", 1) == 0xFFFFFFFFu);
    CHECK(ReadUnsigned(L"4294967296", 1) == 0xFFFFFFFFu);
    CHECK(ReadUnsigned(L"-5", 1) == 0);
    CHECK(ReadUnsigned(L"", 77) == 77);
    CHECK(ReadUnsigned(L"red", 77) == 77);
}

TEST_CASE("a float is read from the start of a text, and a text without a finite number gives the default") {
    struct {
        const wchar_t* text;
        float value;
    } cases[] = {
        {L"1.500000", 1.5f},
        {L"-2.25", -2.25f},
        {L"+3", 3},
        {L"  4.5abc", 4.5f},
        {L".5", 0.5f},
        {L"5.", 5},
        {L"-.5", -0.5f},
        {L"1e3", 1000},
        {L"1E-2", 0.01f},
        {L"1e+2", 100},
        {L"1e", 1},
        {L"1e+", 1},
        {L"1e 5", 1},
        {L"1.2.3", 1.2f},
        {L"0x10", 0},
        {L"1,5", 1},
        {L"nan", 99},
        {L"inf", 99},
        {L"-inf", 99},
        {L"infinity", 99},
        {L"", 99},
        {L".", 99},
        {L"-", 99},
        {L"e5", 99},
        {L"1e39", 99},
        {L"-1e39", 99},
        {L"1e999999999999999999999", 99},
        {L"1e-999999999999999999999", 0},
        {L"0e999999999999999999999", 0},
        {L"1e-46", 0},
        {L"7.006e-46", 0},  // just below half of the smallest
        {L"7.007e-46", std::numeric_limits<float>::denorm_min()},
        {L"1e-45", std::numeric_limits<float>::denorm_min()},
        {L"-1e-45", -std::numeric_limits<float>::denorm_min()},
        {L"2.2e-45", 2 * std::numeric_limits<float>::denorm_min()},
        {L"1.17549435e-38", FLT_MIN},
        {L"1.17549421e-38", FLT_MIN - std::numeric_limits<float>::denorm_min()},
        {L"340282346638528859811704183484516925440", FLT_MAX},
        {L"340282356779733661637539395458142568448", 99},            // half way to the next power of two
        {L"16777217", 16777216},                                     // a tie to the even mantissa
        {L"1.00000005960464477539062500001", 1.00000011920928955f},  // just above a tie
    };
    for (auto [text, value] : cases) CHECK(ReadFloat(text, 99) == value);
    CHECK(std::signbit(ReadFloat(L"-0.000000", 99)));
    CHECK(ReadFloat(std::wstring(100'000, L'9'), 99) == 99);
    CHECK(ReadFloat(L"0." + std::wstring(100'000, L'0') + L"1", 99) == 0);
    CHECK(ReadFloat(L"0." + std::wstring(100, L'0') + L"1e101", 99) == 1);
    CHECK(ReadFloat(L"1" + std::wstring(100, L'0') + L"e-100", 99) == 1);
}

TEST_CASE("random number texts are read as the C library reads them") {
    std::mt19937 random(7);
    for (int32_t i = 0; i < 100'000; ++i) {
        std::string text = random() % 2 == 0 ? "-" : "";
        for (uint32_t k = random() % 12; k > 0; --k) text += static_cast<char>('0' + random() % 10);
        text += '.';
        for (uint32_t k = 1 + random() % 12; k > 0; --k) text += static_cast<char>('0' + random() % 10);
        if (random() % 2 == 0) text += "e" + std::to_string(static_cast<int32_t>(random() % 60) - 30);
        const float value = std::strtof(text.c_str(), nullptr);
        const float expected = std::isfinite(value) ? value : 99;
        if (ReadFloat(Wide(text), 99) != expected) FAIL_CHECK("seed 7: ", text);
    }
}

TEST_CASE("a number with six decimals is read and written as the same text") {
    std::mt19937 random(3);
    for (int32_t i = 0; i < 100'000; ++i) {
        const auto value = std::bit_cast<float>(static_cast<uint32_t>(random()));
        if (!std::isfinite(value)) continue;
        const std::wstring text = Fixed(value, 6);
        const std::wstring again = Fixed(ReadFloat(text, 99), 6);
        if (again != text) FAIL_CHECK("seed 3: ", Narrow(text), " became ", Narrow(again));
    }
}

TEST_CASE("numbers are taken off the front of a text one after another") {
    std::string_view text = " 1.5 -2e1\t+3 rest";
    float a = 0, b = 0, c = 0, d = 9;
    CHECK(TakeFloat(text, a));
    CHECK(TakeFloat(text, b));
    CHECK(TakeFloat(text, c));
    CHECK_FALSE(TakeFloat(text, d));
    CHECK(a == 1.5f);
    CHECK(b == -20);
    CHECK(c == 3);
    CHECK(d == 9);
    CHECK(text == " rest");

    std::string_view notANumber = "nan(a_7)/nan(";
    CHECK(TakeFloat(notANumber, a));
    CHECK(std::isnan(a));
    CHECK(notANumber == "/nan(");

    for (const char* half : {"infi", "INFinit"}) {
        std::string_view taken = half;
        CHECK_FALSE(TakeFloat(taken, d));
        CHECK(taken == half);
    }

    std::string_view corner = "-7/3/2";
    int32_t number = 0;
    CHECK(TakeInteger(corner, number));
    CHECK(number == -7);
    CHECK(corner == "/3/2");
}

// Numbers as text, the same in every locale and in every build.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Fixed notation with `decimals` digits (0 .. 6) after the point, correctly rounded, an exact half to the
// even digit: "%.*f". A negative value keeps its sign even when only zeros remain. "nan", "inf" or "-inf"
// for a value that is not finite.
std::wstring Fixed(float value, int32_t decimals);
void AppendFixed(std::wstring& text, float value, int32_t decimals);

// At least `digits` characters, filled with zeros behind the sign: "%0*d".
std::wstring Padded(int32_t number, int32_t digits);
void AppendInteger(std::wstring& text, int64_t number);

// The number that a text begins with. Leading blanks and a sign are accepted, what follows is ignored, values
// outside the type's 32 bits are limited to it. `fallback` when there is no digit.
int32_t ReadInteger(std::wstring_view text, int32_t fallback);
uint32_t ReadUnsigned(std::wstring_view text, uint32_t fallback);

// Likewise for digits with a decimal point and an exponent. The result is always finite: a number too large
// for a float gives `fallback`.
float ReadFloat(std::wstring_view text, float fallback);

// Takes the integer that `text` begins with, read as above, off its front. False when there is no digit.
bool TakeInteger(std::string_view& text, int32_t& value);

// Takes the number that `text` begins with off its front. It need not be finite: a number that is too large
// counts, and so do "inf", "infinity", "nan" and "nan(...)" in any case and with a sign. False, with `text`
// and `value` as they were, when there is none.
bool TakeFloat(std::string_view& text, float& value);

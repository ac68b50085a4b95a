// Text for comparing without regard to upper and lower case.
#pragma once

#include <string>

// Each unit in lower case, as the C library's wide lower-casing gives it.
std::wstring LowerCase(std::wstring text);

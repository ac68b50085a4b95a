// Libraries of the system that the program is not linked with.
#pragma once

#include <windows.h>

#include <bit>

// Loads a library from the system folder and from nowhere else. A library that the program is linked with is
// looked for beside the executable before any of our code runs, and a built game lies in a folder that its
// player downloaded; so only those libraries are linked that the system itself keeps loaded for everybody.
// Null when there is none. It stays loaded until the program ends.
HMODULE LoadSystemLibrary(const wchar_t* name);

// Fills `function` with the library's function of that name, with null when there is none.
template <typename Function>
void FindFunction(HMODULE library, const char* name, Function*& function) {
    function = library ? std::bit_cast<Function*>(GetProcAddress(library, name)) : nullptr;
}

// What the shell answers when it is asked to open a file.
#pragma once

#include <windows.h>

// True when the file was opened, or when the user was asked with what and closed the question: then nothing
// else shall be tried. `error` is what GetLastError says after a call that failed.
constexpr bool IsAnswered(bool succeeded, DWORD error) { return succeeded || error == ERROR_CANCELLED; }

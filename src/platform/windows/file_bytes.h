// The bytes of an open file.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

// From the file's pointer to its end. False when a read fails or there is no memory; `bytes` is then empty.
bool ReadAllBytes(HANDLE file, std::string& bytes);

// At the file's pointer. False when not all of them could be written.
bool WriteAllBytes(HANDLE file, std::string_view bytes);

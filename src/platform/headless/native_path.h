// Between the program's paths and the paths of the machine that the tests run on.
#pragma once

#include <filesystem>
#include <string>

// The program's path for the disk: from the working folder that the test set, with the machine's separators.
// What no file name can hold becomes U+FFFD, so that it names a file that is not there.
std::filesystem::path NativePath(const std::wstring& path);

// The same without the working folder.
std::filesystem::path TranslatedPath(std::wstring path);

// A path or name of the disk as the program writes it, with `\`. Bytes that are no text become U+FFFD.
std::wstring ProgramPath(const std::filesystem::path& path);

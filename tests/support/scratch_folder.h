// A place on the disk for one test.
#pragma once

#include <string>
#include <string_view>

// An empty folder that goes with the test. Making one also starts from a fresh editor state, without faults
// and with no answers about folders, and leaves it so.
struct ScratchFolder {
    std::wstring path{};  // full path, with `\`

    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // The full path of something in it.
    std::wstring operator/(std::wstring_view name) const;
};

// The bytes of a file, read and written without the program's own functions. Folders on the way are made. A
// missing file gives "<missing>".
std::string FileBytes(const std::wstring& path);
void PutFile(const std::wstring& path, std::string_view bytes);
void PutFolder(const std::wstring& path);
void RemoveTree(const std::wstring& path);
void MakeReadOnly(const std::wstring& path, bool readOnly);

// An image of one pixel that every decoder reads.
std::string OnePixelBitmap();

#include "platform/windows/file_bytes.h"

#include <algorithm>
#include <new>
#include <stdexcept>

constexpr size_t kPieceBytes = size_t{1} << 26;  // one call's share: a call counts in 32 bits

// False when there is no memory for a file of that size.
static bool Reserve(std::string& bytes, size_t size) {
    try {
        bytes.resize(size);
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::length_error&) {
        return false;
    }
    return true;
}

bool ReadAllBytes(HANDLE file, std::string& bytes) {
    bytes.clear();
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file, &size) || !Reserve(bytes, static_cast<size_t>(size.QuadPart))) return false;

    size_t filled = 0;
    while (filled < bytes.size()) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size() - filled, kPieceBytes));
        DWORD got = 0;
        if (!ReadFile(file, bytes.data() + filled, wanted, &got, nullptr)) {
            bytes.clear();
            return false;
        }
        if (got == 0) break;  // another program cut the file short meanwhile
        filled += got;
    }
    bytes.resize(filled);
    return true;
}

bool WriteAllBytes(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kPieceBytes));
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), wanted, &written, nullptr) || written == 0) return false;
        bytes.remove_prefix(written);
    }
    return true;
}

bool FlushToDisk(HANDLE file) { return FlushFileBuffers(file) || IsUnknownToFileSystem(GetLastError()); }

// An open file and its bytes.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

// Closes itself.
class FileHandle {
public:
    explicit FileHandle(HANDLE opened) : handle(opened) {}
    ~FileHandle() { Close(); }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    bool IsOpen() const { return handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle; }

    void Close() {
        if (IsOpen()) CloseHandle(handle);
        handle = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE handle;
};

// From the file's pointer to its end. False when a read fails or there is no memory; `bytes` is then empty.
bool ReadAllBytes(HANDLE file, std::string& bytes);

// What a flush that failed means: some file systems, on network drives and memory cards, know no flush, and
// write through by themselves or not at all.
constexpr bool IsUnknownToFileSystem(DWORD flushError) {
    return flushError == ERROR_INVALID_FUNCTION || flushError == ERROR_NOT_SUPPORTED;
}

// Brings the file's bytes down to the disk, as far as its file system can. False when that fails.
bool FlushToDisk(HANDLE file);

// At the file's pointer. False when not all of them could be written.
bool WriteAllBytes(HANDLE file, std::string_view bytes);

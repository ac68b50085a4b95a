// An open file that closes itself.
#pragma once

#include <windows.h>

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

// The system's calls about files, as the answers of this folder make them: paths in the form that they take,
// whole files, files that another program holds for a moment (a virus scanner, an indexer, a folder that is
// synchronised), and what their errors mean.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

// `path` as it is, or, when its full form is too long for the system's ordinary calls, its full form with the
// prefix that lifts their limit.
std::wstring SystemPath(const std::wstring& path);

// What the system lists in every folder beside its entries.
inline bool IsItselfOrParent(std::wstring_view name) { return name == L"." || name == L".."; }

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

// Brings the file's bytes down to the disk, as far as its file system can. False when that fails.
bool FlushToDisk(HANDLE file);

// At the file's pointer. False when not all of them could be written.
bool WriteAllBytes(HANDLE file, std::string_view bytes);

// Each tries for up to 300 ms while another program is in the way, and returns false when that does not help.

// One step, down to the disk: whoever looks finds the old file at `target` or the new one.
bool RenameOver(const std::wstring& from, const std::wstring& target);

bool RemoveHeldFile(const std::wstring& path);

// True for the errors of a call that may succeed a moment later.
constexpr bool MayPass(DWORD error) {
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
}

// What a flush that failed means: some file systems, on network drives and memory cards, know no flush, and
// write through by themselves or not at all.
constexpr bool IsUnknownToFileSystem(DWORD flushError) {
    return flushError == ERROR_INVALID_FUNCTION || flushError == ERROR_NOT_SUPPORTED;
}

// What the shell answers when it shall open a file. True when the file was opened, or when the user was asked
// with what and closed the question: then nothing else shall be tried. `error` is what GetLastError says
// after a call that failed.
constexpr bool IsAnswered(bool succeeded, DWORD error) { return succeeded || error == ERROR_CANCELLED; }

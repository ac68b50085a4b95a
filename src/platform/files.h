// Files and folders. Paths use `\`, may be relative to the working folder, and keep what the user typed.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

enum class PathKind { Missing, File, Folder, Unknown };

struct FolderEntry {
    std::wstring name{};  // without the folder; never "." or ".."
    bool isFolder = false;
    bool isLink = false;  // a symbolic link or junction: not to be followed out of a project

    friend bool operator==(const FolderEntry&, const FolderEntry&) = default;
};

// What stands at `path`. Unknown where the disk does not say, for want of rights or by a failure: something
// may stand there. A writer treats only Missing as free.
PathKind KindOfPath(const std::wstring& path);

// What the disk says of a file beside its bytes.
struct FileFacts {
    int64_t bytes = 0;
    int64_t written = 0;  // when it was last written to, in a unit of the system's own; later is more
};

// False, with `facts` unchanged, when there is no such file or the disk does not tell.
bool ReadFileFacts(const std::wstring& path, FileFacts& facts);

// True for a path on a network, on a medium that can be taken out, or on a drive that is not there: whoever
// asks about it may wait for long. Itself asks no disk.
bool MayAnswerLate(const std::wstring& path);

// The whole file. False when it cannot be opened or read to its end; `bytes` is then empty.
bool ReadWholeFile(const std::wstring& path, std::string& bytes);

// Puts `bytes` in place of the file at `path` so that a crash leaves the old file or the new one, never a
// part: a temporary file beside it ("~....tmp") is written, flushed to the disk and renamed over it. Where
// the folder takes no temporary file, or the target cannot be replaced but can be written, it is written in
// place as a last resort, which a crash may cut short; the complete new bytes stay beside it as "~....whole"
// until that is flushed. A full disk never leads there. False when neither works; the old file then stands as
// it was, its bytes put back if need be. No file of these remains, except where not even that succeeded:
// "~....whole" is then the only whole file. A crash may leave one; the next save into the folder that
// succeeds removes every
// "~....tmp" of a process that has ended, and no "~....whole". The folder must exist.
bool WriteWholeFile(const std::wstring& path, std::string_view bytes);

// Copies a file's bytes, and whether it is read-only, over `to`. Not in one step: where it fails half way, or
// a crash cuts it short, `to` may hold a part or be gone. False when it fails, as it does for a file onto
// itself and onto a read-only one; these stay as they were. `goesOn` is asked now and then while it copies,
// with the bytes that are copied by now and all that will be; the copy fails once it says no.
using CopyGoesOn = std::function<bool(int64_t done, int64_t total)>;
bool CopyWholeFile(const std::wstring& from, const std::wstring& to, const CopyGoesOn& goesOn = {});

// Renames a file or folder. False when the target exists or the rename fails.
bool RenamePath(const std::wstring& from, const std::wstring& to);

// Neither removes what is read-only.
bool RemoveFile(const std::wstring& path);
bool RemoveEmptyFolder(const std::wstring& path);

// Takes the mark "read-only" off a file or folder. False when it has none, or keeps it.
bool MakeWritable(const std::wstring& path);

// Makes a folder and its missing parents. True when the folder stands afterwards.
bool MakeFolders(const std::wstring& path);

// The entries of a folder, sorted by name (by UTF-16 unit). False, with `entries` empty, when it cannot be
// listed to its end.
bool ListFolder(const std::wstring& path, std::vector<FolderEntry>& entries);

// The full path, with "." and ".." resolved. `path` unchanged when it cannot be made, or when the result has
// 260 characters or more.
std::wstring AbsolutePath(const std::wstring& path);

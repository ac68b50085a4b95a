// Reading, writing and copying whole files.
#include "platform/files.h"
#include "platform/headless/fault_injection.h"
#include "platform/headless/native_path.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <new>

namespace fs = std::filesystem;

constexpr const char* kTemporary = ".tmp";
constexpr const char* kKept = ".whole";  // the temporary file while the target is written over

namespace {
struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

enum class Use { Read, Create, Change };

// What the target holds after it was written in place.
enum class Target { Old, New, Damaged };
}  // namespace

// By the permission itself: whoever runs the tests may be allowed more.
static bool IsWritable(const fs::file_status& status) {
    return (status.permissions() & fs::perms::owner_write) != fs::perms::none;
}

static File Open(const fs::path& path, Use use) {
#ifdef _WIN32
    constexpr const wchar_t* kModes[] = {L"rb", L"wb", L"r+b"};
    return File(_wfopen(path.c_str(), kModes[static_cast<int>(use)]));
#else
    constexpr const char* kModes[] = {"rb", "wb", "r+b"};
    return File(std::fopen(path.c_str(), kModes[static_cast<int>(use)]));
#endif
}

// To the system only: no test cuts the power, and waiting for the disk would take most of their time.
static bool FlushToDisk(std::FILE* file) { return TakeFileStep() && std::fflush(file) == 0; }

// Writes what the faults let through. True when that is everything.
static bool Write(std::FILE* file, std::string_view bytes) {
    if (!TakeFileStep()) return false;
    const size_t allowed = TakeWrite(bytes.size());
    return std::fwrite(bytes.data(), 1, allowed, file) == bytes.size();
}

static bool Read(const fs::path& path, std::string& bytes) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return false;
    const File file = Open(path, Use::Read);
    if (!file) return false;
    char block[65536];
    size_t count = 0;
    while ((count = std::fread(block, 1, sizeof block, file.get())) > 0) bytes.append(block, count);
    return std::ferror(file.get()) == 0;
}

static fs::path NameBeside(const fs::path& target, int32_t number, const char* extension) {
    return target.parent_path() / ("~save" + std::to_string(number) + extension);
}

// A name beside the target that is free. Its length does not depend on the target's.
static fs::path FreeNameBeside(const fs::path& target, const char* extension) {
    std::error_code error;
    int32_t number = 0;
    while (fs::exists(NameBeside(target, number, extension), error)) ++number;
    return NameBeside(target, number, extension);
}

// What saves that were broken off have left. The target is new by now, whatever becomes of them.
static void RemoveLeftovers(const fs::path& target) {
    std::error_code error;
    try {
        for (int32_t number = 0; fs::remove(NameBeside(target, number, kTemporary), error); ++number)
            continue;
    } catch (const std::bad_alloc&) {  // they stay for the next save
    }
}

static bool WriteTemporary(const fs::path& path, std::string_view bytes) {
    if (!TakeFileStep()) return false;
    File file = Open(path, Use::Create);
    if (!file) return false;
    const bool isWritten = Write(file.get(), bytes) && FlushToDisk(file.get());
    return std::fclose(file.release()) == 0 && isWritten;
}

static bool Replace(const fs::path& target, const fs::path& temporary) {
    if (!TakeFileStep()) return false;
    std::error_code error;
    const fs::file_status old = fs::status(target, error);
    if (fs::exists(old)) fs::permissions(temporary, old.permissions(), error);
    error.clear();
    fs::rename(temporary, target, error);
    return !error;
}

// Renames the complete temporary file, so that nobody takes it for a leftover.
static bool Keep(const fs::path& target, fs::path& temporary) {
    const fs::path kept = FreeNameBeside(target, kKept);
    std::error_code error;
    fs::rename(temporary, kept, error);
    if (!error) temporary = kept;
    return !error;
}

static bool PutBack(const fs::path& target, std::string_view oldBytes) {
    File file = Open(target, Use::Change);
    if (!file) return false;
    const bool isWritten = std::fwrite(oldBytes.data(), 1, oldBytes.size(), file.get()) == oldBytes.size();
    if (std::fclose(file.release()) != 0 || !isWritten) return false;
    std::error_code error;
    fs::resize_file(target, oldBytes.size(), error);
    return !error;
}

// Writes over the target, and its old bytes back when that fails. What is longer than the new bytes is cut
// last, so that going back needs no room on the disk.
static Target WriteInPlace(const fs::path& target, std::string_view bytes) {
    std::string oldBytes;
    if (!TakeFileStep() || !Read(target, oldBytes)) return Target::Old;
    File file = Open(target, Use::Change);
    if (!file) return Target::Old;
    bool isWritten = Write(file.get(), bytes) && FlushToDisk(file.get());
    isWritten = std::fclose(file.release()) == 0 && isWritten;

    std::error_code error;
    if (isWritten) fs::resize_file(target, bytes.size(), error);
    if (isWritten && !error) return Target::New;
    return PutBack(target, oldBytes) ? Target::Old : Target::Damaged;
}

bool ReadWholeFile(const std::wstring& path, std::string& bytes) {
    bytes.clear();
    if (path.empty() || !TakeFileStep()) return false;
    try {
        if (Read(NativePath(path), bytes)) return true;
    } catch (const std::bad_alloc&) {  // a file too large for the machine is one that cannot be read
    }
    bytes.clear();
    return false;
}

bool WriteWholeFile(const std::wstring& path, std::string_view bytes) {
    if (path.empty()) return false;
    const fs::path target = NativePath(path);
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (fs::exists(status)) {
        if (!fs::is_regular_file(status) || !IsWritable(status)) return false;
    }

    fs::path temporary = FreeNameBeside(target, kTemporary);
    const bool isSafe = WriteTemporary(temporary, bytes);
    if (!isSafe && fs::exists(temporary, error)) {
        fs::remove(temporary, error);
        return false;  // what has no room for a copy is not overwritten
    }
    if (isSafe && Replace(target, temporary)) {
        RemoveLeftovers(target);
        return true;
    }

    const bool mayOverwrite = fs::exists(status) && (!isSafe || Keep(target, temporary));
    const Target result = mayOverwrite ? WriteInPlace(target, bytes) : Target::Old;
    // Kept while the target holds a part: then it is the only whole file.
    if (isSafe && result != Target::Damaged) fs::remove(temporary, error);
    if (result == Target::New) RemoveLeftovers(target);
    return result == Target::New;
}

bool CopyWholeFile(const std::wstring& from, const std::wstring& to, const CopyGoesOn& goesOn) {
    std::string bytes;
    if (to.empty() || !ReadWholeFile(from, bytes)) return false;
    const fs::path source = NativePath(from), target = NativePath(to);
    std::error_code error;
    const fs::file_status old = fs::status(target, error);
    if (fs::exists(old) && (!IsWritable(old) || fs::equivalent(source, target, error))) return false;

    if (!TakeFileStep()) return false;
    File file = Open(target, Use::Create);
    if (!file) return false;
    // In two halves, so that a copy can be cancelled in its middle.
    const std::string_view first = std::string_view(bytes).substr(0, bytes.size() / 2);
    const std::string_view second = std::string_view(bytes).substr(first.size());
    const auto done = static_cast<int64_t>(first.size()), total = static_cast<int64_t>(bytes.size());
    const bool isWritten =
        Write(file.get(), first) && (!goesOn || goesOn(done, total)) && Write(file.get(), second);
    if (std::fclose(file.release()) != 0 || !isWritten) return false;
    fs::permissions(target, fs::status(source, error).permissions(), error);
    return true;
}

#include "formats/other_writers.h"

#include "base/letter_case.h"
#include "base/path_text.h"
#include "formats/free_path.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "state/editor_state.h"

#include <cstring>
#include <utility>

constexpr int32_t kReadTries = 4;
constexpr uint32_t kReadPause = 100;               // milliseconds
constexpr uint64_t kFactor = 0x9E3779B97F4A7C15u;  // odd, and without a pattern in its bits

// Multiplies and folds eight bytes at a time, which is as fast as reading them: a scene of 100,000 objects
// has 40 MB, and each save asks for its fingerprint. The length comes in first, so that trailing zero bytes
// count. Not meant against an attacker; two versions of a file that differ by chance differ in it.
uint64_t Fingerprint(std::string_view bytes) {
    uint64_t hash = bytes.size() * kFactor;
    while (!bytes.empty()) {
        uint64_t word = 0;
        const size_t size = bytes.size() < sizeof word ? bytes.size() : sizeof word;
        std::memcpy(&word, bytes.data(), size);
        bytes.remove_prefix(size);
        hash = (hash ^ word) * kFactor;
        hash ^= hash >> 29;
    }
    return hash;
}

// One key for one file, however its path was written.
static std::wstring KeyOf(const std::wstring& path) { return UpperCase(AbsolutePath(path)); }

void RememberFile(const std::wstring& path, uint64_t fingerprint) {
    editorState.knownFiles[KeyOf(path)] = fingerprint;
}

void RememberFile(const std::wstring& path) {
    std::string bytes;
    if (ReadWholeFile(path, bytes)) RememberFile(path, Fingerprint(bytes));
}

bool IsRemembered(const std::wstring& path, uint64_t fingerprint) {
    const auto known = editorState.knownFiles.find(KeyOf(path));
    return known != editorState.knownFiles.end() && known->second == fingerprint;
}

void MoveRememberedFiles(const std::wstring& from, const std::wstring& to) {
    const std::wstring fromKey = KeyOf(from), toKey = KeyOf(to);
    KnownFileList moved;
    for (const auto& [key, fingerprint] : editorState.knownFiles) {
        if (IsAtOrBelow(key, fromKey)) moved[toKey + key.substr(fromKey.size())] = fingerprint;
    }
    for (auto& [key, fingerprint] : moved) editorState.knownFiles[key] = fingerprint;
}

// A virus scanner may hold the file for a moment.
static bool ReadWithPatience(const std::wstring& path, std::string& bytes) {
    for (int32_t left = kReadTries; left > 0; --left) {
        if (ReadWholeFile(path, bytes)) return true;
        if (left > 1) SleepMilliseconds(kReadPause);
    }
    return false;
}

// True when nothing is lost by saving over the file. `copy` is then where its bytes were put, if they had to
// be. One that is there and cannot be read may be anybody's.
static bool KeepOther(const std::wstring& path, std::string_view bytes, std::wstring& copy) {
    const PathKind kind = KindOfPath(path);
    if (kind == PathKind::Missing || kind == PathKind::Folder) return true;
    std::string other;
    if (!ReadWithPatience(path, other))
        return kind == PathKind::Unknown && KindOfPath(path) == PathKind::Missing;
    if (other == bytes || IsRemembered(path, Fingerprint(other))) return true;
    copy = FreePath(ParentFolder(path), NameWithoutExtension(path) + L"_jine", FileExtension(path));
    return !copy.empty() && WriteWholeFile(copy, other);
}

static bool HoldTheSame(const std::wstring& a, const std::wstring& b) {
    std::string bytesOfA, bytesOfB;
    return ReadWholeFile(a, bytesOfA) && ReadWholeFile(b, bytesOfB) && bytesOfA == bytesOfB;
}

// All that takes memory is done before the file is written: after it nothing may fail any more. A save that
// fails takes the copy back, since theirs still stands where it was.
bool SaveOver(const std::wstring& path, std::string_view bytes) {
    uint64_t& known = editorState.knownFiles[KeyOf(path)];
    auto& others = editorState.otherVersions;
    others.reserve(others.size() + 1);
    std::wstring copy;
    if (!KeepOther(path, bytes, copy)) return false;
    std::wstring name = LastComponent(copy);
    if (!WriteWholeFile(path, bytes)) {
        if (!copy.empty() && HoldTheSame(path, copy)) RemoveFile(copy);
        return false;
    }
    known = Fingerprint(bytes);
    if (!copy.empty()) others.push_back(std::move(name));
    return true;
}

#include "project/recovery_files.h"

#include "base/enough_memory.h"
#include "base/letter_case.h"
#include "base/path_text.h"
#include "formats/free_path.h"
#include "formats/recent_projects.h"
#include "formats/text_file.h"
#include "platform/files.h"

#include <algorithm>
#include <utility>

constexpr std::wstring_view kTag = L"ZELENGINE_RECOVERY\t";
constexpr size_t kFirstLineBuffer = 1 << 16;  // units: no path is longer
constexpr size_t kMostFiles = 20;
constexpr int64_t kMostBytes = 200'000'000;
constexpr uint64_t kFnvStart = 14695981039346656037u, kFnvFactor = 1099511628211u;  // FNV-1a, 64 bits

std::wstring RecoveryFolder() { return JoinPath(GetDataFolder(), L"recovery"); }

// A hash of the whole path, because two projects may hold scenes of the same name. It takes capital letters,
// as the system compares names. A collision is harmless: the first line names the file in full, and a name
// that is taken gets a number.
std::wstring RecoveryStem(std::wstring_view fullPath) {
    uint64_t hash = kFnvStart;
    for (const wchar_t unit : UpperCase(std::wstring(fullPath))) {
        hash = (hash ^ (static_cast<uint32_t>(unit) & 0xFF)) * kFnvFactor;
        hash = (hash ^ (static_cast<uint32_t>(unit) >> 8)) * kFnvFactor;
    }
    std::wstring stem(16, L'0');
    for (size_t i = 0; i < 16; ++i) stem[i] = L"0123456789abcdef"[hash >> (60 - 4 * i) & 0xF];
    return stem;
}

std::wstring RecoveryLine(std::wstring_view fullPath) { return std::wstring(kTag) + std::wstring(fullPath); }

std::wstring RecoveredPath(std::wstring_view line) {
    return line.starts_with(kTag) ? std::wstring(line.substr(kTag.size())) : std::wstring();
}

std::wstring RecoveredStem(std::wstring_view fullPath) {
    return NameWithoutExtension(fullPath) + L"_neulozeno";
}

// Newest first until one limit is reached. Everything older goes, even a small file that would still fit, so
// that what stays has no gaps in time.
std::vector<std::wstring> SurplusRecoveries(std::vector<RecoveryFacts> all) {
    std::ranges::stable_sort(all, std::greater{}, &RecoveryFacts::written);
    std::vector<std::wstring> surplus;
    int64_t bytes = 0;
    size_t kept = 0;
    for (const RecoveryFacts& file : all) {
        const bool hasRoom = surplus.empty() && kept < kMostFiles && bytes + file.bytes <= kMostBytes;
        if (hasRoom) {
            ++kept;
            bytes += file.bytes;
        } else {
            surplus.insert(surplus.begin(), file.path);
        }
    }
    return surplus;
}

static void RemoveSurplus(const std::wstring& folder) {
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder, entries)) return;
    std::vector<RecoveryFacts> all;
    for (const FolderEntry& entry : entries) {
        const std::wstring path = JoinPath(folder, entry.name);
        FileFacts facts;
        if (!entry.isFolder && ReadFileFacts(path, facts)) all.push_back({path, facts.bytes, facts.written});
    }
    for (const std::wstring& path : SurplusRecoveries(std::move(all))) RemoveFile(path);
}

// A new recovery gets a name that no other window uses.
static bool PutOnDisk(RecoveryWriting& writing) {
    if (!MakeFolders(writing.folder)) return false;
    if (writing.path.empty()) {
        const wchar_t* extension = writing.ofPrefab ? L".prefab" : L".scene";
        writing.path = FreePath(writing.folder, RecoveryStem(writing.about), extension);
    }
    if (writing.path.empty() || !WriteWholeFile(writing.path, writing.bytes)) return false;
    RemoveSurplus(writing.folder);
    return true;
}

void WriteRecovery(RecoveryWriting& writing) {
    RecoveryStage stage = RecoveryStage::Waiting;
    if (!writing.stage.compare_exchange_strong(stage, RecoveryStage::Writing)) return;
    const bool isWritten = WithEnoughMemory([&writing] { return PutOnDisk(writing); });
    writing.stage = isWritten ? RecoveryStage::Written : RecoveryStage::Failed;
}

// Puts one recovery beside the file that it is about, unless the file is newer or says the same. What
// follows the first line is what saving would have written, so bytes are compared and copied. True when the
// recovery has no further use.
static bool TakeOver(const std::wstring& recovery, const std::wstring& folder) {
    TextFile file;
    std::wstring_view line;
    if (!ReadTextFile(recovery, file) || !NextLine(file, kFirstLineBuffer, line)) return false;
    const std::wstring path = RecoveredPath(line);
    if (path.empty() || !IsAtOrBelow(path, folder)) return false;

    const std::string bytes = std::string(kUtf8Mark) + file.bytes.substr(file.nextByte);
    std::string saved;
    FileFacts savedFacts, facts;
    const bool isSaved = ReadWholeFile(path, saved) && ReadFileFacts(path, savedFacts);
    const bool isOld = isSaved && ReadFileFacts(recovery, facts) && facts.written < savedFacts.written;
    if (isOld || (isSaved && saved == bytes)) return true;
    if (!MakeFolders(ParentFolder(path))) return false;
    const std::wstring copy = FreePath(ParentFolder(path), RecoveredStem(path), FileExtension(path));
    return !copy.empty() && WriteWholeFile(copy, bytes);
}

void TakeOverRecoveries(const std::wstring& folder) {
    WithEnoughMemory([&folder] {
        std::vector<FolderEntry> entries;
        if (!ListFolder(RecoveryFolder(), entries)) return false;
        for (const FolderEntry& entry : entries) {
            const std::wstring path = JoinPath(RecoveryFolder(), entry.name);
            if (!entry.isFolder && !entry.isLink && TakeOver(path, folder)) RemoveFile(path);
        }
        return true;
    });
}

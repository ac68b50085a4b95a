#include "project/recovery_names.h"

#include "base/letter_case.h"
#include "base/path_text.h"

#include <algorithm>

constexpr std::wstring_view kTag = L"ZELENGINE_RECOVERY\t";
constexpr size_t kMostFiles = 20;
constexpr int64_t kMostBytes = 200'000'000;
constexpr uint64_t kFnvStart = 14695981039346656037u, kFnvFactor = 1099511628211u;  // FNV-1a, 64 bits

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

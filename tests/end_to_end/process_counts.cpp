// Prints what the running program holds of the system: "handles H gdi G".
#include <windows.h>
#include <winternl.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

// An entry of the table of GDI objects that every process has mapped; `type` is 0 where there is none.
struct GdiEntry {
    uint64_t object;
    uint32_t owner;
    uint16_t unique;
    uint8_t type, flags;
    uint64_t userPointer;
};
static_assert(sizeof(GdiEntry) == 24);

// A handle of any process.
struct HandleEntry {
    uint32_t owner;
    uint8_t type, flags;
    uint16_t value;
    void* object;
    uint32_t access;
};

constexpr auto kSystemHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
constexpr size_t kMostHandles = 100'000;

constexpr size_t kGdiTableInPeb = 0xF8;  // of the 64-bit process environment block
constexpr size_t kGdiEntries = 0x4000;

}  // namespace

static DWORD FindRunningProgram() {
    DWORD id = 0;
    GetWindowThreadProcessId(FindWindowW(L"ZelEngineWindow", nullptr), &id);
    return id;
}

template <typename Value>
static bool Read(HANDLE process, const std::byte* from, Value* to, size_t count) {
    SIZE_T read = 0;
    return ReadProcessMemory(process, from, to, count * sizeof(Value), &read) &&
           read == count * sizeof(Value);
}

// -1 when they cannot be counted.
static int CountGdiObjects(HANDLE process) {
    PROCESS_BASIC_INFORMATION basic{};
    if (NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr) != 0)
        return -1;
    const auto* peb = reinterpret_cast<const std::byte*>(basic.PebBaseAddress);
    const std::byte* table = nullptr;
    std::vector<GdiEntry> entries(kGdiEntries);
    if (!Read(process, peb + kGdiTableInPeb, &table, 1) || table == nullptr) return -1;
    if (!Read(process, table, entries.data(), entries.size())) return -1;
    int count = 0;
    for (const GdiEntry& entry : entries) count += entry.type != 0;
    return count;
}

// -1 when they cannot be counted.
static int CountHandles(DWORD owner) {
    constexpr size_t kEntriesOffset = 8;  // behind their number
    std::vector<std::byte> bytes(kEntriesOffset + kMostHandles * sizeof(HandleEntry));
    const auto size = static_cast<ULONG>(bytes.size());
    if (NtQuerySystemInformation(kSystemHandleInformation, bytes.data(), size, nullptr) != 0) return -1;
    uint32_t number = 0;
    std::memcpy(&number, bytes.data(), sizeof number);
    int count = 0;
    for (uint32_t i = 0; i < number; ++i) {
        HandleEntry entry;
        std::memcpy(&entry, &bytes[kEntriesOffset + i * sizeof entry], sizeof entry);
        count += entry.owner == owner;
    }
    return count;
}

int main() {
    const DWORD id = FindRunningProgram();
    const HANDLE process =
        id == 0 ? nullptr : OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, id);
    if (process == nullptr) return 1;
    std::printf("handles %d gdi %d\n", CountHandles(id), CountGdiObjects(process));
    return 0;
}

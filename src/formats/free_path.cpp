#include "formats/free_path.h"

#include "base/numbers.h"
#include "base/path_text.h"
#include "platform/files.h"

constexpr int32_t kTriedNumbers = 9999;  // ends the search where the disk has stopped answering

static std::wstring Numbered(const std::wstring& name, int32_t number, const std::wstring& extension) {
    return name + L"_" + Padded(number, 2) + extension;
}

static bool IsFree(const std::wstring& path) { return KindOfPath(path) == PathKind::Missing; }

std::wstring FirstFreePath(const std::wstring& folder, const std::wstring& name,
                           const std::wstring& extension, int32_t first) {
    for (int32_t number = first; number < first + kTriedNumbers; ++number) {
        std::wstring path = JoinPath(folder, Numbered(name, number, extension));
        if (IsFree(path)) return path;
    }
    return {};
}

std::wstring FreePath(const std::wstring& folder, const std::wstring& name, const std::wstring& extension) {
    const std::wstring path = JoinPath(folder, name + extension);
    return IsFree(path) ? path : FirstFreePath(folder, name, extension);
}

#include "support/scratch_folder.h"

#include "platform/headless/fault_injection.h"
#include "platform/headless/native_path.h"
#include "state/editor_state.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace fs = std::filesystem;

static void ResetEverything() {
    editorState = EditorState{};
    fileFaults = FileFaults{};
    folderAnswers = FolderAnswers{};
}

ScratchFolder::ScratchFolder() {
    ResetEverything();
    std::random_device random;
    const fs::path folder = fs::temp_directory_path() / ("zel_test_" + std::to_string(random()));
    fs::create_directories(folder);
    path = ProgramPath(folder);
}

ScratchFolder::~ScratchFolder() {
    ResetEverything();
    RemoveTree(path);
}

std::wstring ScratchFolder::operator/(std::wstring_view name) const {
    return path + L'\\' + std::wstring(name);
}

std::string FileBytes(const std::wstring& path) {
    std::ifstream file(NativePath(path), std::ios::binary);
    if (!file) return "<missing>";
    return {std::istreambuf_iterator<char>(file), {}};
}

void PutFile(const std::wstring& path, std::string_view bytes) {
    const fs::path native = NativePath(path);
    fs::create_directories(native.parent_path());
    std::ofstream file(native, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void PutFolder(const std::wstring& path) { fs::create_directories(NativePath(path)); }

void RemoveTree(const std::wstring& path) {
    std::error_code error;
    fs::remove_all(NativePath(path), error);
}

void MakeReadOnly(const std::wstring& path, bool readOnly) {
    const auto change = readOnly ? fs::perm_options::remove : fs::perm_options::add;
    fs::permissions(NativePath(path), fs::perms::owner_write, change);
}

std::string OnePixelBitmap() {
    using namespace std::string_literals;
    return "BM\x3A\0\0\0\0\0\0\0\x36\0\0\0"                            // size 58, pixels at 54
           "\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\4\0\0\0"      // 1 x 1, 24 bits, 4 bytes
           "\x13\x0B\0\0\x13\x0B\0\0\0\0\0\0\0\0\0\0\x40\x80\xC0\0"s;  // one row, padded
}

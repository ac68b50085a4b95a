// What the targets share: a file that holds the fuzzer's bytes, in a folder of this process.
#pragma once

#include "platform/headless/fault_injection.h"
#include "platform/headless/native_path.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

// The folder goes when the process ends.
struct FuzzFolder {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("zel_fuzz_" + std::to_string(std::random_device{}()));

    FuzzFolder() { std::filesystem::create_directories(path); }
    ~FuzzFolder() {
        std::error_code error;
        std::filesystem::remove_all(path, error);
    }
    FuzzFolder(const FuzzFolder&) = delete;
    FuzzFolder& operator=(const FuzzFolder&) = delete;
};

inline const std::filesystem::path& FuzzFolderPath() {
    static const FuzzFolder folder;
    return folder.path;
}

// Starts afresh in the folder, as its working folder and its open project. Returns the file's full path.
inline std::wstring PutFuzzInput(const uint8_t* data, size_t size, const char* name) {
    const std::filesystem::path& folder = FuzzFolderPath();
    const std::filesystem::path file = folder / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    editorState = EditorState{};
    editorState.projectRoot = folderAnswers.workingFolder = folderAnswers.localDataFolder =
        ProgramPath(folder);
    return ProgramPath(file);
}

// A line that does not fit the reader's buffer of 8192 units comes back in pieces. Lines grow when they are
// written with all their columns.
inline bool FitsReader(const std::string& bytes) {
    size_t begin = 0;
    for (size_t end = 0; end != std::string::npos; begin = end + 1) {
        end = bytes.find('\n', begin);
        if (std::min(end, bytes.size()) - begin > 8190) return false;
    }
    return true;
}

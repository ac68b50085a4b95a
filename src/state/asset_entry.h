// A file or folder of the open project.
#pragma once

#include <string>

enum class AssetKind { Folder, Script, Model, SceneFile, Blueprint, Prefab, Image, Other };

struct AssetEntry {
    std::wstring name{};    // file or folder name
    std::wstring path{};    // full path
    std::wstring folder{};  // full path of the folder that holds it
    AssetKind kind = AssetKind::Other;
};

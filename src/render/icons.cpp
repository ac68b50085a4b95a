#include "render/icons.h"

#include "platform/files.h"
#include "platform/folders.h"

#include <string>

Icons icons;

namespace {

struct IconFile {
    CanvasImage Icons::*icon;
    const wchar_t* name;
};

}  // namespace

constexpr IconFile kIconFiles[] = {
    {&Icons::camera, L"camera.png"},      {&Icons::entity, L"entity.png"},
    {&Icons::light, L"light.png"},        {&Icons::files, L"files.png"},
    {&Icons::script, L"c-plus-plus.png"}, {&Icons::scene, L"scene.png"},
    {&Icons::model, L"obj.png"},          {&Icons::logo, L"pe.png"},
};

static std::wstring AssetsFolder() {
    const std::wstring executable = GetExecutablePath();
    const std::wstring beside = executable.substr(0, executable.find_last_of(L'\\') + 1) + L"assets";
    return KindOfPath(beside) == PathKind::Folder ? beside : L"assets";
}

void LoadIcons() {
    const std::wstring folder = AssetsFolder() + L"\\";
    for (const auto& [icon, name] : kIconFiles) icons.*icon = LoadCanvasImage(folder + name);
    LoadWindowIcon(folder + L"pe.png");
}

#include "render/icons.h"

#include "platform/files.h"
#include "platform/folders.h"
#include "render/png_file.h"

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

constexpr CanvasImage Icons::*kWindowIcon = &Icons::logo;  // shown by the window too

static std::wstring AssetsFolder() {
    const std::wstring executable = GetExecutablePath();
    const std::wstring beside = executable.substr(0, executable.find_last_of(L'\\') + 1) + L"assets";
    return KindOfPath(beside) == PathKind::Folder ? beside : L"assets";
}

// Empty when the file is missing, or is of a kind that only the system decodes.
static DecodedImage PixelsOf(const std::wstring& path) {
    std::string bytes;
    DecodedImage pixels;
    if (ReadWholeFile(path, bytes)) ReadPngFile(bytes, pixels);
    return pixels;
}

// The program decodes its own PNG files, because starting the system's decoder takes longer than the rest of
// the program's start. A file that is not a plain PNG is left to the system. The logo is decoded once for
// both of its uses.
void LoadIcons() {
    const std::wstring folder = AssetsFolder() + L"\\";
    for (const auto& [icon, name] : kIconFiles) {
        const DecodedImage pixels = PixelsOf(folder + name);
        const bool isRead = !pixels.argb.empty();
        icons.*icon = isRead ? MakeCanvasImage(pixels) : LoadCanvasImage(folder + name);
        if (icon != kWindowIcon) continue;
        if (isRead) {
            MakeWindowIcon(pixels);
        } else {
            LoadWindowIcon(folder + name);
        }
    }
}

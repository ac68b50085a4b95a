#include "project/files_icons.h"

#include "render/frame_buffer.h"
#include "render/icons.h"

constexpr Pixel kSheet{0xD8D4CE}, kSheetFold{0x9C948C}, kSheetInk{0x6A625B};
constexpr Pixel kBlueprintSign{0x4B8ABE}, kPrefabSign{0x4BA6D8}, kPrefabShade{0x2F7CA8};
constexpr Pixel kSkySign{0x8FC4E8}, kHillSign{0x5FA05A}, kSunSign{0xF2C24B};

// A sheet of paper with a folded corner, 20 x 26 pixels in the middle of 28 x 28.
static Point DrawSheet(const Rect& place) {
    const Point corner{place.left + 4, place.top + 1};
    FillRect({corner.x, corner.y, corner.x + 20, corner.y + 26}, kSheet);
    for (int32_t i = 0; i < 6; ++i) {
        FillRect({corner.x + 14 + i, corner.y, corner.x + 20, corner.y + i + 1}, i < 5 ? kSheetFold : kSheet);
    }
    return corner;
}

static void DrawLines(Point sheet) {
    for (int32_t y = 9; y < 23; y += 4)
        FillRect({sheet.x + 4, sheet.y + y, sheet.x + 16, sheet.y + y + 1}, kSheetInk);
}

// Two boxes and the link between them.
static void DrawBlueprintSign(Point sheet) {
    FillRect({sheet.x + 3, sheet.y + 8, sheet.x + 10, sheet.y + 13}, kBlueprintSign);
    FillRect({sheet.x + 6, sheet.y + 13, sheet.x + 7, sheet.y + 19}, kSheetInk);
    FillRect({sheet.x + 6, sheet.y + 19, sheet.x + 10, sheet.y + 20}, kSheetInk);
    FillRect({sheet.x + 10, sheet.y + 17, sheet.x + 17, sheet.y + 22}, kBlueprintSign);
}

// A box with a lid in the light and a side in the shade.
static void DrawPrefabSign(Point sheet) {
    FillRect({sheet.x + 4, sheet.y + 12, sheet.x + 13, sheet.y + 21}, kPrefabSign);
    for (int32_t i = 0; i < 4; ++i) {
        FillRect({sheet.x + 5 + i, sheet.y + 11 - i, sheet.x + 14 + i, sheet.y + 12 - i}, kPrefabSign);
        FillRect({sheet.x + 13 + i, sheet.y + 11 - i, sheet.x + 14 + i, sheet.y + 20 - i}, kPrefabShade);
    }
}

// A landscape.
static void DrawImageSign(Point sheet) {
    FillRect({sheet.x + 3, sheet.y + 8, sheet.x + 17, sheet.y + 20}, kSkySign);
    FillRect({sheet.x + 5, sheet.y + 10, sheet.x + 8, sheet.y + 13}, kSunSign);
    for (int32_t i = 0; i < 5; ++i) {
        FillRect({sheet.x + 11 - i, sheet.y + 15 + i, sheet.x + 12 + i, sheet.y + 16 + i}, kHillSign);
    }
}

void DrawFileIcon(AssetKind kind, const Rect& place) {
    switch (kind) {
        case AssetKind::Folder: DrawImage(icons.files, place); break;
        case AssetKind::Script: DrawImage(icons.script, place); break;
        case AssetKind::Model: DrawImage(icons.model, place); break;
        case AssetKind::SceneFile: DrawImage(icons.scene, place); break;
        case AssetKind::Blueprint: DrawBlueprintSign(DrawSheet(place)); break;
        case AssetKind::Prefab: DrawPrefabSign(DrawSheet(place)); break;
        case AssetKind::Image: DrawImageSign(DrawSheet(place)); break;
        case AssetKind::Other: DrawLines(DrawSheet(place)); break;
    }
}

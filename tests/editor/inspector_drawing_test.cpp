#include "editor/components.h"
#include "editor/theme.h"
#include "support/capture.h"
#include "support/inspector_panel.h"

#include "doctest/doctest.h"

#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using Texts = std::vector<DrawnText>;
using Zones = std::vector<HitZone>;

// In the window of OpenInspector.
constexpr int32_t kLeft = 1050, kRight = 1350;

// The section after a closed Transform.
constexpr int32_t kSecondTop = 192;

static Texts Sorted(Texts texts) {
    std::ranges::sort(texts, {}, [](const DrawnText& t) { return std::tuple(t.y, t.x, t.text); });
    return texts;
}

// Texts with top <= y < bottom, placed relative to the content's left and to `top`.
static Texts TextsBetween(int32_t top, int32_t bottom) {
    Texts found;
    for (DrawnText text : headless.texts) {
        if (text.y < top || text.y >= bottom) continue;
        text.x -= kLeft;
        text.y -= top;
        found.push_back(text);
    }
    return Sorted(found);
}

static Zones ZonesBetween(int32_t top, int32_t bottom) {
    Zones found;
    for (const auto& [rect, action, block] : editorState.inspectorZones) {
        if (rect.top < top || rect.top >= bottom) continue;
        found.push_back(
            {{rect.left - kLeft, rect.top - top, rect.right - kLeft, rect.bottom - top}, action, block});
    }
    return found;
}

static bool SameZones(const Zones& a, const Zones& b) {
    return std::ranges::equal(
        a, b, [](const HitZone& x, const HitZone& y) { return x.rect == y.rect && x.action == y.action; });
}

static Texts operator+(Texts a, const Texts& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// What a section's parts are, relative to its top left corner.

static Texts Header(const wchar_t* title, bool isOpen) {
    return {{8, 5, isOpen ? L"v" : L">", TextColor{0xD7CFC6}, 13, 600},
            {24, 5, L"[x]", TextColor{0xD2E6D2}, 13, 600},
            {54, 4, title, TextColor{0xE0E2E0}, 15, 600},
            {252, 5, L"?", TextColor{0xD7CFC6}, 13, 600},
            {276, 5, L":", TextColor{0xD7CFC6}, 13, 600}};
}

static DrawnText Label(int32_t y, const wchar_t* label) {
    return {10, y, label, TextColor{0xBEB8B2}, 14, 400};
}

static Texts Value(int32_t y, const wchar_t* label, const wchar_t* value) {
    return {Label(y, label), {128, y + 1, value, TextColor{0xDEDAD6}, 13, 400}};
}

static Texts Vector(int32_t y, const wchar_t* label, const wchar_t* a, const wchar_t* b, const wchar_t* c) {
    return {Label(y, label),
            {102, y, L"X", TextColor{0xCAC4BE}, 13, 600},
            {120, y + 1, a, TextColor{0xDEDAD6}, 13, 400},
            {163, y, L"Y", TextColor{0xCAC4BE}, 13, 600},
            {181, y + 1, b, TextColor{0xDEDAD6}, 13, 400},
            {224, y, L"Z", TextColor{0xCAC4BE}, 13, 600},
            {242, y + 1, c, TextColor{0xDEDAD6}, 13, 400}};
}

static Texts Slider(int32_t y, const wchar_t* label, const wchar_t* value) {
    return {Label(y, label), {252, y, value, TextColor{0xDEDAD6}, 13, 400}};
}

static HitZone Arrow(int32_t action) { return {{4, 2, 22, 24}, action}; }
static HitZone Remove(int32_t action) { return {{24, 2, 48, 24}, action}; }
static HitZone ValueZone(int32_t y, int32_t action) { return {{120, y, 286, y + 24}, action}; }
static HitZone BarZone(int32_t y, int32_t action) { return {{88, y + 1, 244, y + 20}, action}; }

struct SectionCase {
    const wchar_t* title = L"";
    GameObject object{};  // with a closed Transform and this section alone
    bool GameObject::*open = nullptr;
    int32_t height = 0;  // while open
    Zones headerZones{};
    Texts texts{};  // below the header
    Zones zones{};  // likewise
};

static std::vector<SectionCase> SectionCases() {
    GameObject bare{.hasShape = false, .transformExpanded = false};
    const auto with = [&bare](void (*change)(GameObject&)) {
        GameObject object = bare;
        change(object);
        return object;
    };
    return {
        {L"Text",
         with([](GameObject& o) { o.isText = true, o.text = L"Hi there", o.textSize = 20.126f; }),
         &GameObject::textExpanded,
         96,
         {Arrow(55)},
         Value(34, L"Text", L"Hi there") + Value(62, L"Size", L"20.13"),
         {ValueZone(32, 56), ValueZone(60, 57)}},
        {L"Camera",
         with([](GameObject& o) { o.isCamera = true, o.cameraBrightness = 0.75f; }),
         &GameObject::cameraExpanded,
         150,
         {Arrow(51)},
         Texts{Label(36, L"Background")} + Slider(88, L"Svetlost", L"0.75") +
             Slider(116, L"Tmavost", L"0.25"),
         {{{128, 34, 172, 78}, 52}, BarZone(88, 53), BarZone(116, 54)}},
        {L"Camera",
         with([](GameObject& o) { o.isCamera = o.cameraBackgroundSet = true; }),
         &GameObject::cameraExpanded,
         210,
         {Arrow(51)},
         Texts{Label(36, L"Background")} + Slider(150, L"Svetlost", L"1.00") +
             Slider(178, L"Tmavost", L"0.00"),
         {{{42, 34, 146, 138}, 52}, BarZone(150, 53), BarZone(178, 54)}},
        {L"Shape",
         with([](GameObject& o) { o.hasShape = true, o.meshIndex = 5; }),
         &GameObject::shapeExpanded,
         92,
         {Arrow(3), Remove(4)},
         Value(34, L"Mesh", L"Capsule") + Value(62, L"Material", L"Default"),
         {ValueZone(32, 36)}},
        {L"Color Script",
         with([](GameObject& o) { o.hasColor = true; }),
         &GameObject::colorExpanded,
         144,
         {Arrow(5), Remove(6)},
         Texts{Label(36, L"Color")} + Slider(88, L"Matte", L"0.72") + Slider(116, L"Gloss", L"0.18"),
         {{{128, 34, 172, 78}, 15}, BarZone(88, 18), BarZone(116, 19)}},
        {L"Color Script",
         with([](GameObject& o) { o.hasColor = o.colorWheelExpanded = true; }),
         &GameObject::colorExpanded,
         210,
         {Arrow(5), Remove(6)},
         Texts{Label(36, L"Color")} + Slider(154, L"Matte", L"0.72") + Slider(182, L"Gloss", L"0.18"),
         {{{40, 32, 148, 140}, 15}, BarZone(154, 18), BarZone(182, 19)}},
        {L"Animation",
         with([](GameObject& o) { o.hasAnimation = true, o.animationSpeed = 2.5f; }),
         &GameObject::animationExpanded,
         100,
         {Arrow(7), Remove(8)},
         Value(34, L"Type", L"rotation") + Value(68, L"Speed", L"2.50"),
         {ValueZone(32, 16), ValueZone(66, 17)}},
        {L"Collision",
         with([](GameObject& o) { o.hasCollision = true; }),
         &GameObject::collisionExpanded,
         92,
         {Arrow(29), Remove(30)},
         Value(34, L"Type", L"Box") + Value(62, L"Solid", L"true"),
         {}},
        {L"Gravitation",
         with([](GameObject& o) { o.hasGravitation = true, o.velocityY = -1.5f; }),
         &GameObject::gravitationExpanded,
         92,
         {Arrow(31), Remove(32)},
         Value(34, L"Strength", L"9.80") + Value(62, L"Velocity", L"-1.50"),
         {ValueZone(32, 35)}},
        {L"Rigidbody",
         with([](GameObject& o) {
             o.hasRigidbody = true, o.velocity = {1, 2.25f, 3};
         }),
         &GameObject::rigidbodyExpanded,
         120,
         {Arrow(42), Remove(43)},
         Value(34, L"Mass", L"1.00") + Value(62, L"Drag", L"0.05") + Value(90, L"Velocity Y", L"2.25"),
         {ValueZone(32, 44), ValueZone(60, 45)}},
        {L"Texture",
         with([](GameObject& o) { o.hasTexture = true; }),
         &GameObject::textureExpanded,
         92,
         {Arrow(37), Remove(38)},
         Value(34, L"Image", L"Drop image here") + Value(62, L"Mode", L"Stretch"),
         {ValueZone(60, 39)}},
    };
}

// So low that the Add Component box follows the last section at once.
constexpr int32_t kLowHeight = 400;

TEST_CASE("an open section shows its rows and is as high as it says") {
    for (const SectionCase& section : SectionCases()) {
        CAPTURE(section.title);
        CAPTURE(section.height);
        OpenInspector(section.object, 1360, kLowHeight);
        const int32_t bottom = kSecondTop + section.height;
        CHECK(TextsBetween(kSecondTop, bottom) == Sorted(Header(section.title, true) + section.texts));
        Zones zones = section.headerZones;
        zones.insert(zones.end(), section.zones.begin(), section.zones.end());
        CHECK(SameZones(ZonesBetween(kSecondTop, bottom), zones));
        CHECK(ZoneOf(50).top == bottom + 10);
    }
}

TEST_CASE("a closed section shows its header with its zones, and is 30 pixels high") {
    for (const SectionCase& section : SectionCases()) {
        CAPTURE(section.title);
        GameObject object = section.object;
        object.*section.open = false;
        OpenInspector(object, 1360, kLowHeight);
        CHECK(TextsBetween(kSecondTop, kSecondTop + 30) == Sorted(Header(section.title, false)));
        CHECK(SameZones(ZonesBetween(kSecondTop, kSecondTop + 30), section.headerZones));
        CHECK(ZoneOf(50).top == std::max(kSecondTop + 30 + 10, 268 - 114));
    }
}

TEST_CASE("the Transform shows position, rotation in radians and scale") {
    const GameObject object{
        .position{1, -2.5f, 3}, .rotation{0.5f, 1.5707964f, -3}, .scale{1, 2, 0.014f}, .hasShape = false};
    OpenInspector(object, 1360, kLowHeight);
    CHECK(TextsBetween(162, 298) ==
          Sorted(Header(L"Transform", true) + Vector(34, L"Position", L"1.00", L"-2.50", L"3.00") +
                 Vector(68, L"Rotation", L"0.50", L"1.57", L"-3.00") +
                 Vector(102, L"Scale", L"1.00", L"2.00", L"0.01")));
    CHECK(SameZones(ZonesBetween(162, 298), {Arrow(1),
                                             {{116, 32, 160, 54}, 20},
                                             {{177, 32, 221, 54}, 21},
                                             {{238, 32, 282, 54}, 22},
                                             {{116, 66, 160, 88}, 23},
                                             {{177, 66, 221, 88}, 24},
                                             {{238, 66, 282, 88}, 25},
                                             {{116, 100, 160, 122}, 26},
                                             {{177, 100, 221, 122}, 27},
                                             {{238, 100, 282, 122}, 28}}));
    CHECK(ZoneOf(50).top == 162 + 136 + 10);
}

TEST_CASE("an Entity shows its coordinates and a hint, and nothing else") {
    GameObject object = ObjectWithEverything();
    object.isEntity = true;
    object.position = {1, 2, 3};
    OpenInspector(object);
    const DrawnText hint{10, 0, L"Entity ma jen jmeno a souradnice.", TextColor{0xB0A49A}, 14, 400};
    CHECK(TextsBetween(162, 234) ==
          Sorted(Header(L"Coordinates", true) + Vector(34, L"Position", L"1.00", L"2.00", L"3.00")));
    CHECK(TextsBetween(246, 9999) == Texts{hint});
    CHECK(TextsBetween(234, 246).empty());
    CHECK(editorState.inspectorZones.size() == 4);
    CHECK(ZoneOf(50) == Rect{});

    object.transformExpanded = false;
    OpenInspector(object);
    CHECK(TextsBetween(162, 192) == Sorted(Header(L"Coordinates", false)));
    CHECK(TextsBetween(204, 9999) == Texts{hint});
    CHECK(editorState.inspectorZones.size() == 1);
}

TEST_CASE("the header strip names the panel and the object, the tag strip the kind") {
    OpenInspector({.name = L"PlayerCube", .meshIndex = 0});
    CHECK(TextsBetween(0, 162) == Sorted({{10, 58, L"Inspector", TextColor{0xE6EEEB}, 18, 600},
                                          {42, 96, L"PlayerCube", TextColor{0xE8E8E8}, 14, 600},
                                          {226, 96, L"[ ] Static", TextColor{0xBEB8B2}, 13, 400},
                                          {10, 131, L"Tag", TextColor{0xBEB8B2}, 13, 400},
                                          {48, 131, L"Untagged", TextColor{0xDEDAD6}, 13, 400},
                                          {154, 131, L"Layer", TextColor{0xBEB8B2}, 13, 400},
                                          {202, 131, L"Default", TextColor{0xDEDAD6}, 13, 400}}));
    OpenInspector({.isEntity = true});
    CHECK(TextsBetween(131, 132)[1].text == L"Entity");
}

// The lines of a panel box.
static void CheckBox(const Rect& box, Pixel fill, Pixel light) {
    CAPTURE(box.left);
    CAPTURE(box.top);
    CHECK(PixelAt(box.left, box.top + 4) == light);
    CHECK(PixelAt(box.left + 4, box.top) == light);
    CHECK(PixelAt(box.left + 4, box.top + 1) == Pixel{0x443B36});
    CHECK(PixelAt(box.left + 1, box.bottom - 2) == fill);
    CHECK(PixelAt(box.right - 2, box.bottom - 2) == fill);
    CHECK(PixelAt(box.left + 4, box.bottom - 1) == Pixel{0x14100D});
    CHECK(PixelAt(box.right - 1, box.top + 4) == Pixel{0x14100D});
}

TEST_CASE("the strips are boxes in their places") {
    OpenInspector({.meshIndex = 0});
    CheckBox({1050, 86, 1350, 122}, Pixel{0x2D2622}, Pixel{0x4C423A});
    CheckBox({1086, 93, 1270, 114}, Pixel{0x1F1A17}, Pixel{0x4C423A});
    CheckBox({1050, 124, 1350, 154}, Pixel{0x2D2622}, Pixel{0x4C423A});
    CheckBox({1092, 128, 1190, 150}, Pixel{0x251F1B}, Pixel{0x4C423A});
    CheckBox({1246, 128, 1338, 150}, Pixel{0x251F1B}, Pixel{0x4C423A});
}

TEST_CASE("the chip tells an Entity from a Text, a Light and the rest, in this order") {
    const struct {
        bool isEntity, isText, isLight;
        Pixel color;
    } cases[] = {
        {false, false, false, Pixel{0xE09E56}}, {false, false, true, Pixel{0x56E2FF}},
        {false, true, false, Pixel{0xF4EEEB}},  {false, true, true, Pixel{0xF4EEEB}},
        {true, false, false, Pixel{0x76D260}},  {true, true, true, Pixel{0x76D260}},
    };
    for (const auto& test : cases) {
        OpenInspector({.isEntity = test.isEntity, .isLight = test.isLight, .isText = test.isText});
        CHECK(PixelAt(1060, 95) == test.color);
        CHECK(PixelAt(1075, 110) == test.color);
        CHECK(PixelAt(1059, 95) == Pixel{0x2D2622});
        CHECK(PixelAt(1076, 95) == Pixel{0x2D2622});
        CHECK(PixelAt(1060, 94) == Pixel{0x2D2622});
        CHECK(PixelAt(1060, 111) == Pixel{0x2D2622});
    }
}

TEST_CASE("a section header is a strip with a green bar and a dark lower edge") {
    OpenInspector({.hasShape = false, .transformExpanded = false});
    CHECK(PixelAt(kLeft, 162) == Pixel{0x86B04C});
    CHECK(PixelAt(kLeft + 2, 186) == Pixel{0x86B04C});
    CHECK(PixelAt(kLeft + 3, 162) == Pixel{0x312924});
    CHECK(PixelAt(kRight - 1, 186) == Pixel{0x312924});
    CHECK(PixelAt(kLeft + 3, 187) == Pixel{0x161210});
    CHECK(PixelAt(kRight - 1, 187) == Pixel{0x161210});
    CHECK(PixelAt(kLeft + 3, 188) == Pixel{0x251F1C});
}

TEST_CASE("values stand in boxes, and sliders are filled as far as their value") {
    OpenInspector({.hasShape = false, .hasColor = true, .transformExpanded = false, .roughness = 0.5f});
    const int32_t bar = kSecondTop + 88 + 10;  // inside the first track
    CHECK(PixelAt(kLeft + 88, bar) == Pixel{0xE6AA50});
    CHECK(PixelAt(kLeft + 88 + 78, bar) == Pixel{0xFCF8F4});
    CHECK(PixelAt(kLeft + 243, bar) == Pixel{0x413832});
    CHECK(PixelAt(kLeft + 244, bar) == Pixel{0x251F1C});

    OpenInspector({.hasShape = false, .transformExpanded = false, .hasRigidbody = true});
    for (const int32_t y : {34, 62, 90}) {
        CheckBox({kLeft + 120, kSecondTop + y - 2, kLeft + 286, kSecondTop + y + 20}, Pixel{0x251F1B},
                 Pixel{0x4C423A});
    }
}

TEST_CASE("the wheels lie around their centres, small and then large") {
    const Pixel panel{0x251F1C};
    const auto isDisc = [&](int32_t x, int32_t y, int32_t radius) {
        const Point c{kLeft + x, kSecondTop + y};
        return PixelAt(c.x - radius, c.y) != panel && PixelAt(c.x - radius - 1, c.y) == panel &&
               PixelAt(c.x, c.y - radius) != panel && PixelAt(c.x, c.y - radius - 1) == panel;
    };
    GameObject object{.hasShape = false, .hasColor = true, .transformExpanded = false, .color = 0xFFFFFF};
    OpenInspector(object);
    CHECK(isDisc(150, 56, 22));
    object.colorWheelExpanded = true;
    OpenInspector(object);
    CHECK(isDisc(94, 86, 54));

    object = {.isCamera = true, .hasShape = false, .transformExpanded = false, .cameraBackground = 0xFFFFFF};
    OpenInspector(object);
    CHECK(isDisc(150, 56, 22));
    object.cameraBackgroundSet = true;
    OpenInspector(object);
    CHECK(isDisc(94, 86, 52));
}

TEST_CASE("a wheel marks the colour that it sets") {
    GameObject object{.hasShape = false,
                      .hasColor = true,
                      .transformExpanded = false,
                      .color = 0xFFFFFF,
                      .colorWheelExpanded = true};
    const Point centre{kLeft + 94, kSecondTop + 86};
    OpenInspector(object);
    CHECK(PixelAt(centre.x + 3, centre.y) == Pixel{0xFFFFFF});
    object.color = 0x0000FF;  // red lies at the left edge
    OpenInspector(object);
    CHECK(PixelAt(centre.x - 54 + 3, centre.y) == Pixel{0xFFFFFF});
    CHECK(PixelAt(centre.x + 3, centre.y) != Pixel{0xFFFFFF});
}

TEST_CASE("the label of a camera's background stays readable where the large wheel reaches under it") {
    // The last letters, within the wheel.
    const Rect shared{kLeft + 70, kSecondTop + 46, kLeft + 80, kSecondTop + 50};
    const auto pixels = [&](bool paintsTexts) {
        OpenInspector(
            {.isCamera = true, .hasShape = false, .transformExpanded = false, .cameraBackgroundSet = true});
        headless.paintsTexts = paintsTexts;
        DrawInspectorAgain();
        std::vector<Pixel> found;
        for (int32_t y = shared.top; y < shared.bottom; ++y) {
            for (int32_t x = shared.left; x < shared.right; ++x) found.push_back(PixelAt(x, y));
        }
        return found;
    };
    const std::vector<Pixel> wheel = pixels(false);
    CHECK(std::ranges::count(wheel, kPanelFill) == 0);
    CHECK(pixels(true) != wheel);
}

static std::wstring ValueBeside(const wchar_t* label) {
    const auto found = std::ranges::find(headless.texts, label, &DrawnText::text);
    if (found == headless.texts.end()) return L"<no such row>";
    const auto value = std::ranges::find_if(found + 1, headless.texts.end(), [&](const DrawnText& t) {
        return t.x == kLeft + 128 && t.y == found->y + 1;
    });
    return value == headless.texts.end() ? L"<no value>" : value->text;
}

TEST_CASE("the Shape names its mesh, an imported one too, and one that is not there Unknown") {
    OpenInspector({.meshIndex = 0});
    editorState.meshes.push_back({.name = L"ship"});
    const struct {
        int32_t mesh;
        const wchar_t* name;
    } cases[] = {{0, L"Cube"},    {1, L"Pyramid"},  {2, L"Ground"}, {3, L"Plane"},   {4, L"Sphere"},
                 {5, L"Capsule"}, {6, L"Cylinder"}, {7, L"ship"},   {8, L"Unknown"}, {INT32_MAX, L"Unknown"}};
    for (const auto& test : cases) {
        editorState.scene[0].meshIndex = test.mesh;
        DrawInspectorAgain();
        CHECK(ValueBeside(L"Mesh") == test.name);
    }
    editorState.scene[0].meshIndex = -1;
    DrawInspectorAgain();
    CHECK(ValueBeside(L"Mesh") == L"<no such row>");
    CHECK(ZoneOf(3) == Rect{});
}

TEST_CASE("rows follow what the object has") {
    OpenInspector(ObjectWithEverything(), 1360, 2200);
    CHECK(ValueBeside(L"Material") == L"Color Script");
    GameObject& object = editorState.scene[0];
    for (const auto& [type, name] :
         {std::pair{0, L"rotation"}, {1, L"pulse"}, {2, L"bounce"}, {3, L"rotation"}, {-1, L"rotation"}}) {
        object.animationType = type;
        object.hasCollision = false;  // it has a "Type" as well
        DrawInspectorAgain();
        CHECK(ValueBeside(L"Type") == name);
    }
    object.textureRepeat = true;
    DrawInspectorAgain();
    CHECK(ValueBeside(L"Mode") == L"Repeat");
}

TEST_CASE("the Image row names the loaded file, else the path, else asks for one") {
    OpenInspector({.hasTexture = true});
    editorState.textures = {{.path = L"C:\\game\\Files\\brick.png"}};
    CHECK(ValueBeside(L"Image") == L"Drop image here");
    editorState.scene[0].texturePath = L"Files\\wall.png";
    for (const int32_t index : {-1, 1, INT32_MAX, INT32_MIN}) {
        editorState.scene[0].textureIndex = index;
        DrawInspectorAgain();
        CHECK(ValueBeside(L"Image") == L"Files\\wall.png");
    }
    editorState.scene[0].textureIndex = 0;
    DrawInspectorAgain();
    CHECK(ValueBeside(L"Image") == L"brick.png");
}

TEST_CASE("sections stand in their fixed order") {
    OpenInspector(ObjectWithEverything(), 1360, 2200);
    std::vector<std::pair<int32_t, std::wstring>> titles;
    for (const DrawnText& text : headless.texts) {
        if (text.color == TextColor{0xE0E2E0}) titles.emplace_back(text.y - 4, text.text);
    }
    const std::vector<std::pair<int32_t, std::wstring>> expected = {
        {162, L"Transform"},          {298, L"Text"},      {394, L"Camera"},    {544, L"Shape"},
        {636, L"Color Script"},       {780, L"Animation"}, {880, L"Collision"}, {972, L"Gravitation"},
        {1064, L"Rigidbody"},         {1184, L"Texture"},  {1276, L"Mover"},    {1340, L"CollectOnTouch"},
        {1460, L"PlanePrefabSpawner"}};
    CHECK(titles == expected);
    CHECK(ZoneOf(50).top == 2200 - 132 - 114);
}

TEST_CASE("a script has a block with its name, which cannot be folded") {
    OpenInspector({.hasShape = false, .transformExpanded = false, .scriptCount = 1, .scripts = {L"Mover"}},
                  1360, kLowHeight);
    CHECK(TextsBetween(kSecondTop, kSecondTop + 64) ==
          Sorted(Header(L"Mover", true) + Value(34, L"Enabled", L"true")));
    CHECK(SameZones(ZonesBetween(kSecondTop, kSecondTop + 64), {Remove(9)}));
    CHECK(ZoneOf(50).top == kSecondTop + 64 + 10);
    CHECK(PixelAt(kLeft, kSecondTop) == Pixel{0x86B04C});
    CHECK(PixelAt(kLeft + 3, kSecondTop) == Pixel{0x312924});
    CHECK(PixelAt(kRight - 1, kSecondTop + 25) == Pixel{0x161210});
}

TEST_CASE("a collector shows what it collects: its prefab, else its target, else a request") {
    GameObject object{
        .hasShape = false, .transformExpanded = false, .scriptCount = 1, .scripts = {L"CollectOnTouch"}};
    OpenInspector(object, 1360, kLowHeight);
    CHECK(TextsBetween(kSecondTop, kSecondTop + 120) ==
          Sorted(Header(L"CollectOnTouch", true) + Value(34, L"Enabled", L"true") +
                 Value(62, L"Prefab", L"Drop .prefab from Files") +
                 Value(90, L"Score", L"+1 and hide prefab")));
    CHECK(SameZones(ZonesBetween(kSecondTop, kSecondTop + 120), {Remove(9)}));
    CHECK(ZoneOf(50).top == kSecondTop + 120 + 10);
    object.collectTarget = L"Coin";
    OpenInspector(object);
    CHECK(ValueBeside(L"Prefab") == L"Coin");
    object.collectPrefab = L"Files\\Gem.prefab";
    OpenInspector(object);
    CHECK(ValueBeside(L"Prefab") == L"Files\\Gem.prefab");
}

TEST_CASE("a spawner shows what it spawns") {
    GameObject object{
        .hasShape = false, .transformExpanded = false, .scriptCount = 1, .scripts = {L"PlanePrefabSpawner"}};
    OpenInspector(object, 1360, kLowHeight);
    CHECK(TextsBetween(kSecondTop, kSecondTop + 120) ==
          Sorted(Header(L"PlanePrefabSpawner", true) + Value(34, L"Enabled", L"true") +
                 Value(62, L"Prefab", L"First .prefab in Files") +
                 Value(90, L"Spawn", L"One random object on plane")));
    CHECK(ZoneOf(50).top == kSecondTop + 120 + 10);
    object.spawnerPrefab = L"Gem.prefab";
    OpenInspector(object);
    CHECK(ValueBeside(L"Prefab") == L"Gem.prefab");
}

TEST_CASE("scripts that are only counted have numbered blocks after the named ones") {
    OpenInspector({.hasShape = false, .transformExpanded = false, .scriptCount = 3, .scripts = {L"Mover"}},
                  1360, kLowHeight + 400);
    CHECK(TextsBetween(kSecondTop + 64, kSecondTop + 128) ==
          Sorted(Header(L"Custom Script 02", true) + Value(34, L"Enabled", L"true")));
    CHECK(TextsBetween(kSecondTop + 128, kSecondTop + 192) ==
          Sorted(Header(L"Custom Script 03", true) + Value(34, L"Enabled", L"true")));
    CHECK(std::ranges::count(editorState.inspectorZones, 9, &HitZone::action) == 3);

    OpenInspector({.hasShape = false, .scriptCount = -5, .scripts = {L"Mover"}});
    CHECK(std::ranges::count(editorState.inspectorZones, 9, &HitZone::action) == 1);
}

TEST_CASE("script blocks below the window are left out, however many are counted") {
    OpenInspector({.scriptCount = INT32_MAX});
    CHECK(std::ranges::count(editorState.inspectorZones, 9, &HitZone::action) == (820 - 298 + 63) / 64);
    for (const HitZone& zone : editorState.inspectorZones) CHECK(zone.rect.top > 0);
}

TEST_CASE("the Add Component box asks, shows what is typed, and lists three components") {
    OpenInspector({.hasShape = false});
    const int32_t top = 688 - 114;
    const auto results = [](const wchar_t* a, const wchar_t* b, const wchar_t* c) {
        return Texts{{24, 37, a, TextColor{0xECE6E1}, 13, 600},
                     {24, 65, b, TextColor{0xECE6E1}, 13, 600},
                     {24, 93, c, TextColor{0xECE6E1}, 13, 600}};
    };
    const auto shows = [&](const wchar_t* text, uint32_t color, const Texts& found) {
        DrawInspectorAgain();
        return TextsBetween(top, 9999) == Sorted(Texts{{22, 6, text, TextColor{color}, 13, 600}} + found);
    };
    CHECK(shows(L"Add Component...", 0xA69E96, results(L"Rigidbody", L"Shape", L"Color")));
    CheckBox({kLeft + 12, top, kRight - 12, top + 28}, Pixel{0x251F1B}, Pixel{0x564A42});
    CHECK(SameZones(ZonesBetween(top, 9999), {{{12, 0, 288, 28}, 50},
                                              {{12, 32, 288, 56}, 41},
                                              {{12, 60, 288, 84}, 11},
                                              {{12, 88, 288, 112}, 12}}));
    for (const int32_t y : {32, 60, 88}) {
        CheckBox({kLeft + 12, top + y, kRight - 12, top + y + 24}, Pixel{0x312B27}, Pixel{0x4E4640});
    }

    editorState.componentSearchActive = true;
    CHECK(shows(L"Add Component...", 0xA69E96, results(L"Rigidbody", L"Shape", L"Color")));
    CheckBox({kLeft + 12, top, kRight - 12, top + 28}, Pixel{0x251F1B}, Pixel{0xE6AA50});

    editorState.componentSearchText = L"col";
    CHECK(shows(L"col|", 0xF4EEE8, results(L"Color", L"CollectOnTouch", L"Collision")));
    CHECK(SameZones(ZonesBetween(top + 32, 9999),
                    {{{12, 0, 288, 24}, 12}, {{12, 28, 288, 52}, 46}, {{12, 56, 288, 80}, 33}}));
    editorState.componentSearchActive = false;
    CHECK(shows(L"col", 0xF4EEE8, results(L"Color", L"CollectOnTouch", L"Collision")));

    editorState.componentSearchText = L"zzz";
    CHECK(shows(L"zzz", 0xF4EEE8, {}));
    CHECK(ZonesBetween(top, 9999).size() == 1);
}

TEST_CASE("the Add Component box stands at the panel's bottom until the sections reach it") {
    OpenInspector({.meshIndex = 0});
    CHECK(ZoneOf(50).top == 688 - 114);
    OpenInspector({.meshIndex = 0}, 1360, 646);  // the sections end at 390; the bottom panel begins at 514
    CHECK(ZoneOf(50).top == 400);
    OpenInspector({.meshIndex = 0}, 1360, 647);
    CHECK(ZoneOf(50).top == 401);
    OpenInspector({.meshIndex = 0, .shapeExpanded = false}, 1360, 646);  // they end at 328
    CHECK(ZoneOf(50).top == 400);
    OpenInspector({.meshIndex = 0, .shapeExpanded = false}, 1360, 400);
    CHECK(ZoneOf(50).top == 338);
}

TEST_CASE("a wide panel stretches its strips and keeps its boxes") {
    OpenInspector({.meshIndex = 0});
    editorState.panels.inspectorWidth = 500;
    inspectorLayout = LayoutEditor(editorState.panels, 1360, 820);
    DrawInspectorAgain();
    CheckBox({870, 86, 1350, 122}, Pixel{0x2D2622}, Pixel{0x4C423A});
    CheckBox({906, 93, 1090, 114}, Pixel{0x1F1A17}, Pixel{0x4C423A});
    CHECK(ZoneOf(50) == Rect{882, 574, 1338, 602});
    CHECK(ZoneOf(36) == Rect{990, 330, 1156, 354});
    const auto question = std::ranges::find(headless.texts, L"?", &DrawnText::text);
    REQUIRE(question != headless.texts.end());
    CHECK(question->x == 1350 - 48);
}

TEST_CASE("nothing stands below the title without a valid selection") {
    const Texts title{{1060, 58, L"Inspector", TextColor{0xE6EEEB}, 18, 600}};
    for (const int32_t selection : {-1, 1, INT32_MAX, INT32_MIN}) {
        OpenInspector(ObjectWithEverything());
        editorState.selectedIndex = selection;
        DrawInspectorAgain();
        CHECK(headless.texts == title);
        CHECK(editorState.inspectorZones.empty());
    }
    OpenInspector(ObjectWithEverything());
    editorState.scene.clear();
    DrawInspectorAgain();
    CHECK(headless.texts == title);
    CHECK(editorState.inspectorZones.empty());
}

TEST_CASE("the frame and the splitters beside it stay as they were drawn") {
    OpenInspector({.meshIndex = 0});
    CHECK(PixelAt(1040, 300) == Pixel{0x544941});  // the splitter covers the panel's left edge
    CHECK(PixelAt(1200, 687) == Pixel{0x544941});  // and its lower one
    CHECK(PixelAt(1041, 300) == Pixel{0x251F1C});
    CHECK(PixelAt(1359, 300) == Pixel{0x14100D});
    CHECK(PixelAt(1200, 42) == Pixel{0x4A3E36});
}

TEST_CASE("drawing twice gives the same zones and changes nothing else") {
    OpenInspector(ObjectWithEverything());
    const Zones zones = editorState.inspectorZones;
    DrawInspectorAgain();
    CHECK(SameZones(editorState.inspectorZones, zones));
    CHECK(editorState.scene == Scene{ObjectWithEverything()});
    CHECK(editorState.statusMessage == L"untouched");
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("a small window draws what fits, and only its panel takes presses") {
    OpenInspector(ObjectWithEverything(), 300, 200);
    CHECK(inspectorLayout.inspector == Rect{0, 42, 300, 68});
    editorState.panels = FitPanelsToWindow(editorState.panels, 300, 200);
    inspectorLayout = LayoutEditor(editorState.panels, 300, 200);
    DrawInspectorAgain();
    CHECK(inspectorLayout.inspector == Rect{0, 42, 300, 104});
    CHECK(ZoneOf(1) == Rect{14, 164, 32, 186});
    CHECK_FALSE(PressInspector({20, 170}));  // the bottom panel lies over it
    CHECK(PressInspector({20, 103}));
    CHECK(InspectedObject() == ObjectWithEverything());

    OpenInspector(ObjectWithEverything(), 200, 1);
    OpenInspector(ObjectWithEverything(), 1, 200);
    editorState.panels = FitPanelsToWindow(editorState.panels, 200, 400);
    CHECK(editorState.panels.inspectorWidth == 0);
    inspectorLayout = LayoutEditor(editorState.panels, 200, 400);
    DrawInspectorAgain();
    CHECK_FALSE(PressInspector({199, 100}));
}

TEST_CASE("paths inside the project are shown from its folder on, others whole") {
    OpenInspector({.scripts = {L"CollectOnTouch"}, .hasTexture = true});
    editorState.projectRoot = L"C:\\Game";
    for (const auto& [path, shown] : {std::pair{L"C:\\Game\\Files\\Gold.png", L"Files\\Gold.png"},
                                      {L"D:\\Elsewhere\\Gold.png", L"D:\\Elsewhere\\Gold.png"}}) {
        editorState.scene[0].texturePath = editorState.scene[0].collectPrefab = path;
        DrawInspectorAgain();
        CHECK(ValueBeside(L"Image") == shown);
        CHECK(ValueBeside(L"Prefab") == shown);
    }
}

// From 46 to 218 pixels behind the panel's edge; the headless text output gives a letter of this height 7
// pixels.
TEST_CASE("a name that is too long for its box is cut at the box's edge") {
    for (const auto& [name, shown] : {std::pair{std::wstring(25, L'n'), std::wstring(25, L'n')},
                                      {std::wstring(26, L'n'), std::wstring(22, L'n') + L"..."}}) {
        OpenInspector({.name = name});
        CHECK(std::ranges::count(headless.texts, shown, &DrawnText::text) == 1);
    }
}

TEST_CASE("the search box counts as shown while it begins above the Inspector's end") {
    editorState = EditorState{};
    const EditorLayout layout = LayoutEditor({}, 1360, 820);
    CHECK_FALSE(SearchBoxIsShown(layout));
    const struct {
        int32_t top, action;
        bool isShown;
    } cases[] = {{687, kOpenSearchAction, true}, {688, kOpenSearchAction, false}, {300, 1, false}};
    for (const auto& [top, action, isShown] : cases) {
        CAPTURE(top);
        editorState.inspectorZones = {{.rect{1050, top, 1340, top + 30}, .action = action}};
        CHECK(SearchBoxIsShown(layout) == isShown);
    }
}

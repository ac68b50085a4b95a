#include "formats/object_line.h"

#include "formats/text_file.h"
#include "render/builtin_meshes.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "support/capture.h"
#include "support/changed_field.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

using Fields = std::vector<std::wstring>;

// Cuts a written line, without its end.
static Fields ColumnsOf(const GameObject& object) {
    std::wstring line;
    WriteObjectLine(line, object);
    REQUIRE(line.ends_with(L'\n'));
    line.pop_back();
    std::vector<std::wstring_view> views;
    SplitAtTabs(line, views);
    return {views.begin(), views.end()};
}

static bool Parse(const Fields& fields, GameObject& object) {
    const std::vector<std::wstring_view> views(fields.begin(), fields.end());
    return ParseObjectLine(views, object);
}

static GameObject Parsed(const Fields& fields) {
    GameObject object;
    REQUIRE(Parse(fields, object));
    return object;
}

static GameObject RoundTrip(const GameObject& object) { return Parsed(ColumnsOf(object)); }

// The first `count` columns, the tag among them, of a line for `object`.
static Fields Shortened(const GameObject& object, size_t count) {
    Fields fields = ColumnsOf(object);
    REQUIRE(fields.size() == 61);
    fields.resize(count);
    return fields;
}

// A line of 61 columns whose numbers are all unreadable and whose texts are empty.
static Fields EmptyFields() {
    Fields fields(61);
    fields[0] = L"O";
    return fields;
}

// An object in which no column holds its default.
static GameObject FullObject() {
    return {
        .name = L"Hero",
        .position{1, -2.5f, 3.25f},
        .rotation{0.1f, 0.2f, -0.3f},
        .scale{1.5f, 2, 0.5f},
        .meshIndex = kSphereMesh,
        .hasAnimation = true,
        .parentIndex = 3,
        .isEntity = true,
        .isCamera = true,
        .isLight = true,
        .hasShape = false,
        .hasColor = true,
        .transformExpanded = false,
        .shapeExpanded = false,
        .colorExpanded = false,
        .animationExpanded = false,
        .animationType = 2,
        .animationSpeed = 2.5f,
        .scriptCount = 2,
        .color = 0x123456,
        .scripts = {L"Walk", L"Jump"},
        .roughness = 0.25f,
        .gloss = 0.75f,
        .colorWheelExpanded = true,
        .hasCollision = true,
        .hasGravitation = true,
        .collisionExpanded = false,
        .gravitationExpanded = false,
        .velocityY = -4.5f,
        .gravityStrength = 11.8f,
        .hasTexture = true,
        .textureExpanded = false,
        .textureRepeat = true,
        .hasRigidbody = true,
        .rigidbodyExpanded = false,
        .mass = 2.5f,
        .drag = 0.1f,
        .velocity{0.5f, -1, 2},
        .active = false,
        .collectTarget = L"Coin",
        .collectPrefab = L"C:\\Game\\Files\\Coin.prefab",
        .prefabSource = L"C:\\Game\\Files\\Hero.prefab",
        .spawnerPrefab = L"C:\\Game\\Files\\Drop.prefab",
        .cameraExpanded = false,
        .cameraBackgroundSet = true,
        .cameraBackground = 0xFFFFFFFF,
        .cameraBrightness = 0.5f,
        .isText = false,
        .textExpanded = false,
        .text = L"Hello",
        .textSize = 24,
    };
}

static void OpenGame() {
    editorState = EditorState{};
    editorState.projectRoot = L"C:\\Game";
    resetScene(false);
}

TEST_CASE("an object is written as this line") {
    OpenGame();
    GameObject object = FullObject();
    object.texturePath = L"C:\\Game\\Files\\imported\\brick.png";
    object.isText = true;
    std::wstring line = L"before\n";
    WriteObjectLine(line, object);
    CHECK(
        line ==
        L"before\n"
        L"O\tHero\t1.000000\t-2.500000\t3.250000\t0.100000\t0.200000\t-0.300000\t1.500000\t2.000000\t0.500000"
        L"\tbuiltin:Sphere\t1\t3\t1\t1\t1\t0\t1\t0\t0\t0\t0\t2\t2.500000\t2\t1193046\t0.250000\t0.750000\t1"
        L"\tWalk;Jump\t1\t1\t0\t0\t-4.500000\t11.800000\t1\t0\t1\tFiles\\imported\\brick.png\t1\t0\t2.500000"
        L"\t0.100000\t0.500000\t-1.000000\t2.000000\t0\tCoin\tFiles\\Coin.prefab\tFiles\\Hero.prefab"
        L"\tFiles\\Drop.prefab\t0\t1\t4294967295\t0.500000\t1\t0\tHello\t24.000000\n");
}

TEST_CASE("a new object is written as this line") {
    OpenGame();
    std::wstring line;
    WriteObjectLine(line, GameObject{});
    CHECK(line ==
          L"O\t\t0.000000\t0.000000\t0.000000\t0.000000\t0.000000\t0.000000\t1.000000\t1.000000\t1.000000"
          L"\tbuiltin:Cube\t0\t-1\t0\t0\t0\t1\t0\t1\t1\t1\t1\t0\t1.000000\t0\t12897614\t0.720000\t0.180000\t0"
          L"\t\t0\t0\t1\t1\t0.000000\t9.800000\t0\t1\t0\t\t0\t1\t1.000000\t0.050000\t0.000000\t0.000000"
          L"\t0.000000\t1\t\t\t\t\t1\t0\t2957849\t1.000000\t0\t1\tText\t18.000000\n");
}

TEST_CASE("each column is read into its own field") {
    OpenGame();
    const GameObject written = FullObject();
    GameObject read = RoundTrip(written);
    CHECK(read == written);

    // One column at a time, so that two exchanged ones cannot hide behind each other.
    const Fields full = ColumnsOf(written), plain = ColumnsOf(GameObject{});
    for (size_t column = 1; column < full.size(); ++column) {
        if (column == 25 || column == 40) continue;  // not read; needs an image
        Fields fields = plain;
        fields[column] = full[column];
        read = Parsed(fields);
        read.hasCollision = column == 31;  // a Rigidbody brings it
        const Fields again = ColumnsOf(read);
        for (size_t other = 1; other < again.size(); ++other) {
            const bool isCount = column == 30 && other == 25;
            const std::wstring expected = isCount ? L"2" : fields[other];
            CHECK_MESSAGE(again[other] == expected, "column ", column, " changed column ", other);
        }
    }
}

TEST_CASE("an unreadable or empty column takes the value of a new object") {
    OpenGame();
    GameObject expected;
    expected.meshIndex = kCubeMesh;
    expected.text = L"";
    CHECK(Parsed(EmptyFields()) == expected);

    Fields fields(61, L"?");
    fields[0] = L"O";
    fields[40] = L"";
    const GameObject read = Parsed(fields);
    CHECK(read.name == L"?");
    CHECK(read.scripts == Fields{L"?"});
    CHECK(read.scriptCount == 1);
    CHECK(read.collectTarget == L"?");
    CHECK(read.collectPrefab == L"C:\\Game\\?");
    CHECK(read.text == L"?");
    CHECK(read.scale == Vec3{1, 1, 1});
    CHECK(read.parentIndex == -1);
    CHECK(read.hasShape);
    CHECK(read.color == 0xC4CD4E);
    CHECK(read.roughness == 0.72f);
    CHECK(read.gravityStrength == 9.8f);
    CHECK(read.active);
    CHECK(read.cameraBackground == 0x2D2219);
    CHECK(read.textSize == 18);
}

TEST_CASE("a line without the tag, without fields or with fewer than 30 columns is no object") {
    OpenGame();
    GameObject object{.name = L"kept"};
    CHECK_FALSE(ParseObjectLine({}, object));
    CHECK_FALSE(Parse({L""}, object));
    for (const wchar_t* tag : {L"o", L"OO", L" O", L"O ", L"0", L"ZELENGINE_SCENE", L"\xFEFFO"}) {
        Fields fields = EmptyFields();
        fields[0] = tag;
        CHECK_FALSE(Parse(fields, object));
    }
    CHECK_FALSE(Parse(Shortened(FullObject(), 29), object));
    CHECK(object.name == L"kept");
    CHECK(Parse(Shortened(FullObject(), 30), object));
}

TEST_CASE("a line of 30 columns gives the rest its defaults") {
    OpenGame();
    const GameObject written = FullObject();
    GameObject expected = written;
    const GameObject fresh;
    expected.scripts.clear();
    expected.scriptCount = 0;
    expected.hasCollision = expected.hasGravitation = expected.hasTexture = false;
    expected.collisionExpanded = expected.gravitationExpanded = expected.textureExpanded = true;
    expected.velocityY = 0;
    expected.gravityStrength = fresh.gravityStrength;
    expected.textureRepeat = expected.hasRigidbody = false;
    expected.rigidbodyExpanded = expected.active = true;
    expected.mass = fresh.mass;
    expected.drag = fresh.drag;
    expected.velocity = {};
    expected.collectTarget = expected.collectPrefab = expected.prefabSource = expected.spawnerPrefab = L"";
    expected.cameraExpanded = expected.textExpanded = true;
    expected.cameraBackgroundSet = false;
    expected.cameraBackground = fresh.cameraBackground;
    expected.cameraBrightness = 1;
    expected.text = L"Text";
    expected.textSize = 18;
    CHECK(Parsed(Shortened(written, 30)) == expected);
}

TEST_CASE("in lines written before Collision existed, ground and platforms are solid") {
    OpenGame();
    struct {
        const wchar_t* name;
        int32_t meshIndex;
        bool isSolid;
    } cases[] = {{L"Ground", 0, true},      {L"Platform", 0, true},  {L"Platform_02", 0, true},
                 {L"Floor", 2, true},       {L"Ground_2", 0, false}, {L"ground", 0, false},
                 {L"A Platform", 0, false}, {L"platform", 0, false}, {L"", 0, false}};
    for (auto [name, meshIndex, isSolid] : cases) {
        const GameObject object{.name = name, .meshIndex = meshIndex};
        CHECK(Parsed(Shortened(object, 30)).hasCollision == isSolid);
        CHECK(Parsed(Shortened(object, 31)).hasCollision == isSolid);
        CHECK_FALSE(Parsed(Shortened(object, 32)).hasCollision);
        CHECK_FALSE(Parsed(Shortened(object, 61)).hasCollision);
    }
}

TEST_CASE("a line of 31 columns has its scripts") {
    OpenGame();
    CHECK(Parsed(Shortened(FullObject(), 31)).scripts == Fields{L"Walk", L"Jump"});
    CHECK(Parsed(Shortened(FullObject(), 30)).scripts == Fields{});
}

TEST_CASE("a velocity is read with all three columns or not at all") {
    OpenGame();
    CHECK(Parsed(Shortened(FullObject(), 46)).velocity == Vec3{});
    CHECK(Parsed(Shortened(FullObject(), 47)).velocity == Vec3{});
    CHECK(Parsed(Shortened(FullObject(), 48)).velocity == Vec3{0.5f, -1, 2});
    CHECK(Parsed(Shortened(FullObject(), 48)).active);
    CHECK_FALSE(Parsed(Shortened(FullObject(), 49)).active);
}

TEST_CASE("lines of fewer than 53 columns have the prefab's source and the spawner's prefab at 50 and 51") {
    OpenGame();
    Fields fields = Shortened(FullObject(), 52);
    fields[50] = L"Source.prefab";
    fields[51] = L"Spawned.prefab";
    GameObject read = Parsed(fields);
    CHECK(read.collectPrefab == L"");
    CHECK(read.prefabSource == L"C:\\Game\\Source.prefab");
    CHECK(read.spawnerPrefab == L"C:\\Game\\Spawned.prefab");

    fields.resize(51);
    read = Parsed(fields);
    CHECK(read.collectPrefab == L"");
    CHECK(read.prefabSource == L"C:\\Game\\Source.prefab");
    CHECK(read.spawnerPrefab == L"");

    read = Parsed(Shortened(FullObject(), 53));
    CHECK(read.collectPrefab == L"C:\\Game\\Files\\Coin.prefab");
    CHECK(read.prefabSource == L"C:\\Game\\Files\\Hero.prefab");
    CHECK(read.spawnerPrefab == L"C:\\Game\\Files\\Drop.prefab");
}

TEST_CASE("the collect target is in column 49 of every line that has one") {
    OpenGame();
    CHECK(Parsed(Shortened(FullObject(), 49)).collectTarget == L"");
    for (const size_t count : {50u, 51u, 52u, 53u, 61u}) {
        CHECK(Parsed(Shortened(FullObject(), count)).collectTarget == L"Coin");
    }
}

TEST_CASE("every length of line from 30 columns on is read, and columns beyond the last are ignored") {
    OpenGame();
    Fields fields = ColumnsOf(FullObject());
    for (size_t count = 30; count <= 61; ++count) {
        GameObject object;
        CHECK(Parse(Shortened(FullObject(), count), object));
        CHECK(object.name == L"Hero");
    }
    fields.resize(100, L"more");
    CHECK(Parsed(fields) == FullObject());
}

TEST_CASE("a TAB, a CR and a LF in a name come back as spaces") {
    OpenGame();
    GameObject object{.name = L"big\tred\r\nbox", .collectTarget = L"a\tb", .text = L"c\nd"};
    object.scripts = {L"e\tf"};
    const GameObject read = RoundTrip(object);
    CHECK(read.name == L"big red  box");
    CHECK(read.collectTarget == L"a b");
    CHECK(read.text == L"c d");
    CHECK(read.scripts == Fields{L"e f"});
}

TEST_CASE("TABs and line ends in stored paths become spaces") {
    OpenGame();
    GameObject object;
    object.texturePath = L"C:\\Game\\a\tb.png";
    object.prefabSource = L"C:\\Game\\c\nd.prefab";
    const Fields fields = ColumnsOf(object);
    REQUIRE(fields.size() == 61);
    CHECK(fields[40] == L"a b.png");
    CHECK(fields[51] == L"c d.prefab");
}

TEST_CASE("a script whose name holds a semicolon comes back as two") {
    OpenGame();
    GameObject object;
    object.scripts = {L"a;b", L"c"};
    object.scriptCount = 2;
    const GameObject read = RoundTrip(object);
    CHECK(read.scripts == Fields{L"a", L"b", L"c"});
    CHECK(read.scriptCount == 3);
}

TEST_CASE("empty entries of a scripts list are entries, and an empty list has none") {
    OpenGame();
    struct {
        const wchar_t* field;
        Fields scripts;
    } cases[] = {{L"a;;b", {L"a", L"", L"b"}}, {L"", {}}, {L";", {L"", L""}}, {L"a;", {L"a", L""}}};
    for (const auto& [field, scripts] : cases) {
        Fields fields = EmptyFields();
        fields[25] = L"77";
        fields[30] = field;
        const GameObject read = Parsed(fields);
        CHECK(read.scripts == scripts);
        CHECK(read.scriptCount == static_cast<int32_t>(scripts.size()));
        CHECK(ColumnsOf(read)[30] == field);
    }
}

TEST_CASE("the script count is written as the size of the list") {
    OpenGame();
    GameObject object;
    object.scriptCount = 5;
    object.scripts = {L"one"};
    CHECK(ColumnsOf(object)[25] == L"1");
}

TEST_CASE("a Text object comes back without a mesh and a shape") {
    OpenGame();
    const GameObject text{.name = L"Title", .meshIndex = -1, .isText = true};
    CHECK(ColumnsOf(text)[11] == L"builtin:Cube");
    GameObject read = RoundTrip(text);
    CHECK(read.meshIndex == -1);
    CHECK_FALSE(read.hasShape);

    read = RoundTrip({.meshIndex = kSphereMesh, .hasShape = true, .isText = true});
    CHECK(read.meshIndex == -1);
}

TEST_CASE("a camera without a mesh comes back with the Cube") {
    OpenGame();
    const GameObject camera{.name = L"Game Camera", .isCamera = true};
    CHECK(ColumnsOf(camera)[11] == L"builtin:Cube");
    CHECK(RoundTrip(camera).meshIndex == kCubeMesh);
}

TEST_CASE("a Rigidbody brings Collision") {
    OpenGame();
    CHECK(RoundTrip({.hasRigidbody = true}).hasCollision);
    CHECK_FALSE(RoundTrip({.hasRigidbody = false}).hasCollision);
}

TEST_CASE("values outside their range are limited on reading") {
    OpenGame();
    struct {
        size_t column;
        float GameObject::*member;
        const wchar_t* text;
        float value;
    } cases[] = {
        {27, &GameObject::roughness, L"-0.5", 0},
        {27, &GameObject::roughness, L"1.5", 1},
        {28, &GameObject::gloss, L"-1", 0},
        {28, &GameObject::gloss, L"7", 1},
        {43, &GameObject::mass, L"0", 0.1f},
        {43, &GameObject::mass, L"-3", 0.1f},
        {43, &GameObject::mass, L"1000000", 1'000'000},
        {44, &GameObject::drag, L"-1", 0},
        {44, &GameObject::drag, L"6", 5},
        {44, &GameObject::drag, L"0.5", 0.5f},
        {56, &GameObject::cameraBrightness, L"-1", 0},
        {56, &GameObject::cameraBrightness, L"2", 1},
        {60, &GameObject::textSize, L"300", 180},
        {60, &GameObject::textSize, L"1", 4},
        {24, &GameObject::animationSpeed, L"-7", -7},
        {36, &GameObject::gravityStrength, L"1e30", 1e30f},
    };
    for (auto [column, member, text, value] : cases) {
        Fields fields = EmptyFields();
        fields[column] = text;
        CHECK(Parsed(fields).*member == value);
    }
}

TEST_CASE("nan and inf in any number's column take the default") {
    OpenGame();
    const GameObject expected = Parsed(EmptyFields());
    constexpr size_t kTextColumns[] = {1, 11, 30, 40, 49, 50, 51, 52, 59};
    for (const wchar_t* text : {L"nan", L"-nan", L"NAN(1)", L"inf", L"-inf", L"infinity"}) {
        for (size_t column = 1; column <= 60; ++column) {
            if (std::ranges::count(kTextColumns, column) > 0) continue;
            Fields fields = EmptyFields();
            fields[column] = text;
            CHECK(Parsed(fields) == expected);
        }
    }
}

TEST_CASE("a number too large for a float takes the default") {
    OpenGame();
    const GameObject expected = Parsed(EmptyFields());
    constexpr size_t kFloatColumns[] = {2,  3,  4,  5,  6,  7,  8,  9,  10, 24, 27,
                                        28, 35, 36, 43, 44, 45, 46, 47, 56, 60};
    for (const size_t column : kFloatColumns) {
        for (const wchar_t* text : {L"1e999", L"-1e39", L"9999999999999999999999999999999999999999"}) {
            Fields fields = EmptyFields();
            fields[column] = text;
            CHECK(Parsed(fields) == expected);
        }
    }
}

TEST_CASE("an object that holds nan is saved, and comes back with the defaults") {
    OpenGame();
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    GameObject object;
    object.position = {kNan, kInfinity, -kInfinity};
    object.scale = {kNan, 2, kNan};
    object.mass = kNan;
    object.textSize = kInfinity;
    const GameObject read = RoundTrip(object);
    CHECK(read.position == Vec3{0, 0, 0});
    CHECK(read.scale == Vec3{1, 2, 1});
    CHECK(read.mass == 1);
    CHECK(read.textSize == 18);
}

TEST_CASE("numbers out of range are limited to 32 bits") {
    OpenGame();
    Fields fields = EmptyFields();
    fields[12] = L"99999999999";
    fields[13] = L"99999999999";
    fields[23] = L"-99999999999";
    fields[26] = L"99999999999";
    const GameObject read = Parsed(fields);
    CHECK(read.hasAnimation);
    CHECK(read.parentIndex == INT32_MAX);
    CHECK(read.animationType == INT32_MIN);
    CHECK(read.color == 0xFFFFFFFF);
}

TEST_CASE("any number except zero is true") {
    OpenGame();
    struct {
        const wchar_t* text;
        bool value;
    } cases[] = {{L"1", true},   {L"2", true},     {L"-1", true},   {L"0", false},
                 {L"00", false}, {L"true", false}, {L"0.9", false}, {L" 1x", true}};
    for (auto [text, value] : cases) {
        Fields fields = EmptyFields();
        fields[12] = text;
        CHECK(Parsed(fields).hasAnimation == value);
    }
}

TEST_CASE("stored references are joined to the project folder, and an empty one stays empty") {
    OpenGame();
    Fields fields = EmptyFields();
    fields[50] = L"D:\\Elsewhere\\x.prefab";
    fields[52] = L"Files\\y.prefab";
    const GameObject read = Parsed(fields);
    CHECK(read.collectPrefab == L"C:\\Game\\D:\\Elsewhere\\x.prefab");
    CHECK(read.prefabSource == L"");
    CHECK(read.spawnerPrefab == L"C:\\Game\\Files\\y.prefab");
}

TEST_CASE("references outside the project are stored as they are") {
    OpenGame();
    GameObject object;
    object.collectPrefab = L"D:\\Elsewhere\\x.prefab";
    object.prefabSource = L"c:\\game\\y.prefab";
    const Fields fields = ColumnsOf(object);
    CHECK(fields[50] == L"D:\\Elsewhere\\x.prefab");
    CHECK(fields[51] == L"c:\\game\\y.prefab");
}

TEST_CASE("a texture is loaded with its object and keeps its path") {
    const ScratchFolder folder;
    resetScene(false);
    editorState.projectRoot = folder.path;
    PutFile(folder / L"Files\\brick.bmp", OnePixelBitmap());
    Fields fields = EmptyFields();
    fields[37] = L"1";
    fields[40] = L"Files\\brick.bmp";
    const GameObject read = Parsed(fields);
    CHECK(read.hasTexture);
    CHECK(read.texturePath == folder / L"Files\\brick.bmp");
    REQUIRE(read.textureIndex == 0);
    CHECK(editorState.textures[0].path == folder / L"Files\\brick.bmp");
    CHECK(ColumnsOf(read)[40] == L"Files\\brick.bmp");

    fields[37] = L"0";
    CHECK_FALSE(Parsed(fields).hasTexture);
    CHECK(Parsed(fields).textureIndex == 0);
}

TEST_CASE("a texture that cannot be loaded leaves its object without one, but with its path") {
    const ScratchFolder folder;
    resetScene(false);
    editorState.projectRoot = folder.path;
    Fields fields = EmptyFields();
    fields[37] = L"1";
    fields[40] = L"Files\\missing.png";
    const GameObject read = Parsed(fields);
    CHECK_FALSE(read.hasTexture);
    CHECK(read.textureIndex == -1);
    CHECK(ColumnsOf(read)[40] == L"Files\\missing.png");
    CHECK(editorState.statusMessage == L"Texture image se nepodarilo nacist.");
}

TEST_CASE("an empty texture path loads nothing and leaves the component as it was read") {
    OpenGame();
    const std::wstring status = editorState.statusMessage;
    Fields fields = EmptyFields();
    fields[37] = L"1";
    const GameObject read = Parsed(fields);
    CHECK(read.hasTexture);
    CHECK(read.texturePath == L"");
    CHECK(read.textureIndex == -1);
    CHECK(editorState.statusMessage == status);
}

TEST_CASE("an object without a texture path is written with the path of its image") {
    OpenGame();
    editorState.textures = {{.path = L"C:\\Game\\Files\\a.png"}, {.path = L"C:\\Game\\Files\\b.png"}};
    struct {
        int32_t textureIndex;
        const wchar_t *texturePath, *field;
    } cases[] = {{1, L"", L"Files\\b.png"},
                 {1, L"C:\\Game\\c.png", L"c.png"},
                 {2, L"", L""},
                 {-1, L"", L""},
                 {INT32_MAX, L"", L""},
                 {INT32_MIN, L"", L""}};
    for (auto [textureIndex, texturePath, field] : cases) {
        CHECK(ColumnsOf({.textureIndex = textureIndex, .texturePath = texturePath})[40] == field);
    }
}

TEST_CASE("what is saved, loaded and saved again is the same text") {
    OpenGame();
    uint32_t seed = 12345;
    const auto random = [&seed](float scale) {
        seed = seed * 1664525 + 1013904223;
        return (static_cast<float>(seed >> 8) / 16777216.0f - 0.5f) * scale;
    };
    for (int32_t i = 0; i < 2000; ++i) {
        GameObject object = FullObject();
        object.position = {random(1), random(1000), random(1e9f)};
        object.rotation = {random(1e-6f), random(7), random(1e20f)};
        object.mass = random(10);
        object.textSize = random(400);
        object.color = seed;
        object.parentIndex = static_cast<int32_t>(seed);
        const GameObject read = RoundTrip(object);
        std::wstring first, second;
        WriteObjectLine(first, read);
        WriteObjectLine(second, RoundTrip(read));
        CHECK(first == second);
        CHECK(std::fabs(read.position.x - object.position.x) <= 0.0000006f);
        CHECK(read.position.z == object.position.z);
        CHECK(read.color == object.color);
        CHECK(read.parentIndex == object.parentIndex);
    }
}

TEST_CASE("the objects of a scene are written in its order") {
    OpenGame();
    editorState.scene = {{.name = L"first"}, {.name = L"second"}};
    std::wstring text, expected;
    WriteObjects(text, editorState.scene);
    WriteObjectLine(expected, editorState.scene[0]);
    WriteObjectLine(expected, editorState.scene[1]);
    CHECK(text == expected);
}

TEST_CASE("every field of an object has its column, except the index of its texture") {
    OpenGame();
    const GameObject plain{.meshIndex = 0};
    for (size_t field = 0; field < kFieldCount; ++field) {
        const std::string name = FieldName(field);
        CAPTURE(name);
        const bool isDerived = name == "textureIndex" || name == "scriptCount";  // the list tells the count
        const GameObject written = WithFieldChanged(plain, field);
        REQUIRE_FALSE(FieldIsAlike(field, written, plain));
        CHECK(FieldIsAlike(field, RoundTrip(written), written) == !isDerived);
    }
}

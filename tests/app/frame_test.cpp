#include "app/frame.h"

#include "platform/headless/headless.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "scene/default_scenes.h"
#include "scene/editor_state.h"
#include "support/picture.h"

#include "doctest/doctest.h"

constexpr Pixel kDefaultBackground{0x2D2219};
constexpr Pixel kOutline{0x56D6FF};
constexpr Pixel kGridLine{0x5B5E46};

// A window of 200 x 150 pixels with an empty scene, seen from the origin along +Z.
static void StartFrame(Scene scene) {
    StartPicture(200, 150);
    headless.clientSize = {200, 150};
    editorState = EditorState{};
    resetScene(false);
    editorState.scene = std::move(scene);
    editorState.selectedIndex = -1;
    editorState.cameraPosition = {0, 0, 0};
    editorState.cameraPitch = 0;
    ReleaseCanvasImages();
    icons = {};
    icons.entity = LoadCanvasImage(L"" ZEL_SOURCE_DIR "/LICENSE");
    icons.camera = LoadCanvasImage(L"" ZEL_SOURCE_DIR "/CMakeLists.txt");
    icons.light = LoadCanvasImage(L"" ZEL_SOURCE_DIR "/.gitignore");
}

static GameObject CubeAt(Vec3 position) { return {.position = position, .meshIndex = 0}; }

static bool DrawsAnything(Scene scene) {
    StartFrame(std::move(scene));
    editorState.runtimeMode = editorState.playMode = true;  // no grid
    RenderFrame();
    return CountOf(kDefaultBackground) != 200 * 150;
}

TEST_CASE("a frame shows the background behind the grid, the grid behind the objects") {
    // Below the eye, where grid lines run.
    StartFrame({CubeAt({0, -1, 5})});
    RenderFrame();
    CHECK(headless.presents == 1);
    CHECK(PixelAt(0, 0) == kDefaultBackground);
    CHECK(CountOf(kGridLine) > 0);
    const int32_t before = CountOf(kGridLine);
    StartFrame({});
    RenderFrame();
    CHECK(CountOf(kGridLine) > before);  // the cube covered some of it
}

TEST_CASE("the game shows no grid, no icons and no outline") {
    // Also after the game has stopped in the runtime: the view stays as it was.
    for (bool plays : {true, false}) {
        StartFrame({CubeAt({0, 0, 5}),
                    {.position{0, 0, 5}, .isEntity = true},
                    {.position{1, 0, 5}, .isLight = true},
                    {.isCamera = true, .active = false, .cameraBackground = 0x112233},
                    {.isCamera = true, .cameraBackground = 0x445566}});
        editorState.runtimeMode = true;
        editorState.playMode = plays;
        editorState.selectedIndex = 0;
        editorState.cameraPosition = {0, 0, -500};
        RenderFrame();
        CHECK(CountOf(kGridLine) == 0);
        CHECK(CountOf(kOutline) == 0);
        CHECK(headless.images.empty());
        CHECK(PixelAt(0, 0) == Pixel{0x445566});
        CHECK(PixelAt(100, 75) != Pixel{0x445566});  // seen from the scene's camera, not from far away
    }
}

TEST_CASE("the picture takes camera, light, material, texture mode and parents from the scene") {
    struct {
        std::string what;
        void (*change)(Scene&);
    } changes[] = {
        {"camera", [](Scene& s) { s[0].position.x = 1; }},
        {"light", [](Scene& s) { s[1].rotation.y = 3.3f; }},
        {"roughness", [](Scene& s) { s[2].roughness = 0; }},
        {"gloss", [](Scene& s) { s[2].gloss = 1; }},
        {"texture mode", [](Scene& s) { s[2].textureRepeat = true; }},
        {"parent", [](Scene& s) { s[2].parentIndex = 3; }},
    };
    const auto picture = [](void (*change)(Scene&)) {
        StartFrame({{.isCamera = true},
                    {.rotation{-0.7f, 2.6f, 0}, .isLight = true},
                    {.position{0, 0, 5},
                     .rotation{0.4f, 0.5f, 0},
                     .scale{1.5f, 1, 1},
                     .meshIndex = 0,
                     .roughness = 1,
                     .hasTexture = true,
                     .textureIndex = 0},
                    {.position{1, 1, 0}}});
        editorState.textures = {{.width = 3, .height = 3}};
        for (uint32_t i = 0; i < 9; ++i)
            editorState.textures[0].texels.push_back(Pixel{0x606060 + 0x101010 * i});
        editorState.playMode = true;
        if (change != nullptr) change(editorState.scene);
        RenderFrame();
        return headless.pixels;
    };
    const std::vector<Pixel> before = picture(nullptr);
    for (const auto& [what, change] : changes) {
        CAPTURE(what);
        CHECK(picture(change) != before);
    }
}

TEST_CASE("a marker stands where its parents put it") {
    StartFrame({{.position{0, 0, 5}, .isEntity = true, .hasShape = false},
                {.parentIndex = 0, .isEntity = true, .hasShape = false}});
    RenderFrame();
    REQUIRE(headless.images.size() == 2);
    CHECK(headless.images[0].rect == headless.images[1].rect);
}

TEST_CASE("an empty scene with a selection of 0 is drawn") {
    StartFrame({});
    editorState.selectedIndex = 0;
    RenderFrame();
    CHECK(headless.presents == 1);
}

TEST_CASE("a picture that is asked for while one is drawn is refused") {
    StartFrame({CubeAt({0, 0, 5})});
    headless.onPresent = RenderFrame;
    RenderFrame();
    CHECK(headless.presents == 1);
    headless.onPresent = nullptr;
    RenderFrame();
    CHECK(headless.presents == 2);
}

TEST_CASE("Play mode in the editor keeps the grid and drops outline, markers and their meshes") {
    StartFrame({{.position{0, 0, 5}, .meshIndex = 0, .isEntity = true}, CubeAt({1, 1, 5})});
    editorState.playMode = true;
    editorState.selectedIndex = 1;
    RenderFrame();
    CHECK(CountOf(kGridLine) > 0);
    CHECK(CountOf(kOutline) == 0);
    CHECK(headless.images.empty());
    StartFrame({{.position{0, 0, 5}, .meshIndex = 0, .isEntity = true}});
    editorState.playMode = editorState.runtimeMode = true;
    RenderFrame();
    CHECK(CountOf(kDefaultBackground) == 200 * 150);
}

TEST_CASE("in edit mode markers show their icons, each kind its own, and the selected one is larger") {
    StartFrame({{.position{-1, 0, 5}, .isEntity = true},
                {.position{0, 0, 5}, .isCamera = true},
                {.position{1, 0, 5}, .isLight = true},
                {.position{1, 0, 5}, .isLight = true, .active = false}});
    editorState.selectedIndex = 1;
    RenderFrame();
    REQUIRE(headless.images.size() == 3);
    CHECK(headless.images[0].path.ends_with(L"LICENSE"));
    CHECK(headless.images[1].path.ends_with(L"CMakeLists.txt"));
    CHECK(headless.images[2].path.ends_with(L".gitignore"));
    CHECK(Width(headless.images[0].rect) == 24);
    CHECK(Width(headless.images[1].rect) == 28);
    CHECK(Width(headless.images[2].rect) == 24);
}

TEST_CASE("markers lie over meshes that come later in the scene, texts only over those before them") {
    StartFrame({{.position{0, 0, 5}, .isEntity = true, .hasShape = false},
                {.position{0, 0, 5}, .isText = true},
                CubeAt({0, 0, 5})});
    editorState.selectedIndex = 0;
    RenderFrame();
    CHECK(CountOf(Pixel{0x78E2FF}) == 34 * 34);
    StartFrame({CubeAt({0, 0, 5}), {.position{0, 0, 5}, .isText = true}});
    editorState.selectedIndex = 1;
    RenderFrame();
    const int32_t boxOverCube = CountOf(Pixel{0x312924});
    StartFrame({{.position{0, 0, 5}, .isText = true}, CubeAt({0, 0, 5})});
    editorState.selectedIndex = 0;
    RenderFrame();
    CHECK(CountOf(Pixel{0x312924}) < boxOverCube);
}

TEST_CASE("what has no shape, no valid mesh or is not active is not drawn") {
    CHECK(DrawsAnything({CubeAt({0, 0, 5})}));
    GameObject object = CubeAt({0, 0, 5});
    object.hasShape = false;
    CHECK_FALSE(DrawsAnything({object}));
    object = CubeAt({0, 0, 5});
    object.active = false;
    CHECK_FALSE(DrawsAnything({object}));
    for (int32_t index : {-1, -5, 7, 1000, INT32_MAX, INT32_MIN}) {
        object = CubeAt({0, 0, 5});
        object.meshIndex = index;
        CHECK_FALSE(DrawsAnything({object}));
    }
}

TEST_CASE("a Text object with a mesh shows its text alone") {
    CHECK_FALSE(DrawsAnything({{.position{0, 0, 5}, .meshIndex = 0, .isText = true, .text = L"Ahoj"}}));
    REQUIRE(headless.texts.size() == 1);
    CHECK(headless.texts[0].text == L"Ahoj");
}

TEST_CASE("a texture index beyond the list leaves the vertex colours") {
    StartFrame({CubeAt({0, 0, 5})});
    RenderFrame();
    const std::vector<Pixel> plain = headless.pixels;
    for (int32_t index : {-1, 1, 99, INT32_MIN}) {
        StartFrame({CubeAt({0, 0, 5})});
        editorState.textures = {{.width = 1, .height = 1, .texels{Pixel{0x00FF00}}}};
        editorState.scene[0].hasTexture = true;
        editorState.scene[0].textureIndex = index;
        RenderFrame();
        CHECK(headless.pixels == plain);
    }
    editorState.scene[0].textureIndex = 0;
    RenderFrame();
    CHECK(headless.pixels != plain);
    editorState.scene[0].hasTexture = false;
    RenderFrame();
    CHECK(headless.pixels == plain);
}

TEST_CASE("an object's colour tints it only while it has one, and 0 leaves it as it is") {
    StartFrame({CubeAt({0, 0, 5})});
    RenderFrame();
    const std::vector<Pixel> plain = headless.pixels;
    editorState.scene[0].hasColor = true;
    RenderFrame();
    CHECK(headless.pixels != plain);
    editorState.scene[0].color = 0;
    RenderFrame();
    CHECK(headless.pixels == plain);
}

TEST_CASE("the selected object is outlined in edit mode") {
    StartFrame({CubeAt({0, 0, 5}), CubeAt({2, 0, 5})});
    RenderFrame();
    CHECK(CountOf(kOutline) == 0);
    editorState.selectedIndex = 1;
    RenderFrame();
    CHECK(CountOf(kOutline) > 0);
    for (int32_t index : {-1, 2, 100}) {
        editorState.selectedIndex = index;
        RenderFrame();
        CHECK(CountOf(kOutline) == 0);
    }
}

TEST_CASE("the frame follows the window's size, also through a minimised window") {
    StartFrame({CubeAt({0, 0, 5})});
    for (auto [width, height] : {std::pair{1, 1}, {640, 360}, {1360, 820}, {200, 150}}) {
        headless.clientSize = {width, height};
        RenderFrame();
        CHECK(frameBuffer.width == width);
        CHECK(frameBuffer.height == height);
        CHECK(frameBuffer.depth.size() == static_cast<size_t>(width * height));
        CHECK(frameBuffer.viewport == Rect{0, 0, width, height});
    }
    const int32_t presents = headless.presents;
    headless.clientSize = {0, 0};
    RenderFrame();
    CHECK(frameBuffer.width == 200);
    CHECK(headless.presents == presents + 1);  // it goes on drawing into the old buffer
}

TEST_CASE("without memory for a picture a frame is skipped") {
    StartFrame({CubeAt({0, 0, 5})});
    headless.canvasFails = true;
    headless.clientSize = {300, 300};
    RenderFrame();
    CHECK(headless.presents == 0);
    headless.canvasFails = false;
    RenderFrame();
    CHECK(headless.presents == 1);
}

TEST_CASE("a scene of parents in a cycle and of wild numbers is drawn without harm") {
    StartFrame(
        {{.position{0, 0, 5}, .meshIndex = 0, .parentIndex = 1},
         {.position{0, 0, 5}, .meshIndex = 4, .parentIndex = 0},
         {.position{0, 0, 5}, .meshIndex = 4, .parentIndex = 2},
         {.position{3e38f, 3e38f, 3e38f}, .scale{3e38f, 3e38f, 3e38f}, .meshIndex = 4, .parentIndex = 3},
         {.rotation{3e38f, 3e38f, 3e38f}, .meshIndex = 3, .isText = true, .textSize = 3e38f}});
    editorState.selectedIndex = 3;
    RenderFrame();
    CHECK(headless.presents == 1);
}

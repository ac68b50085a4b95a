#include "app/frame.h"

#include "editor/theme.h"
#include "platform/headless/headless.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "support/capture.h"
#include "support/picture.h"
#include "support/source_path.h"

#include "app/current_layout.h"
#include "doctest/doctest.h"

#include <algorithm>

constexpr Pixel kDefaultBackground{0x2D2219};
constexpr Pixel kOutline{0x56D6FF};
constexpr Pixel kGridLine{0x5B5E46};

// The viewport of the editor's first window, and its middle.
constexpr Rect kViewport{230, 42, 1040, 688};
constexpr Point kMiddle{635, 365};

static void StartWindow(Scene scene, int32_t width, int32_t height) {
    StartPicture(width, height);
    headless.clientSize = {width, height};
    editorState = EditorState{};
    resetScene(false);
    editorState.scene = std::move(scene);
    editorState.selectedIndex = -1;
    editorState.camera.position = {0, 0, 0};
    editorState.camera.pitch = 0;
    ReleaseCanvasImages();
    icons = {};
    icons.entity = LoadCanvasImage(SourcePath(L"LICENSE"));
    icons.camera = LoadCanvasImage(SourcePath(L"CMakeLists.txt"));
    icons.light = LoadCanvasImage(SourcePath(L".gitignore"));
}

// The editor in its first window with a scene that is seen from the origin along +Z.
static void StartEditor(Scene scene) { StartWindow(std::move(scene), 1360, 820); }

// The game in a window of 200 x 150 pixels.
static void StartGame(Scene scene) {
    StartWindow(std::move(scene), 200, 150);
    editorState.runtimeMode = editorState.playMode = true;
}

static int32_t CountInView(Pixel color) {
    int32_t count = 0;
    for (int32_t y = kViewport.top; y < kViewport.bottom; ++y) {
        for (int32_t x = kViewport.left; x < kViewport.right; ++x) count += PixelAt(x, y) == color;
    }
    return count;
}

// The icons in the viewport; the panels have some of their own.
static std::vector<DrawnImage> Markers() {
    std::vector<DrawnImage> markers;
    for (const DrawnImage& image : headless.images) {
        if (Contains(kViewport, {image.rect.left, image.rect.top})) markers.push_back(image);
    }
    return markers;
}

static GameObject CubeAt(Vec3 position) { return {.position = position, .meshIndex = 0}; }

static bool DrawsAnything(Scene scene) {
    StartGame(std::move(scene));
    RenderFrame();
    return CountOf(kDefaultBackground) != 200 * 150;
}

TEST_CASE("a frame shows the background behind the grid, the grid behind the objects") {
    // Below the eye, where grid lines run.
    StartEditor({CubeAt({0, -1, 5})});
    RenderFrame();
    CHECK(headless.presents == 1);
    CHECK(PixelAt(1000, 60) == kDefaultBackground);
    CHECK(CountOf(kGridLine) > 0);
    const int32_t before = CountOf(kGridLine);
    StartEditor({});
    RenderFrame();
    CHECK(CountOf(kGridLine) > before);  // the cube covered some of it
}

TEST_CASE("the game shows no grid, no icons and no outline") {
    // Also after the game has stopped in the runtime: the view stays as it was.
    for (bool plays : {true, false}) {
        StartGame({CubeAt({0, 0, 5}),
                   {.position{0, 0, 5}, .isEntity = true},
                   {.position{1, 0, 5}, .isLight = true},
                   {.isCamera = true, .active = false, .cameraBackground = 0x112233},
                   {.isCamera = true, .cameraBackground = 0x445566}});
        editorState.playMode = plays;
        editorState.selectedIndex = 0;
        editorState.camera.position = {0, 0, -500};
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
        StartEditor({{.isCamera = true},
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
    StartEditor({{.position{0, 0, 5}, .isEntity = true, .hasShape = false},
                 {.parentIndex = 0, .isEntity = true, .hasShape = false}});
    RenderFrame();
    REQUIRE(Markers().size() == 2);
    CHECK(Markers()[0].rect == Markers()[1].rect);
}

TEST_CASE("an empty scene with a selection of 0 is drawn") {
    StartEditor({});
    editorState.selectedIndex = 0;
    RenderFrame();
    CHECK(headless.presents == 1);
}

TEST_CASE("a picture that is asked for while one is drawn is refused") {
    StartEditor({CubeAt({0, 0, 5})});
    headless.onPresent = [] { RenderFrame(); };
    RenderFrame();
    CHECK(headless.presents == 1);
    headless.onPresent = nullptr;
    RenderFrame();
    CHECK(headless.presents == 2);
}

TEST_CASE("Play mode in the editor keeps the grid and drops outline, markers and their meshes") {
    StartEditor({{.position{0, 0, 5}, .meshIndex = 0, .isEntity = true}, CubeAt({1, 1, 5})});
    editorState.playMode = true;
    editorState.selectedIndex = 1;
    RenderFrame();
    CHECK(CountOf(kGridLine) > 0);
    CHECK(CountOf(kOutline) == 0);
    CHECK(Markers().empty());
    StartGame({{.position{0, 0, 5}, .meshIndex = 0, .isEntity = true}});
    RenderFrame();
    CHECK(CountOf(kDefaultBackground) == 200 * 150);
}

TEST_CASE("in edit mode markers show their icons, each kind its own, and the selected one is larger") {
    StartEditor({{.position{-1, 0, 5}, .isEntity = true},
                 {.position{0, 0, 5}, .isCamera = true},
                 {.position{1, 0, 5}, .isLight = true},
                 {.position{1, 0, 5}, .isLight = true, .active = false}});
    editorState.selectedIndex = 1;
    RenderFrame();
    const std::vector<DrawnImage> markers = Markers();
    REQUIRE(markers.size() == 3);
    CHECK(markers[0].path.ends_with(L"LICENSE"));
    CHECK(markers[1].path.ends_with(L"CMakeLists.txt"));
    CHECK(markers[2].path.ends_with(L".gitignore"));
    CHECK(Width(markers[0].rect) == 24);
    CHECK(Width(markers[1].rect) == 28);
    CHECK(Width(markers[2].rect) == 24);
}

TEST_CASE("markers lie over meshes that come later in the scene, texts only over those before them") {
    StartEditor({{.position{0, 0, 5}, .isEntity = true, .hasShape = false},
                 {.position{0, 0, 5}, .isText = true},
                 CubeAt({0, 0, 5})});
    editorState.selectedIndex = 0;
    RenderFrame();
    // The frame of the selected icon is whole.
    CHECK(PixelAt(kMiddle.x - 17, kMiddle.y - 17) == Pixel{0x78E2FF});
    CHECK(PixelAt(kMiddle.x + 16, kMiddle.y + 16) == Pixel{0x78E2FF});
    StartEditor({CubeAt({0, 0, 5}), {.position{0, 0, 5}, .isText = true}});
    editorState.selectedIndex = 1;
    RenderFrame();
    const int32_t boxOverCube = CountInView(Pixel{0x312924});
    StartEditor({{.position{0, 0, 5}, .isText = true}, CubeAt({0, 0, 5})});
    editorState.selectedIndex = 0;
    RenderFrame();
    CHECK(CountInView(Pixel{0x312924}) < boxOverCube);
}

TEST_CASE("a text that is not selected stands where it comes between the meshes of the scene") {
    const GameObject text{.position{0, 0, 5}, .isText = true, .text = L"MMM"};
    const auto paintedPixels = [](const std::vector<GameObject>& objects) {
        StartEditor(objects);
        headless.paintsTexts = true;
        editorState.selectedIndex = -1;
        RenderFrame();
        return CountInView(Pixel{0xF5F8FC});
    };
    const int32_t over = paintedPixels({CubeAt({0, 0, 5}), text});
    CHECK(over > 0);
    CHECK(paintedPixels({text, CubeAt({0, 0, 5})}) < over);
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
    StartEditor({CubeAt({0, 0, 5})});
    RenderFrame();
    const std::vector<Pixel> plain = headless.pixels;
    for (int32_t index : {-1, 1, 99, INT32_MIN}) {
        StartEditor({CubeAt({0, 0, 5})});
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
    StartEditor({CubeAt({0, 0, 5})});
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
    StartEditor({CubeAt({0, 0, 5}), CubeAt({2, 0, 5})});
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
    for (bool game : {false, true}) {
        StartEditor({CubeAt({0, 0, 5})});
        editorState.runtimeMode = game;
        for (auto [width, height] : {std::pair{1, 1}, {640, 360}, {1360, 820}, {200, 150}}) {
            headless.clientSize = {width, height};
            RenderFrame();
            CHECK(frameBuffer.width == width);
            CHECK(frameBuffer.height == height);
            CHECK(frameBuffer.depth.size() == static_cast<size_t>(width * height));
            const Rect& view = frameBuffer.viewport;
            CHECK((view.left >= 0 && view.top >= 0 && view.right <= width && view.bottom <= height));
            if (game) CHECK(view == Rect{0, 0, width, height});
        }
        const int32_t presents = headless.presents;
        headless.clientSize = {0, 0};
        RenderFrame();
        CHECK(frameBuffer.width == 200);
        CHECK(headless.presents == presents + 1);  // it goes on drawing into the old buffer
    }
}

TEST_CASE("nothing of an earlier frame is left in the next one") {
    constexpr Pixel kOld{0xFE01FD};
    for (bool game : {false, true}) {
        for (auto [width, height] : {std::pair{1, 1}, {30, 20}, {231, 43}, {400, 500}, {1360, 820}}) {
            StartEditor({});
            editorState.runtimeMode = game;
            headless.clientSize = {width, height};
            RenderFrame();
            const std::vector<Pixel> first = headless.pixels;
            std::fill(headless.pixels.begin(), headless.pixels.end(), kOld);
            std::fill(frameBuffer.depth.begin(), frameBuffer.depth.end(), 0.0f);
            RenderFrame();
            CAPTURE(width);
            CHECK(headless.pixels == first);
            CHECK(CountOf(kOld) == 0);
            const Rect& view = frameBuffer.viewport;
            PrepareDepth(view, frameBuffer);
            for (int32_t y = view.top; y < view.bottom; ++y) {
                for (int32_t x = view.left; x < view.right; ++x) REQUIRE(DepthAt(x, y) == kFarDepth);
            }
        }
    }
}

TEST_CASE("the scene lies between the panels, the panels over what leaves it") {
    StartEditor({{.position{0, 0, 1}, .scale{50, 50, 0.1f}, .meshIndex = 0}});
    RenderFrame();
    CHECK(frameBuffer.viewport == kViewport);
    CHECK(PixelAt(100, 400) == kPanelFill);
    CHECK(PixelAt(1200, 400) == kPanelFill);
    CHECK(PixelAt(700, 5) == kTopBarFill);
    CHECK(PixelAt(700, 800) == kBottomPanelFill);
    CHECK(std::ranges::count(headless.texts, L"Hierarchy", &DrawnText::text) == 1);
    CHECK(std::ranges::count(headless.texts, L"Inspector", &DrawnText::text) == 1);
    CHECK(std::ranges::count(headless.texts, L"[EDIT MODE]", &DrawnText::text) == 1);
    editorState.playMode = true;
    RenderFrame();
    CHECK(std::ranges::count(headless.texts, L"[PLAY MODE]", &DrawnText::text) == 1);
}

// The pixels of the bottom panel, which is the one of a window of any size.
static std::vector<Pixel> BottomPanelPixels() {
    const EditorLayout layout = CurrentLayout();
    std::vector<Pixel> pixels;
    for (int32_t y = layout.bottomTop + 1; y < layout.height; ++y) {
        for (int32_t x = 0; x < layout.width; ++x) pixels.push_back(PixelAt(x, y));
    }
    return pixels;
}

TEST_CASE("sections of the Inspector end at the bottom panel") {
    for (const BottomTab tab : {BottomTab::Files, BottomTab::Console}) {
        StartEditor({{.name = L"a"}});
        editorState.selectedIndex = 0;
        editorState.bottomTab = tab;
        RenderFrame();
        const std::vector<Pixel> expected = BottomPanelPixels();
        editorState.scene[0].scripts.assign(40, L"CollectOnTouch");
        RenderFrame();
        const bool isCovered = BottomPanelPixels() == expected;
        CHECK(isCovered);
    }
}

TEST_CASE("the gizmo shows in edit mode only, on a selected object") {
    constexpr Pixel kAxisX{0x4A4BEB};
    StartEditor({CubeAt({0, 0, 5})});
    RenderFrame();
    CHECK(CountInView(kAxisX) == 0);
    editorState.selectedIndex = 0;
    RenderFrame();
    CHECK(CountInView(kAxisX) > 80);
    editorState.playMode = true;
    RenderFrame();
    CHECK(CountInView(kAxisX) == 0);
}

TEST_CASE("without memory for a picture a frame is skipped") {
    StartEditor({CubeAt({0, 0, 5})});
    headless.canvasFails = true;
    headless.clientSize = {300, 300};
    RenderFrame();
    CHECK(headless.presents == 0);
    headless.canvasFails = false;
    RenderFrame();
    CHECK(headless.presents == 1);
}

TEST_CASE("a scene of parents in a cycle and of wild numbers is drawn without harm") {
    StartEditor(
        {{.position{0, 0, 5}, .meshIndex = 0, .parentIndex = 1},
         {.position{0, 0, 5}, .meshIndex = 4, .parentIndex = 0},
         {.position{0, 0, 5}, .meshIndex = 4, .parentIndex = 2},
         {.position{3e38f, 3e38f, 3e38f}, .scale{3e38f, 3e38f, 3e38f}, .meshIndex = 4, .parentIndex = 3},
         {.rotation{3e38f, 3e38f, 3e38f}, .meshIndex = 3, .isText = true, .textSize = 3e38f}});
    editorState.selectedIndex = 3;
    RenderFrame();
    CHECK(headless.presents == 1);
}

// Whole pictures of the editor, beside them the lists of their texts. Nothing in them is turned, so that no
// build's sines take part.
#include "app/current_layout.h"
#include "app/frame.h"
#include "editor/hierarchy.h"
#include "editor/menus.h"
#include "scene/default_scenes.h"
#include "scene/name_entry.h"
#include "scene/number_entry.h"
#include "state/editor_state.h"
#include "support/gestures.h"
#include "support/golden_frame.h"
#include "support/picture.h"

#include "doctest/doctest.h"

// The sample scene without its turns, seen from the height of one unit along +Z.
static void StartEditor(int32_t width, int32_t height) {
    StartPicture(width, height);
    headless.clientSize = {width, height};
    LoadTestIcons();
    editorState = EditorState{};
    resetScene(true);
    for (GameObject& object : editorState.scene) object.rotation = {};
    editorState.camera.position = {0, 1, -6};
    editorState.camera.pitch = 0;
    editorState.bottomTab = BottomTab::Console;
}

// The editor with one more object, which is selected.
static void StartWith(GameObject object, int32_t width, int32_t height) {
    StartEditor(width, height);
    editorState.scene.push_back(std::move(object));
    editorState.selectedIndex = static_cast<int32_t>(editorState.scene.size()) - 1;
}

static GameObject CubeWithEverything() {
    return {.name = L"Everything",
            .position{1.5f, 0.25f, 3},
            .scale{0.5f, 1, 0.5f},
            .meshIndex = 0,
            .hasAnimation = true,
            .hasColor = true,
            .scriptCount = 4,
            .scripts{L"CollectOnTouch", L"PlanePrefabSpawner", L"Mover"},
            .hasCollision = true,
            .hasGravitation = true,
            .hasTexture = true,
            .textureRepeat = true,
            .hasRigidbody = true,
            .velocity{0, -2.5f, 0}};
}

// Draws a frame and compares its pixels, texts and images.
TEST_CASE("the sample scene stands between Hierarchy and Inspector, its cube outlined with a gizmo") {
    StartEditor(1000, 620);
    CHECK(FrameMatchesGolden("editor_default"));
}

TEST_CASE("the Inspector shows every section open") {
    StartWith(CubeWithEverything(), 800, 1560);
    CHECK(FrameMatchesGolden("editor_all_open"));
}

TEST_CASE("the Inspector shows every section closed, but scripts") {
    GameObject object = CubeWithEverything();
    for (bool GameObject::*fold :
         {&GameObject::transformExpanded, &GameObject::shapeExpanded, &GameObject::colorExpanded,
          &GameObject::animationExpanded, &GameObject::collisionExpanded, &GameObject::gravitationExpanded,
          &GameObject::rigidbodyExpanded, &GameObject::textureExpanded}) {
        object.*fold = false;
    }
    StartWith(object, 800, 1160);
    CHECK(FrameMatchesGolden("editor_all_closed"));
}

TEST_CASE("the Inspector of an Entity ends with a hint") {
    StartEditor(800, 480);
    editorState.selectedIndex = 3;
    CHECK(FrameMatchesGolden("editor_entity"));
}

TEST_CASE("a selected Text has a box, a badge and its own section") {
    StartWith({.name = L"Title",
               .position{0, 1, 0},
               .hasShape = false,
               .isText = true,
               .text = L"P\u0159\u00EDb\u011Bh",
               .textSize = 32},
              800, 560);
    CHECK(FrameMatchesGolden("editor_text"));
}

TEST_CASE("a camera shows its background on a small wheel, after a choice on a large one") {
    StartEditor(800, 560);
    editorState.selectedIndex = 0;
    CHECK(FrameMatchesGolden("editor_camera"));
    editorState.scene[0].cameraBackgroundSet = true;
    editorState.scene[0].cameraBackground = 0x8040FF;
    editorState.scene[0].cameraBrightness = 0.25f;
    editorState.scene[0].transformExpanded = false;
    CHECK(FrameMatchesGolden("editor_camera_chosen"));
}

TEST_CASE("a chosen colour shows on a large wheel") {
    StartWith({.name = L"Lamp",
               .position{1.5f, 0, 3},
               .isLight = true,
               .hasShape = false,
               .hasColor = true,
               .color = 0x40FF40,
               .roughness = 0,
               .gloss = 1,
               .colorWheelExpanded = true},
              800, 560);
    CHECK(FrameMatchesGolden("editor_color_chosen"));
}

TEST_CASE("the search for a component shows what it finds") {
    StartEditor(800, 640);
    editorState.componentSearchActive = true;
    editorState.componentSearchText = L"rgb";
    CHECK(FrameMatchesGolden("editor_search"));
}

TEST_CASE("menus open over the panels and stay in the window") {
    StartEditor(800, 480);
    OpenCreateMenu({300, 120}, CurrentLayout());
    CHECK(FrameMatchesGolden("editor_create_menu"));
    OpenObjectMenu(4, {80, 210}, CurrentLayout());
    CHECK(FrameMatchesGolden("editor_object_menu"));
    OpenCreateMenu({799, 479}, CurrentLayout());
    CHECK(FrameMatchesGolden("editor_create_menu_in_corner"));
}

TEST_CASE("entries lie in the middle, on a backdrop that leaves the rest in sight") {
    StartEditor(600, 300);
    StartObjectRename(2);
    CHECK(FrameMatchesGolden("editor_rename"));
    StartTextEdit(2);
    CHECK(FrameMatchesGolden("editor_text_entry"));
    StartFileRename(0, L"Main.scene");
    CHECK(FrameMatchesGolden("editor_file_rename"));
    StartNumberEntry(2, NumberEntry::Field::Rotation, 2);
    CHECK(FrameMatchesGolden("editor_number_entry"));
    StartNumberEntry(2, NumberEntry::Field::TextSize, -1);
    CHECK(FrameMatchesGolden("editor_text_size_entry"));
}

TEST_CASE("a dragged row shows where it would land") {
    StartEditor(800, 480);
    editorState.scene[4].parentIndex = 2;
    CHECK(FrameMatchesGolden("editor_tree"));
    const auto dragTo = [](Point pointer) {
        DropGesture();
        PressHierarchy({100, 213}, CurrentLayout());  // the Entity, below the Platform that is a child
        DragInHierarchy(std::get<HierarchyDrag>(editorState.gesture), pointer);
    };
    dragTo({100, 92 + 28 * 3 + 9});
    CHECK(FrameMatchesGolden("editor_drag_child"));
    dragTo({69, 92 + 28 * 3 + 2});
    CHECK(FrameMatchesGolden("editor_drag_before"));
    dragTo({69, 92 + 28 * 3 + 16});
    CHECK(FrameMatchesGolden("editor_drag_after"));
}

TEST_CASE("Play mode shows the scene through its camera, without markers and what is not active") {
    StartEditor(800, 480);
    editorState.scene[4].active = false;
    editorState.scene[5].parentIndex = 4;
    editorState.playMode = true;
    CHECK(FrameMatchesGolden("editor_play_mode"));
}

TEST_CASE("the Prefab editor's bar has a button back and one to save, brighter with unsaved changes") {
    StartEditor(900, 480);
    editorState.screen = Screen::PrefabEditor;
    editorState.prefabName = L"Coin";
    CHECK(FrameMatchesGolden("editor_prefab"));
    editorState.prefabDirty = true;
    CHECK(FrameMatchesGolden("editor_prefab_unsaved"));
}

TEST_CASE("a dragged edge, another tool and the Files tab are marked") {
    StartEditor(800, 480);
    editorState.bottomTab = BottomTab::Files;
    editorState.tool = Tool::Scale;
    Hold<PanelResize>({.edge = PanelEdge::InspectorLeft});
    CHECK(FrameMatchesGolden("editor_marks"));
}

TEST_CASE("a window too small for the panels still shows all of them") {
    StartEditor(500, 300);
    CHECK(FrameMatchesGolden("editor_small_window"));
}

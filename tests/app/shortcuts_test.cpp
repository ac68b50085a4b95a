#include "support/editor_input.h"
#include "support/gestures.h"

#include "doctest/doctest.h"

#include <initializer_list>
#include <string>
#include <utility>

static size_t ObjectCount() { return editorState.scene.size(); }
static const std::wstring& LastName() { return editorState.scene.back().name; }

TEST_CASE("Tab selects the next object, after the last the first, from no selection the first") {
    for (const auto& [before, after] : {std::pair{0, 1}, {4, 5}, {5, 0}, {-1, 0}, {6, 0}, {700, 0}}) {
        StartEditor();
        editorState.selectedIndex = before;
        TapKey(kKeyTab);
        CHECK(editorState.selectedIndex == after);
        CHECK(editorState.statusMessage == L"Vybran dalsi objekt v Hierarchy.");
    }
}

TEST_CASE("Tab in an empty scene does nothing and says nothing") {
    StartEditor();
    ShowScene({}, -1);
    TapKey(kKeyTab);
    CHECK(editorState.selectedIndex == -1);
    CHECK(editorState.statusMessage == L"untouched");
}

TEST_CASE("F1, F2 and F3 choose the tool") {
    StartEditor();
    struct {
        uint32_t key;
        Tool tool;
        const wchar_t* message;
    } cases[] = {{kKeyF2, Tool::Rotate, L"Tool prepnut na Rotate."},
                 {kKeyF3, Tool::Scale, L"Tool prepnut na Scale."},
                 {kKeyF1, Tool::Move, L"Tool prepnut na Move."}};
    for (const auto& [key, tool, message] : cases) {
        TapKey(key);
        CHECK(editorState.tool == tool);
        CHECK(editorState.statusMessage == message);
    }
}

TEST_CASE("a digit selects the object of that place, when there is one") {
    StartEditor();
    ShowScene(Scene(4), 2);
    TapKey('5');
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.statusMessage == L"untouched");
    TapKey('0');
    CHECK(editorState.selectedIndex == 2);
    TapKey('4');
    CHECK(editorState.selectedIndex == 3);
    CHECK(editorState.statusMessage == L"Objekt vybran ciselne.");
    TapKey('1');
    CHECK(editorState.selectedIndex == 0);
    ShowScene(Scene(12), 0);
    TapKey('9');
    CHECK(editorState.selectedIndex == 8);
}

TEST_CASE("G adds a cube, Delete takes it away again, Ctrl+Z brings it back") {
    StartEditor();
    TapKey('G');
    REQUIRE(ObjectCount() == 7);
    CHECK(LastName() == L"GameObject_06");
    CHECK(editorState.selectedIndex == 6);
    TapKey(kKeyDelete);
    CHECK(ObjectCount() == 6);
    CHECK(editorState.selectedIndex == 5);
    CHECK(editorState.statusMessage == L"Vybrany objekt byl smazan.");
    TapWithControl('Z');
    REQUIRE(ObjectCount() == 7);
    CHECK(editorState.selectedIndex == 6);
    TapWithControl('Z');
    CHECK(ObjectCount() == 6);
    TapWithControl('Z');
    CHECK(editorState.statusMessage == L"Ctrl+Z: neni co vratit.");
}

TEST_CASE("the two first objects are not deleted by Delete") {
    for (const int32_t object : {0, 1}) {
        StartEditor();
        editorState.selectedIndex = object;
        TapKey(kKeyDelete);
        CHECK(ObjectCount() == 6);
        CHECK(editorState.statusMessage ==
              L"Game Camera a Directional Light jsou chranene editorove objekty.");
    }
}

TEST_CASE("the 65th change drops the oldest step of the history") {
    StartEditor();
    for (int i = 0; i < 65; ++i) TapKey('G');
    for (int i = 0; i < 64; ++i) TapWithControl('Z');
    CHECK(ObjectCount() == 7);  // the first cube stays
    CHECK(editorState.statusMessage == L"Ctrl+Z: posledni zmena sceny byla vracena.");
    TapWithControl('Z');
    CHECK(ObjectCount() == 7);
    CHECK(editorState.statusMessage == L"Ctrl+Z: neni co vratit.");
}

TEST_CASE("Ctrl+C, Ctrl+V and Ctrl+D copy, paste and duplicate") {
    StartEditor();
    TapWithControl('V');
    CHECK(ObjectCount() == 6);
    CHECK(editorState.statusMessage == L"Ctrl+V: schranky objektu je prazdna.");
    TapWithControl('C');
    CHECK(editorState.statusMessage == L"Ctrl+C: objekt zkopirovan: PlayerCube");
    TapWithControl('V');
    TapWithControl('V');
    REQUIRE(ObjectCount() == 8);
    CHECK(editorState.scene[6].name == L"PlayerCube_Paste");
    CHECK(editorState.scene[7].name == L"PlayerCube_Paste");
    CHECK(editorState.scene[6].position == editorState.scene[7].position);
    TapWithControl('D');
    REQUIRE(ObjectCount() == 9);
    CHECK(LastName() == L"PlayerCube_Paste_Copy");
    CHECK(editorState.statusMessage == L"Objekt byl duplikovan.");
}

TEST_CASE("without a selection nothing is copied, duplicated or deleted") {
    for (const int32_t selected : {-1, 6, 700}) {
        StartEditor();
        editorState.selectedIndex = selected;
        TapWithControl('D');
        TapKey(kKeyDelete);
        CHECK(editorState.statusMessage == L"untouched");
        TapWithControl('C');
        CHECK(editorState.statusMessage == L"Ctrl+C: neni vybrany objekt.");
        CHECK_FALSE(editorState.clipboardObject.has_value());
        CHECK(ObjectCount() == 6);
        CHECK(editorState.undoSteps.empty());
    }
}

TEST_CASE("with Ctrl the keys of plain commands do nothing") {
    for (const uint32_t key : {uint32_t{'G'}, uint32_t{'P'}, uint32_t{'1'}, uint32_t{kKeyTab},
                               uint32_t{kKeyDelete}, uint32_t{kKeyF2}, uint32_t{'W'}, uint32_t{'X'}}) {
        CAPTURE(key);
        StartEditor();
        TapWithControl(key);
        CHECK(ObjectCount() == 6);
        CHECK(editorState.selectedIndex == 2);
        CHECK(editorState.tool == Tool::Move);
        CHECK_FALSE(editorState.playMode);
        CHECK(editorState.statusMessage == L"untouched");
    }
}

TEST_CASE("what is typed with AltGr runs no command on any screen") {
    for (const Screen screen : {Screen::SceneEditor, Screen::PrefabEditor, Screen::BlueprintEditor}) {
        StartEditor();
        TapWithControl('C');
        TapKey('G');
        editorState.screen = screen;
        editorState.statusMessage = L"untouched";
        for (uint32_t key = 0; key < 300; ++key) {
            if (key == kKeyEscape) continue;
            CAPTURE(key);
            TapWithAltGr(key);
            CHECK(editorState.statusMessage == L"untouched");
        }
        CHECK(ObjectCount() == 7);
        CHECK(editorState.undoSteps.size() == 1);
        CHECK(editorState.selectedIndex == 6);
        CHECK_FALSE(editorState.playMode);
        CHECK(headless.prompts.empty());
    }
}

TEST_CASE("without Ctrl the letters of its commands do nothing, and neither does any other key") {
    StartEditor();
    editorState.clipboardObject = GameObject{};
    ShowScene(Scene(400), 0);
    for (uint32_t key = 0; key < 300; ++key) {
        const bool isCommand = key == 'G' || key == 'P' || (key >= '1' && key <= '9') || key == kKeyTab ||
                               key == kKeyDelete || key == kKeyEscape || (key >= kKeyF1 && key <= kKeyF3);
        if (!isCommand) TapKey(key);
    }
    CHECK(ObjectCount() == 400);
    CHECK(editorState.selectedIndex == 0);
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.statusMessage == L"untouched");
    CHECK_FALSE(headless.quitRequested);
}

TEST_CASE("Shift changes nothing about a plain command") {
    StartEditor();
    headless.shiftIsHeld = true;
    TapKey('G');
    CHECK(ObjectCount() == 7);
}

TEST_CASE("a held command key acts once") {
    StartEditor();
    for (int i = 0; i < 5; ++i) HandleInput({.kind = InputKind::KeyDown, .key = 'G', .isRepeat = i > 0});
    CHECK(ObjectCount() == 7);
    CHECK(editorState.keyDown['G']);
    HandleInput({.kind = InputKind::KeyUp, .key = 'G'});
    CHECK_FALSE(editorState.keyDown['G']);
}

TEST_CASE("P plays and P again brings scene, camera and selection back") {
    StartEditor();
    editorState.selectedIndex = 4;
    const Scene scene = editorState.scene;
    const Vec3 camera = editorState.camera.position;
    TapKey('P');
    CHECK(editorState.playMode);
    CHECK(editorState.statusMessage == L"Play mode zapnuty: stav sceny byl ulozen.");
    editorState.scene[2].position.y = -9;
    editorState.camera.position.x = 33;
    TapKey('1');
    TapKey('G');
    TapKey('P');
    CHECK_FALSE(editorState.playMode);
    CHECK(editorState.scene == scene);
    CHECK(editorState.camera.position == camera);
    CHECK(editorState.selectedIndex == 4);
    CHECK(editorState.statusMessage == L"Edit mode zapnuty: scena obnovena do stavu pred spustenim hry.");
}

TEST_CASE("Ctrl+S is refused while playing") {
    StartEditor();
    TapKey('P');
    TapWithControl('S');
    CHECK(editorState.statusMessage == L"Nejdriv vypni Play Mode. Runtime zmeny se do projektu neukladaji.");
}

TEST_CASE("P ends what was being typed and dragged") {
    StartEditor();
    Press(RowAt(3));
    CHECK(headless.mouseIsCaptured);
    TapKey('P');
    CHECK_FALSE(Held<HierarchyDrag>());
    CHECK_FALSE(headless.mouseIsCaptured);
    Release(RowAt(3));
    CHECK(editorState.selectedIndex == 2);
}

TEST_CASE("in the game P stops once and does not start again") {
    StartEditor();
    editorState.runtimeMode = editorState.playMode = true;
    TapKey('P');
    CHECK_FALSE(editorState.playMode);
    CHECK(editorState.statusMessage == L"Edit mode zapnuty.");
    TapKey('P');
    CHECK_FALSE(editorState.playMode);
}

TEST_CASE("P in the Prefab editor is refused, the other keys work there") {
    StartEditor();
    editorState.screen = Screen::PrefabEditor;
    const Scene scene = editorState.scene;
    TapKey('P');
    CHECK_FALSE(editorState.playMode);
    CHECK(editorState.scene == scene);
    CHECK(editorState.statusMessage == L"Play mode se spousti jen ve Scene editoru.");
    TapKey('G');
    CHECK(ObjectCount() == 7);
    CHECK(editorState.prefabDirty);
    TapWithControl('Z');
    TapKey('1');
    TapKey(kKeyDelete);  // nothing is protected in a prefab
    CHECK(ObjectCount() == 5);
}

TEST_CASE("the game takes no notice of an editor's screen for its keys") {
    StartEditor();
    editorState.runtimeMode = editorState.playMode = true;
    editorState.screen = Screen::BlueprintEditor;
    TapKey(kKeyF2);
    CHECK(editorState.tool == Tool::Rotate);
}

TEST_CASE("every key is safe in an empty scene") {
    StartEditor();
    ShowScene({}, 0);
    for (uint32_t key = 0; key < 300; ++key) {
        if (key != kKeyEscape && key != 'G') TapKey(key);
        if (key != 'S' && key != kKeyEscape) TapWithControl(key);
    }
    CHECK(ObjectCount() == 0);
    TapKey('G');
    REQUIRE(ObjectCount() == 1);
    CHECK(LastName() == L"GameObject_00");
    CHECK(editorState.undoSteps.empty());  // an empty scene is never recorded
    TapWithControl('Z');
    CHECK(ObjectCount() == 1);
}

TEST_CASE("a key whose release a dialog has taken does not stay down") {
    StartEditor();
    headless.onDialog = [] {  // Ctrl and the letter are let go while it is open
        HandleInput({.kind = InputKind::FocusLost});
        headless.controlIsHeld = false;
    };
    headless.controlIsHeld = true;
    HandleInput({.kind = InputKind::KeyDown, .key = 'O'});
    CHECK(headless.prompts.size() == 1);
    CHECK_FALSE(editorState.keyDown['O']);
}

// The Blueprint editor as its user meets it: opened on a file, driven by mouse and keys, seen by its message,
// its nodes and its file.
#include "blueprint/blueprint_editor.h"

#include "app/main_loop.h"
#include "blueprint/blueprint_file.h"
#include "platform/headless/fault_injection.h"
#include "play/play_mode.h"
#include "support/capture.h"
#include "support/editor_input.h"
#include "support/gestures.h"
#include "support/open_menu.h"
#include "support/random_scene.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <string>
#include <vector>

constexpr Point kSceneButton{50, 20}, kSaveButton{150, 20};

// A file with these lines behind its header, opened in a window of 1360 x 820: the canvas ends at 1080.
struct OpenBlueprint {
    ScratchFolder folder{};
    std::wstring path = folder / L"Files\\Doors.blueprint";

    explicit OpenBlueprint(const std::string& lines, int32_t width = 1360, int32_t height = 820) {
        StartEditor(width, height);
        editorState.projectRoot = folder.path;
        PutFile(path, "ZELENGINE_BLUEPRINT\t1\n" + lines);
        OpenBlueprintEditor(path);
        editorState.statusMessage = L"untouched";
        RenderFrame();
    }
};

// What is written for these lines.
static std::string FileOf(const std::string& lines) {
    return "\xEF\xBB\xBFZELENGINE_BLUEPRINT\t1\r\n" + lines;
}

constexpr const char* kTwoNodes = "NODE\t1\tA\t100\t100\nNODE\t2\tB\t150\t120\n";
constexpr Point kOnFirst{335, 150}, kOnSecond{390, 230};

static const std::vector<BlueprintNode>& Nodes() { return editorState.blueprintNodes; }
static Point PlaceOf(size_t node) { return {Nodes()[node].x, Nodes()[node].y}; }
static const std::wstring& Message() { return editorState.statusMessage; }
static bool IsOpen() { return editorState.screen == Screen::BlueprintEditor; }

// Opening.

TEST_CASE("opening a Blueprint shows its nodes and its path below the project") {
    const ScratchFolder folder;
    StartEditor();
    editorState.projectRoot = folder.path;
    PutFile(folder / L"Files\\Logic\\Doors.blueprint", "NODE\t4\tA\t1\t2\n");
    editorState.menu = PopupMenu{.kind = MenuKind::AddNode};
    editorState.componentSearchActive = true;
    Hold<FilesDrag>();
    headless.mouseIsCaptured = true;
    editorState.blueprintDirty = true;  // of no document
    CHECK(OpenBlueprintEditor(folder / L"Files\\Logic\\Doors.blueprint"));

    CHECK(IsOpen());
    REQUIRE(Nodes().size() == 1);
    CHECK(Nodes()[0].title == L"A");
    CHECK(editorState.blueprintPath == folder / L"Files\\Logic\\Doors.blueprint");
    CHECK(editorState.blueprintShownPath == L"Files\\Logic\\Doors.blueprint");
    CHECK(editorState.blueprintName == L"Doors.blueprint");
    CHECK(Message() == L"Otevren Blueprint editor: Doors.blueprint");
    CHECK_FALSE(editorState.blueprintDirty);
    CHECK_FALSE(GestureIsUnderWay());
    CHECK_FALSE(headless.mouseIsCaptured);
    CHECK_FALSE(MenuIsOpen(MenuKind::Create));
    CHECK_FALSE(MenuIsOpen(MenuKind::AddNode));
    CHECK_FALSE(editorState.componentSearchActive);
}

TEST_CASE("a Blueprint outside the project is shown with its whole path") {
    const ScratchFolder folder;
    StartEditor();
    editorState.projectRoot = folder / L"Project";
    OpenBlueprintEditor(folder / L"Other.blueprint");
    CHECK(editorState.blueprintShownPath == folder / L"Other.blueprint");
}

TEST_CASE("a Blueprint without a file opens with the default pair, and saving makes the file") {
    const ScratchFolder folder;
    StartEditor();
    CHECK(OpenBlueprintEditor(folder / L"New.blueprint"));
    CHECK(Nodes().size() == 2);
    TapWithControl('S');
    CHECK(Message() == L"Blueprint ulozen: New.blueprint");
    CHECK(FileBytes(folder / L"New.blueprint") ==
          FileOf("NODE\t1\tEvent BeginPlay\t130\t120\r\nNODE\t2\tPrint String\t430\t120\r\n"));
}

TEST_CASE("a game stops before a Blueprint opens, and its scene is put back") {
    const ScratchFolder folder;
    StartEditor();
    const Scene scene = editorState.scene;
    TapKey('P');
    REQUIRE(editorState.playMode);
    editorState.scene[2].position.y = -50;
    OpenBlueprintEditor(folder / L"New.blueprint");
    CHECK_FALSE(editorState.playMode);
    CHECK(editorState.scene == scene);
    CHECK(IsOpen());
    CHECK(Message() == L"Otevren Blueprint editor: New.blueprint");
}

TEST_CASE("opening a second Blueprint saves the first without asking") {
    const OpenBlueprint first(kTwoNodes);
    RightClick({800, 600});
    Press({820, 650});  // "Event"
    REQUIRE(editorState.blueprintDirty);
    PutFile(first.folder / L"b.blueprint", "NODE\t1\tother\t1\t2\n");
    CHECK(OpenBlueprintEditor(first.folder / L"b.blueprint"));
    CHECK(FileBytes(first.path) ==
          FileOf("NODE\t1\tA\t100\t100\r\nNODE\t2\tB\t150\t120\r\nNODE\t3\tEvent\t570\t556\r\n"));
    CHECK(Nodes().size() == 1);
    CHECK(Message() == L"Otevren Blueprint editor: b.blueprint");
    CHECK(headless.prompts.empty());
}

TEST_CASE("opening a second Blueprint leaves the file of an unchanged first one alone") {
    const OpenBlueprint first(kTwoNodes);
    OpenBlueprintEditor(first.folder / L"b.blueprint");
    CHECK(FileBytes(first.path) == "ZELENGINE_BLUEPRINT\t1\n" + std::string(kTwoNodes));
}

TEST_CASE("a second Blueprint does not open while the first cannot be saved") {
    const OpenBlueprint first(kTwoNodes);
    RightClick({800, 600});
    Press({820, 650});
    fileFaults.freeBytes = 0;
    CHECK_FALSE(OpenBlueprintEditor(first.folder / L"b.blueprint"));
    CHECK(Message() == L"Blueprint se nepodarilo ulozit.");
    CHECK(editorState.blueprintPath == first.path);
    CHECK(Nodes().size() == 3);
    CHECK(editorState.blueprintDirty);
}

// Saving and leaving.

TEST_CASE("Ctrl+S and the Save button write the file and say its name") {
    for (const bool button : {false, true}) {
        const OpenBlueprint open(kTwoNodes);
        editorState.blueprintDirty = true;
        button ? Click(kSaveButton) : TapWithControl('S');
        CHECK(Message() == L"Blueprint ulozen: Doors.blueprint");
        CHECK_FALSE(editorState.blueprintDirty);
        CHECK(FileBytes(open.path) == FileOf("NODE\t1\tA\t100\t100\r\nNODE\t2\tB\t150\t120\r\n"));
        CHECK(IsOpen());
    }
}

TEST_CASE("a save that fails says so and keeps the changes") {
    const OpenBlueprint open(kTwoNodes);
    editorState.blueprintDirty = true;
    fileFaults.freeBytes = 10;
    TapWithControl('S');
    CHECK(Message() == L"Blueprint se nepodarilo ulozit.");
    CHECK(editorState.blueprintDirty);
    CHECK(FileBytes(open.path) == "ZELENGINE_BLUEPRINT\t1\n" + std::string(kTwoNodes));
    fileFaults = {};
    TapWithControl('S');
    CHECK(Message() == L"Blueprint ulozen: Doors.blueprint");
    CHECK_FALSE(editorState.blueprintDirty);
}

TEST_CASE("without an open file there is nothing to save, and leaving works") {
    const OpenBlueprint open(kTwoNodes);
    editorState.blueprintPath.clear();
    editorState.blueprintDirty = true;
    TapWithControl('S');
    CHECK(Message() == L"Neni otevreny Blueprint.");
    CHECK(editorState.blueprintDirty);
    TapKey(kKeyEscape);
    CHECK_FALSE(IsOpen());
}

TEST_CASE("a file that was removed while it was open is written again") {
    const OpenBlueprint open(kTwoNodes);
    RemoveTree(open.path);
    Drag(kOnSecond, {490, 330});
    CHECK(FileBytes(open.path) == FileOf("NODE\t1\tA\t100\t100\r\nNODE\t2\tB\t250\t220\r\n"));
    RemoveTree(open.folder / L"Files");
    TapWithControl('S');
    CHECK(Message() == L"Blueprint se nepodarilo ulozit.");
}

TEST_CASE("Escape and the Scene button go back to the Scene editor") {
    for (const bool button : {false, true}) {
        const OpenBlueprint open(kTwoNodes);
        RightClick({800, 600});
        button ? Click(kSceneButton) : TapKey(kKeyEscape);
        CHECK(editorState.screen == Screen::SceneEditor);
        CHECK(Message() == L"Zpet do Scene editoru.");
        CHECK_FALSE(headless.quitRequested);
        CHECK(editorState.blueprintPath.empty());
        CHECK_FALSE(MenuIsOpen(MenuKind::AddNode));
        CHECK(FileBytes(open.path) == "ZELENGINE_BLUEPRINT\t1\n" + std::string(kTwoNodes));
    }
}

TEST_CASE("leaving saves unsaved changes without asking") {
    for (const bool button : {false, true}) {
        const OpenBlueprint open("NODE\t1\tA\t100\t100\n");
        RightClick({800, 600});
        Press({820, 650});
        button ? Click(kSceneButton) : TapKey(kKeyEscape);
        CHECK(editorState.screen == Screen::SceneEditor);
        CHECK(Message() == L"Zpet do Scene editoru.");
        CHECK(headless.prompts.empty());
        CHECK(FileBytes(open.path) == FileOf("NODE\t1\tA\t100\t100\r\nNODE\t2\tEvent\t570\t556\r\n"));
    }
}

TEST_CASE("a Blueprint that cannot be saved is only left without its changes after a Yes") {
    const OpenBlueprint open(kTwoNodes);
    const std::string before = FileBytes(open.path);
    RightClick({800, 600});
    Press({820, 650});
    fileFaults.freeBytes = 0;
    headless.questionAnswers = {Answer::No};
    TapKey(kKeyEscape);
    CHECK(IsOpen());
    headless.questionAnswers = {Answer::Yes};
    TapKey(kKeyEscape);
    CHECK_FALSE(IsOpen());
    CHECK(headless.prompts ==
          std::vector<std::wstring>(2, L"Blueprint se nepodarilo ulozit.\n\nOpustit ho bez ulozeni?"));
    CHECK(headless.captions == std::vector<std::wstring>(2, L"ZelEngine"));
    CHECK(FileBytes(open.path) == before);
}

TEST_CASE("a Blueprint that cannot be saved stays open") {
    for (const bool button : {false, true}) {
        const OpenBlueprint open(kTwoNodes);
        RightClick({800, 600});
        Press({820, 650});
        fileFaults.freeBytes = 0;
        button ? Click(kSceneButton) : TapKey(kKeyEscape);
        CHECK(IsOpen());
        CHECK(Message() == L"Blueprint se nepodarilo ulozit.");
        CHECK(Nodes().size() == 3);
        fileFaults = {};
        button ? Click(kSceneButton) : TapKey(kKeyEscape);
        CHECK_FALSE(IsOpen());
    }
}

TEST_CASE("the two buttons are 82 by 27 pixels") {
    for (const int32_t y : {8, 9, 35, 36}) {
        for (const int32_t x : {13, 14, 95, 96, 103, 104, 185, 186}) {
            CAPTURE(x);
            CAPTURE(y);
            const OpenBlueprint open(kTwoNodes);
            Click({x, y});
            const bool inRow = y == 9 || y == 35;
            const bool scene = inRow && x >= 14 && x <= 95, save = inRow && x >= 104 && x <= 185;
            CHECK(IsOpen() == !scene);
            CHECK(Message() == (scene  ? L"Zpet do Scene editoru."
                                : save ? L"Blueprint ulozen: Doors.blueprint"
                                       : L"untouched"));
        }
    }
}

TEST_CASE("other keys do nothing on the Blueprint screen and are not held") {
    const OpenBlueprint open(kTwoNodes);
    const Scene scene = editorState.scene;
    for (uint32_t key = 0; key < 300; ++key) {
        if (key == kKeyEscape) continue;
        HandleInput({.kind = InputKind::KeyDown, .key = key});
        if (key != 'S') TapWithControl(key);
    }
    CHECK(Message() == L"untouched");
    CHECK(IsOpen());
    CHECK_FALSE(headless.quitRequested);
    CHECK(editorState.scene == scene);
    CHECK(editorState.keyDown == decltype(editorState.keyDown){});
}

TEST_CASE("Escape held down leaves the Blueprint and does not end the program too") {
    const OpenBlueprint open(kTwoNodes);
    HandleInput({.kind = InputKind::KeyDown, .key = kKeyEscape});
    for (int i = 0; i < 9; ++i)
        HandleInput({.kind = InputKind::KeyDown, .key = kKeyEscape, .isRepeat = true});
    CHECK_FALSE(IsOpen());
    CHECK_FALSE(headless.quitRequested);
    HandleInput({.kind = InputKind::KeyUp, .key = kKeyEscape});
    TapKey(kKeyEscape);
    CHECK(headless.quitRequested);
}

TEST_CASE("Ctrl+S held down saves once") {
    const OpenBlueprint open(kTwoNodes);
    TapWithControl('S');
    editorState.statusMessage = L"before";
    headless.controlIsHeld = true;
    HandleInput({.kind = InputKind::KeyDown, .key = 'S', .isRepeat = true});
    headless.controlIsHeld = false;
    CHECK(Message() == L"before");
}

TEST_CASE("behind the Project Hub and in the game the Blueprint screen takes no input") {
    for (const bool hub : {false, true}) {
        const OpenBlueprint open(kTwoNodes);
        (hub ? editorState.hubVisible : editorState.runtimeMode) = true;
        Press(kOnSecond);
        CHECK_FALSE(Held<BlueprintDrag>());
        PressRightAt({800, 600});
        CHECK_FALSE(MenuIsOpen(MenuKind::AddNode));
        TapKey(kKeyEscape);
        CHECK(IsOpen());
    }
}

// Dragging.

TEST_CASE("a node follows the pointer from where it was grabbed, and is saved when it is let go") {
    const OpenBlueprint open(kTwoNodes);
    Press(kOnFirst);
    CHECK(Message() == L"Tahni Blueprint node mysi.");
    CHECK(headless.mouseIsCaptured);
    CHECK_FALSE(editorState.blueprintDirty);
    Move({435, 350});
    CHECK(PlaceOf(0) == Point{200, 300});
    CHECK(editorState.blueprintDirty);
    Move({436, 351});
    CHECK(PlaceOf(0) == Point{201, 301});
    Release({436, 351});
    CHECK(Message() == L"Blueprint ulozen: Doors.blueprint");
    CHECK_FALSE(editorState.blueprintDirty);
    CHECK_FALSE(headless.mouseIsCaptured);
    CHECK(FileBytes(open.path) == FileOf("NODE\t1\tA\t201\t301\r\nNODE\t2\tB\t150\t120\r\n"));
    Move({600, 600});
    CHECK(PlaceOf(0) == Point{201, 301});
    CHECK(PlaceOf(1) == Point{150, 120});
}

TEST_CASE("where nodes overlap the later one is grabbed, and dragging does not change their order") {
    const OpenBlueprint open(kTwoNodes);
    Drag({385, 170}, {485, 270});  // both lie there
    CHECK(PlaceOf(0) == Point{100, 100});
    CHECK(PlaceOf(1) == Point{250, 220});
    Drag({385, 170}, {485, 270});  // now only the first does
    CHECK(PlaceOf(0) == Point{200, 200});
    Drag({490, 300}, {500, 300});  // and they overlap again
    CHECK(PlaceOf(1) == Point{260, 220});
}

TEST_CASE("a node stays within the drag limits, also with the pointer outside the window") {
    struct {
        Point to, place;
    } cases[] = {
        {{-400, -400}, {8, 8}},     {{5000, 400}, {648, 350}}, {{435, 5000}, {200, 682}},
        {{5000, 5000}, {648, 682}}, {{243, 58}, {8, 8}},       {{244, 59}, {9, 9}},
        {{883, 732}, {648, 682}},   {{882, 731}, {647, 681}},
    };
    for (const auto& [to, place] : cases) {
        CAPTURE(to.x);
        CAPTURE(to.y);
        const OpenBlueprint open(kTwoNodes);
        Press(kOnFirst);  // 5 and 6 pixels from its corner
        Move({-9999, 9999});
        Move(to);
        CHECK(PlaceOf(0) == place);
        Release(to);
        CHECK(Message() == L"Blueprint ulozen: Doors.blueprint");
    }
}

TEST_CASE("a node that was dragged beyond a limit follows the pointer back") {
    const OpenBlueprint open(kTwoNodes);
    Press(kOnFirst);
    Move({-5000, 5000});
    Move(kOnFirst);
    CHECK(PlaceOf(0) == Point{100, 100});
}

TEST_CASE("letting go of a node saves, moved or not") {
    const OpenBlueprint open(kTwoNodes);
    Press(kOnFirst);
    CHECK(Message() == L"Tahni Blueprint node mysi.");
    CHECK(FileBytes(open.path) == "ZELENGINE_BLUEPRINT\t1\n" + std::string(kTwoNodes));
    Release(kOnFirst);
    CHECK(Message() == L"Blueprint ulozen: Doors.blueprint");
    CHECK(FileBytes(open.path) == FileOf("NODE\t1\tA\t100\t100\r\nNODE\t2\tB\t150\t120\r\n"));
}

TEST_CASE("the release of the left button saves a node that the menu has added") {
    const OpenBlueprint open(kTwoNodes);
    RightClick({800, 600});
    Press({820, 650});
    REQUIRE(Nodes().size() == 3);
    CHECK(editorState.blueprintDirty);
    Release({820, 650});
    CHECK_FALSE(editorState.blueprintDirty);
    CHECK(Message() == L"Blueprint ulozen: Doors.blueprint");
    CHECK(FileBytes(open.path) ==
          FileOf("NODE\t1\tA\t100\t100\r\nNODE\t2\tB\t150\t120\r\nNODE\t3\tEvent\t570\t556\r\n"));
}

TEST_CASE("a release that held nothing, with nothing changed, saves nothing") {
    const OpenBlueprint open(kTwoNodes);
    Click({700, 700});
    RightClick({800, 600});
    Click({700, 200});  // closes the menu
    CHECK(Message() == L"Blueprint: vyber node k pridani.");
    CHECK(FileBytes(open.path) == "ZELENGINE_BLUEPRINT\t1\n" + std::string(kTwoNodes));
}

TEST_CASE("a press beside all nodes, on palette and details does nothing") {
    const OpenBlueprint open("NODE\t1\tA\t100\t100\nNODE\t2\tB\t-50\t300\nNODE\t3\tC\t800\t300\n");
    for (const Point at : {Point{700, 700}, {150, 400}, {1100, 400}, {32, 140}, {700, 20}}) {
        Press(at);
        CHECK_FALSE(Held<BlueprintDrag>());
        CHECK_FALSE(headless.mouseIsCaptured);
        Release(at);
    }
    CHECK(Message() == L"untouched");
    Press({231, 400});  // what the palette leaves of the second
    CHECK((Held<BlueprintDrag>() && Held<BlueprintDrag>()->node == 1));
}

TEST_CASE("a double click is two presses") {
    const OpenBlueprint open(kTwoNodes);
    Click(kOnFirst);
    SendMouse(InputKind::LeftDoubleClick, kOnFirst);
    CHECK(Held<BlueprintDrag>());
    Move({345, 150});
    CHECK(PlaceOf(0) == Point{110, 100});
    Release({345, 150});
    CHECK(IsOpen());
}

TEST_CASE("losing the mouse or the focus ends a drag, and the next release saves its changes") {
    for (const bool focus : {false, true}) {
        const OpenBlueprint open(kTwoNodes);
        Press(kOnFirst);
        Move({435, 350});
        focus ? LoseFocus() : LoseMouse();
        CHECK_FALSE(Held<BlueprintDrag>());
        CHECK_FALSE(headless.mouseIsCaptured);
        Move({600, 600});
        CHECK(PlaceOf(0) == Point{200, 300});
        CHECK(editorState.blueprintDirty);
        Release({600, 600});
        CHECK_FALSE(editorState.blueprintDirty);
        CHECK(FileBytes(open.path) == FileOf("NODE\t1\tA\t200\t300\r\nNODE\t2\tB\t150\t120\r\n"));
    }
}

TEST_CASE("Escape in a drag leaves and lets go of the mouse") {
    const OpenBlueprint open(kTwoNodes);
    Press(kOnFirst);
    Move({435, 350});
    TapKey(kKeyEscape);
    CHECK_FALSE(IsOpen());
    CHECK_FALSE(headless.mouseIsCaptured);
    CHECK_FALSE(Held<BlueprintDrag>());
    Move({500, 400});
    Release({500, 400});
    CHECK(FileBytes(open.path) == FileOf("NODE\t1\tA\t200\t300\r\nNODE\t2\tB\t150\t120\r\n"));
}

TEST_CASE("during a drag the right button and another left press do nothing") {
    const OpenBlueprint open(kTwoNodes);
    Press(kOnFirst);
    RightClick({800, 600});
    Press(kSceneButton);
    CHECK(IsOpen());
    CHECK_FALSE(MenuIsOpen(MenuKind::AddNode));
    CHECK((Held<BlueprintDrag>() && Held<BlueprintDrag>()->node == 0));
}

// The Add Node menu.

TEST_CASE("an item's row is 28 pixels high, across the menu, from 36 below the menu's top") {
    const OpenBlueprint open(kTwoNodes);
    struct {
        int32_t y, item;  // from the menu's top
    } cases[] = {{0, -1}, {9, -1}, {35, -1}, {36, 0},   {63, 0},  {64, 1},
                 {91, 1}, {92, 2}, {119, 2}, {120, -1}, {121, -1}};
    const std::wstring titles[] = {L"Event", L"Print String", L"Branch"};
    for (const auto& [y, item] : cases) {
        for (const int32_t x : {500, 689}) {
            CAPTURE(x);
            CAPTURE(y);
            const size_t before = Nodes().size();
            RightClick({500, 300});
            Press({x, 300 + y});
            REQUIRE(Nodes().size() == before + (item >= 0 ? 1 : 0));
            if (item >= 0) CHECK(Nodes().back().title == titles[item]);
            Release({x, 300 + y});
        }
    }
}

TEST_CASE("the menu's first item is drawn from a window height of 114 pixels on") {
    // The menu stays 52 pixels below the top and 8 above the bottom; the item begins 36 below the menu's top
    // and is drawn where 18 pixels of it fit.
    const OpenBlueprint open(kTwoNodes);
    const auto events = [](int32_t height) {
        headless.clientSize = {1360, height};
        editorState.menu.reset();
        RightClick({500, 60});
        REQUIRE(MenuIsOpen(MenuKind::AddNode));
        headless.texts.clear();
        RenderFrame();
        const int32_t inMenu = editorState.menu->corner.x;
        return std::ranges::count_if(headless.texts, [&](const DrawnText& text) {
            return text.text == L"Event" && text.x >= inMenu && text.x < inMenu + 60;
        });
    };
    CHECK(events(114) == events(113) + 1);
}

TEST_CASE("the right button opens the menu on the canvas and closes it elsewhere") {
    struct {
        Point at;
        bool opens;
    } cases[] = {
        {{230, 44}, true},   {{229, 44}, false},   {{230, 43}, false},
        {{1079, 819}, true}, {{1080, 400}, false}, {{1079, 820}, false},
        {{100, 400}, false}, {{1200, 400}, false}, {{50, 20}, false},
    };
    for (const bool before : {false, true}) {
        for (const auto& [at, opens] : cases) {
            CAPTURE(at.x);
            CAPTURE(at.y);
            const OpenBlueprint open(kTwoNodes);
            if (before) RightClick({700, 300});
            editorState.statusMessage = L"before";
            RightClick(at);
            CHECK(MenuIsOpen(MenuKind::AddNode) == opens);
            if (opens) CHECK(OpenMenuState().corner == at);
            CHECK(Message() == (opens ? L"Blueprint: vyber node k pridani." : L"before"));
            CHECK_FALSE(headless.mouseIsCaptured);
        }
    }
}

TEST_CASE("an item of the menu adds its node after the others and closes the menu") {
    constexpr const wchar_t* kTitles[] = {L"Event", L"Print String", L"Branch"};
    for (int32_t item = 0; item < 3; ++item) {
        const OpenBlueprint open("NODE\t9\tA\t1\t2\nNODE\t4\tB\t3\t4\n");
        RightClick({500, 300});
        Press({505, 336 + 28 * item + 12});
        CHECK_FALSE(MenuIsOpen(MenuKind::AddNode));
        CHECK_FALSE(Held<BlueprintDrag>());
        CHECK(editorState.blueprintDirty);
        REQUIRE(Nodes().size() == 3);
        CHECK(Nodes()[2].id == 10);
        CHECK(Nodes()[2].title == kTitles[item]);
        CHECK(PlaceOf(2) == Point{270, 256});
    }
}

TEST_CASE("a press in the menu that hits no item, and one outside, only close it") {
    struct {
        Point at;
    } cases[] = {{{505, 301}}, {{505, 335}}, {{505, 420}}, {{505, 421}}, {{499, 350}},
                 {{690, 350}}, {{505, 299}}, {{505, 422}}, {kOnFirst}};
    for (const auto& [at] : cases) {
        CAPTURE(at.x);
        CAPTURE(at.y);
        const OpenBlueprint open(kTwoNodes);
        RightClick({500, 300});
        Click(at);
        CHECK_FALSE(MenuIsOpen(MenuKind::AddNode));
        CHECK_FALSE(Held<BlueprintDrag>());
        CHECK(Nodes().size() == 2);
        CHECK_FALSE(editorState.blueprintDirty);
    }
}

TEST_CASE("the first pixel of the first row and the last of the last add a node") {
    for (const auto& [at, title] :
         {std::pair{Point{500, 336}, L"Event"}, std::pair{Point{689, 419}, L"Branch"}}) {
        const OpenBlueprint open(kTwoNodes);
        RightClick({500, 300});
        Click(at);
        REQUIRE(Nodes().size() == 3);
        CHECK(Nodes()[2].title == title);
    }
}

TEST_CASE("the menu lies over the nodes, the buttons of the top bar over the menu") {
    const OpenBlueprint open(kTwoNodes);
    RightClick({300, 100});
    Click({340, 150});  // "Event", over the first node
    CHECK(Nodes().size() == 3);
    RightClick({300, 100});
    Click(kSaveButton);
    CHECK(Message() == L"Blueprint ulozen: Doors.blueprint");
    CHECK_FALSE(MenuIsOpen(MenuKind::AddNode));
}

TEST_CASE("a menu at the edges is pressed where it is drawn") {
    const OpenBlueprint open("NODE\t1\tA\t1\t2\n");
    RightClick({1079, 819});  // drawn at (1079, 690): details lie beside the canvas
    Click({1200, 730});
    REQUIRE(Nodes().size() == 2);
    CHECK(PlaceOf(1) == Point{640, 676});
    RightClick({230, 44});  // drawn at (230, 52)
    Click({400, 90});
    REQUIRE(Nodes().size() == 3);
    CHECK(PlaceOf(2) == Point{12, 12});

    const OpenBlueprint small("NODE\t1\tA\t1\t2\n", 300, 200);
    RightClick({299, 199});  // drawn at (102, 70)
    Click({110, 110});
    REQUIRE(Nodes().size() == 2);
    CHECK(PlaceOf(1) == Point{69, 56});
}

TEST_CASE("if the largest id is in use, a new node gets it too") {
    const OpenBlueprint open("NODE\t2147483647\tA\t1\t2\n");
    RightClick({500, 300});
    Click({505, 340});
    REQUIRE(Nodes().size() == 2);
    CHECK(Nodes()[1].id == INT32_MAX);
}

TEST_CASE("the first node of an empty document has the id 1") {
    const OpenBlueprint open("");
    editorState.blueprintNodes.clear();
    RightClick({500, 300});
    Click({505, 340});
    REQUIRE(Nodes().size() == 1);
    CHECK(Nodes()[0].id == 1);
}

// A user who presses anything, anywhere.

// What is wrong, or an empty text.
static const char* Fault() {
    const auto* drag = Held<BlueprintDrag>();
    if (headless.mouseIsCaptured != (drag != nullptr))
        return "the mouse is held without a node, or a node without it";
    if (drag && static_cast<size_t>(drag->node) >= Nodes().size()) return "a node is held that is not there";
    if (drag && MenuIsOpen(MenuKind::AddNode)) return "a node is held under the menu";
    if (!IsOpen() && (MenuIsOpen(MenuKind::AddNode) || drag)) return "something outlived the screen";
    if (!IsOpen() && editorState.blueprintDirty) return "changes were left behind";
    for (const BlueprintNode& node : Nodes()) {
        if (node.id < 1) return "an id below 1";
        if (node.x < 8 || node.y < 8) return "a node beyond the canvas";
    }
    return nullptr;
}

TEST_CASE("whatever is pressed, the screen stays whole and the file matches what counts as saved") {
    constexpr uint32_t kSeed = 20261121;
    CAPTURE(kSeed);
    const OpenBlueprint open(kTwoNodes);
    const Scene scene = editorState.scene;
    RandomSource random(kSeed);
    int32_t compared = 0;
    for (int32_t event = 0; event < 20000; ++event) {
        CAPTURE(event);
        const Point at{random.IntBetween(-50, 1400), random.IntBetween(-50, 900)};
        const Point near = Nodes().empty() ? at : Point{PlaceOf(0).x + 240, PlaceOf(0).y + 60};
        const Point point = random.OneIn(2) ? at : near;
        constexpr InputKind kKinds[] = {InputKind::LeftDown,        InputKind::MouseMove, InputKind::LeftUp,
                                        InputKind::LeftDoubleClick, InputKind::RightDown, InputKind::RightUp};
        SendMouse(kKinds[random.IntBetween(0, 5)], point);
        if (random.OneIn(50)) TapWithControl('S');
        if (random.OneIn(200)) TapKey(static_cast<uint32_t>(random.IntBetween(65, 90)));
        if (random.OneIn(300)) LoseMouse();
        if (random.OneIn(300)) LoseFocus();
        if (random.OneIn(200)) headless.clientSize = {random.IntBetween(1, 1600), random.IntBetween(1, 1000)};
        if (random.OneIn(100)) RenderFrame();
        if (random.OneIn(500)) TapKey(kKeyEscape);
        const char* fault = Fault();
        REQUIRE_MESSAGE(fault == nullptr, fault);
        if (!IsOpen()) OpenBlueprintEditor(open.path);
        if (editorState.blueprintDirty || !random.OneIn(20)) continue;

        const std::vector<BlueprintNode> shown = Nodes();
        editorState.blueprintNodes.clear();
        LoadBlueprint(open.path);
        REQUIRE(Nodes().size() == shown.size());
        for (size_t i = 0; i < shown.size(); ++i) {
            REQUIRE(PlaceOf(i) == Point{shown[i].x, shown[i].y});
            REQUIRE(Nodes()[i].title == shown[i].title);
        }
        ++compared;
    }
    CHECK(compared > 100);
    CHECK(Nodes().size() > 20);
    CHECK(editorState.scene == scene);
    CHECK_FALSE(headless.quitRequested);
}

// The program's end.

TEST_CASE("unsaved changes are saved when the program ends") {
    const OpenBlueprint open(kTwoNodes);
    RightClick({800, 600});
    Press({820, 650});
    REQUIRE(editorState.blueprintDirty);
    // The window is closed: the program's loop ends with its first batch of messages.
    headless.quitRequested = true;
    folderAnswers.executablePath = open.folder / L"ZelEngine.exe";
    folderAnswers.workingFolder = folderAnswers.localDataFolder = open.folder.path;
    RunProgram();
    CHECK(FileBytes(open.path) ==
          FileOf("NODE\t1\tA\t100\t100\r\nNODE\t2\tB\t150\t120\r\nNODE\t3\tEvent\t570\t556\r\n"));
}

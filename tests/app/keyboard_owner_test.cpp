// The entries that take the keyboard while they are open.
#include "app/current_layout.h"
#include "support/capture.h"
#include "support/editor_input.h"
#include "support/open_menu.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <array>
#include <string>

static void OpenRename() { DoubleClick({1100, 100}); }
static void OpenText() {
    editorState.scene[2].isText = editorState.scene[2].textExpanded = true;
    RenderFrame();
    Click(ZoneAt(56));
}
static void OpenNumber() { Click(ZoneAt(20)); }
static void OpenSearch() { Click(ZoneAt(50)); }

constexpr void (*kOpeners[])() = {OpenRename, OpenText, OpenNumber, OpenSearch};

// True when the last frame shows no zone with this action inside the panel.
static bool ZoneIsOutOfReach(int32_t action) {
    const Rect panel = CurrentLayout().inspector;
    return std::ranges::none_of(editorState.inspectorZones, [&](const HitZone& zone) {
        return zone.action == action && zone.rect.top < panel.bottom;
    });
}

static bool AnEntryIsOpen() {
    return editorState.nameEntry.kind != NameEntry::Kind::Closed || editorState.numberEntry.open ||
           editorState.componentSearchActive;
}

TEST_CASE("the system's input method composes while an entry is open, and never else") {
    for (const auto open : kOpeners) {
        StartEditor();
        editorState.selectedIndex = 2;
        RenderFrame();
        HandleInput({.kind = InputKind::Paint});
        CHECK_FALSE(headless.textInputIsAllowed);
        open();
        CHECK(headless.textInputIsAllowed);
        TapKey(kKeyEscape);
        CHECK_FALSE(headless.textInputIsAllowed);
    }
}

TEST_CASE("an open entry keeps every key from the commands") {
    for (const auto open : kOpeners) {
        StartEditor();
        TapKey('G');
        editorState.selectedIndex = 2;
        RenderFrame();
        open();
        REQUIRE(AnEntryIsOpen());
        const Scene scene = editorState.scene;
        const EditorState before = editorState;
        for (uint32_t key = 0; key < 300; ++key) {
            if (key == kKeyEnter || key == kKeyEscape || key == kKeyBackspace) continue;
            HandleInput({.kind = InputKind::KeyDown, .key = key});
            headless.controlIsHeld = true;
            HandleInput({.kind = InputKind::KeyDown, .key = key});
            headless.controlIsHeld = false;
        }
        CHECK(editorState.scene == scene);
        CHECK(editorState.keyDown == std::array<bool, 256>{});
        CHECK(editorState.selectedIndex == 2);
        CHECK(editorState.tool == before.tool);
        CHECK_FALSE(editorState.playMode);
        CHECK(editorState.statusMessage == before.statusMessage);
        CHECK(AnEntryIsOpen());
        TapKey(kKeyEscape);
        CHECK_FALSE(AnEntryIsOpen());
        CHECK_FALSE(headless.quitRequested);
        TapKey(kKeyEscape);
        CHECK(headless.quitRequested);
    }
}

TEST_CASE("what is typed with AltGr goes into the open entry, and Backspace takes it away") {
    for (const auto open : {OpenRename, OpenText, OpenSearch}) {
        StartEditor();
        open();
        REQUIRE(AnEntryIsOpen());
        const Scene scene = editorState.scene;
        const auto typed = [] {
            return editorState.componentSearchActive ? editorState.componentSearchText
                                                     : editorState.nameEntry.text;
        };
        const std::wstring before = typed();
        headless.controlIsHeld = headless.altIsHeld = true;
        HandleInput({.kind = InputKind::KeyDown, .key = 'V'});  // on a Czech keyboard
        Type(L"@");
        CHECK(typed() == before + L"@");
        TapKey(kKeyBackspace);
        CHECK(typed() == before);
        CHECK(editorState.scene == scene);
    }
}

TEST_CASE("while a name or number is typed the mouse does nothing") {
    for (const auto open : {OpenRename, OpenText, OpenNumber}) {
        StartEditor();
        open();
        const EditorState before = editorState;
        for (const Point at : {RowAt(4), Point{230, 300}, Point{260, 100}, ZoneAt(20), ZoneAt(50),
                               Point{60, 710}, Point{635, 365}, Point{-4, 900}}) {
            Drag(at, {at.x + 50, at.y + 30});
            DoubleClick(at);
            RightClick(at);
        }
        CHECK(AnEntryIsOpen());
        CHECK(editorState.scene == before.scene);
        CHECK(editorState.panels == before.panels);
        CHECK(editorState.selectedIndex == before.selectedIndex);
        CHECK(editorState.tool == before.tool);
        CHECK(editorState.statusMessage == before.statusMessage);
        CHECK(editorState.camera.yaw == before.camera.yaw);
        CHECK_FALSE(MenuIsOpen(MenuKind::Create));
        CHECK_FALSE(headless.mouseIsCaptured);
    }
}

TEST_CASE("while components are searched the mouse goes on working") {
    StartEditor();
    OpenSearch();
    Type(L"mass");
    Click({260, 100});
    CHECK(editorState.tool == Tool::Rotate);
    CHECK(editorState.componentSearchActive);
    TapKey(kKeyEnter);
    CHECK(editorState.scene[2].hasRigidbody);
    CHECK_FALSE(editorState.componentSearchActive);
}

TEST_CASE("the search for a component closes when its box is no longer there") {
    struct {
        void (*hide)();
        void (*show)();
    } cases[] = {
        {[] { Click(RowAt(3)); }, [] { Click(RowAt(2)); }},  // an Entity
        {[] { ShowScene({}, -1); }, [] { ShowScene({{.meshIndex = 0}}, 0); }},
        {[] { headless.clientSize.height = 420; }, [] { headless.clientSize.height = 820; }},
        {[] { editorState.scene[2].scriptCount = 1000; }, [] { editorState.scene[2].scriptCount = 0; }},
    };
    for (const auto& [hide, show] : cases) {
        StartEditor();
        OpenSearch();
        Type(L"c");
        hide();
        RenderFrame();
        CHECK(ZoneIsOutOfReach(50));
        Type(L"x");
        TapKey(kKeyF2);
        CHECK(editorState.tool == Tool::Rotate);
        CHECK_FALSE(editorState.componentSearchActive);
        show();
        RenderFrame();
        CHECK_FALSE(editorState.componentSearchActive);
        CHECK(editorState.componentSearchText == L"c");
        TapKey(kKeyF3);
        CHECK(editorState.tool == Tool::Scale);
    }
}

TEST_CASE("the search goes on while the mouse does something else beside it") {
    StartEditor();
    OpenSearch();
    Click(RowAt(4));
    Move({600, 300});
    RenderFrame();
    Type(L"t");
    CHECK(editorState.componentSearchActive);
    CHECK(editorState.componentSearchText == L"t");
}

TEST_CASE("a key that was held when an entry opened is let go by its release") {
    for (const auto open : kOpeners) {
        StartEditor();
        HandleInput({.kind = InputKind::KeyDown, .key = 'W'});
        open();
        CHECK(editorState.keyDown['W']);
        HandleInput({.kind = InputKind::KeyDown, .key = 'W', .isRepeat = true});
        HandleInput({.kind = InputKind::KeyUp, .key = 'W'});
        CHECK_FALSE(editorState.keyDown['W']);
    }
}

TEST_CASE("losing the focus or the mouse leaves an entry open with what was typed") {
    StartEditor();
    OpenRename();
    Type(L"!");
    LoseFocus();
    LoseMouse();
    CHECK(editorState.nameEntry.text == L"PlayerCube!");
    TapKey(kKeyEnter);
    CHECK(editorState.scene[2].name == L"PlayerCube!");
    CHECK(editorState.statusMessage == L"Objekt byl prejmenovan.");
}

TEST_CASE("characters without an open entry go nowhere") {
    StartEditor();
    Type(L"g1\x1b\r");
    CHECK(editorState.scene.size() == 6);
    CHECK(editorState.componentSearchText.empty());
    CHECK(editorState.statusMessage == L"untouched");
    CHECK_FALSE(headless.quitRequested);
}

TEST_CASE("letters of every kind are typed into names and texts, pairs of halves whole") {
    const std::wstring czech = L"\u017dlu\u0165ou\u010dk\u00fd k\u016f\u0148";
    const std::wstring pair{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    for (const auto open : {OpenRename, OpenText}) {
        StartEditor();
        open();
        while (!editorState.nameEntry.text.empty()) TapKey(kKeyBackspace);
        Type(czech + pair + L"!" + pair);
        TapKey(kKeyBackspace);
        CHECK(editorState.nameEntry.text == czech + pair + L"!");
        TapKey(kKeyEnter);
        const GameObject& object = editorState.scene[2];
        CHECK((open == OpenRename ? object.name : object.text) == czech + pair + L"!");
    }
    StartEditor();
    OpenSearch();
    Type(czech + pair);
    CHECK(editorState.componentSearchText == czech + pair);
    TapKey(kKeyBackspace);
    CHECK(editorState.componentSearchText == czech);
}

TEST_CASE("half a pair is never stored, whatever comes after it") {
    constexpr wchar_t kFirst = 0xD83D, kSecond = 0xDE00;
    StartEditor();
    OpenRename();
    while (!editorState.nameEntry.text.empty()) TapKey(kKeyBackspace);
    Type({kSecond, L'a', kFirst, L'b', kFirst, kFirst});
    CHECK(editorState.nameEntry.text == L"ab");
    TapKey(kKeyBackspace);  // parts the halves
    Type({kSecond, L'c'});
    CHECK(editorState.nameEntry.text == L"ac");
    Type({kFirst});
    TapKey(kKeyEnter);
    CHECK(editorState.scene[2].name == L"ac");

    OpenSearch();
    Type({kFirst});
    TapKey(kKeyEscape);
    OpenSearch();
    Type({kSecond});
    CHECK(editorState.componentSearchText.empty());

    OpenNumber();
    const std::wstring before = editorState.numberEntry.text;
    Type({kFirst, kSecond, L'\u017d', L' ', L'e', L'\t', 127, 0});
    CHECK(editorState.numberEntry.text == before);
}

TEST_CASE("the 81st unit of a name, the 33rd of a number and the 41st of a search are dropped") {
    StartEditor();
    OpenRename();
    Type(std::wstring(200, L'x'));
    CHECK(editorState.nameEntry.text.size() == 80);
    TapKey(kKeyEscape);
    OpenNumber();
    Type(std::wstring(200, L'1'));
    CHECK(editorState.numberEntry.text.size() == 32);
    TapKey(kKeyEscape);
    OpenSearch();
    Type(std::wstring(200, L'x'));
    CHECK(editorState.componentSearchText.size() == 40);
}

TEST_CASE("a number is taken from what was typed, or asked for again") {
    struct {
        const wchar_t* typed;
        bool isNumber;
        float value;
    } cases[] = {
        {L"1,5", true, 1.5f},   {L"-2", true, -2},  {L"+.5", true, 0.5f},     {L"3.", true, 3},
        {L"1.2.3", true, 1.2f}, {L"4-7", true, 4},  {L"1e9999", true, 19999},  // letters are not typed
        {L"", false, 0},        {L"-", false, 0},   {L"+.", false, 0},        {L".", false, 0},
        {L"nan", false, 0},     {L"inf", false, 0}, {L"--1", false, 0},       {L",", false, 0},
    };
    for (const auto& [typed, isNumber, value] : cases) {
        CAPTURE(std::string(typed, typed + std::wstring(typed).size()));
        StartEditor();
        OpenNumber();
        while (!editorState.numberEntry.text.empty()) TapKey(kKeyBackspace);
        Type(typed);
        TapKey(kKeyEnter);
        CHECK(editorState.numberEntry.open == !isNumber);
        CHECK(editorState.scene[2].position.x == value);
        CHECK(editorState.undoSteps.size() == (isNumber ? 1 : 0));
        CHECK(editorState.statusMessage ==
              (isNumber ? L"Transform hodnota upravena." : L"Zadej platne cislo."));
    }
}

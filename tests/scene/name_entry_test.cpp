#include "scene/name_entry.h"

#include "scene/undo.h"
#include "support/edited_scene.h"
#include "support/open_menu.h"

#include "doctest/doctest.h"

static void Type(const std::wstring& units) {
    for (const wchar_t unit : units) TypeIntoNameEntry(unit);
}

// Empties the open box and types `text` in its place.
static void TypeInstead(const std::wstring& text) {
    while (!editorState.nameEntry.text.empty()) EraseInNameEntry();
    Type(text);
}

// Half of U+1F600 is D83D, the other half DE00.
static const std::wstring kPair{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};

TEST_CASE("renaming starts with the name and ends with the new one") {
    StartWithSamples();
    editorState.selectedIndex = 4;
    StartObjectRename(2);
    CHECK(NameEntryIsOpen());
    CHECK(editorState.nameEntry.text == L"PlayerCube");
    CHECK(editorState.statusMessage == L"Napis novy nazev, Enter potvrdi a Esc zrusi.");
    TypeInstead(L"  Big Box ");
    CHECK_FALSE(CommitNameEntry().has_value());
    CHECK(editorState.scene[2].name == L"Big Box");
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.statusMessage == L"Objekt byl prejmenovan.");
    CHECK_FALSE(NameEntryIsOpen());
    CHECK(editorState.nameEntry.target == -1);
    CHECK(editorState.nameEntry.text == L"");
    undo();
    CHECK(editorState.scene[2].name == L"PlayerCube");
}

TEST_CASE("whatever collects the renamed object collects it under its new name") {
    StartWithParents({-1, -1, -1, -1});
    editorState.scene[0].collectTarget = L"o2";
    editorState.scene[1].collectTarget = L"o3";
    editorState.scene[2].collectTarget = L"o2";
    StartObjectRename(2);
    TypeInstead(L"coin");
    CommitNameEntry();
    CHECK(editorState.scene[0].collectTarget == L"coin");
    CHECK(editorState.scene[1].collectTarget == L"o3");
    CHECK(editorState.scene[2].collectTarget == L"o2");
    undo();
    CHECK(editorState.scene[0].collectTarget == L"o2");
}

TEST_CASE("naming a nameless object makes nothing collect it") {
    StartWithParents({-1, -1});
    editorState.scene[1].name.clear();
    StartObjectRename(1);
    Type(L"coin");
    CommitNameEntry();
    CHECK(editorState.scene[1].name == L"coin");
    CHECK(editorState.scene[0].collectTarget == L"");
}

TEST_CASE("an empty name leaves the box open") {
    for (const wchar_t* name : {L"", L"   "}) {
        StartWithSamples();
        StartObjectRename(2);
        TypeInstead(name);
        CommitNameEntry();
        CHECK(NameEntryIsOpen());
        CHECK(editorState.scene[2].name == L"PlayerCube");
        CHECK(editorState.undoSteps.empty());
        CHECK(editorState.statusMessage == L"Nazev nesmi byt prazdny.");
    }
}

TEST_CASE("the 81st character of a name is dropped") {
    StartWithSamples();
    StartObjectRename(2);
    TypeInstead(std::wstring(80, L'a') + L"b");
    CHECK(editorState.nameEntry.text == std::wstring(80, L'a'));
}

TEST_CASE("a pair of halves is typed into a name whole or not at all") {
    StartWithSamples();
    StartObjectRename(2);
    TypeInstead(std::wstring(79, L'a') + kPair);
    CHECK(editorState.nameEntry.text == std::wstring(79, L'a'));
    EraseInNameEntry();
    Type(kPair);
    CHECK(editorState.nameEntry.text == std::wstring(78, L'a') + kPair);
    Type(kPair.substr(0, 1));
    CommitNameEntry();
    CHECK(editorState.scene[2].name == std::wstring(78, L'a') + kPair);
}

TEST_CASE("half a surrogate pair typed before a box opens is not part of its text") {
    StartWithSamples();
    StartObjectRename(2);
    Type(kPair.substr(0, 1));
    CancelNameEntry();
    StartObjectRename(3);
    TypeInstead(kPair.substr(1));
    CHECK(editorState.nameEntry.text == L"");
}

TEST_CASE("a name longer than can be typed survives its box") {
    StartWithSamples();
    editorState.scene[2].name = std::wstring(100, L'n');
    StartObjectRename(2);
    Type(L"x");
    CommitNameEntry();
    CHECK(editorState.scene[2].name == std::wstring(100, L'n'));
}

TEST_CASE("cancelling a name changes nothing") {
    StartWithSamples();
    StartObjectRename(2);
    Type(L"x");
    CancelNameEntry();
    CHECK_FALSE(NameEntryIsOpen());
    CHECK(editorState.scene[2].name == L"PlayerCube");
    CHECK(editorState.statusMessage == L"Prejmenovani zruseno.");
}

TEST_CASE("the text of a Text object can be edited, and can become empty") {
    for (const wchar_t* text : {L"Score: 0", L"", L" \t"}) {
        StartWithSamples();
        editorState.scene[2].isText = true;
        StartTextEdit(2);
        CHECK(editorState.nameEntry.text == L"Text");
        TypeInstead(text);
        CommitNameEntry();
        CHECK(editorState.scene[2].text == (text[0] == L' ' ? L"" : text));
        CHECK(editorState.statusMessage == L"Text objektu byl upraven.");
        CHECK_FALSE(NameEntryIsOpen());
        undo();
        CHECK(editorState.scene[2].text == L"Text");
    }
}

TEST_CASE("a name for an object that is gone is dropped") {
    for (const auto start : {StartObjectRename, StartTextEdit}) {
        StartWithSamples();
        start(5);
        editorState.scene.resize(5);
        const Scene before = editorState.scene;
        CommitNameEntry();
        CHECK_FALSE(NameEntryIsOpen());
        CHECK(editorState.scene == before);
        CHECK(editorState.undoSteps.empty());
        CHECK(editorState.statusMessage == L"Prejmenovani zruseno.");
    }
}

TEST_CASE("a name for a file comes back clean, and the caller gives it") {
    StartWithSamples();
    StartFileRename(3, L"Level.scene");
    CHECK(editorState.nameEntry.text == L"Level.scene");
    TypeInstead(L" Level: 2?.scene ");
    const auto rename = CommitNameEntry();
    REQUIRE(rename.has_value());
    CHECK(rename->item == 3);
    CHECK(rename->name == L"Level_ 2_.scene");
    CHECK_FALSE(NameEntryIsOpen());
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("an empty name for a file leaves the box open") {
    StartWithSamples();
    StartFileRename(3, L"a");
    TypeInstead(L"  ");
    CHECK_FALSE(CommitNameEntry().has_value());
    CHECK(NameEntryIsOpen());
    CHECK(editorState.statusMessage == L"Nazev souboru nesmi byt prazdny.");
}

TEST_CASE("a name entry closes the other entries and the menu") {
    StartWithSamples();
    editorState.numberEntry.open = true;
    editorState.componentSearchActive = true;
    editorState.menu = PopupMenu{};
    StartObjectRename(2);
    CHECK_FALSE(editorState.numberEntry.open);
    CHECK_FALSE(editorState.componentSearchActive);
    CHECK_FALSE(MenuIsOpen());
}

TEST_CASE("committing a closed name entry does nothing") {
    StartWithSamples();
    editorState.statusMessage = L"before";
    CHECK_FALSE(CommitNameEntry().has_value());
    CHECK(editorState.statusMessage == L"before");
}

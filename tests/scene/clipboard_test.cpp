#include "scene/clipboard.h"

#include "scene/commands.h"
#include "scene/undo.h"
#include "support/edited_scene.h"

#include "doctest/doctest.h"

TEST_CASE("copying without a selected object says so") {
    for (const int32_t selected : {-1, 6, 99}) {
        StartWithSamples();
        editorState.selectedIndex = selected;
        copySelected();
        CHECK_FALSE(editorState.clipboardObject.has_value());
        CHECK(editorState.statusMessage == L"Ctrl+C: neni vybrany objekt.");
    }
}

TEST_CASE("pasting before the first copy says so") {
    StartWithSamples();
    pasteObject();
    CHECK(editorState.scene.size() == 6);
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.statusMessage == L"Ctrl+V: schranky objektu je prazdna.");
}

TEST_CASE("a pasted object stands diagonally beside the copied one, at rest and selected") {
    StartWithSamples();
    GameObject& cube = editorState.scene[2];
    cube.velocityY = 3;
    cube.velocity = {1, 2, 3};
    cube.scripts = {L"PlayerController"};
    copySelected();
    CHECK(editorState.statusMessage == L"Ctrl+C: objekt zkopirovan: PlayerCube");

    pasteObject();
    GameObject expected = editorState.scene[2];
    expected.name = L"PlayerCube_Paste";
    expected.position = {0.6f, 0.35f, 2.6f};
    expected.velocityY = 0;
    expected.velocity = {};
    CHECK(editorState.scene.back() == expected);
    CHECK(editorState.selectedIndex == 6);
    CHECK(editorState.statusMessage == L"Ctrl+V: objekt vlozen do sceny.");
    undo();
    CHECK(editorState.scene.size() == 6);
}

TEST_CASE("the clipboard keeps the object as it was when it was copied") {
    StartWithSamples();
    copySelected();
    editorState.scene[2].name = L"Other";
    REQUIRE(editorState.clipboardObject.has_value());
    CHECK(editorState.clipboardObject->name == L"PlayerCube");
}

TEST_CASE("pasting twice gives the same name and the same place twice") {
    StartWithSamples();
    copySelected();
    pasteObject();
    pasteObject();
    CHECK(editorState.scene.size() == 8);
    CHECK(editorState.scene[7] == editorState.scene[6]);
    CHECK(editorState.scene[7].name == L"PlayerCube_Paste");
}

TEST_CASE("a pasted child becomes a root when its parent's index is gone") {
    StartWithParents({-1, -1, -1, 4, -1});
    editorState.selectedIndex = 3;
    copySelected();
    editorState.selectedIndex = 4;
    deleteSelected();
    REQUIRE(editorState.scene.size() == 3);
    pasteObject();
    CHECK(editorState.scene.back().parentIndex == -1);
}

TEST_CASE("a pasted child goes under the object that now has its parent's index") {
    StartWithParents({-1, -1, -1, 2, -1, -1});
    editorState.selectedIndex = 3;
    copySelected();
    editorState.selectedIndex = 2;
    deleteSelected();
    pasteObject();
    CHECK(editorState.scene.back().parentIndex == 2);
    CHECK(editorState.scene[2].name == L"o4");
}

TEST_CASE("the clipboard survives a reset of the scene") {
    StartWithSamples();
    copySelected();
    resetScene(false);
    pasteObject();
    CHECK(editorState.scene.back().name == L"PlayerCube_Paste");
}

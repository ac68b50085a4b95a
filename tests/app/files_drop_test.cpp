// Items of the Files page that are dragged somewhere, by press, move and release.
#include "project/asset_list.h"
#include "support/gestures.h"
#include "support/image_bytes.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

constexpr const char* kTriangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";

// Places in the window of 1360 x 820.
constexpr Point kEmptySky{620, 70};
constexpr Point kInspector{1200, 600};
constexpr Point kRightOfWindow{1500, 600};  // the mouse is held

// The page shows a file of each kind. PlayerCube (2) is selected.
static void StartWithFiles(const ScratchFolder& folder) {
    StartProject(folder);
    const std::wstring files = FilesIn(folder) + L"\\";
    PutFile(files + L"Tree.obj", kTriangle);
    PutFile(files + L"Mover.cpp", "");
    PutFile(files + L"wood.png", PngBytes({1, 1, {0xFF102030u}}));
    PutFile(files + L"note.txt", "");
    PutFile(files + L"Level.scene", "");
    editorState.selectedIndex = 2;
    ChooseCreate(CreateItem::Prefab);
    RefreshAssetList();
    RenderFrame();
    editorState.statusMessage = L"untouched";
}

static void DragFileTo(const std::wstring& name, Point place) { Drag(FileNamed(name), place); }

static GameObject& Object(size_t index) { return editorState.scene.at(index); }

TEST_CASE("a model let go over the viewport stands before the camera, over a row below its object") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    const size_t objects = editorState.scene.size();
    DragFileTo(L"Tree.obj", kEmptySky);
    REQUIRE(editorState.scene.size() == objects + 1);
    CHECK(editorState.scene.back().name == L"Tree");
    CHECK(editorState.scene.back().parentIndex == -1);
    RenderFrame();
    DragFileTo(L"Tree.obj", RowAt(3));
    REQUIRE(editorState.scene.size() == objects + 2);
    CHECK(editorState.scene.back().parentIndex == 3);
    DragFileTo(L"Tree.obj", kInspector);
    REQUIRE(editorState.scene.size() == objects + 3);
    CHECK(editorState.scene.back().parentIndex == -1);
}

TEST_CASE("a prefab let go over the viewport is a root, over a row a child of its object") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    const size_t objects = editorState.scene.size();
    DragFileTo(L"PlayerCube.prefab", kEmptySky);
    REQUIRE(editorState.scene.size() == objects + 1);
    CHECK(editorState.scene.back().parentIndex == -1);
    CHECK(editorState.statusMessage == L"Prefab vlozen do sceny: PlayerCube");
    RenderFrame();
    DragFileTo(L"PlayerCube.prefab", RowAt(3));
    REQUIRE(editorState.scene.size() == objects + 2);
    CHECK(editorState.scene.back().parentIndex == 3);
    CHECK(editorState.scene.back().position == Vec3{});
}

TEST_CASE("a prefab let go over the Inspector is what the selected object collects") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    const size_t objects = editorState.scene.size();
    DragFileTo(L"PlayerCube.prefab", kInspector);
    CHECK(editorState.scene.size() == objects);
    CHECK(Object(2).collectPrefab == FilesIn(folder) + L"\\PlayerCube.prefab");
    CHECK(editorState.statusMessage == L"CollectOnTouch prefab nastaven: PlayerCube.prefab");
}

TEST_CASE("the Inspector takes what is let go right of the window, too") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    const size_t objects = editorState.scene.size();
    DragFileTo(L"PlayerCube.prefab", kRightOfWindow);
    CHECK(editorState.scene.size() == objects);
    CHECK(Object(2).collectPrefab == FilesIn(folder) + L"\\PlayerCube.prefab");
    DragFileTo(L"Mover.cpp", {99999, 42});
    CHECK(Object(2).scripts == std::vector<std::wstring>{L"CollectOnTouch", L"Mover"});
    DragFileTo(L"wood.png", {1360, 687});
    CHECK(Object(2).hasTexture);
    for (const int32_t y : {41, 688}) {  // above and below the Inspector
        DragFileTo(L"Mover.cpp", {1500, y});
        CHECK(editorState.statusMessage == L"Script nebyl pusten na objekt.");
    }
}

TEST_CASE("a prefab let go over the Inspector without a selected object is placed") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    const size_t objects = editorState.scene.size();
    editorState.selectedIndex = -1;
    DragFileTo(L"PlayerCube.prefab", kInspector);
    CHECK(editorState.scene.size() == objects + 1);
}

TEST_CASE("a script goes to the object of the row or of the Inspector") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    DragFileTo(L"Mover.cpp", kInspector);
    CHECK(Object(2).scripts.back() == L"Mover");
    CHECK(editorState.statusMessage == L"Script pridan jako vlastnost objektu: Mover");
    DragFileTo(L"Mover.cpp", RowAt(3));
    CHECK(Object(3).scripts.back() == L"Mover");
    CHECK(editorState.selectedIndex == 3);
}

TEST_CASE("an image goes to the object of the row or of the Inspector") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    DragFileTo(L"wood.png", kInspector);
    CHECK(Object(2).hasTexture);
    CHECK(Object(2).texturePath == FilesIn(folder) + L"\\wood.png");
    CHECK(editorState.statusMessage == L"Texture pridana na objekt: wood.png");
    DragFileTo(L"wood.png", RowAt(3));
    CHECK(Object(3).hasTexture);
}

TEST_CASE("a script or an image let go over no object says so") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    for (const Point place : {kEmptySky, Point{100, 680}, EmptyFilesPlace()}) {
        DragFileTo(L"Mover.cpp", place);
        CHECK(editorState.statusMessage == L"Script nebyl pusten na objekt.");
        DragFileTo(L"wood.png", place);
        CHECK(editorState.statusMessage == L"Texture nebyla pustena na objekt.");
    }
}

TEST_CASE("a model or a prefab let go where it came from, or over the top bar, is not placed") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    const size_t objects = editorState.scene.size();
    for (const Point place : {EmptyFilesPlace(), Point{500, 20}}) {
        DragFileTo(L"Tree.obj", place);
        DragFileTo(L"PlayerCube.prefab", place);
    }
    CHECK(editorState.scene.size() == objects);
}

TEST_CASE("folders, scenes and other files are dragged without effect") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    const size_t objects = editorState.scene.size();
    for (const wchar_t* name : {L"note.txt", L"Level.scene", L"scripts"}) {
        for (const Point place : {kEmptySky, RowAt(3), kInspector}) DragFileTo(name, place);
        CHECK(editorState.statusMessage == std::wstring(L"Vybrana polozka projektu: ") + name);
    }
    CHECK(editorState.scene.size() == objects);
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("an item that has left the list since is let go without effect") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    PutFile(FilesIn(folder) + L"\\zz.obj", kTriangle);
    RefreshAssetList();
    REQUIRE(editorState.fileEntries.back().name == L"zz.obj");
    const size_t objects = editorState.scene.size();
    Press(FileNamed(L"zz.obj"));
    Move(kEmptySky);
    editorState.fileEntries.pop_back();
    Release(kEmptySky);
    CHECK(editorState.scene.size() == objects);
}

TEST_CASE("a press becomes a drag six pixels away, counted along both axes") {
    struct {
        Point by;
        bool drags;
    } cases[] = {{{5, 0}, false}, {{3, -2}, false}, {{6, 0}, true}, {{0, -6}, true}, {{-3, 3}, true}};
    for (const auto& [by, drags] : cases) {
        const ScratchFolder folder;
        StartWithFiles(folder);
        const Point at = FileNamed(L"Tree.obj");
        Press(at);
        CHECK(headless.mouseIsCaptured);
        Move({at.x + by.x, at.y + by.y});
        CHECK(IsDragged<FilesDrag>() == drags);
        Move(at);
        CHECK(IsDragged<FilesDrag>() == drags);  // it stays one
        Release(at);
        CHECK_FALSE(Held<FilesDrag>());
        CHECK_FALSE(headless.mouseIsCaptured);
    }
}

TEST_CASE("a drag that loses the mouse or the focus ends without effect") {
    for (const auto lose : {LoseMouse, LoseFocus}) {
        const ScratchFolder folder;
        StartWithFiles(folder);
        const size_t objects = editorState.scene.size();
        Press(FileNamed(L"Tree.obj"));
        Move(kEmptySky);
        lose();
        Release(kEmptySky);
        CHECK(editorState.scene.size() == objects);
        CHECK_FALSE(Held<FilesDrag>());
    }
}

TEST_CASE("what cannot be read is dragged without changing the scene") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    const size_t objects = editorState.scene.size();
    for (const wchar_t* name : {L"Tree.obj", L"PlayerCube.prefab", L"wood.png"}) {
        RemoveTree(FilesIn(folder) + L"\\" + name);
    }
    DragFileTo(L"Tree.obj", kEmptySky);
    DragFileTo(L"PlayerCube.prefab", kEmptySky);
    CHECK(editorState.statusMessage == L"Prefab se nepodarilo nacist.");
    DragFileTo(L"wood.png", RowAt(3));
    CHECK(editorState.scene.size() == objects);
    CHECK_FALSE(Object(3).hasTexture);
    CHECK(editorState.undoSteps.empty());
}

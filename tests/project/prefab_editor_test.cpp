#include "project/prefab_editor.h"

#include "blueprint/blueprint_editor.h"
#include "formats/object_line.h"
#include "formats/prefab.h"
#include "formats/scene_file.h"
#include "platform/files.h"
#include "project/asset_list.h"
#include "project/stored_paths.h"
#include "support/folder_tree.h"
#include "support/frame_update.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

// A project with PlayerCube.prefab, made from the selected PlayerCube.
static void StartWithPrefab(const ScratchFolder& folder) {
    StartProject(folder);
    editorState.selectedIndex = 2;
    ChooseCreate(CreateItem::Prefab);
    RenderFrame();
}

static std::wstring PrefabPath(const ScratchFolder& folder) {
    return FilesIn(folder) + L"\\PlayerCube.prefab";
}

static void OpenThePrefab() {
    DoubleClick(FileNamed(L"PlayerCube.prefab"));
    RenderFrame();
}

TEST_CASE("a prefab is made from the selected object and everything below it") {
    const ScratchFolder folder;
    StartProject(folder);
    ShowScene({GameObject{.name = L"other"}, GameObject{.name = L"Root"},
               GameObject{.name = L"child", .parentIndex = 1}, GameObject{.name = L"stranger"},
               GameObject{.name = L"second", .parentIndex = 1},
               GameObject{.name = L"grandchild", .parentIndex = 2}},
              1);
    ChooseCreate(CreateItem::Prefab);
    CHECK(editorState.statusMessage == L"Prefab vytvoren z vybraneho objektu: Root.prefab");
    Scene objects;
    CHECK(LoadPrefab(FilesIn(folder) + L"\\Root.prefab", objects));
    REQUIRE(objects.size() == 4);
    CHECK(objects[0].name == L"Root");
    CHECK(objects[1].name == L"child");
    CHECK(objects[2].name == L"grandchild");
    CHECK(objects[3].name == L"second");
    CHECK(objects[0].parentIndex == -1);
    CHECK(objects[2].parentIndex == 1);
    CHECK(objects[3].parentIndex == 0);
    CHECK(editorState.fileEntries.back().name == L"Root.prefab");
    CHECK(editorState.fileEntries.back().kind == AssetKind::Prefab);
}

TEST_CASE("without a selected object there is no prefab") {
    const ScratchFolder folder;
    StartProject(folder);
    editorState.selectedIndex = -1;
    ChooseCreate(CreateItem::Prefab);
    CHECK(editorState.statusMessage == L"Prefab: nejdriv vyber objekt ve scene nebo Hierarchy.");
    CHECK(editorState.fileEntries.size() == 5);
}

TEST_CASE("without an open prefab there is nothing to save as one") {
    const ScratchFolder folder;
    StartProject(folder);
    const FolderContents before = ContentsOf(FilesIn(folder));
    SavePrefabEditor();
    CHECK(editorState.statusMessage == L"Neni otevreny Prefab.");
    CHECK(ContentsOf(FilesIn(folder)) == before);
}

TEST_CASE("a prefab is named after its object, with a number if the name is taken") {
    struct {
        const wchar_t *object, *first, *second;
    } cases[] = {
        {L"Tree", L"Tree.prefab", L"Tree_01.prefab"},    {L"a:b", L"a_b.prefab", L"a_b_01.prefab"},
        {L"", L"Prefab_01.prefab", L"Prefab_02.prefab"}, {L"   ", L"Prefab_01.prefab", L"Prefab_02.prefab"},
        {L"end.", L"end..prefab", L"end._01.prefab"},    {L"NUL", L"_NUL.prefab", L"_NUL_01.prefab"}};
    for (const auto& [object, first, second] : cases) {
        const ScratchFolder folder;
        StartProject(folder);
        ShowScene({GameObject{.name = object}}, 0);
        for (const wchar_t* name : {first, second}) {
            ChooseCreate(CreateItem::Prefab);
            CHECK(editorState.fileEntries.back().name == name);
            CHECK(KindOfPath(FilesIn(folder) + L"\\" + name) == PathKind::File);
        }
    }
}

TEST_CASE("a prefab that cannot be written says so and is not listed") {
    const ScratchFolder folder;
    StartProject(folder);
    ShowScene({GameObject{.name = std::wstring(300, L'n')}}, 0);
    const FolderContents before = ContentsOf(FilesIn(folder));
    ChooseCreate(CreateItem::Prefab);
    CHECK(editorState.statusMessage == L"Prefab se nepodarilo ulozit.");
    ShowScene({GameObject{.name = L"Tree"}}, 0);
    fileFaults = {.freeBytes = 9};
    ChooseCreate(CreateItem::Prefab);
    fileFaults = {};
    CHECK(editorState.statusMessage == L"Prefab se nepodarilo ulozit.");
    CHECK(ContentsOf(FilesIn(folder)) == before);
    CHECK(editorState.fileEntries.size() == 5);
}

TEST_CASE("the Prefab editor shows the prefab's objects and gives the scene back") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    TapKey('G');
    TapKey('2');
    const Scene scene = editorState.scene;
    const size_t steps = editorState.undoSteps.size();
    editorState.camera.position.x = 5;
    OpenThePrefab();
    CHECK(editorState.statusMessage == L"Otevren Prefab editor: PlayerCube.prefab");
    CHECK(editorState.screen == Screen::PrefabEditor);
    REQUIRE(editorState.scene.size() == 1);
    CHECK(editorState.selectedIndex == 0);
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.camera.position.x == 5);
    CHECK(editorState.prefabName == L"PlayerCube");

    editorState.camera.position.x = 9;
    TapKey(kKeyEscape);
    CHECK(editorState.statusMessage == L"Zpet do Scene editoru.");
    CHECK(headless.prompts.empty());
    CHECK(editorState.screen == Screen::SceneEditor);
    CHECK(editorState.scene.size() == scene.size());
    CHECK(editorState.selectedIndex == 1);
    CHECK(editorState.undoSteps.size() == steps);
    CHECK(editorState.camera.position.x == 5);
    CHECK_FALSE(headless.quitRequested);
}

TEST_CASE("Ctrl+S saves the prefab and leaves scene and project file alone") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    const std::string scene = FileBytes(editorState.scenePath);
    const std::string project = FileBytes(ProjectIn(folder) + L"\\project.zel");
    OpenThePrefab();
    TapKey('G');
    CHECK(editorState.prefabDirty);
    TapWithControl('S');
    CHECK(editorState.statusMessage == L"Prefab ulozen: PlayerCube.prefab");
    CHECK_FALSE(editorState.prefabDirty);
    Scene objects;
    CHECK(LoadPrefab(PrefabPath(folder), objects));
    CHECK(objects.size() == 2);
    CHECK(FileBytes(editorState.scenePath) == scene);
    CHECK(FileBytes(ProjectIn(folder) + L"\\project.zel") == project);
}

TEST_CASE("leaving a changed prefab asks, and Cancel or a failed save stays") {
    struct {
        Answer answer;
        bool diskIsFull, leaves, saves;
    } cases[] = {{Answer::Yes, false, true, true},
                 {Answer::Yes, true, false, false},
                 {Answer::No, false, true, false},
                 {Answer::Cancel, false, false, false}};
    for (const auto& [answer, diskIsFull, leaves, saves] : cases) {
        const ScratchFolder folder;
        StartWithPrefab(folder);
        const std::string before = FileBytes(PrefabPath(folder));
        OpenThePrefab();
        TapKey('G');
        Answers({answer});
        if (diskIsFull) fileFaults = {.freeBytes = 10};
        TapKey(kKeyEscape);
        fileFaults = {};
        CHECK(headless.prompts == std::vector<std::wstring>{L"Chces ulozit zmeny v prefabu?"});
        CHECK(headless.captions == std::vector<std::wstring>{L"ZelEngine"});
        CHECK((editorState.screen == Screen::SceneEditor) == leaves);
        CHECK((FileBytes(PrefabPath(folder)) != before) == saves);
        if (diskIsFull) CHECK(editorState.statusMessage == L"Prefab se nepodarilo ulozit.");
        if (!leaves) CHECK(editorState.scene.size() == 2);
    }
}

TEST_CASE("closing the Prefab editor and the Blueprint editor says whether they are closed") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    CHECK(ClosePrefabEditor());  // not open
    CHECK(CloseBlueprintEditor());
    OpenThePrefab();
    CHECK(CloseBlueprintEditor());  // another screen
    TapKey('G');
    Answers({Answer::Cancel});
    CHECK_FALSE(ClosePrefabEditor());
    Answers({Answer::No});
    CHECK(ClosePrefabEditor());
    CHECK(editorState.screen == Screen::SceneEditor);

    PutFile(FilesIn(folder) + L"\\a.blueprint", "");
    REQUIRE(OpenBlueprintEditor(FilesIn(folder) + L"\\a.blueprint"));
    CHECK(ClosePrefabEditor());
    editorState.blueprintDirty = true;
    fileFaults.freeBytes = 0;
    Answers({Answer::No});
    CHECK_FALSE(CloseBlueprintEditor());
    fileFaults = {};
    CHECK(CloseBlueprintEditor());
    CHECK(editorState.screen == Screen::SceneEditor);
}

TEST_CASE("a command that needs the Prefab editor closed stops when it stays open") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    OpenThePrefab();
    TapKey('G');
    OpenFolderNamed(L"Scenes");
    DoubleClick(FileNamed(L"Main.scene"));  // each question is cancelled
    CHECK(editorState.screen == Screen::PrefabEditor);
    AnswerFolder(folder / L"projects");
    TapWithControl('N');
    AnswerFolder(ProjectIn(folder));
    TapWithControl('O');
    CHECK(editorState.screen == Screen::PrefabEditor);
    CHECK(editorState.scene.size() == 2);
    CHECK(KindOfPath(ProjectIn(folder) + L"_01") == PathKind::Missing);
    Answers({Answer::No});
    DoubleClick(FileNamed(L"Main.scene"));
    CHECK(editorState.screen == Screen::SceneEditor);
    CHECK(editorState.scenePath == FilesIn(folder) + L"\\Scenes\\Main.scene");
}

TEST_CASE("another prefab opens after the first has closed") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    const size_t objects = editorState.scene.size();
    ChooseForFile(L"PlayerCube.prefab", FileItem::Duplicate);
    OpenThePrefab();
    DoubleClick(FileNamed(L"PlayerCube_Copy.prefab"));
    CHECK(editorState.prefabPath == FilesIn(folder) + L"\\PlayerCube_Copy.prefab");
    TapKey(kKeyEscape);
    CHECK(editorState.scene.size() == objects);
}

TEST_CASE("a prefab that cannot be read does not open") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    const size_t objects = editorState.scene.size();
    RemoveTree(PrefabPath(folder));
    OpenThePrefab();
    CHECK(editorState.statusMessage == L"Prefab se nepodarilo otevrit.");
    CHECK(editorState.screen == Screen::SceneEditor);
    CHECK(editorState.scene.size() == objects);
}

TEST_CASE("a prefab without objects opens empty and is saved empty") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    PutFile(PrefabPath(folder), "\xEF\xBB\xBFZELENGINE_PREFAB\t1\r\n");
    OpenThePrefab();
    CHECK(editorState.screen == Screen::PrefabEditor);
    CHECK(editorState.scene.empty());
    CHECK(editorState.selectedIndex == -1);
    TapWithControl('S');
    CHECK(FileBytes(PrefabPath(folder)) == "\xEF\xBB\xBFZELENGINE_PREFAB\t1\r\n");
    TapKey(kKeyEscape);
    CHECK(editorState.selectedIndex == 2);
}

TEST_CASE("a game stops before a prefab opens") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    TapKey('P');
    editorState.scene[2].position.y = 70;
    OpenThePrefab();
    CHECK_FALSE(editorState.playMode);
    TapKey('P');
    CHECK(editorState.statusMessage == L"Play mode se spousti jen ve Scene editoru.");
    TapKey(kKeyEscape);
    CHECK(editorState.scene[2].position.y != 70);
}

TEST_CASE("an open prefab whose file is renamed is saved under the new name") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    OpenThePrefab();
    TapKey('G');
    RenameFileTo(L"PlayerCube.prefab", L"Hero.prefab");
    CHECK(editorState.prefabName == L"Hero");
    TapWithControl('S');
    CHECK(editorState.statusMessage == L"Prefab ulozen: Hero.prefab");
    Scene objects;
    CHECK(LoadPrefab(FilesIn(folder) + L"\\Hero.prefab", objects));
    CHECK(objects.size() == 2);
    CHECK(KindOfPath(PrefabPath(folder)) == PathKind::Missing);
}

TEST_CASE("the first object of an empty prefab is not lost without a question") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\Empty.prefab", "ZELENGINE_PREFAB\t1\r\n");
    RefreshAssetList();
    DoubleClick(FileNamed(L"Empty.prefab"));
    REQUIRE(editorState.screen == Screen::PrefabEditor);
    TapKey('G');
    headless.prompts.clear();
    TapKey(kKeyEscape);  // cancelled
    CHECK(headless.prompts.size() == 1);
    CHECK(editorState.scene.size() == 1);
}

TEST_CASE("a held key or a renamed texture after a save is a new change") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    OpenThePrefab();
    HandleInput({.kind = InputKind::KeyDown, .key = 'L'});
    UpdateFrame(0.01f);
    TapWithControl('S');
    CHECK_FALSE(editorState.prefabDirty);
    UpdateFrame(0.01f);
    CHECK(editorState.prefabDirty);
    HandleInput({.kind = InputKind::KeyUp, .key = 'L'});
    TapWithControl('S');
    editorState.scene[0].texturePath = FilesIn(folder) + L"\\imported\\a.png";
    MoveStoredPaths(FilesIn(folder) + L"\\imported", FilesIn(folder) + L"\\pictures");
    CHECK(editorState.prefabDirty);
}

TEST_CASE("a prefab that cannot be read leaves a running game alone") {
    const ScratchFolder folder;
    StartWithPrefab(folder);
    const Point item = FileNamed(L"PlayerCube.prefab");
    TapKey('P');
    RemoveTree(PrefabPath(folder));
    DoubleClick(item);
    CHECK(editorState.statusMessage == L"Prefab se nepodarilo otevrit.");
    CHECK(editorState.playMode);
}

// Opens a prefab of objects with these names and parents and saves it at once. Returns the objects of the
// file after that.
static std::vector<std::pair<std::wstring, int32_t>> SavedAgain(
    const std::vector<std::pair<std::wstring, int32_t>>& objects) {
    const ScratchFolder folder;
    StartProject(folder);
    std::wstring text = L"ZELENGINE_PREFAB\t1\n";
    for (const auto& [name, parent] : objects) WriteObjectLine(text, {.name = name, .parentIndex = parent});
    PutFile(PrefabPath(folder), TextFileBytes(text));
    OpenPrefabEditor(PrefabPath(folder));
    TapWithControl('S');
    Scene saved;
    CHECK(LoadPrefab(PrefabPath(folder), saved));
    std::vector<std::pair<std::wstring, int32_t>> found;
    for (const GameObject& object : saved) found.push_back({object.name, object.parentIndex});
    return found;
}

TEST_CASE("saving a prefab keeps its first object the root, whatever parent the file gives it") {
    for (const int32_t parent : {-1, -2, 2, 99}) {
        CAPTURE(parent);
        CHECK(SavedAgain({{L"root", parent}, {L"other", -1}}) ==
              std::vector<std::pair<std::wstring, int32_t>>{{L"root", -1}, {L"other", -1}});
    }
}

TEST_CASE("the Prefab editor shows children behind their parents") {
    const ScratchFolder folder;
    StartProject(folder);
    std::wstring text;
    WriteObjectLine(text, {.name = L"child", .parentIndex = 1});
    WriteObjectLine(text, {.name = L"root"});
    PutFile(PrefabPath(folder), TextFileBytes(text));
    OpenPrefabEditor(PrefabPath(folder));
    REQUIRE(editorState.scene.size() == 2);
    CHECK(editorState.scene[0].name == L"root");
    CHECK(editorState.scene[1].parentIndex == 0);
    CHECK_FALSE(editorState.prefabDirty);
}

#include "project/asset_commands.h"

#include "platform/files.h"
#include "project/asset_list.h"
#include "support/folder_tree.h"
#include "support/open_menu.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

namespace {

struct Creation {
    CreateItem item;
    const wchar_t* name;    // the first one in a new project
    const wchar_t* second;  // the next one
    const wchar_t* message;
    const char* bytes;
};

}  // namespace

constexpr Creation kCreations[] = {
    {CreateItem::Folder, L"NewFolder_01", L"NewFolder_02", L"Vytvorena nova slozka v projektu.", "<folder>"},
    {CreateItem::Script, L"Script_01.cpp", L"Script_02.cpp", L"Vytvoren novy script v projektu.",
     "// ZelEngine script\n\nvoid Update() {\n}\n"},
    // Numbered by the five entries of a new project.
    {CreateItem::SceneFile, L"Scene_05.scene", L"Scene_06.scene", L"Vytvorena nova scene v projektu.",
     "\xEF\xBB\xBFZELENGINE_SCENE\t1\r\n"},
    {CreateItem::Blueprint, L"Blueprint_01.blueprint", L"Blueprint_02.blueprint",
     L"Vytvoren novy Blueprint v projektu. Dvojklikem ho otevres.",
     "\xEF\xBB\xBFZELENGINE_BLUEPRINT\t1\r\nNODE\t1\tEvent BeginPlay\t130\t130\r\n"
     "NODE\t2\tPrint String\t420\t130\r\n"},
};

static const AssetEntry& LastEntry() { return editorState.fileEntries.back(); }

TEST_CASE("the create menu makes each kind of item, lists it and selects it") {
    for (const Creation& creation : kCreations) {
        const ScratchFolder folder;
        StartProject(folder);
        ChooseCreate(creation.item);
        CHECK(editorState.statusMessage == creation.message);
        FolderContents files = ContentsOf(FilesIn(folder));
        CHECK(files[creation.name] == creation.bytes);
        CHECK(LastEntry().name == creation.name);
        CHECK(LastEntry().path == FilesIn(folder) + L"\\" + creation.name);
        CHECK(LastEntry().folder == FilesIn(folder));
        CHECK(editorState.selectedFile == static_cast<int32_t>(editorState.fileEntries.size()) - 1);
        CHECK(IsShown(creation.name));
        ChooseCreate(creation.item);
        CHECK(LastEntry().name == creation.second);
        CHECK_FALSE(MenuIsOpen(MenuKind::FilesCreate));
    }
}

TEST_CASE("new items go into the folder that the page shows") {
    const ScratchFolder folder;
    StartProject(folder);
    OpenFolderNamed(L"imported");
    for (const Creation& creation : kCreations) ChooseCreate(creation.item);
    CHECK(ContentsOf(FilesIn(folder) + L"\\imported").size() == 4);
    CHECK(LastEntry().folder == FilesIn(folder) + L"\\imported");
}

TEST_CASE("existing items keep their names, and a new item takes the first free number") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\Script_01.cpp", "mine");
    PutFile(FilesIn(folder) + L"\\Script_03.cpp", "mine");
    PutFile(FilesIn(folder) + L"\\NewFolder_01", "a file");
    PutFile(FilesIn(folder) + L"\\Scene_05.scene", "mine");
    ChooseCreate(CreateItem::Script);
    CHECK(LastEntry().name == L"Script_02.cpp");
    ChooseCreate(CreateItem::Folder);
    CHECK(LastEntry().name == L"NewFolder_02");
    const ScratchFolder other;
    StartProject(other);
    for (const wchar_t* name : {L"\\Scene_05.scene", L"\\Scene_06.scene"})
        PutFile(FilesIn(other) + name, "mine");
    ChooseCreate(CreateItem::SceneFile);
    CHECK(FileBytes(FilesIn(other) + L"\\Scene_05.scene") == "mine");
    CHECK(LastEntry().name == L"Scene_07.scene");  // from the five entries of a new project upwards
}

TEST_CASE("whichever step fails, a new item is whole or not there, and nothing is overwritten") {
    for (const Creation& creation : kCreations) {
        static Creation made;
        made = creation;
        FailEachStep(
            [](const ScratchFolder& folder) {
                StartProject(folder);
                PutFile(FilesIn(folder) + L"\\" + made.name, "mine");
            },
            [](const ScratchFolder&) {
                constexpr void (*kMake[])() = {CreateFolderAsset, CreateScriptAsset, CreateSceneAsset,
                                               CreateBlueprintAsset};
                kMake[static_cast<size_t>(made.item)]();
            },
            [](const ScratchFolder& folder) {
                FolderContents files = ContentsOf(FilesIn(folder));
                CHECK(files[made.name] == "mine");
                if (editorState.statusMessage == made.message) {
                    CHECK(files.size() == 7);
                    CHECK(files[LastEntry().name] == made.bytes);
                } else {
                    CHECK(editorState.statusMessage == L"Polozku projektu se nepodarilo vytvorit.");
                    CHECK(files.size() == 6);
                    CHECK(editorState.fileEntries.size() == 5);
                }
            });
    }
}

TEST_CASE("a disk that has stopped answering ends the search for a free name") {
    const ScratchFolder folder;
    StartProject(folder);
    for (const auto make : {CreateFolderAsset, CreateScriptAsset, CreateSceneAsset, CreateBlueprintAsset}) {
        fileFaults = {.failStep = 1, .failFollowing = true};
        make();
        fileFaults = {};
        CHECK(editorState.statusMessage == L"Polozku projektu se nepodarilo vytvorit.");
    }
    CHECK(editorState.fileEntries.size() == 5);
}

TEST_CASE("a full disk leaves no part of a new file") {
    const ScratchFolder folder;
    StartProject(folder);
    const FolderContents before = ContentsOf(FilesIn(folder));
    for (const auto make : {CreateScriptAsset, CreateSceneAsset, CreateBlueprintAsset}) {
        fileFaults = {.freeBytes = 5};
        make();
        fileFaults = {};
        CHECK(editorState.statusMessage == L"Polozku projektu se nepodarilo vytvorit.");
        CHECK(ContentsOf(FilesIn(folder)) == before);
    }
}

#include "project/project_hub.h"

#include "formats/recent_projects.h"
#include "support/open_menu.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

// One listed project, and a click on "Smazat projekt z disku" answered so.
static std::wstring DeleteListed(const ScratchFolder& folder, Answer answer) {
    StartHub(folder);
    std::wstring project = folder / L"projects\\Old";
    PutFolder(project + L"\\Files");
    AddRecentProject(project);
    SaveRecentProjects();
    RenderFrame();
    RightClick(ProjectRow(0));
    Answers({answer});
    const Point corner = OpenMenuState().corner;
    Click({corner.x + 50, corner.y + 80});
    return project;
}

TEST_CASE("a project goes into the recycle bin after a question") {
    const ScratchFolder folder;
    const std::wstring project = DeleteListed(folder, Answer::Yes);
    CHECK(headless.prompts == std::vector<std::wstring>{L"Smazat projekt z disku?\n\n" + project +
                                                        L"\n\nSlozka bude presunuta do kose Windows."});
    CHECK(headless.captions == std::vector<std::wstring>{L"ZelEngine - smazat projekt"});
    CHECK(headless.recycled == std::vector<std::wstring>{project});
    CHECK(editorState.recentProjects.empty());
    CHECK(FileBytes(folder / L"local\\ZelEngine\\recent-projects.txt") == "\xEF\xBB\xBF");
    CHECK(editorState.statusMessage == L"Projekt presunut do kose: " + project);
}

TEST_CASE("a project stays on the disk and in the list if the answer is No") {
    const ScratchFolder folder;
    DeleteListed(folder, Answer::No);
    CHECK(headless.recycled.empty());
    CHECK(editorState.recentProjects.size() == 1);
    CHECK_FALSE(MenuIsOpen(MenuKind::Project));
    CHECK(editorState.statusMessage == L"Smazani projektu zruseno.");
}

// What becomes of the list while a dialog or the system runs its own message loop.
static void ListChanges() {
    auto& projects = editorState.recentProjects;
    projects.insert(projects.begin(), {.name = L"New", .path = L"C:\\New"});
}

static void ListIsEmptied() { editorState.recentProjects.clear(); }

TEST_CASE("a project is taken off the list by its path, whatever has become of the list") {
    struct {
        void (*meanwhile)();
        size_t left;
    } cases[] = {{ListChanges, 2}, {ListIsEmptied, 0}};
    for (const auto& [meanwhile, left] : cases) {
        const ScratchFolder folder;
        StartHub(folder);
        for (const wchar_t* name : {L"Other", L"Old"}) {
            PutFolder(folder / L"projects\\" + name + L"\\Files");
            AddRecentProject(folder / L"projects\\" + name);
        }
        headless.onDialog = meanwhile;
        Answers({Answer::Yes});
        DeleteProjectFromDisk(0);
        CHECK(headless.recycled == std::vector<std::wstring>{folder / L"projects\\Old"});
        CHECK(editorState.recentProjects.size() == left);
        for (const RecentProject& project : editorState.recentProjects) CHECK(project.name != L"Old");
        CHECK(editorState.statusMessage == L"Projekt presunut do kose: " + (folder / L"projects\\Old"));
    }
}

TEST_CASE("a project that the system cannot recycle stays in the list") {
    const ScratchFolder folder;
    StartHub(folder);
    const std::wstring project = folder / L"projects\\Old";
    PutFolder(project + L"\\Files");
    AddRecentProject(project);
    headless.recycleWorks = false;
    Answers({Answer::Yes});
    DeleteProjectFromDisk(0);
    CHECK(editorState.recentProjects.size() == 1);
    CHECK(editorState.statusMessage == L"Projekt se nepodarilo smazat: " + project);

    headless.recycleWorks = true;
    RemoveTree(project);
    Answers({Answer::Yes});
    DeleteProjectFromDisk(0);
    CHECK(headless.recycled.empty());
    CHECK(editorState.statusMessage == L"Projekt se nepodarilo smazat: " + project);
}

TEST_CASE("the folder that the program runs from, and every folder around it, is not deleted") {
    const ScratchFolder folder;
    StartHub(folder);
    PutFolder(folder / L"Games\\Mine\\bin");
    PutFolder(folder / L"Games\\Mi");
    PutFolder(folder / L"Games\\Mine2");
    folderAnswers.executablePath = folder / L"Games\\Mine\\bin\\ZelEngine.exe";
    for (const wchar_t* name :
         {L"Games\\Mine\\bin", L"Games\\Mine", L"Games", L"Games\\Mine\\", L"Games\\.\\Mine"}) {
        editorState.statusMessage.clear();
        CHECK_FALSE(MoveFolderToRecycleBin(folder / name));
        CHECK(editorState.statusMessage == L"Tuto slozku nejde smazat, protoze z ni bezi ZelEngine.");
    }
    CHECK(headless.recycled.empty());
    // The beginning of a name is another folder.
    CHECK(MoveFolderToRecycleBin(folder / L"Games\\Mi"));
    CHECK(MoveFolderToRecycleBin(folder / L"Games\\Mine2"));
    CHECK(headless.recycled.size() == 2);

    // A name that differs in case only is the same folder.
    folderAnswers.executablePath = folder / L"GAMES\\mine\\ZelEngine.exe";
    CHECK_FALSE(MoveFolderToRecycleBin(folder / L"Games\\Mine"));
}

TEST_CASE("the project that the program runs from stays in the list") {
    const ScratchFolder folder;
    StartHub(folder);
    PutFolder(folder / L"program\\Files");
    AddRecentProject(folder / L"program");
    Answers({Answer::Yes});
    DeleteProjectFromDisk(0);
    CHECK(editorState.recentProjects.size() == 1);
    CHECK(headless.recycled.empty());
    CHECK(FileBytes(folder / L"program\\ZelEngine.exe") == "the program");
}

TEST_CASE("files and missing folders do not go into the bin") {
    const ScratchFolder folder;
    StartHub(folder);
    PutFile(folder / L"file", "x");
    for (const std::wstring& path : {folder / L"file", folder / L"missing", std::wstring()}) {
        CHECK_FALSE(MoveFolderToRecycleBin(path));
    }
    CHECK(headless.recycled.empty());
}

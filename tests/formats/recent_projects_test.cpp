#include "formats/recent_projects.h"

#include "formats/text_file.h"
#include "platform/files.h"
#include "platform/headless/fault_injection.h"
#include "state/editor_state.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <random>

static std::wstring ListPath(const ScratchFolder& folder) {
    return folder / L"local\\ZelEngine\\recent-projects.txt";
}

static void AnswerFoldersIn(const ScratchFolder& folder) {
    folderAnswers.localDataFolder = folder / L"local";
    folderAnswers.workingFolder = folder / L"work";
    PutFolder(folder / L"work");
}

static std::wstring MakeProject(const ScratchFolder& folder, const std::wstring& name) {
    PutFolder(folder / (name + L"\\Files"));
    return folder / name;
}

// The file's bytes for these paths.
static std::string ListOf(const std::vector<std::wstring>& paths) {
    std::string bytes = "\xEF\xBB\xBF";
    for (const std::wstring& path : paths) bytes += EncodeUtf8(path) + "\r\n";
    return bytes;
}

static std::vector<std::wstring> Paths() {
    std::vector<std::wstring> paths;
    for (const RecentProject& project : editorState.recentProjects) paths.push_back(project.path);
    return paths;
}

using PathList = std::vector<std::wstring>;

TEST_CASE("the data folder lies in the user's local data and is made") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    CHECK(GetDataFolder() == folder / L"local\\ZelEngine");
    CHECK(KindOfPath(folder / L"local\\ZelEngine") == PathKind::Folder);
}

TEST_CASE("without local data the data folder lies beside the executable, or in the working folder") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    folderAnswers.localDataFolder.clear();
    folderAnswers.executablePath = folder / L"bin\\ZelEngine.exe";
    CHECK(GetDataFolder() == folder / L"bin\\ZelEngineData");
    CHECK(KindOfPath(folder / L"bin\\ZelEngineData") == PathKind::Folder);
    folderAnswers.executablePath.clear();
    CHECK(GetDataFolder() == L".\\ZelEngineData");
    CHECK(KindOfPath(folder / L"work\\ZelEngineData") == PathKind::Folder);
}

TEST_CASE("an added project stands first, with its full path and its folder's name") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    const std::wstring first = MakeProject(folder, L"First"), second = MakeProject(folder, L"Second.2");
    AddRecentProject(first);
    AddRecentProject(folder / L"work\\..\\Second.2");
    CHECK(Paths() == PathList{second, first});
    CHECK(editorState.recentProjects[0].name == L"Second.2");
    CHECK(editorState.recentProjects[1].name == L"First");
}

TEST_CASE("a path that ends with a separator is named ZelEngineProject") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    AddRecentProject(MakeProject(folder, L"Game") + L"\\");
    REQUIRE(editorState.recentProjects.size() == 1);
    CHECK(editorState.recentProjects[0].name == L"ZelEngineProject");
}

TEST_CASE("an empty path and a folder without a project add nothing") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    PutFolder(folder / L"plain");
    AddRecentProject(L"");
    AddRecentProject(folder / L"plain");
    AddRecentProject(folder / L"missing");
    CHECK(Paths().empty());
}

TEST_CASE("a thirteenth project drops the oldest") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    PathList expected;
    for (int32_t i = 0; i < 13; ++i) {
        const std::wstring path = MakeProject(folder, L"P" + std::to_wstring(i));
        AddRecentProject(path);
        if (i > 0) expected.insert(expected.begin(), path);
    }
    CHECK(expected.size() == 12);
    CHECK(Paths() == expected);
}

TEST_CASE("a listed project moves to the front, whatever the case of its path") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    const std::wstring game = MakeProject(folder, L"Game"), other = MakeProject(folder, L"Other");
    const std::wstring upper = MakeProject(folder, L"GAME");  // on some disks the same folder
    AddRecentProject(game);
    AddRecentProject(other);
    AddRecentProject(upper);
    CHECK(Paths() == PathList{upper, other});
    AddRecentProject(other);
    CHECK(Paths() == PathList{other, upper});
}

TEST_CASE("letters of every language are the same in upper and lower case") {
    const ScratchFolder folder;
    editorState = EditorState{};
    for (const wchar_t* name : {L"\u0160kola", L"\u0161KOLA", L"\u0391\u0392\u0413", L"\u03B1\u03B2\u0433"}) {
        PutFolder(folder / name + L"\\Files");
        AddRecentProject(folder / name);
    }
    REQUIRE(editorState.recentProjects.size() == 2);
    CHECK(editorState.recentProjects[0].name == L"\u03B1\u03B2\u0433");
    CHECK(editorState.recentProjects[1].name == L"\u0161KOLA");
}

TEST_CASE("the list is saved as full paths, most recent first, without projects that are gone") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    const std::wstring a = MakeProject(folder, L"a"), b = MakeProject(folder, L"\x10D");
    const std::wstring gone = MakeProject(folder, L"gone");
    for (const std::wstring& path : {a, gone, b}) AddRecentProject(path);
    RemoveTree(gone);
    SaveRecentProjects();
    CHECK(FileBytes(ListPath(folder)) == ListOf({b, a}));
    CHECK(Paths().size() == 3);
}

TEST_CASE("the list is read in its order and rewritten without deleted folders, blanks and duplicates") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    const std::wstring a = MakeProject(folder, L"a"), b = MakeProject(folder, L"b");
    PutFile(ListPath(folder), ListOf({a, folder / L"deleted", L"", b, a, L"\t", L"\xFFFD"}));
    editorState.recentProjects = {{L"old", L"C:\\old"}};
    LoadRecentProjects();
    CHECK(Paths() == PathList{a, b});
    CHECK(FileBytes(ListPath(folder)) == ListOf({a, b}));
}

TEST_CASE("only the first twelve of a longer list stay") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    PathList paths;
    for (int32_t i = 0; i < 20; ++i) paths.push_back(MakeProject(folder, L"P" + std::to_wstring(i)));
    PutFile(ListPath(folder), ListOf(paths));
    LoadRecentProjects();
    paths.resize(12);
    CHECK(Paths() == paths);
}

TEST_CASE("a list is read as if its lines were added from the last to the first") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    PathList names = {L"", L"\t", folder / L"missing", folder.path, L"work"};
    for (int32_t i = 0; i < 8; ++i) {
        const std::wstring lower = MakeProject(folder, L"p" + std::to_wstring(i));
        const std::wstring capital = MakeProject(folder, L"P" + std::to_wstring(i));
        const std::wstring relative = L"..\\q" + std::to_wstring(i);
        MakeProject(folder, L"q" + std::to_wstring(i));
        names.insert(names.end(), {lower, capital, lower + L"\\", relative, folder / relative.substr(3)});
    }
    std::mt19937 random(4711);
    for (int32_t round = 0; round < 60; ++round) {
        CAPTURE(round);
        PathList lines(random() % 60);
        for (std::wstring& line : lines) line = names[random() % names.size()];
        PutFile(ListPath(folder), ListOf(lines));

        editorState.recentProjects.clear();
        for (size_t i = lines.size(); i > 0; --i) AddRecentProject(lines[i - 1]);
        const PathList expected = Paths();
        LoadRecentProjects();
        CHECK(Paths() == expected);
    }
}

TEST_CASE("reading a list does not ask the disk about anything after its twelfth project") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    PathList lines;
    for (int32_t i = 0; i < 12; ++i) lines.push_back(MakeProject(folder, L"P" + std::to_wstring(i)));
    const auto steps = [&folder](const PathList& list) {
        PutFile(ListPath(folder), ListOf(list));
        fileFaults = {};
        LoadRecentProjects();
        return fileFaults.steps;
    };
    const int32_t twelve = steps(lines);
    lines.insert(lines.end(), 1000, folder / L"missing");
    CHECK(steps(lines) == twelve);
    lines.insert(lines.begin() + 5, 1000, L"");
    CHECK(steps(lines) == twelve);
}

TEST_CASE("a missing or unreadable list is empty, and is written anew") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    LoadRecentProjects();
    CHECK(Paths().empty());
    CHECK(FileBytes(ListPath(folder)) == "\xEF\xBB\xBF");

    RemoveTree(ListPath(folder));
    PutFolder(ListPath(folder));
    const std::wstring status = editorState.statusMessage;
    LoadRecentProjects();
    CHECK(Paths().empty());
    CHECK(editorState.statusMessage == status);
}

TEST_CASE("an empty list gets the folder Project of the working folder") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    PutFile(ListPath(folder), ListOf({folder / L"deleted"}));
    LoadRecentProjects();
    CHECK(Paths().empty());

    const std::wstring project = MakeProject(folder, L"work\\Project");
    LoadRecentProjects();
    CHECK(Paths() == PathList{project});
    CHECK(FileBytes(ListPath(folder)) == ListOf({project}));
}

TEST_CASE("a line of 519 characters is one path, and a longer one is cut into pieces") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    // What is behind a long first piece stands on a line of its own: a project in the working folder.
    const std::wstring game = MakeProject(folder, L"work\\game");
    PutFile(ListPath(folder), std::string(519, 'x') + "game\r\n");
    LoadRecentProjects();
    CHECK(Paths() == PathList{game});

    PutFile(ListPath(folder), std::string(518, 'x') + "game\r\n");
    LoadRecentProjects();
    CHECK(Paths().empty());
}

TEST_CASE("a list of rubbish is read without harm") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    PutFile(ListPath(folder),
            std::string(100'000, '\0') + "\xFF\xFE\x1A\xED\xA0\x80" + std::string(100'000, '\\'));
    LoadRecentProjects();
    CHECK(Paths().empty());
}

TEST_CASE("a list that cannot be saved keeps its old file and says nothing") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    PutFile(ListPath(folder), "old");
    AddRecentProject(MakeProject(folder, L"game"));
    const std::wstring status = editorState.statusMessage;
    fileFaults = {.freeBytes = 3};
    SaveRecentProjects();
    fileFaults = {};
    CHECK(FileBytes(ListPath(folder)) == "old");
    CHECK(editorState.statusMessage == status);
}

TEST_CASE("a project stays listed when its disk does not say whether it is there") {
    const ScratchFolder folder;
    AnswerFoldersIn(folder);
    const PathList listed{MakeProject(folder, L"A"), MakeProject(folder, L"B")};
    for (const auto use : {LoadRecentProjects, SaveRecentProjects}) {
        for (int32_t step = 1; step < 12; ++step) {
            CAPTURE(step);
            PutFile(ListPath(folder), ListOf(listed));
            LoadRecentProjects();
            fileFaults = {.failStep = step};
            use();
            fileFaults = {};
            const bool listWasRead = !Paths().empty();  // else it is written anew
            if (listWasRead) CHECK(Paths() == listed);
            if (listWasRead) CHECK(FileBytes(ListPath(folder)) == ListOf(listed));
        }
    }
}

#include "project/project_hub.h"

#include "formats/recent_projects.h"
#include "formats/text_file.h"
#include "platform/canvas.h"
#include "support/capture.h"
#include "support/folder_tree.h"
#include "support/open_menu.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

#include <algorithm>

// Project folders with these names, listed in this order. They hold a Files folder each.
static void ListProjects(const ScratchFolder& folder, const std::vector<std::wstring>& names) {
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        PutFolder(folder / (L"projects\\" + *name + L"\\Files"));
        AddRecentProject(folder / (L"projects\\" + *name));
    }
    SaveRecentProjects();
    RenderFrame();
}

static std::vector<std::wstring> ListedNames() {
    std::vector<std::wstring> names;
    for (const RecentProject& project : editorState.recentProjects) names.push_back(project.name);
    return names;
}

// The content of the list's file, without its byte-order mark.
static std::string ListFile(const ScratchFolder& folder) {
    return FileBytes(folder / L"local\\ZelEngine\\recent-projects.txt").substr(3);
}

static bool IsDrawn(const std::wstring& text) {
    headless.texts.clear();
    RenderFrame();
    return std::ranges::any_of(headless.texts, [&](const DrawnText& drawn) { return drawn.text == text; });
}

using Names = std::vector<std::wstring>;

TEST_CASE("the Hub draws its headings, templates and note") {
    const ScratchFolder folder;
    StartHub(folder);
    CHECK(editorState.statusMessage == L"Vyber existujici projekt nebo vytvor novy.");
    for (const wchar_t* text :
         {L"Project Hub", L"Projects", L"Recent", L"ZelEngine Editor", L"Local projects",
          L"Open an existing project or create a new one.", L"Open other project", L"Moje projekty",
          L"Kliknutim otevres projekt v editoru.", L"Zatim tady neni zadny projekt.",
          L"Vytvor novy projekt vpravo nebo otevri existujici slozku.", L"Create new project",
          L"Zakladni projekt", L"Open", L"Prazdny projekt", L"Jen Game Camera a Directional Light.",
          L"Projects are saved locally"}) {
        CAPTURE(std::string(text, text + wcslen(text)));
        CHECK(IsDrawn(text));
    }
}

TEST_CASE("a row shows the project's name and path, 78 pixels below the one before") {
    const ScratchFolder folder;
    StartHub(folder);
    ListProjects(folder, {L"First", L"Second", L"Third"});
    CHECK(IsDrawn(L"First"));
    CHECK_FALSE(IsDrawn(L"Zatim tady neni zadny projekt."));
    const HubLayout layout = CurrentHubLayout();
    REQUIRE(layout.rows.size() == 3);
    CHECK(layout.rows[1].top - layout.rows[0].top == 78);
    CHECK(layout.rows[2].top - layout.rows[1].top == 78);
}

TEST_CASE("the button at the top right opens a project, from its first pixel to its last") {
    struct {
        Point at;
        bool hits;
    } cases[] = {{{1360 - 220, 20}, true}, {{1360 - 33, 53}, true},   {{1360 - 221, 20}, false},
                 {{1360 - 32, 20}, false}, {{1360 - 220, 19}, false}, {{1360 - 220, 54}, false}};
    for (const auto& [at, hits] : cases) {
        CAPTURE(at.x);
        CAPTURE(at.y);
        const ScratchFolder folder;
        StartHub(folder);
        Click(at);
        CHECK(headless.prompts.size() == (hits ? 1 : 0));
        if (hits) CHECK(editorState.statusMessage == L"Otevreni projektu zruseno.");
        CHECK(editorState.hubVisible);
    }
}

TEST_CASE("the cards of the templates react 126 to 208 and 220 to 302 pixels below the panel's top") {
    struct {
        int32_t y;
        bool hits;
    } cases[] = {{96 + 125, false}, {96 + 126, true}, {96 + 207, true}, {96 + 208, false},
                 {96 + 219, false}, {96 + 220, true}, {96 + 301, true}, {96 + 302, false}};
    for (const auto& [y, hits] : cases) {
        // 22 pixels inside the panel, which is 400 pixels wide and ends 32 before the window.
        for (const int32_t x : {1360 - 32 - 400 + 22, 1360 - 32 - 23}) {
            CAPTURE(x);
            CAPTURE(y);
            const ScratchFolder folder;
            StartHub(folder);
            Click({x, y});
            CHECK(headless.prompts.size() == (hits ? 1 : 0));
        }
        for (const int32_t x : {1360 - 32 - 400 + 21, 1360 - 32 - 22}) {  // beside the card
            const ScratchFolder folder;
            StartHub(folder);
            Click({x, y});
            CHECK(headless.prompts.empty());
        }
    }
}

TEST_CASE("a card's click makes its template") {
    const ScratchFolder folder;
    StartHub(folder);
    AnswerFolder(folder / L"projects");
    Click(EmptyCard());
    CHECK(editorState.statusMessage == L"Prazdny projekt vytvoren: " + ProjectIn(folder));
    CHECK_FALSE(editorState.hubVisible);
    CHECK(editorState.scene.size() == 2);

    StartHub(folder);
    AnswerFolder(folder / L"projects");
    Click(BasicCard());
    CHECK(editorState.statusMessage == L"Zakladni projekt vytvoren: " + ProjectIn(folder) + L"_01");
    CHECK(editorState.scene.size() > 2);
}

TEST_CASE("a row's click opens its project and puts it first") {
    const ScratchFolder folder;
    StartHub(folder);
    ListProjects(folder, {L"First", L"Second"});
    Click(ProjectRow(1));
    CHECK(editorState.projectRoot == folder / L"projects\\Second");
    CHECK_FALSE(editorState.hubVisible);
    CHECK(ListedNames() == Names{L"Second", L"First"});
    CHECK(headless.title == L"ZelEngine - Second");
}

TEST_CASE("a project whose folder is gone leaves the list when it is clicked") {
    const ScratchFolder folder;
    StartHub(folder);
    ListProjects(folder, {L"First", L"Gone", L"Third"});
    RemoveTree(folder / L"projects\\Gone");
    Click(ProjectRow(1));
    CHECK(editorState.statusMessage == L"Vybrana slozka neni ZelEngine projekt.");
    CHECK(editorState.hubVisible);
    CHECK(ListedNames() == Names{L"First", L"Third"});
    CHECK(ListFile(folder).find("Gone") == std::string::npos);
    CHECK(ListFile(folder).find("Third") != std::string::npos);
}

TEST_CASE("a project stays listed if the user stays with what is open") {
    const ScratchFolder folder;
    StartHub(folder);
    ListProjects(folder, {L"First"});
    editorState.screen = Screen::PrefabEditor;
    editorState.prefabDirty = true;
    Answers({Answer::Cancel});
    Click(ProjectRow(0));
    CHECK(headless.prompts == Names{L"Chces ulozit zmeny v prefabu?"});
    CHECK(editorState.hubVisible);
    CHECK(ListedNames() == Names{L"First"});
    CHECK(ListFile(folder).find("First") != std::string::npos);
}

TEST_CASE("two clicks before the next frame open no project that was not shown there") {
    const ScratchFolder folder;
    StartHub(folder);
    ListProjects(folder, {L"First", L"Gone", L"Third"});
    RemoveTree(folder / L"projects\\Gone");
    const Point row = ProjectRow(1);
    Click(row);
    Click(row);  // where the third stands now, unseen
    CHECK(editorState.hubVisible);
    RightClick(row);
    CHECK(editorState.hubVisible);
    CHECK_FALSE(MenuIsOpen(MenuKind::Project));
    RenderFrame();
    Click(row);
    CHECK(editorState.projectRoot == folder / L"projects\\Third");
}

TEST_CASE("a list with rubbish, long lines and duplicates shows each project once") {
    const ScratchFolder folder;
    StartHub(folder);
    for (const wchar_t* name : {L"Game", L"GAME", L"Other"}) {
        PutFolder(folder / (std::wstring(L"projects\\") + name + L"\\Files"));
    }
    std::wstring list;
    for (int32_t i = 0; i < 10'000; ++i) list += (folder / (L"gone" + std::to_wstring(i))) + L"\n";
    list += std::wstring(600, L'x') + L"\n\n";
    for (const wchar_t* name : {L"Game", L"GAME", L"Other", L"Game", L"Other"}) {
        list += (folder / (std::wstring(L"projects\\") + name)) + L"\n";
    }
    CHECK(WriteTextFile(folder / L"local\\ZelEngine\\recent-projects.txt", list));
    ShowHub();
    RenderFrame();
    CHECK(ListedNames() == Names{L"Game", L"Other"});
    CHECK(CurrentHubLayout().rows.size() == 2);
    CHECK(ListFile(folder).size() < 500);
}

TEST_CASE("a click on nothing does nothing, and outside the window it is not taken") {
    const ScratchFolder folder;
    StartHub(folder);
    for (const Point at : {Point{5, 5}, Point{0, 5}, Point{5, 0}, Point{700, 500}, Point{1359, 819}}) {
        CHECK(HubLeftClick(at, CurrentHubLayout()));
        CHECK(HubRightClick(at, CurrentHubLayout()));
    }
    for (const Point at : {Point{-1, 5}, Point{5, -1}, Point{1360, 5}, Point{5, 820}}) {
        CHECK_FALSE(HubLeftClick(at, CurrentHubLayout()));
        CHECK_FALSE(HubRightClick(at, CurrentHubLayout()));
    }
    CHECK(headless.prompts.empty());
    CHECK(editorState.hubVisible);
}

TEST_CASE("a right click on a row opens its menu, and elsewhere closes it") {
    const ScratchFolder folder;
    StartHub(folder);
    ListProjects(folder, {L"First", L"Second"});
    RightClick(ProjectRow(1));
    CHECK(MenuIsOpen(MenuKind::Project));
    CHECK(OpenMenuState().item == 1);
    CHECK(editorState.statusMessage == L"Project menu: Second");
    CHECK(IsDrawn(L"Odebrat ze seznamu"));
    CHECK(IsDrawn(L"Smazat projekt z disku"));
    RightClick({700, 600});
    CHECK_FALSE(MenuIsOpen(MenuKind::Project));
    CHECK_FALSE(IsDrawn(L"Odebrat ze seznamu"));
}

TEST_CASE("the menu of a project has a title and two items where it was opened, the dangerous one in red") {
    const ScratchFolder folder;
    StartHub(folder);
    ListProjects(folder, {L"First"});
    const Rect row = CurrentHubLayout().rows.at(0);
    const Point corner{row.right - 1, row.bottom - 1};
    RightClick(corner);
    headless.texts.clear();
    RenderFrame();
    const std::vector<DrawnText> expected{
        {corner.x + 12, corner.y + 10, L"Project", TextColor{0x78E2FF}, 15, 600},
        {corner.x + 16, corner.y + 41, L"Odebrat ze seznamu", TextColor{0xE6DED6}, 14, 600},
        {corner.x + 16, corner.y + 73, L"Smazat projekt z disku", TextColor{0x7A7AF0}, 14, 600}};
    REQUIRE(headless.texts.size() > 3);
    CHECK(std::vector<DrawnText>(headless.texts.end() - 3, headless.texts.end()) == expected);
}

TEST_CASE("no project is under a point beside the rows, nor on a row of one that has left the list") {
    const ScratchFolder folder;
    StartHub(folder);
    ListProjects(folder, {L"First"});
    const Point row = ProjectRow(0);
    CHECK(ProjectRowAt(row) == 0);
    CHECK(ProjectRowAt({5, 5}) == -1);
    editorState.recentProjects.clear();
    CHECK(ProjectRowAt(row) == -1);
}

TEST_CASE("the menu of a project stays 8 pixels inside the window") {
    struct {
        Point opened;
        int32_t width, height;
        Point corner;
    } cases[] = {{{500, 300}, 1360, 820, {500, 300}},
                 {{1359, 819}, 1360, 820, {1360 - 8 - 246, 820 - 8 - 112}},
                 {{1360 - 8 - 246, 820 - 8 - 112}, 1360, 820, {1360 - 8 - 246, 820 - 8 - 112}},
                 {{0, 0}, 1360, 820, {8, 8}},
                 {{150, 90}, 200, 100, {8, 8}}};
    for (const auto& [opened, width, height, corner] : cases) {
        const Rect box = ProjectMenuRect(opened, width, height);
        CHECK(box == Rect{corner.x, corner.y, corner.x + 246, corner.y + 112});
    }
}

TEST_CASE("the items of the project's menu react between their edges, and nothing else in it does") {
    struct {
        int32_t x, y;  // from the menu's corner
        int32_t item;  // 0 none, 1 remove, 2 delete
    } cases[] = {{100, 35, 0}, {100, 36, 1}, {100, 61, 1},  {100, 62, 0}, {100, 67, 0}, {100, 68, 2},
                 {100, 95, 2}, {100, 96, 0}, {100, 111, 0}, {7, 50, 0},   {8, 50, 1},   {237, 50, 1},
                 {238, 50, 0}, {7, 80, 0},   {8, 80, 2},    {237, 80, 2}, {238, 80, 0}, {100, 5, 0}};
    for (const auto& [x, y, item] : cases) {
        CAPTURE(x);
        CAPTURE(y);
        const ScratchFolder folder;
        StartHub(folder);
        ListProjects(folder, {L"First", L"Second"});
        const Point corner = ProjectRow(0);
        RightClick(corner);
        Click({corner.x + x, corner.y + y});
        CHECK(ListedNames().size() == (item == 1 ? 1 : 2));
        CHECK(headless.prompts.size() == (item == 2 ? 1 : 0));
        CHECK(MenuIsOpen(MenuKind::Project) == (item == 0));
        CHECK(editorState.hubVisible);
    }
}

TEST_CASE("a click outside the project's menu closes it and reaches what lies there") {
    const ScratchFolder folder;
    StartHub(folder);
    ListProjects(folder, {L"First"});
    RightClick(ProjectRow(0));
    Click(OpenOther());
    CHECK_FALSE(MenuIsOpen(MenuKind::Project));
    CHECK(headless.prompts == Names{L"Vyber slozku ZelEngine projektu"});
}

TEST_CASE("a project taken off the list keeps its folder") {
    const ScratchFolder folder;
    StartHub(folder);
    ListProjects(folder, {L"First", L"Second"});
    PutFile(folder / L"projects\\First\\Files\\a.txt", "a");
    RightClick(ProjectRow(0));
    const Point corner = OpenMenuState().corner;
    Click({corner.x + 50, corner.y + 50});
    CHECK(editorState.statusMessage == L"Projekt odebran ze seznamu: " + (folder / L"projects\\First"));
    CHECK(ListedNames() == Names{L"Second"});
    CHECK(ListFile(folder).find("First") == std::string::npos);
    CHECK(FileBytes(folder / L"projects\\First\\Files\\a.txt") == "a");
    CHECK(headless.recycled.empty());
}

TEST_CASE("Ctrl+O and Ctrl+N work in the Hub, Escape ends the program, other keys do nothing") {
    const ScratchFolder folder;
    StartHub(folder);
    TapWithControl('O');
    CHECK(headless.prompts == Names{L"Vyber slozku ZelEngine projektu"});
    TapWithControl('N');
    CHECK(headless.prompts.size() == 2);
    CHECK(editorState.statusMessage == L"Vytvoreni noveho projektu zruseno.");
    for (const uint32_t key : {uint32_t{'G'}, uint32_t{'P'}, uint32_t{kKeyDelete}, uint32_t{kKeyTab}}) {
        TapKey(key);
    }
    TapWithControl('S');
    TapWithControl('B');
    TapWithAltGr('O');
    TapWithAltGr('N');
    CHECK(headless.prompts.size() == 2);
    CHECK_FALSE(editorState.playMode);
    CHECK_FALSE(headless.quitRequested);
    TapKey(kKeyEscape);
    CHECK(headless.quitRequested);
}

TEST_CASE("files dropped on the Hub are ignored") {
    const ScratchFolder folder;
    StartHub(folder);
    PutFile(folder / L"a.txt", "a");
    DropFiles({folder / L"a.txt"});
    CHECK(editorState.statusMessage == L"Vyber existujici projekt nebo vytvor novy.");
    CHECK(ContentsOf(folder / L"work").empty());
}

TEST_CASE("the top bar's first button returns to the Hub, with the list read again") {
    const ScratchFolder folder;
    StartProject(folder);
    editorState.recentProjects.clear();
    Click({950, 20});
    CHECK(editorState.hubVisible);
    CHECK(headless.prompts.empty());  // nothing to save
    CHECK(editorState.statusMessage == L"Project Hub otevren.");
    CHECK(headless.title == L"ZelEngine - Projects");
    CHECK(ListedNames() == Names{L"ZelEngineProject"});
}

TEST_CASE("returning to the Hub stops the game and puts the scene back") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('P');
    editorState.scene[2].position.y = 77;
    Click({950, 20});
    CHECK(editorState.hubVisible);
    CHECK_FALSE(editorState.playMode);
    CHECK(editorState.scene[2].position.y != 77);
    CHECK(headless.prompts.empty());
}

TEST_CASE("returning to the Hub asks about a changed scene") {
    struct {
        Answer answer;
        bool leaves, saves;
    } cases[] = {{Answer::Cancel, false, false}, {Answer::No, true, false}, {Answer::Yes, true, true}};
    for (const auto& [answer, leaves, saves] : cases) {
        const ScratchFolder folder;
        StartProject(folder);
        const std::string before = FileBytes(editorState.scenePath);
        TapKey('G');
        Answers({answer});
        Click({950, 20});
        CHECK(headless.prompts == Names{L"Chces ulozit aktualni scenu pred otevrenim jine sceny?"});
        CHECK(editorState.hubVisible == leaves);
        CHECK((FileBytes(editorState.scenePath) != before) == saves);
        CHECK(editorState.statusMessage == (leaves ? L"Project Hub otevren." : L"Otevreni sceny zruseno."));
    }
}

TEST_CASE("a click on a row in a window that shows fewer rows takes the right project") {
    const ScratchFolder folder;
    StartHub(folder);
    Names names;
    for (int32_t i = 0; i < 12; ++i) names.push_back(L"Project" + std::to_wstring(i));
    ListProjects(folder, names);
    for (const ClientSize size : {ClientSize{1360, 820}, ClientSize{800, 600}, ClientSize{1000, 300},
                                  ClientSize{300, 200}, ClientSize{1, 1}}) {
        CAPTURE(size.width);
        headless.clientSize = size;
        RenderFrame();
        const HubLayout layout = CurrentHubLayout();
        CHECK(layout.rows.size() <= 12);
        for (size_t i = 0; i < layout.rows.size(); ++i) {
            const Rect& row = layout.rows[i];
            CHECK(ProjectRowAt({row.left, row.top}) == static_cast<int32_t>(i));
            CHECK(ProjectRowAt({row.right - 1, row.bottom - 1}) == static_cast<int32_t>(i));
            CHECK(row.right < layout.templates.left);
            CHECK(row.bottom < size.height);
        }
    }
    headless.clientSize = {1360, 820};
    RenderFrame();
    CHECK(CurrentHubLayout().rows.size() == 12);
}

TEST_CASE("the second press of a double click on a project does nothing in the editor that it opened") {
    const ScratchFolder folder;
    StartProject(folder);
    ShowHub();
    RenderFrame();
    // Over the viewport, where PlayerCube's gizmo or another object may lie.
    const Point row{560, CurrentHubLayout().rows.at(0).top + 20};
    Click(row);
    REQUIRE_FALSE(editorState.hubVisible);
    editorState.selectedIndex = -1;
    editorState.statusMessage = L"untouched";
    SendMouse(InputKind::LeftDoubleClick, row);
    Release(row);
    CHECK(editorState.statusMessage == L"untouched");
    CHECK(editorState.undoSteps.empty());
    RenderFrame();
    SendMouse(InputKind::LeftDown, {100, 103});  // a press of the editor's own counts again
    SendMouse(InputKind::LeftUp, {100, 103});
    SendMouse(InputKind::LeftDoubleClick, {100, 103});
    CHECK(editorState.statusMessage == L"Kamera priblizena na vybrany objekt.");
}

// The Hub with a list of projects, some of them on a drive that may answer late: the folder "usb".
static void StartHubWithLateDrive(const ScratchFolder& folder, const Names& paths) {
    StartIn(folder);
    PutFolder(folder / L"usb\\Game\\Files");
    PutFolder(folder / L"usb\\Other\\Files");
    PutFolder(folder / L"Near\\Files");
    std::wstring list;
    for (const std::wstring& path : paths) list += path + L"\n";
    PutFile(folder / L"local\\ZelEngine\\recent-projects.txt", TextFileBytes(list));
    fileFaults = {.lateDrive = folder / L"usb"};
    ShowHub();
    RenderFrame();
}

// Runs turns of the loop until nothing is left to ask.
static void FinishChecks() {
    for (int32_t turn = 0; turn < 40; ++turn) {
        CheckListedProjects();
        if (headless.aside.empty()) continue;
        headless.aside.front()();
        headless.aside.pop_front();
    }
    RenderFrame();
}

// The last text that reads so, because the rail shows the first project's name too.
static TextColor ColorOf(const std::wstring& text) {
    headless.texts.clear();
    RenderFrame();
    const auto drawn = std::find_if(headless.texts.rbegin(), headless.texts.rend(),
                                    [&text](const DrawnText& other) { return other.text == text; });
    return drawn == headless.texts.rend() ? TextColor{} : drawn->color;
}

TEST_CASE("the Hub opens without asking drives and servers that may answer late") {
    const ScratchFolder folder;
    StartHubWithLateDrive(folder, {L"\\\\server\\share\\Far", folder / L"usb\\Game", folder / L"Near"});
    CHECK(fileFaults.lateQuestions == 0);
    CHECK(ListedNames() == Names{L"Far", L"Game", L"Near"});
    CHECK(ListFile(folder).find("Far") != std::string::npos);
    CHECK(headless.aside.empty());

    CheckListedProjects();
    CheckListedProjects();
    CHECK(headless.aside.size() == 1);  // one at a time, and the first has not answered
    SaveRecentProjects();
    CHECK(fileFaults.lateQuestions == 0);
    CHECK(ListedNames() == Names{L"Far", L"Game", L"Near"});
}

TEST_CASE("a project that cannot be reached is greyed and stays, and one that is gone leaves the list") {
    const ScratchFolder folder;
    StartHubWithLateDrive(
        folder, {L"\\\\server\\share\\Far", folder / L"usb\\Gone", folder / L"usb\\Game", folder / L"Near"});
    const TextColor usual = ColorOf(L"Far");
    FinishChecks();
    CHECK(ListedNames() == Names{L"Far", L"Game", L"Near"});
    CHECK(ListFile(folder).find("Far") != std::string::npos);
    CHECK(ListFile(folder).find("Game") != std::string::npos);
    CHECK(ListFile(folder).find("Gone") == std::string::npos);
    CHECK(ColorOf(L"Far") != usual);
    CHECK(ColorOf(L"Game") == usual);
    CHECK(ColorOf(L"Near") == usual);

    Click(ProjectRow(0));
    CHECK(editorState.statusMessage == L"Vybrana slozka neni ZelEngine projekt.");
    CHECK(ListedNames() == Names{L"Far", L"Game", L"Near"});
    RenderFrame();
    Click(ProjectRow(1));
    CHECK(editorState.projectRoot == folder / L"usb\\Game");
    CHECK(ListedNames() == Names{L"Game", L"Far", L"Near"});
}

TEST_CASE("a project that turns out to be gone from a slow drive leaves the list, and its menu closes") {
    const ScratchFolder folder;
    StartHubWithLateDrive(folder, {folder / L"usb\\Gone", folder / L"Near"});
    RightClick(ProjectRow(0));
    FinishChecks();
    CHECK(ListedNames() == Names{L"Near"});
    CHECK_FALSE(MenuIsOpen(MenuKind::Project));
}

TEST_CASE("an answer that comes after its entry has left the list changes nothing") {
    const ScratchFolder folder;
    StartHubWithLateDrive(folder, {folder / L"usb\\Gone", folder / L"usb\\Game"});
    CheckListedProjects();
    REQUIRE(headless.aside.size() == 1);
    RemoveProjectFromList(0);
    FinishChecks();
    CHECK(ListedNames() == Names{L"Game"});
}

TEST_CASE("a window of 1000 pixels has a rail, a narrower one has none") {
    CHECK(LayoutHub(999, 600, 0).rail == Rect{0, 0, 0, 600});
    CHECK(LayoutHub(999, 600, 0).contentLeft == 24);
    CHECK(LayoutHub(1000, 600, 0).rail == Rect{0, 0, 208, 600});
    CHECK(LayoutHub(1000, 600, 0).contentLeft == 232);
}

TEST_CASE("a long list has two columns if each can be 200 pixels wide") {
    // From 36 to 484 - 24 - 12: two columns and the 12 pixels between them are 412 pixels wide.
    const HubLayout narrow = LayoutHub(795, 600, 50), wide = LayoutHub(796, 600, 50);
    const auto isInFirstColumn = [](const Rect& row) { return row.left == 36; };
    CHECK(std::ranges::all_of(narrow.rows, isInFirstColumn));
    CHECK(Width(narrow.rows.front()) == 411);
    CHECK(Width(wide.rows.front()) == 200);
    CHECK(wide.rows.back().left == 36 + 200 + 12);
    CHECK(wide.rows.size() == 2 * narrow.rows.size());
    // A list that fits into one column has one.
    const size_t fitting = narrow.rows.size();
    CHECK(std::ranges::all_of(LayoutHub(796, 600, fitting).rows, isInFirstColumn));
    CHECK(Width(LayoutHub(796, 600, fitting).rows.front()) == 412);
    CHECK_FALSE(std::ranges::all_of(LayoutHub(796, 600, fitting + 1).rows, isInFirstColumn));
}

TEST_CASE("a row of the list is shown if all of it fits") {
    // Rows begin at 168, and the list ends 48 pixels above the window's end: one row needs 70 pixels.
    CHECK(LayoutHub(1360, 285, 3).rows.empty());
    CHECK(LayoutHub(1360, 286, 3).rows.size() == 1 + 1);  // in two columns
    CHECK(LayoutHub(700, 286, 3).rows.size() == 1);
    CHECK(LayoutHub(700, 286 + 77, 3).rows.size() == 1);
    CHECK(LayoutHub(700, 286 + 78, 3).rows.size() == 2);
}

TEST_CASE("the list is drawn where a pixel of it is left, and its rows where a pixel of them is") {
    // The list begins at 24 and ends 336 pixels before the window's edge; rows begin 12 pixels inside it.
    CHECK(LayoutHub(384, 600, 1).rows.empty());
    REQUIRE(LayoutHub(385, 600, 1).rows.size() == 1);
    CHECK(Width(LayoutHub(385, 600, 1).rows.front()) == 1);
    const ScratchFolder folder;
    StartHub(folder);
    headless.clientSize = {360, 600};
    CHECK_FALSE(IsDrawn(L"Moje projekty"));
    headless.clientSize = {361, 600};
    CHECK(IsDrawn(L"Moje projekty"));
}

// The text appears as soon as the window has the larger of two sizes.
static void CheckIsDrawnFrom(ClientSize larger, ClientSize smaller, const std::wstring& text) {
    const ScratchFolder folder;
    StartHub(folder);
    headless.clientSize = smaller;
    CHECK_FALSE(IsDrawn(text));
    headless.clientSize = larger;
    CHECK(IsDrawn(text));
}

TEST_CASE("the Hub's heading is there where it ends before the button") {
    const int32_t end = 24 + MeasureCanvasText(L"Project Hub", 28, 600);  // the button begins at width - 220
    CheckIsDrawnFrom({end + 221, 600}, {end + 220, 600}, L"Project Hub");
}

TEST_CASE("a menu of a project that has left the list since does nothing") {
    for (const int32_t below : {50, 80}) {  // remove, delete
        const ScratchFolder folder;
        StartHub(folder);
        ListProjects(folder, {L"First", L"Second"});
        const Point corner = ProjectRow(1);
        RightClick(corner);
        editorState.recentProjects.pop_back();
        Click({corner.x + 50, corner.y + below});
        CHECK_FALSE(editorState.menu);
        CHECK(ListedNames() == Names{L"First"});
        CHECK(headless.prompts.empty());
    }
}

TEST_CASE("the panel of templates is 30 percent of the window, from 280 to 400 pixels") {
    const struct {
        int32_t width, panel;
    } cases[] = {{936, 280}, {937, 281}, {1330, 399}, {1333, 399}, {1334, 400}, {2000, 400}, {100, 280}};
    for (const auto& [width, panel] : cases) CHECK(Width(LayoutHub(width, 600, 0).templates) == panel);
}

TEST_CASE("the templates' note is shown from a height of 508 pixels on") {
    CheckIsDrawnFrom({1360, 508}, {1360, 507}, L"Projects are saved locally");
}

TEST_CASE("another project begins with a scene of its own, an empty component search and no file selected") {
    const ScratchFolder folder;
    StartProject(folder);
    editorState.componentSearchText = L"rigid";
    editorState.componentSearchActive = true;
    editorState.selectedFile = 1;
    ReturnToHub();
    CHECK_FALSE(editorState.componentSearchActive);
    PutFolder(folder / L"other");
    editorState.componentSearchActive = true;
    AnswerFolder(folder / L"other");
    const uint64_t version = editorState.sceneVersion;
    CreateProject(true);
    CHECK(editorState.sceneVersion != version);
    CHECK(editorState.componentSearchText.empty());
    CHECK_FALSE(editorState.componentSearchActive);
    CHECK(editorState.selectedFile == -1);
}

TEST_CASE("a project that is opened again has no file selected") {
    const ScratchFolder folder;
    StartProject(folder);
    REQUIRE(editorState.fileEntries.size() >= 2);
    editorState.selectedFile = 0;
    ReturnToHub();
    CHECK(OpenProject(ProjectIn(folder)) == Opening::Opened);
    CHECK(editorState.selectedFile == -1);
}

TEST_CASE("a press on a button of the top bar closes the Create menu") {
    const ScratchFolder folder;
    for (const int32_t fromRight : {360, 240, 90}) {  // Project Hub, save, build
        CAPTURE(fromRight);
        StartProject(folder);
        RightClick({600, 300});
        REQUIRE(MenuIsOpen(MenuKind::Create));
        Click({1360 - fromRight, 20});
        CHECK_FALSE(editorState.menu);
        PutFolder(folder / L"projects");
    }
}

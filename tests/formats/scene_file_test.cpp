#include "formats/scene_file.h"

#include "formats/object_line.h"
#include "formats/other_writers.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "platform/headless/fault_injection.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "support/editor_input.h"
#include "support/folder_entries.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>

using namespace std::string_literals;

constexpr const char* kHeader = "\xEF\xBB\xBFZELENGINE_SCENE\t1\r\n";

// A line of 30 columns that names its object, and nothing more than it must.
static std::string Line(const std::string& name) { return "O\t" + name + std::string(28, '\t'); }

static bool LoadBytes(const ScratchFolder& folder, std::string_view bytes) {
    editorState.projectRoot = folder.path;
    PutFile(folder / L"in.scene", bytes);
    return LoadScene(folder / L"in.scene");
}

static std::vector<std::wstring> Names() {
    std::vector<std::wstring> names;
    for (const GameObject& object : editorState.scene) names.push_back(object.name);
    return names;
}

using NameList = std::vector<std::wstring>;

static const NameList kDefaultNames = {L"Game Camera", L"Directional Light", L"PlayerCube",
                                       L"EnemyEntity", L"Platform",          L"Ground"};

TEST_CASE("a scene file holds a byte-order mark, the header and one line per object, with CR LF") {
    const ScratchFolder folder;
    editorState.scene = {{.name = L"Krabi\x10D"
                                  L"ka"}};
    CHECK(SaveScene(folder / L"a.scene"));
    CHECK(
        FileBytes(folder / L"a.scene") ==
        std::string(kHeader) +
            "O\tKrabi\xC4\x8Dka\t0.000000\t0.000000\t0.000000\t0.000000\t0.000000\t0.000000\t1.000000"
            "\t1.000000\t1.000000\tbuiltin:Cube\t0\t-1\t0\t0\t0\t1\t0\t1\t1\t1\t1\t0\t1.000000\t0\t12897614"
            "\t0.720000\t0.180000\t0\t\t0\t0\t1\t1\t0.000000\t9.800000\t0\t1\t0\t\t0\t1\t1.000000\t0.050000"
            "\t0.000000\t0.000000\t0.000000\t1\t\t\t\t\t1\t0\t2957849\t1.000000\t0\t1\tText\t18.000000\r\n");
}

TEST_CASE("a scene comes back from its file") {
    const ScratchFolder folder;
    resetScene(true);
    for (GameObject& object : editorState.scene) object.meshIndex = std::max(object.meshIndex, 0);
    editorState.scene[3].parentIndex = 2;
    editorState.scene[3].scripts = {L"Walk"};
    editorState.scene[3].scriptCount = 1;
    const Scene saved = editorState.scene;
    CHECK(SaveScene(folder / L"a.scene"));
    resetScene(false);
    CHECK(LoadScene(folder / L"a.scene"));
    CHECK(editorState.scene == saved);
}

TEST_CASE("saving what was loaded gives the same bytes") {
    const ScratchFolder folder;
    editorState.projectRoot = folder.path;
    resetScene(true);
    PutFile(folder / L"Files\\box.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    PutFile(folder / L"Files\\brick.bmp", OnePixelBitmap());
    editorState.scene.push_back({.name = L"\U0001F600\x1A\x0B;", .text = L"\xFFFD"});
    editorState.scene.push_back(
        {.position{1e-7f, -0.0f, 3e30f}, .texturePath = folder / L"Files\\brick.bmp"});
    CHECK(SaveScene(folder / L"a.scene"));
    std::string bytes = FileBytes(folder / L"a.scene");
    const size_t mesh = bytes.rfind("builtin:Cube");
    bytes.replace(mesh, 12, "file:Files\\box.obj");
    PutFile(folder / L"a.scene", bytes);

    CHECK(LoadScene(folder / L"a.scene"));
    CHECK(editorState.scene.back().meshIndex == 7);
    CHECK(editorState.scene.back().textureIndex == 0);
    CHECK(SaveScene(folder / L"b.scene"));
    CHECK(FileBytes(folder / L"b.scene") == bytes);
}

TEST_CASE("saving makes the folders on the way") {
    const ScratchFolder folder;
    CHECK(SaveScene(folder / L"Files\\Scenes\\Main.scene"));
    CHECK(FileBytes(folder / L"Files\\Scenes\\Main.scene") == kHeader);
    folderAnswers.workingFolder = folder.path;
    CHECK(SaveScene(L"here.scene"));
    CHECK(FileBytes(folder / L"here.scene") == kHeader);
}

TEST_CASE("a file of only the header, or of nothing at all, gives the default scene with its samples") {
    const std::string inputs[] = {kHeader,
                                  "",
                                  "\xEF\xBB\xBF",
                                  "\r\n\r\n",
                                  "O\n",
                                  "O\tname\tonly\n",
                                  "\0\0\0\0"s,
                                  "\x7F"
                                  "ELF\x02\x01\x01\0\0\xFF\xFE\n\t\t\t"s,
                                  std::string(10'000'000, '\t'),
                                  std::string(10'000'000, 'O')};
    for (const std::string& bytes : inputs) {
        const ScratchFolder folder;
        CHECK(LoadBytes(folder, bytes));
        CHECK(Names() == kDefaultNames);
        CHECK(editorState.selectedIndex == 2);
    }
}

TEST_CASE("a file without the header, with another header or with a newer version loads normally") {
    for (const char* header : {"", "ZELENGINE_SCENE\t99\n", "something else\n", "ZELENGINE_PREFAB\t1\r\n"}) {
        const ScratchFolder folder;
        CHECK(LoadBytes(folder, header + Line("one") + "\n" + Line("two")));
        CHECK(Names() == NameList{L"one", L"two"});
    }
}

TEST_CASE("lines that store no object are skipped one by one") {
    const ScratchFolder folder;
    CHECK(LoadBytes(folder, kHeader + Line("one") + "\r\n\r\nO\tshort\r\nX" + Line("tagged wrongly") +
                                "\r\n" + Line("two") + "\r\n\tO\r\n"));
    CHECK(Names() == NameList{L"one", L"two"});
}

TEST_CASE("a file that is cut short keeps the objects before the cut") {
    const ScratchFolder folder;
    editorState.scene = {{.name = L"one"}, {.name = L"two"}};
    CHECK(SaveScene(folder / L"whole.scene"));
    const std::string bytes = FileBytes(folder / L"whole.scene");
    const size_t secondLine = bytes.find("O\ttwo");
    for (size_t length = 0; length < bytes.size(); ++length) {
        CHECK(LoadBytes(folder, bytes.substr(0, length)));
        if (length == secondLine) CHECK(Names() == NameList{L"one"});
        CHECK(!editorState.scene.empty());
    }
}

TEST_CASE("a file that cannot be read changes nothing") {
    const ScratchFolder folder;
    resetScene(false);
    editorState.scene[0].name = L"kept";
    editorState.meshes.push_back({.name = L"kept"});
    editorState.selectedIndex = 1;
    PutFolder(folder / L"folder.scene");
    PutFile(folder / L"in.scene", kHeader + Line("new"));
    CHECK_FALSE(LoadScene(folder / L"missing.scene"));
    CHECK_FALSE(LoadScene(folder / L"folder.scene"));
    CHECK_FALSE(LoadScene(L""));
    fileFaults = {.failStep = 1};
    CHECK_FALSE(LoadScene(folder / L"in.scene"));
    CHECK(Names() == NameList{L"kept", L"Directional Light"});
    CHECK(editorState.meshes.size() == 8);
    CHECK(editorState.selectedIndex == 1);
}

TEST_CASE("a scene that cannot be saved leaves the old file, whichever step fails") {
    for (int32_t step = 1; step < 12; ++step) {
        const ScratchFolder folder;
        PutFile(folder / L"a.scene", "old");
        RememberFile(folder / L"a.scene");
        editorState.scene = {{.name = L"new"}};
        fileFaults = {.failStep = step, .failFollowing = true};
        const bool isSaved = SaveScene(folder / L"a.scene");
        const bool isOver = fileFaults.steps < step;
        fileFaults = {};
        CHECK(isSaved == isOver);
        CHECK((FileBytes(folder / L"a.scene") == "old") == !isSaved);
        CHECK(EntriesOf(folder.path).size() == 1);
    }
}

TEST_CASE("a full disk, a cut-short write, a folder and a read-only file fail a save and lose nothing") {
    const ScratchFolder folder;
    resetScene(true);
    PutFile(folder / L"a.scene", "old");
    PutFolder(folder / L"folder.scene");
    fileFaults = {.freeBytes = 100};
    CHECK_FALSE(SaveScene(folder / L"a.scene"));
    fileFaults = {.writtenAtOnce = 100};
    CHECK_FALSE(SaveScene(folder / L"a.scene"));
    fileFaults = {};
    CHECK_FALSE(SaveScene(folder / L"folder.scene"));
    CHECK_FALSE(SaveScene(L""));
    MakeReadOnly(folder / L"a.scene", true);
    CHECK_FALSE(SaveScene(folder / L"a.scene"));
    MakeReadOnly(folder / L"a.scene", false);
    CHECK(FileBytes(folder / L"a.scene") == "old");
    CHECK(EntriesOf(folder.path).size() == 2);
}

TEST_CASE("loading drops the earlier meshes and textures") {
    const ScratchFolder folder;
    resetScene(false);
    editorState.meshes.push_back({.name = L"old", .source = L"C:\\old.obj"});
    editorState.textures.emplace_back();
    CHECK(LoadBytes(folder, Line("one")));
    CHECK(editorState.meshes.size() == 7);
    CHECK(editorState.textures.empty());
}

TEST_CASE("a model or image that fails to load leaves the rest of the scene intact") {
    const ScratchFolder folder;
    std::string line = "O\tbroken";
    for (int32_t column = 2; column <= 60; ++column) {
        line += column == 11   ? "\tfile:missing.obj"
                : column == 37 ? "\t1"
                : column == 40 ? "\tmissing.png"
                               : "\t";
    }
    CHECK(LoadBytes(folder, line + "\n" + Line("whole")));
    CHECK(Names() == NameList{L"broken", L"whole"});
    CHECK(editorState.scene[0].meshIndex == -1);
    CHECK_FALSE(editorState.scene[0].hasTexture);
}

// A line of 41 columns with a mesh and a texture.
static std::string LineWith(const std::string& mesh, const std::string& texture) {
    return "O" + std::string(11, '\t') + mesh + std::string(29, '\t') + texture + "\r\n";
}

TEST_CASE("a model and an image that many objects name are read once, even if they cannot be loaded") {
    const ScratchFolder folder;
    PutFile(folder / L"good.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    PutFile(folder / L"bad.obj", "v 0 0 0\n");
    PutFile(folder / L"good.bmp", OnePixelBitmap());
    PutFile(folder / L"bad.bmp", "BM");
    const std::string lines = LineWith("file:good.obj", "good.bmp") + LineWith("file:bad.obj", "bad.bmp");
    std::string many;
    for (int32_t i = 0; i < 100; ++i) many += lines;

    fileFaults = {};
    CHECK(LoadBytes(folder, lines));
    const int32_t steps = fileFaults.steps;
    fileFaults = {};
    CHECK(LoadBytes(folder, many));
    CHECK(fileFaults.steps == steps);

    REQUIRE(editorState.scene.size() == 200);
    CHECK(editorState.meshes.size() == 8);
    CHECK(editorState.textures.size() == 1);
    for (size_t i = 0; i < 200; i += 2) {
        CHECK(editorState.scene[i].meshIndex == 7);
        CHECK(editorState.scene[i].textureIndex == 0);
        CHECK(editorState.scene[i + 1].meshIndex == -1);
        CHECK(editorState.scene[i + 1].textureIndex == -1);
    }
}

TEST_CASE("the last reference that could not be loaded decides the message") {
    const ScratchFolder folder;
    const std::string badModel = LineWith("file:missing.obj", ""), badImage = LineWith("", "missing.png");
    CHECK(LoadBytes(folder, badModel + badImage + badModel));
    CHECK(editorState.statusMessage == L"OBJ model se nepodarilo nacist.");
    CHECK(LoadBytes(folder, badImage + badModel + badImage));
    CHECK(editorState.statusMessage == L"Texture image se nepodarilo nacist.");
}

TEST_CASE("a file that could not be loaded is tried again with the next scene") {
    const ScratchFolder folder;
    const std::string line = LineWith("file:late.obj", "late.bmp");
    CHECK(LoadBytes(folder, line));
    CHECK(editorState.scene[0].meshIndex == -1);
    PutFile(folder / L"late.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    PutFile(folder / L"late.bmp", OnePixelBitmap());
    CHECK(LoadBytes(folder, line));
    CHECK(editorState.scene[0].meshIndex == 7);
    CHECK(editorState.scene[0].textureIndex == 0);
}

TEST_CASE("loading selects the index that the default scene selects, limited to the objects there") {
    const ScratchFolder folder;
    editorState.selectedIndex = -1;
    CHECK(LoadBytes(folder, Line("one")));
    CHECK(editorState.selectedIndex == 0);
    CHECK(LoadBytes(folder, Line("one") + "\n" + Line("two")));
    CHECK(editorState.selectedIndex == 1);
    CHECK(LoadBytes(folder, Line("1") + "\n" + Line("2") + "\n" + Line("3") + "\n" + Line("4")));
    CHECK(editorState.selectedIndex == 2);
}

TEST_CASE("parents that are out of range, the object itself or in a ring are kept as they are read") {
    const ScratchFolder folder;
    std::string bytes;
    for (const char* parent : {"0", "2", "1", "99", "-7", "2147483648", "none"}) {
        std::string line = "O\tx";
        for (int32_t column = 2; column < 30; ++column) line += column == 13 ? "\t"s + parent : "\t";
        bytes += line + "\n";
    }
    CHECK(LoadBytes(folder, bytes));
    std::vector<int32_t> parents;
    for (const GameObject& object : editorState.scene) parents.push_back(object.parentIndex);
    CHECK(parents == std::vector<int32_t>{0, 2, 1, 99, -7, INT32_MAX, -1});
}

TEST_CASE("U+001A, NUL or invalid UTF-8 in a name ends neither the line nor the file") {
    const ScratchFolder folder;
    CHECK(LoadBytes(folder, Line("a\x1A"
                                 "b") +
                                "\r\n" + Line("c\0d"s) + "\r\n" +
                                Line("e\xFF\xED\xA0\x80"
                                     "f")));
    CHECK(Names() == NameList{L"a\x1A"
                              L"b",
                              L"c\0d"s,
                              L"e\xFFFD\xFFFD\xFFFD\xFFFD"
                              L"f"});
}

TEST_CASE("a name with half a surrogate pair is saved as U+FFFD and loads again") {
    const ScratchFolder folder;
    std::wstring name = L"half x";
    name.back() = static_cast<wchar_t>(0xD83D);
    editorState.scene = {{.name = name}};
    CHECK(SaveScene(folder / L"a.scene"));
    CHECK(LoadScene(folder / L"a.scene"));
    CHECK(Names() == NameList{L"half \xFFFD"});
}

TEST_CASE("a scene in UTF-16 with its mark loads like one in UTF-8") {
    const ScratchFolder folder;
    std::string bytes = "\xFF\xFE";
    for (const char c : Line("wide") + "\r\n") bytes += std::string{c, '\0'};
    CHECK(LoadBytes(folder, bytes));
    CHECK(Names() == NameList{L"wide"});
}

TEST_CASE("a line of up to 8190 characters is one object, a longer one is read in pieces") {
    const size_t rest = Line("").size();
    struct {
        size_t length;
        NameList names;
    } cases[] = {
        {8190, {std::wstring(8190 - rest, L'n'), L"next"}},
        // The first piece holds the whole line, and its end comes alone.
        {8191, {std::wstring(8191 - rest, L'n'), L"next"}},
        // The first piece lacks the last column, and the second is a TAB.
        {8192, {L"next"}},
        {100'000, {L"next"}},
    };
    for (const auto& [length, names] : cases) {
        const ScratchFolder folder;
        CHECK(LoadBytes(folder, Line(std::string(length - rest, 'n')) + "\r\n" + Line("next") + "\r\n"));
        CHECK(Names() == names);
    }
}

TEST_CASE("a piece that begins with an object's tag is an object of its own") {
    const ScratchFolder folder;
    CHECK(LoadBytes(folder, std::string(8191, 'x') + Line("inner") + "\n"));
    CHECK(Names() == NameList{L"inner"});
}

TEST_CASE("the open scene's project decides what its references mean") {
    const ScratchFolder folder;
    resetScene(false);
    editorState.projectRoot = L"C:\\Game";
    editorState.scene[0].prefabSource = L"C:\\Game\\Files\\a.prefab";
    CHECK(SaveScene(folder / L"a.scene"));
    editorState.projectRoot = L"D:\\Moved";
    CHECK(LoadScene(folder / L"a.scene"));
    CHECK(editorState.scene[0].prefabSource == L"D:\\Moved\\Files\\a.prefab");
}

TEST_CASE("a long load and a long save show their progress, and Esc does not end them") {
    const ScratchFolder folder;
    StartEditor();
    editorState.scene = Scene(64, GameObject{.name = std::wstring(20'000, L'n')});
    headless.workTimeStep = 1;
    headless.workInput = {{{.kind = InputKind::KeyDown, .key = kKeyEscape}}};
    CHECK(SaveScene(folder / L"a.scene"));
    const auto isShown = [](const wchar_t* text) {
        return std::ranges::find(headless.texts, text, &DrawnText::text) != headless.texts.end();
    };
    CHECK(isShown(L"Ukladam: 16 z 64 objektu"));
    CHECK(isShown(L"Ukladam: 64 z 64 objektu"));
    headless.workInput = {{{.kind = InputKind::KeyDown, .key = kKeyEscape}}};
    CHECK(LoadScene(folder / L"a.scene"));
    headless.workTimeStep = 0;
    CHECK(isShown(L"Nacitam objekty: 1 z 2 MB"));
    CHECK(isShown(L"Nacitam objekty: 2 z 2 MB"));
    CHECK(headless.workInput.empty());
}

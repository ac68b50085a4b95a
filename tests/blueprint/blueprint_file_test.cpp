#include "blueprint/blueprint_file.h"

#include "formats/text_file.h"
#include "platform/headless/fault_injection.h"
#include "state/editor_state.h"
#include "support/capture.h"
#include "support/random_scene.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using NodeList = std::vector<BlueprintNode>;

static bool SameNode(const BlueprintNode& a, const BlueprintNode& b) {
    const auto& [id, title, x, y] = a;
    return id == b.id && title == b.title && x == b.x && y == b.y;
}

static bool SameNodes(const NodeList& a, const NodeList& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), SameNode);
}

static const NodeList& Nodes() { return editorState.blueprintNodes; }

static bool IsDefaultPair() {
    return SameNodes(Nodes(), {{1, L"Event BeginPlay", 130, 120}, {2, L"Print String", 430, 120}});
}

// The nodes of a file with these bytes, read into an editor that showed another document.
static const NodeList& LoadBytes(const ScratchFolder& folder, std::string_view bytes) {
    PutFile(folder / L"a.blueprint", bytes);
    editorState.blueprintNodes = {{9, L"old", 9, 9}};
    CHECK(LoadBlueprint(folder / L"a.blueprint"));
    return Nodes();
}

static std::string SavedBytes(const ScratchFolder& folder, NodeList nodes) {
    editorState.blueprintNodes = std::move(nodes);
    CHECK(SaveBlueprint(folder / L"saved.blueprint"));
    return FileBytes(folder / L"saved.blueprint");
}

TEST_CASE("a Blueprint is a header and one line per node, with a mark and CR LF") {
    const ScratchFolder folder;
    CHECK(SavedBytes(folder, {{1, L"Event BeginPlay", 130, 130}, {7, L"P\u0159\u00EDb\u011Bh", -5, 2000}}) ==
          "\xEF\xBB\xBFZELENGINE_BLUEPRINT\t1\r\n"
          "NODE\t1\tEvent BeginPlay\t130\t130\r\n"
          "NODE\t7\tP\xC5\x99\xC3\xAD"
          "b\xC4\x9Bh\t-5\t2000\r\n");
    CHECK(SavedBytes(folder, {}) == "\xEF\xBB\xBFZELENGINE_BLUEPRINT\t1\r\n");
}

TEST_CASE("nodes are read as they were saved, including duplicate ids, gaps and unknown titles") {
    const ScratchFolder folder;
    const NodeList nodes{{5, L"Branch", 0, 0},
                         {5, L"Teleport", -40, 12},
                         {1, L"", 1, 2},
                         {INT32_MAX, L" x ", INT32_MIN, INT32_MAX}};
    const std::string bytes = SavedBytes(folder, nodes);
    NodeList expected = nodes;
    expected[2].title = L"Node";  // an empty title is none
    CHECK(LoadBlueprint(folder / L"saved.blueprint"));
    CHECK(SameNodes(Nodes(), expected));
    CHECK(SavedBytes(folder, expected) != bytes);
}

TEST_CASE("random documents are read as they were saved") {
    const ScratchFolder folder;
    RandomSource random(20261121);
    for (int32_t run = 0; run < 50; ++run) {
        CAPTURE(run);
        NodeList nodes;
        for (int32_t i = random.IntBetween(1, 30); i > 0; --i) {
            BlueprintNode node{.id = random.IntBetween(1, 9)};
            const auto bits = [&random] { return static_cast<int32_t>(random.Bits()); };
            node.x = random.OneIn(4) ? bits() : random.IntBetween(-99, 999);
            node.y = random.OneIn(4) ? bits() : random.IntBetween(-99, 999);
            for (int32_t c = random.IntBetween(1, 40); c > 0; --c) {
                node.title += static_cast<wchar_t>(random.OneIn(3) ? random.IntBetween(0x20, 0xD7FF)
                                                                   : random.IntBetween(' ', '~'));
            }
            nodes.push_back(node);
        }
        SavedBytes(folder, nodes);
        LoadBlueprint(folder / L"saved.blueprint");
        CHECK(SameNodes(Nodes(), nodes));
    }
}

TEST_CASE("TAB, CR and LF in a title are saved as spaces, so that its line keeps five fields") {
    const ScratchFolder folder;
    CHECK(SavedBytes(folder, {{1, L"a\tb\rc\nd\r\n", 2, 3}}) ==
          "\xEF\xBB\xBFZELENGINE_BLUEPRINT\t1\r\nNODE\t1\ta b c d  \t2\t3\r\n");
    LoadBlueprint(folder / L"saved.blueprint");
    CHECK(SameNodes(Nodes(), {{1, L"a b c d  ", 2, 3}}));
}

TEST_CASE("an id below 1 becomes the number of the node in the file") {
    const ScratchFolder folder;
    const NodeList& nodes = LoadBytes(folder,
                                      "NODE\t5\tA\t5\t6\nNODE\t5\tB\t5\t6\nNODE\t0\tC\t5\t6\n"
                                      "skipped\nNODE\t-3\tD\t5\t6\nNODE\tx\tE\t5\t6\nNODE\t\tF\t5\t6\n");
    REQUIRE(nodes.size() == 6);
    constexpr int32_t kIds[] = {5, 5, 3, 4, 5, 6};
    for (size_t i = 0; i < 6; ++i) CHECK(nodes[i].id == kIds[i]);
}

TEST_CASE("a node without a title is called Node") {
    const ScratchFolder folder;
    CHECK(SameNodes(LoadBytes(folder, "NODE\t1\t\t5\t6\nNODE\t2\t \t5\t6\n"),
                    {{1, L"Node", 5, 6}, {2, L" ", 5, 6}}));
}

TEST_CASE("a line is a node only with NODE in its first field and five fields") {
    const ScratchFolder folder;
    CHECK(SameNodes(LoadBytes(folder,
                              "ZELENGINE_BLUEPRINT\t1\n"
                              "node\t1\tA\t5\t6\n"
                              "Node\t1\tA\t5\t6\n"
                              " NODE\t1\tA\t5\t6\n"
                              "NODES\t1\tA\t5\t6\n"
                              "NODE \t1\tA\t5\t6\n"
                              "\tNODE\t1\tA\t5\t6\n"
                              "NODE\t1\tA\t5\n"
                              "NODE\n"
                              "\n"
                              "NODE\t3\tgood\t5\t6\n"
                              "NODE\t4\tmore\t7\t8\tignored\tNODE\n"
                              "NODE\t\t\t\t\n"),
                    {{3, L"good", 5, 6}, {4, L"more", 7, 8}, {3, L"Node", 0, 0}}));
}

TEST_CASE("magic and version are not checked") {
    const ScratchFolder folder;
    for (const char* header : {"", "ZELENGINE_BLUEPRINT\t99\n", "ZELENGINE_SCENE\t1\n", "anything\n"}) {
        CHECK(SameNodes(LoadBytes(folder, std::string(header) + "NODE\t1\tA\t5\t6\n"), {{1, L"A", 5, 6}}));
    }
}

TEST_CASE("a field's number is what it begins with, limited to 32 bits") {
    const ScratchFolder folder;
    const struct {
        const char* text;
        int32_t value;
    } cases[] = {
        {"12", 12},
        {"+12", 12},
        {"-12", -12},
        {"  7", 7},
        {"12px", 12},
        {"1.9", 1},
        {"", 0},
        {"x", 0},
        {"-", 0},
        {"0012", 12},
        {"2147483647", INT32_MAX},
        {"2147483648", INT32_MAX},
        {"-2147483648", INT32_MIN},
        {"-2147483649", INT32_MIN},
        {"99999999999999999999999999", INT32_MAX},
        {"-99999999999999999999999999", INT32_MIN},
    };
    for (const auto& [text, value] : cases) {
        CAPTURE(text);
        const std::string field = text;
        const NodeList& nodes = LoadBytes(folder, "NODE\t" + field + "\tA\t" + field + "\t" + field + "\r\n");
        REQUIRE(nodes.size() == 1);
        CHECK(nodes[0].x == value);
        CHECK(nodes[0].y == value);
        CHECK(nodes[0].id == (value < 1 ? 1 : value));
    }
}

TEST_CASE("byte-order marks and line ends of other editors are read") {
    const ScratchFolder folder;
    const NodeList expected{{1, L"A", 5, 6}, {2, L"B", 7, 8}};
    CHECK(SameNodes(LoadBytes(folder, "\xEF\xBB\xBFNODE\t1\tA\t5\t6\r\nNODE\t2\tB\t7\t8\r\n"), expected));
    CHECK(SameNodes(LoadBytes(folder, "NODE\t1\tA\t5\t6\nNODE\t2\tB\t7\t8"), expected));
    CHECK(SameNodes(LoadBytes(folder, "NODE\t1\tA\t5\t6\r\r\r\n\r\nNODE\t2\tB\t7\t8\r\r"), expected));
    CHECK(SameNodes(LoadBytes(folder, "NODE\t1\tA\x1A\t5\t6\n"), {{1, L"A\x1A", 5, 6}}));
    CHECK(SameNodes(LoadBytes(folder, "NODE\t1\t\xFF\t5\t6\n"), {{1, L"\xFFFD", 5, 6}}));
}

TEST_CASE("a file without nodes, a binary file and a missing one give the default pair") {
    const ScratchFolder folder;
    LoadBytes(folder, "\xEF\xBB\xBFZELENGINE_BLUEPRINT\t1\r\n");
    CHECK(IsDefaultPair());
    LoadBytes(folder, "");
    CHECK(IsDefaultPair());
    std::string binary;
    for (int32_t i = 0; i < 4096; ++i) binary += static_cast<char>(i * 7);
    LoadBytes(folder, binary);
    CHECK(IsDefaultPair());
    LoadBytes(folder, std::string(9000, '\0'));
    CHECK(IsDefaultPair());
    for (const std::wstring& path : {folder / L"missing.blueprint", folder.path, std::wstring()}) {
        editorState.blueprintNodes = {{9, L"old", 9, 9}};
        CHECK(LoadBlueprint(path));
        CHECK(IsDefaultPair());
    }
}

TEST_CASE("a file that cannot be read to its end gives the default pair") {
    const ScratchFolder folder;
    PutFile(folder / L"a.blueprint", "NODE\t1\tA\t5\t6\n");
    for (int32_t step = 1; step < 20; ++step) {
        fileFaults = {.failStep = step};
        LoadBlueprint(folder / L"a.blueprint");
        if (fileFaults.steps < step) return;  // no step was left to fail
        CHECK(IsDefaultPair());
    }
    FAIL("a load of twenty steps");
}

TEST_CASE("a line of 2,047 characters is read whole, a longer one piece by piece") {
    const ScratchFolder folder;
    const auto line = [](size_t length) {
        const std::string front = "NODE\t1\t", back = "\t5\t6";
        return front + std::string(length - front.size() - back.size(), 'T') + back;
    };
    for (const char* end : {"", "\n", "\r\n"}) {
        CAPTURE(std::string(end).size());
        const NodeList& whole = LoadBytes(folder, line(2047) + end);
        REQUIRE(whole.size() == 1);
        CHECK(whole[0].title == std::wstring(2036, L'T'));
        CHECK(whole[0].x == 5);
        CHECK(whole[0].y == 6);

        // The last digit is a piece of its own: "...\t5\t" still has five fields.
        const NodeList& cut = LoadBytes(folder, line(2048) + end);
        REQUIRE(cut.size() == 1);
        CHECK(cut[0].x == 5);
        CHECK(cut[0].y == 0);

        LoadBytes(folder, line(2050) + end);  // four fields, then "5\t6" or so
        CHECK(IsDefaultPair());
    }
}

TEST_CASE("a node in a later piece of a long line counts") {
    const ScratchFolder folder;
    CHECK(SameNodes(LoadBytes(folder, std::string(2047, 'x') + "NODE\t4\tA\t5\t6\n"), {{4, L"A", 5, 6}}));
    LoadBytes(folder, std::string(2046, 'x') + "NODE\t4\tA\t5\t6\n");
    CHECK(IsDefaultPair());
}

TEST_CASE("a title is cut if its line would be too long to be read back") {
    const ScratchFolder folder;
    for (const size_t length : {2035u, 2036u, 2037u, 5000u}) {
        CAPTURE(length);
        SavedBytes(folder,
                   {{1, std::wstring(length, L'T'), 5, 6}, {22, std::wstring(length, L'U'), -777, 6}});
        LoadBlueprint(folder / L"saved.blueprint");
        // "NODE 1 5 6" and "NODE 22 -777 6" leave 2,036 and 2,032 of the 2,047 units.
        CHECK(SameNodes(Nodes(), {{1, std::wstring(std::min<size_t>(length, 2036), L'T'), 5, 6},
                                  {22, std::wstring(std::min<size_t>(length, 2032), L'U'), -777, 6}}));
    }
}

TEST_CASE("a title is never cut within a surrogate pair") {
    const ScratchFolder folder;
    const std::wstring pair{wchar_t(0xD83D), wchar_t(0xDE00)};
    SavedBytes(folder, {{1, std::wstring(2035, L'T') + pair, 5, 6}});
    LoadBlueprint(folder / L"saved.blueprint");
    CHECK(SameNodes(Nodes(), {{1, std::wstring(2035, L'T'), 5, 6}}));
}

TEST_CASE("a title that just fits is saved to its last unit, be it half of a pair without the other") {
    const ScratchFolder folder;
    const std::wstring title(2035, L'T');
    SavedBytes(folder, {{1, title + wchar_t(0xD83D), 5, 6}});
    LoadBlueprint(folder / L"saved.blueprint");
    CHECK(SameNodes(Nodes(), {{1, title + wchar_t(0xFFFD), 5, 6}}));  // what such a half is in UTF-8
}

TEST_CASE("a Blueprint without a path, or with one that cannot be written, is not saved") {
    const ScratchFolder folder;
    editorState.blueprintNodes = {{1, L"A", 5, 6}};
    CHECK_FALSE(SaveBlueprint(L""));
    CHECK_FALSE(SaveBlueprint(folder / L"missing\\a.blueprint"));
    CHECK_FALSE(SaveBlueprint(folder.path));
}

TEST_CASE("a save on a full disk fails and leaves the old file") {
    const ScratchFolder folder;
    const std::wstring path = folder / L"a.blueprint";
    PutFile(path, "NODE\t1\told\t5\t6\n");
    editorState.blueprintNodes = {{1, L"new", 5, 6}};
    for (const int64_t free : {0, 1, 40}) {
        fileFaults = {.freeBytes = free};
        CHECK_FALSE(SaveBlueprint(path));
        fileFaults = {};
        CHECK(FileBytes(path) == "NODE\t1\told\t5\t6\n");
    }
    CHECK(SaveBlueprint(path));
    CHECK(FileBytes(path) == "\xEF\xBB\xBFZELENGINE_BLUEPRINT\t1\r\nNODE\t1\tnew\t5\t6\r\n");
}

TEST_CASE("a read-only Blueprint is not saved") {
    const ScratchFolder folder;
    const std::wstring path = folder / L"a.blueprint";
    PutFile(path, "old");
    MakeReadOnly(path, true);
    editorState.blueprintNodes = {{1, L"new", 5, 6}};
    CHECK_FALSE(SaveBlueprint(path));
    CHECK(FileBytes(path) == "old");
    MakeReadOnly(path, false);
}

TEST_CASE("a Blueprint of 10,000 nodes is read as it was saved") {
    const ScratchFolder folder;
    NodeList nodes;
    for (int32_t i = 0; i < 10000; ++i) nodes.push_back({i + 1, L"N" + std::to_wstring(i), i, -i});
    SavedBytes(folder, nodes);
    LoadBlueprint(folder / L"saved.blueprint");
    CHECK(SameNodes(Nodes(), nodes));
}

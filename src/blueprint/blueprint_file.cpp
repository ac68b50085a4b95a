#include "blueprint/blueprint_file.h"

#include "base/enough_memory.h"
#include "base/numbers.h"
#include "base/text_units.h"
#include "formats/text_file.h"
#include "state/editor_state.h"

#include <string_view>
#include <utility>

constexpr std::wstring_view kHeader = L"ZELENGINE_BLUEPRINT\t1\n";
constexpr std::wstring_view kNodeTag = L"NODE";
constexpr size_t kNodeFields = 5;  // tag, id, title, x, y
constexpr size_t kLineBuffer = 2048;
constexpr size_t kLongestLine = kLineBuffer - 1;  // units that are read in one piece

static std::vector<BlueprintNode> DefaultNodes() {
    // Other places than in a new file: this is what a damaged one shows.
    return {{.id = 1, .title = L"Event BeginPlay", .x = 130, .y = 120},
            {.id = 2, .title = L"Print String", .x = 430, .y = 120}};
}

// `fields` are those of a node's line, `count` is the number of nodes read before it. A missing title
// becomes "Node", an id below 1 the node's place in the file.
static BlueprintNode ReadNode(const std::vector<std::wstring_view>& fields, size_t count) {
    BlueprintNode node{.id = ReadInteger(fields[1], 0),
                       .title = std::wstring(fields[2].empty() ? L"Node" : fields[2]),
                       .x = ReadInteger(fields[3], 0),
                       .y = ReadInteger(fields[4], 0)};
    if (node.id < 1) node.id = static_cast<int32_t>(count) + 1;
    return node;
}

static bool ReadNodes(const std::wstring& path, std::vector<BlueprintNode>& nodes) {
    TextFile file;
    ReadTextFile(path, file);  // one that cannot be read has no lines
    std::wstring_view line;
    std::vector<std::wstring_view> fields;
    while (NextLine(file, kLineBuffer, line)) {
        SplitAtTabs(line, fields);
        if (fields.size() < kNodeFields || fields[0] != kNodeTag) continue;
        nodes.push_back(ReadNode(fields, nodes.size()));
    }
    return true;
}

bool LoadBlueprint(const std::wstring& path) {
    std::vector<BlueprintNode> nodes;
    if (!WithEnoughMemory([&] { return ReadNodes(path, nodes); })) nodes = {};
    editorState.blueprintNodes = nodes.empty() ? DefaultNodes() : std::move(nodes);
    return true;
}

// The part of a title that fits into a line with `rest` units of other fields. Never ends in half of a
// surrogate pair.
static std::wstring_view TitleThatFits(std::wstring_view title, size_t rest) {
    const size_t room = kLongestLine - rest;
    if (title.size() <= room) return title;
    return title.substr(0, IsFirstHalf(title[room - 1]) ? room - 1 : room);
}

// The numbers are written first, into two texts, because their length decides how much of the title fits. A
// longer line would be read back in pieces, and its second piece as another line.
static void AppendNodeLine(std::wstring& text, const BlueprintNode& node) {
    std::wstring before(kNodeTag), behind;
    before += L'\t';
    AppendInteger(before, node.id);
    before += L'\t';
    for (const int32_t number : {node.x, node.y}) {
        behind += L'\t';
        AppendInteger(behind, number);
    }
    text += before;
    AppendField(text, TitleThatFits(node.title, before.size() + behind.size()));
    text += behind;
    text += L'\n';
}

static bool WriteNodes(const std::wstring& path) {
    std::wstring text(kHeader);
    for (const BlueprintNode& node : editorState.blueprintNodes) AppendNodeLine(text, node);
    return WriteTextFile(path, text);
}

bool SaveBlueprint(const std::wstring& path) {
    return !path.empty() && WithEnoughMemory([&] { return WriteNodes(path); });
}

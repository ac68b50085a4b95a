#include "editor/component_search.h"

#include "base/letter_case.h"
#include "base/text_units.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <algorithm>

constexpr size_t kMaxSearchLength = 40;  // UTF-16 units
constexpr size_t kMaxResults = 3;

// True when the characters of `query` stand in `text` in this order, with anything between them.
static bool IsSubsequence(const std::wstring& query, const std::wstring& text) {
    size_t found = 0;
    for (const wchar_t c : text) {
        if (found < query.size() && c == query[found]) ++found;
    }
    return found == query.size();
}

// How well a component answers a query in capital letters; 0 not at all. The whole query somewhere in title
// and keywords beats scattered letters, and the earlier it stands the better. Equal scores keep the order of
// the table.
static size_t Score(const ComponentCommand& command, const std::wstring& query) {
    if (query.empty()) return 1;
    const std::wstring text = UpperCase(std::wstring(command.title) + L" " + command.keywords);
    const size_t place = text.find(query);
    if (place != std::wstring::npos) return 100 - std::min<size_t>(place, 80);
    return IsSubsequence(query, text) ? query.size() + 20 : 0;
}

std::vector<const ComponentCommand*> SearchComponents(const std::wstring& query) {
    struct Result {
        const ComponentCommand* command;
        size_t score;
    };
    const std::wstring capitals = UpperCase(query);
    std::vector<Result> results;
    for (const ComponentCommand* command : ComponentCommands()) {
        const size_t score = Score(*command, capitals);
        if (score > 0) results.push_back({command, score});
    }
    std::ranges::stable_sort(results, std::ranges::greater{}, &Result::score);

    std::vector<const ComponentCommand*> best;
    for (size_t i = 0; i < std::min(results.size(), kMaxResults); ++i) best.push_back(results[i].command);
    return best;
}

bool AddComponent(int32_t action) {
    if (!SelectionIsValid()) return false;
    const auto commands = ComponentCommands();
    const auto command = std::ranges::find(commands, action, &ComponentCommand::action);
    if (command == commands.end()) return false;

    pushUndo((*command)->undoLabel);
    (*command)->add(SelectedObject());
    SetStatus((*command)->message);
    return true;
}

void TypeIntoComponentSearch(wchar_t unit) {
    AppendTyped(unit, kMaxSearchLength, editorState.typedHalf, editorState.componentSearchText);
}

void EraseInComponentSearch() { EraseLastCharacter(editorState.componentSearchText); }

void CloseComponentSearch() {
    editorState.componentSearchActive = false;
    editorState.typedHalf = 0;
}

void CancelComponentSearch() {
    CloseComponentSearch();
    SetStatus(L"Add Component hledani zavreno.");
}

void CommitComponentSearch() {
    CloseComponentSearch();
    const auto results = SearchComponents(editorState.componentSearchText);
    if (!SelectionIsValid() || results.empty()) return;
    AddComponent(results.front()->action);
    editorState.componentSearchText.clear();
}

#include "scene/name_entry.h"

#include "base/path_text.h"
#include "base/text_units.h"
#include "scene/interaction.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <cassert>
#include <utility>

constexpr size_t kMaxNameLength = 80;  // UTF-16 units
constexpr auto kNameHint = L"Napis novy nazev, Enter potvrdi a Esc zrusi.";

static void Start(NameEntry::Kind kind, int32_t target, const std::wstring& text) {
    NameEntry entry{.kind = kind, .target = target, .text = text};
    CloseEntriesAndMenu();
    editorState.nameEntry = std::move(entry);
}

static void Close() {
    editorState.nameEntry = {};
    editorState.typedHalf = 0;
}

// Renames the object and whatever names it as the target to collect.
static void RenameObject(int32_t index, const std::wstring& name) {
    pushUndo("Rename object");
    const std::wstring oldName = std::exchange(editorState.scene[index].name, name);
    // An object without a name is nobody's target, because an empty target means none.
    for (GameObject& object : editorState.scene) {
        const bool isOther = &object != &editorState.scene[index];
        if (isOther && !oldName.empty() && object.collectTarget == oldName) object.collectTarget = name;
    }
    editorState.selectedIndex = index;
    SetStatus(L"Objekt byl prejmenovan.");
}

static void SetObjectText(int32_t index, const std::wstring& text) {
    pushUndo("Edit text object");
    editorState.scene[index].text = text;
    SetStatus(L"Text objektu byl upraven.");
}

void StartObjectRename(int32_t object) {
    assert(IsObjectIndex(object));
    Start(NameEntry::Kind::Object, object, editorState.scene[object].name);
    SetStatus(kNameHint);
}

void StartTextEdit(int32_t object) {
    assert(IsObjectIndex(object));
    Start(NameEntry::Kind::Text, object, editorState.scene[object].text);
    SetStatus(L"Napis novy text, Enter potvrdi a Esc zrusi.");
}

void StartFileRename(int32_t item, const std::wstring& name) {
    Start(NameEntry::Kind::File, item, name);
    SetStatus(kNameHint);
}

bool NameEntryIsOpen() { return editorState.nameEntry.kind != NameEntry::Kind::Closed; }

void TypeIntoNameEntry(wchar_t unit) {
    AppendTyped(unit, kMaxNameLength, editorState.typedHalf, editorState.nameEntry.text);
}

void EraseInNameEntry() { EraseLastCharacter(editorState.nameEntry.text); }

void CancelNameEntry() {
    Close();
    SetStatus(L"Prejmenovani zruseno.");
}

static std::optional<FileRename> CommitFileName() {
    FileRename rename{editorState.nameEntry.target, SanitizeFileName(editorState.nameEntry.text)};
    if (rename.name.empty()) {
        SetStatus(L"Nazev souboru nesmi byt prazdny.");
        return std::nullopt;
    }
    Close();
    return rename;
}

static void CommitObjectText() {
    const NameEntry& entry = editorState.nameEntry;
    if (!IsObjectIndex(entry.target)) return CancelNameEntry();

    const std::wstring text = TrimSpaces(entry.text);
    const bool isRename = entry.kind == NameEntry::Kind::Object;
    if (isRename && text.empty()) {
        SetStatus(L"Nazev nesmi byt prazdny.");
        return;
    }
    if (isRename) {
        RenameObject(entry.target, text);
    } else {
        SetObjectText(entry.target, text);
    }
    Close();
}

std::optional<FileRename> CommitNameEntry() {
    if (!NameEntryIsOpen()) return std::nullopt;
    if (editorState.nameEntry.kind == NameEntry::Kind::File) return CommitFileName();
    CommitObjectText();
    return std::nullopt;
}

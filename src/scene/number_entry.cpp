#include "scene/number_entry.h"

#include "base/limit.h"
#include "base/numbers.h"
#include "base/text_units.h"
#include "scene/interaction.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

constexpr size_t kMaxNumberLength = 32;
constexpr std::wstring_view kNumberCharacters = L"0123456789+-.,";
constexpr float kMinScale = 0.01f;
constexpr float kMinTextSize = 4, kMaxTextSize = 180;  // pixels

static float& Component(Vec3& vector, int32_t component) {
    assert(component >= 0 && component < 3);
    if (component == 0) return vector.x;
    return component == 1 ? vector.y : vector.z;
}

static float& EditedNumber(GameObject& object, NumberEntry::Field field, int32_t component) {
    switch (field) {
        case NumberEntry::Field::Position: return Component(object.position, component);
        case NumberEntry::Field::Rotation: return Component(object.rotation, component);
        case NumberEntry::Field::Scale: return Component(object.scale, component);
        case NumberEntry::Field::TextSize: break;
    }
    return object.textSize;
}

static float LimitNumber(NumberEntry::Field field, float value) {
    if (field == NumberEntry::Field::Scale) return std::max(value, kMinScale);
    if (field == NumberEntry::Field::TextSize) return Limit(value, kMinTextSize, kMaxTextSize);
    return value;
}

static void Close() { editorState.numberEntry = {}; }

void StartNumberEntry(int32_t object, NumberEntry::Field field, int32_t component) {
    assert(IsObjectIndex(object));
    CloseEntriesAndMenu();
    const float value = EditedNumber(editorState.scene[object], field, component);
    editorState.numberEntry = {
        .open = true, .target = object, .field = field, .component = component, .text = Fixed(value, 2)};
    SetStatus(field == NumberEntry::Field::TextSize
                  ? L"Napis velikost textu, Enter potvrdi a Esc zrusi."
                  : L"Napis hodnotu transformu, Enter potvrdi a Esc zrusi.");
}

void TypeIntoNumberEntry(wchar_t character) {
    std::wstring& text = editorState.numberEntry.text;
    if (text.size() >= kMaxNumberLength) return;
    if (kNumberCharacters.find(character) == std::wstring_view::npos) return;
    text += character == L',' ? L'.' : character;
}

void EraseInNumberEntry() { EraseLastCharacter(editorState.numberEntry.text); }

void CancelNumberEntry() {
    Close();
    SetStatus(L"Editace cisla zrusena.");
}

void CommitNumberEntry() {
    NumberEntry entry = editorState.numberEntry;
    if (!entry.open) return;
    std::ranges::replace(entry.text, L',', L'.');
    const float value = ReadFloat(entry.text, std::numeric_limits<float>::quiet_NaN());
    if (std::isnan(value)) {
        SetStatus(L"Zadej platne cislo.");
        return;
    }
    if (!IsObjectIndex(entry.target)) return CancelNumberEntry();

    const bool isTextSize = entry.field == NumberEntry::Field::TextSize;
    pushUndo(isTextSize ? "Edit text size" : "Edit transform number");
    EditedNumber(editorState.scene[entry.target], entry.field, entry.component) =
        LimitNumber(entry.field, value);
    SetStatus(isTextSize ? L"Velikost textu upravena." : L"Transform hodnota upravena.");
    Close();
}

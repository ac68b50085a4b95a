#include "editor/entry_boxes.h"

#include "editor/fit_text.h"
#include "editor/theme.h"
#include "render/frame_buffer.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cassert>

constexpr int32_t kBoxHeight = 142;
constexpr int32_t kNameBoxWidth = 420, kNumberBoxWidth = 380;
constexpr int32_t kMargin = 18;    // of the contents within the box
constexpr int32_t kBackdrop = 12;  // around the box: what is being named stays in sight

static void DrawField(const Rect& field, const std::wstring& typed) {
    const auto [left, top, right, bottom] = field;
    FillRect(field, kEntryFieldEdge);
    FillRect({left + 1, top + 1, right - 1, bottom - 1}, kEntryFieldFill);
    const std::wstring shown = EndThatFits(typed + L"|", right - left - 16, {15, kNormal});
    DrawText(left + 8, top + 7, shown, kEntryText, 15, kNormal);  // where one types stays in sight
}

// In the middle of the window, over a backdrop only a little larger than the box: the object, or the message,
// that the entry is about stays in sight.
static void DrawEntry(const EditorLayout& layout, int32_t width, const std::wstring& title,
                      const std::wstring& subtitle, const std::wstring& typed) {
    const int32_t left = std::max((layout.width - width) / 2, 8);
    const int32_t top = std::max((layout.height - kBoxHeight) / 2, 56);
    FillRect({left - kBackdrop, top - kBackdrop, left + width + kBackdrop, top + kBoxHeight + kBackdrop},
             kEntryBackdrop);
    DrawPanelBox({left, top, left + width, top + kBoxHeight}, kMenuFill, kMenuLightEdge);

    DrawText(left + kMargin, top + 14, title, kMenuTitle, 18, kSemiBold);
    DrawText(left + kMargin, top + 46, subtitle, kEntrySubtitle, 14, kNormal);
    DrawField({left + kMargin, top + 70, left + width - kMargin, top + 100}, typed);
    DrawText(left + kMargin, top + 112, L"Enter potvrdi  |  Esc zrusi  |  Backspace maze", kHintText, 13,
             kNormal);
}

static std::wstring SubtitleOf(const NameEntry& entry) {
    if (entry.kind == NameEntry::Kind::File) return L"Novy nazev souboru nebo slozky";
    if (entry.kind == NameEntry::Kind::Text) return L"Text objektu";
    return L"Novy nazev objektu";
}

static std::wstring SubtitleOf(const NumberEntry& entry) {
    if (entry.field == NumberEntry::Field::TextSize) return L"Text Size";
    constexpr const wchar_t* kFields[] = {L"Position ", L"Rotation ", L"Scale "};
    assert(entry.component >= 0 && entry.component < 3);
    return std::wstring(kFields[static_cast<int32_t>(entry.field)]) + L"XYZ"[entry.component];
}

void DrawEntryBoxes(const EditorLayout& layout) {
    const NameEntry& name = editorState.nameEntry;
    const NumberEntry& number = editorState.numberEntry;
    if (name.kind != NameEntry::Kind::Closed) {
        DrawEntry(layout, kNameBoxWidth, L"Prejmenovat", SubtitleOf(name), name.text);
    }
    if (number.open) {
        DrawEntry(layout, kNumberBoxWidth, L"Upravit cislo", SubtitleOf(number), number.text);
    }
}

// Whatever is typed into the boxes for names, texts and numbers, the object stays one that can be saved, and
// what it holds then is shown, read and shown as the same.
#include "base/numbers.h"
#include "byte_source.h"
#include "editor/entry_boxes.h"
#include "scene/default_scenes.h"
#include "scene/name_entry.h"
#include "scene/number_entry.h"
#include "support/editor_input.h"
#include "support/editor_laws.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

static EditorState WithSamples() {
    editorState = EditorState{};
    resetScene(true);
    return editorState;
}

static void OpenBox(uint32_t which) {
    constexpr NumberEntry::Field kFields[] = {NumberEntry::Field::Position, NumberEntry::Field::Rotation,
                                              NumberEntry::Field::Scale};
    if (which == 0) return StartObjectRename(2);
    if (which == 1) return StartTextEdit(2);
    if (which == 2) return StartNumberEntry(2, NumberEntry::Field::TextSize, -1);
    StartNumberEntry(2, kFields[which % 3], static_cast<int32_t>(which / 3) - 1);
}

static void CheckNumber(const std::wstring& text) {
    const float value = ReadFloat(text, 0);
    if (!std::isfinite(value)) std::abort();
    const std::wstring shown = Fixed(value, 6);
    if (Fixed(ReadFloat(shown, 0.5f), 6) != shown) std::abort();
    (void)ReadInteger(text, 0);
    (void)ReadUnsigned(text, 0);
}

static void CheckObject() {
    const GameObject& object = editorState.scene[2];
    for (const Vec3& vector : {object.position, object.rotation, object.scale}) {
        if (!std::isfinite(vector.x) || !std::isfinite(vector.y) || !std::isfinite(vector.z)) std::abort();
    }
    if (!std::isfinite(object.textSize) || object.name.empty()) std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr uint32_t kBoxes = 12;
    static const EditorState fresh = WithSamples();
    headless = HeadlessPlatform{};
    headless.clientSize = {700, 400};
    editorState = fresh;
    ByteSource bytes(data, size);
    size_t longestName = 80;
    while (!bytes.IsEmpty()) {
        if (!NameEntryIsOpen() && !editorState.numberEntry.open) {
            OpenBox(bytes.Byte() % kBoxes);
            longestName = std::max<size_t>(80, editorState.nameEntry.text.size());
        }
        const uint32_t what = bytes.Byte();
        if (what < 0x20) {
            constexpr uint32_t kKeys[] = {kKeyEnter, kKeyBackspace, kKeyEscape, kKeyDelete, 'V', 'A'};
            TapKey(kKeys[what % std::size(kKeys)]);
        } else if (what < 0x80) {
            Type({static_cast<wchar_t>(what)});
        } else {  // any unit at all
            Type({static_cast<wchar_t>((what & 0x7F) << 9 | bytes.Byte() << 1 | (what & 1))});
        }
        CheckNumber(editorState.numberEntry.text);
        CheckObject();
        if (FaultInEditor(longestName) != nullptr || headless.quitRequested) std::abort();
    }
    return 0;
}

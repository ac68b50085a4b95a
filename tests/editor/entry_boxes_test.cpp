#include "editor/entry_boxes.h"

#include "state/editor_state.h"
#include "support/capture.h"
#include "support/picture.h"

#include "doctest/doctest.h"

constexpr Pixel kBack{0x102030};

static EditorLayout StartEntry(int32_t width = 1360, int32_t height = 820) {
    editorState = EditorState{};
    StartPicture(width, height, kBack);
    return LayoutEditor(editorState.panels, width, height);
}

static const wchar_t* const kHint = L"Enter potvrdi  |  Esc zrusi  |  Backspace maze";

TEST_CASE("without an open entry nothing is drawn") {
    DrawEntryBoxes(StartEntry());
    CHECK(headless.texts.empty());
    CHECK(CountOf(kBack) == 1360 * 820);
}

TEST_CASE("the name entry shows a title, what the name is for, the typed text with a caret, and a hint") {
    using enum NameEntry::Kind;
    struct {
        NameEntry::Kind kind;
        const wchar_t* subtitle;
    } cases[] = {
        {Object, L"Novy nazev objektu"}, {File, L"Novy nazev souboru nebo slozky"}, {Text, L"Text objektu"}};
    for (const auto& [kind, subtitle] : cases) {
        const EditorLayout layout = StartEntry();
        editorState.nameEntry = {.kind = kind, .target = 2, .text = L"Player"};
        DrawEntryBoxes(layout);
        // Its corner is ((1360 - 420) / 2, (820 - 142) / 2).
        CHECK(headless.texts == std::vector<DrawnText>{
                                    {488, 353, L"Prejmenovat", TextColor{0x78E2FF}, 18, 600},
                                    {488, 385, subtitle, TextColor{0xD2C6BE}, 14, 400},
                                    {496, 416, L"Player|", TextColor{0xF4EEE8}, 15, 400},
                                    {488, 451, kHint, TextColor{0xB0A49A}, 13, 400},
                                });
    }
}

// Checks an entry's box by its corner and width: edges, field, and the backdrop of 12 pixels around it.
static void CheckEntryBox(int32_t left, int32_t top, int32_t width) {
    const int32_t right = left + width, bottom = top + 142;
    CHECK(PixelAt(left - 13, top + 9) == kBack);
    CHECK(PixelAt(left - 12, top - 12) == Pixel{0x181412});
    CHECK(PixelAt(left + 9, top - 13) == kBack);
    CHECK(PixelAt(right + 11, bottom + 11) == Pixel{0x181412});
    CHECK(PixelAt(right + 12, top + 9) == kBack);
    CHECK(PixelAt(left + 9, bottom + 12) == kBack);
    CHECK(CountOf(Pixel{0x181412}) == (width + 24) * (142 + 24) - width * 142);
    CHECK(CountOf(kBack) == frameBuffer.width * frameBuffer.height - (width + 24) * (142 + 24));

    CHECK(PixelAt(left + 9, top) == Pixel{0x786A60});
    CHECK(PixelAt(left + 9, top + 1) == Pixel{0x443B36});
    CHECK(PixelAt(left + 9, top + 2) == Pixel{0x312924});
    CHECK(PixelAt(left, top + 9) == Pixel{0x786A60});
    CHECK(PixelAt(right - 1, top + 9) == Pixel{0x14100D});
    CHECK(PixelAt(left + 9, bottom - 1) == Pixel{0x14100D});

    const int32_t fieldWidth = width - 36;
    CHECK(CountOf(Pixel{0xFFAA69}) == 2 * fieldWidth + 2 * 28);
    CHECK(CountOf(Pixel{0x1E1916}) == (fieldWidth - 2) * 28);
    CHECK(PixelAt(left + 18, top + 70) == Pixel{0xFFAA69});
    CHECK(PixelAt(right - 19, top + 99) == Pixel{0xFFAA69});
    CHECK(PixelAt(left + 19, top + 71) == Pixel{0x1E1916});
    CHECK(PixelAt(left + 17, top + 70) == Pixel{0x312924});
    CHECK(PixelAt(right - 18, top + 99) == Pixel{0x312924});
    CHECK(PixelAt(left + 18, top + 69) == Pixel{0x312924});
    CHECK(PixelAt(left + 18, top + 100) == Pixel{0x312924});
}

TEST_CASE("the name entry is a box of 420 by 142 in the middle, on a backdrop of 12 pixels more") {
    const EditorLayout layout = StartEntry();
    editorState.nameEntry.kind = NameEntry::Kind::Object;
    DrawEntryBoxes(layout);
    CheckEntryBox(470, 339, 420);
}

TEST_CASE("the number entry is a box of 380 by 142 in the middle, on a backdrop of 12 pixels more") {
    const EditorLayout layout = StartEntry();
    editorState.numberEntry = {.open = true, .target = 0, .component = 0};
    DrawEntryBoxes(layout);
    CheckEntryBox(490, 339, 380);
}

TEST_CASE("the number entry names the field and its axis") {
    using enum NumberEntry::Field;
    struct {
        NumberEntry::Field field;
        int32_t component;
        const wchar_t* subtitle;
    } cases[] = {
        {Position, 0, L"Position X"}, {Position, 1, L"Position Y"}, {Position, 2, L"Position Z"},
        {Rotation, 0, L"Rotation X"}, {Rotation, 1, L"Rotation Y"}, {Rotation, 2, L"Rotation Z"},
        {Scale, 0, L"Scale X"},       {Scale, 1, L"Scale Y"},       {Scale, 2, L"Scale Z"},
        {TextSize, -1, L"Text Size"},
    };
    for (const auto& [field, component, subtitle] : cases) {
        const EditorLayout layout = StartEntry();
        editorState.numberEntry = {
            .open = true, .target = 2, .field = field, .component = component, .text = L"-1.5"};
        DrawEntryBoxes(layout);
        CHECK(headless.texts == std::vector<DrawnText>{
                                    {508, 353, L"Upravit cislo", TextColor{0x78E2FF}, 18, 600},
                                    {508, 385, subtitle, TextColor{0xD2C6BE}, 14, 400},
                                    {516, 416, L"-1.5|", TextColor{0xF4EEE8}, 15, 400},
                                    {508, 451, kHint, TextColor{0xB0A49A}, 13, 400},
                                });
    }
}

TEST_CASE("an empty entry shows the caret alone") {
    const EditorLayout layout = StartEntry();
    editorState.nameEntry.kind = NameEntry::Kind::Text;
    DrawEntryBoxes(layout);
    REQUIRE(headless.texts.size() == 4);
    CHECK(headless.texts[2].text == L"|");
}

TEST_CASE("in a small window an entry stays 8 pixels from the left and 56 from the top") {
    struct {
        int32_t width, height, left, top;
    } cases[] = {{300, 200, 8, 56}, {436, 254, 8, 56}, {438, 256, 9, 57}, {1, 1, 8, 56}};
    for (const auto& [width, height, left, top] : cases) {
        const EditorLayout layout = StartEntry(width, height);
        editorState.nameEntry.kind = NameEntry::Kind::Object;
        DrawEntryBoxes(layout);
        CAPTURE(width);
        REQUIRE(headless.texts.size() == 4);
        CHECK(headless.texts[0].x == left + 18);
        CHECK(headless.texts[0].y == top + 14);
    }
    const EditorLayout layout = StartEntry(300, 200);
    editorState.numberEntry = {.open = true, .component = 2};
    DrawEntryBoxes(layout);
    CHECK(headless.texts[0].x == 26);
    CHECK(headless.texts[0].y == 70);
    CHECK(PixelAt(0, 70) == Pixel{0x181412});
    CHECK(PixelAt(0, 43) == kBack);
}

TEST_CASE("of a text that is longer than its field the end is shown, with the caret inside") {
    const EditorLayout layout = StartEntry();
    const std::wstring name = std::wstring(60, L'a') + std::wstring(20, L'b');
    editorState.nameEntry = {.kind = NameEntry::Kind::Object, .target = 2, .text = name};
    DrawEntryBoxes(layout);
    REQUIRE(headless.texts.size() == 4);
    // 368 pixels take 52 characters of 7 pixels, the caret among them.
    CHECK(headless.texts[2].text == std::wstring(31, L'a') + std::wstring(20, L'b') + L"|");
}

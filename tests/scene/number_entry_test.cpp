#include "scene/number_entry.h"

#include "scene/undo.h"
#include "support/edited_scene.h"
#include "support/open_menu.h"

#include "doctest/doctest.h"

#include <limits>

using Field = NumberEntry::Field;

static void TypeInstead(const std::wstring& text) {
    while (!editorState.numberEntry.text.empty()) EraseInNumberEntry();
    for (const wchar_t character : text) TypeIntoNumberEntry(character);
}

// Types a number for the sample cube and presses Enter.
static const GameObject& Entered(Field field, int32_t component, const std::wstring& text) {
    StartWithSamples();
    StartNumberEntry(2, field, component);
    TypeInstead(text);
    CommitNumberEntry();
    return editorState.scene[2];
}

TEST_CASE("a number entry starts with two decimals of what there is") {
    StartWithSamples();
    GameObject& cube = editorState.scene[2];
    cube.position = {1.005f, -2.5f, 3};
    cube.rotation = {0.1f, -0.001f, 1000};
    cube.scale = {4, 5, 6.789f};
    cube.textSize = 18;
    struct {
        Field field;
        int32_t component;
        const wchar_t* text;
    } cases[] = {
        {Field::Position, 0, L"1.00"},   {Field::Position, 1, L"-2.50"}, {Field::Position, 2, L"3.00"},
        {Field::Rotation, 0, L"0.10"},   {Field::Rotation, 1, L"-0.00"}, {Field::Rotation, 2, L"1000.00"},
        {Field::Scale, 0, L"4.00"},      {Field::Scale, 1, L"5.00"},     {Field::Scale, 2, L"6.79"},
        {Field::TextSize, -1, L"18.00"},
    };
    for (const auto& [field, component, text] : cases) {
        StartNumberEntry(2, field, component);
        CHECK(editorState.numberEntry.open);
        CHECK(editorState.numberEntry.target == 2);
        CHECK(editorState.numberEntry.text == text);
        CHECK(editorState.statusMessage == (field == Field::TextSize
                                                ? L"Napis velikost textu, Enter potvrdi a Esc zrusi."
                                                : L"Napis hodnotu transformu, Enter potvrdi a Esc zrusi."));
    }
}

TEST_CASE("a typed number changes its own field and nothing else") {
    for (int32_t i = 0; i < 9; ++i) {
        const auto field = static_cast<Field>(i / 3);
        StartWithSamples();
        GameObject expected = editorState.scene[2];
        float* const numbers[] = {&expected.position.x, &expected.position.y, &expected.position.z,
                                  &expected.rotation.x, &expected.rotation.y, &expected.rotation.z,
                                  &expected.scale.x,    &expected.scale.y,    &expected.scale.z};
        *numbers[i] = 2.5f;
        CHECK(Entered(field, i % 3, L"2.5") == expected);
        CHECK(editorState.statusMessage == L"Transform hodnota upravena.");
        CHECK_FALSE(editorState.numberEntry.open);
        CHECK(editorState.numberEntry.target == -1);
        CHECK(editorState.undoSteps.size() == 1);
    }
}

TEST_CASE("a typed comma counts as a decimal point") {
    StartWithSamples();
    StartNumberEntry(2, Field::Position, 0);
    TypeInstead(L"1,5");
    CHECK(editorState.numberEntry.text == L"1.5");
    CommitNumberEntry();
    CHECK(editorState.scene[2].position.x == 1.5f);
}

TEST_CASE("only digits, signs, points and commas are typed into a number, 32 of them at most") {
    StartWithSamples();
    StartNumberEntry(2, Field::Position, 0);
    TypeInstead(L"a1 e2\t+x-.\x7f,9");
    CHECK(editorState.numberEntry.text == L"12+-..9");
    TypeInstead(std::wstring(32, L'1') + L"2");
    CHECK(editorState.numberEntry.text == std::wstring(32, L'1'));
}

TEST_CASE("a number is read from the start of the text and the rest is ignored") {
    struct {
        const wchar_t* text;
        float value;
    } cases[] = {{L"7", 7},  {L"-7", -7},      {L"+7", 7},  {L".5", 0.5f},  {L"+.5", 0.5f}, {L"-.5", -0.5f},
                 {L"5.", 5}, {L"1.2.3", 1.2f}, {L"1-2", 1}, {L"00012", 12}, {L"-0", 0},     {L"3+4.5-", 3}};
    for (const auto& [text, value] : cases) CHECK(Entered(Field::Position, 1, text).position.y == value);
}

TEST_CASE("a text without a number says so, and the box stays open") {
    for (const wchar_t* text : {L"", L"-", L"+", L".", L"+.", L"--5", L"+-5", L"-.", L"..5"}) {
        CHECK(Entered(Field::Position, 1, text).position.y == 0.35f);
        CHECK(editorState.statusMessage == L"Zadej platne cislo.");
        CHECK(editorState.numberEntry.open);
        CHECK(editorState.numberEntry.text == text);
        CHECK(editorState.undoSteps.empty());
    }
}

TEST_CASE("a number that is not finite is refused") {
    for (const wchar_t* text : {L"1e9999", L"-1e9999", L"nan", L"inf", L"-inf"}) {
        StartWithSamples();
        StartNumberEntry(2, Field::Position, 0);
        editorState.numberEntry.text = text;
        CommitNumberEntry();
        CHECK(editorState.scene[2].position.x == 0);
        CHECK(editorState.statusMessage == L"Zadej platne cislo.");
        CHECK(editorState.numberEntry.open);
    }
}

TEST_CASE("a scale is at least one hundredth") {
    CHECK(Entered(Field::Scale, 0, L"0").scale.x == 0.01f);
    CHECK(Entered(Field::Scale, 1, L"-3").scale.y == 0.01f);
    CHECK(Entered(Field::Scale, 2, L"0.01").scale.z == 0.01f);
    CHECK(Entered(Field::Scale, 2, L"500").scale.z == 500);
}

TEST_CASE("a position and a rotation take any number") {
    CHECK(Entered(Field::Position, 0, L"-123456").position.x == -123456);
    CHECK(Entered(Field::Rotation, 0, L"-400").rotation.x == -400);
}

TEST_CASE("a text size lies between 4 and 180") {
    CHECK(Entered(Field::TextSize, -1, L"200").textSize == 180);
    CHECK(Entered(Field::TextSize, -1, L"2").textSize == 4);
    CHECK(Entered(Field::TextSize, -1, L"32,5").textSize == 32.5f);
    CHECK(editorState.statusMessage == L"Velikost textu upravena.");
    undo();
    CHECK(editorState.scene[2].textSize == 18);
}

TEST_CASE("a large number that its box shows is stored as it is") {
    StartWithSamples();
    editorState.scene[2].position.x = std::numeric_limits<float>::max();
    StartNumberEntry(2, Field::Position, 0);
    TypeIntoNumberEntry(L'1');
    CommitNumberEntry();
    CHECK(editorState.scene[2].position.x == std::numeric_limits<float>::max());
}

TEST_CASE("a number for an object that is gone is dropped") {
    StartWithSamples();
    StartNumberEntry(5, Field::Position, 0);
    editorState.scene.resize(5);
    CommitNumberEntry();
    CHECK_FALSE(editorState.numberEntry.open);
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.statusMessage == L"Editace cisla zrusena.");
}

TEST_CASE("cancelling a number changes nothing") {
    StartWithSamples();
    StartNumberEntry(2, Field::Position, 1);
    TypeInstead(L"9");
    CancelNumberEntry();
    CHECK_FALSE(editorState.numberEntry.open);
    CHECK(editorState.numberEntry.target == -1);
    CHECK(editorState.scene[2].position.y == 0.35f);
    CHECK(editorState.statusMessage == L"Editace cisla zrusena.");
}

TEST_CASE("a number entry closes the name entry, the search and the menus") {
    StartWithSamples();
    editorState.nameEntry.kind = NameEntry::Kind::Object;
    editorState.componentSearchActive = true;
    editorState.menu = PopupMenu{.kind = MenuKind::Create};
    StartNumberEntry(2, Field::Position, 0);
    CHECK(editorState.nameEntry.kind == NameEntry::Kind::Closed);
    CHECK_FALSE(editorState.componentSearchActive);
    CHECK_FALSE(MenuIsOpen(MenuKind::Create));
}

TEST_CASE("committing a closed number entry does nothing") {
    StartWithSamples();
    editorState.statusMessage = L"before";
    CommitNumberEntry();
    CHECK(editorState.statusMessage == L"before");
}

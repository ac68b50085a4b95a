#include "editor/component_search.h"

#include "support/edited_scene.h"

#include "doctest/doctest.h"

static std::vector<std::wstring> Found(const std::wstring& query) {
    std::vector<std::wstring> titles;
    for (const ComponentCommand* command : SearchComponents(query)) titles.emplace_back(command->title);
    return titles;
}

static void StartSearch(const std::wstring& text) {
    StartWithSamples();
    editorState.componentSearchActive = true;
    for (const wchar_t unit : text) TypeIntoComponentSearch(unit);
}

TEST_CASE("ten components can be found, by their titles and keywords") {
    const struct {
        std::wstring title, keywords;
        int32_t action;
    } components[] = {
        {L"Rigidbody", L"rigidbody physics body fyzika mass drag", 41},
        {L"Shape", L"shape mesh object cube sphere capsule cylinder plane", 11},
        {L"Color", L"color colour barva material", 12},
        {L"Animation", L"animation rotate rotace pohyb", 13},
        {L"Script", L"script code cpp player controller", 14},
        {L"CollectOnTouch", L"collect pickup score touch collision score +1", 46},
        {L"PlanePrefabSpawner", L"plane prefab spawn random povrch plocha", 47},
        {L"Texture", L"texture image obrazek png jpg material", 40},
        {L"Collision", L"collision collider coll kolize solid", 33},
        {L"Gravitation", L"gravity gravitation grav gravitace fall", 34},
    };
    size_t next = 0;
    REQUIRE(ComponentCommands().size() == std::size(components));
    for (const ComponentCommand* command : ComponentCommands()) {
        const auto& [title, keywords, action] = components[next++];
        CHECK(command->title == title);
        CHECK(command->keywords == keywords);
        CHECK(command->action == action);
    }
}

TEST_CASE("the search lists the best three components") {
    struct {
        const wchar_t* query;
        std::vector<std::wstring> titles;
    } cases[] = {
        {L"", {L"Rigidbody", L"Shape", L"Color"}},
        {L"col", {L"Color", L"CollectOnTouch", L"Collision"}},
        {L"COL", {L"Color", L"CollectOnTouch", L"Collision"}},
        {L"rgb", {L"Rigidbody", L"Texture"}},
        {L"zzz", {}},
        {L"+1", {L"CollectOnTouch"}},
        {L"png", {L"Texture"}},
        {L"material", {L"Color", L"Texture"}},
        {L"shape shape", {L"Shape"}},
    };
    for (const auto& [query, titles] : cases) CHECK(Found(query) == titles);
}

TEST_CASE("the 41st character of a search is dropped") {
    StartSearch(std::wstring(40, L'a') + L"b");
    CHECK(editorState.componentSearchText == std::wstring(40, L'a'));
}

TEST_CASE("Backspace in a search removes the last character until none is left") {
    StartSearch(L"ab");
    EraseInComponentSearch();
    CHECK(editorState.componentSearchText == L"a");
    EraseInComponentSearch();
    EraseInComponentSearch();
    CHECK(editorState.componentSearchText == L"");
}

TEST_CASE("Escape closes the search and keeps its text") {
    StartSearch(L"col");
    CancelComponentSearch();
    CHECK_FALSE(editorState.componentSearchActive);
    CHECK(editorState.componentSearchText == L"col");
    CHECK(editorState.statusMessage == L"Add Component hledani zavreno.");
}

TEST_CASE("Enter adds the first component found and ends the search") {
    for (const auto& [text, message] :
         {std::pair{L"rigid", L"Pridan Rigidbody: fyzikalni telo s kolizi, mass, drag a gravitaci."},
          {L"touch", L"Pridan CollectOnTouch. Pretahni .prefab z Files do Inspectoru."},
          {L"spawn",
           L"Pridan PlanePrefabSpawner. Pretahni .prefab do Inspectoru, nebo pouzije prvni prefab ve "
           L"Files."}}) {
        StartSearch(text);
        CommitComponentSearch();
        CHECK(editorState.statusMessage == message);
        CHECK_FALSE(editorState.componentSearchActive);
        CHECK(editorState.componentSearchText == L"");
        CHECK(editorState.undoSteps.size() == 1);
    }
}

TEST_CASE("Enter without a component or without an object only closes the search") {
    for (const auto& [text, selected] : {std::pair{L"zzz", 2}, {L"col", -1}}) {
        StartSearch(text);
        editorState.selectedIndex = selected;
        const Scene before = editorState.scene;
        const std::wstring message = editorState.statusMessage;
        CommitComponentSearch();
        CHECK_FALSE(editorState.componentSearchActive);
        CHECK(editorState.componentSearchText == text);
        CHECK(editorState.scene == before);
        CHECK(editorState.statusMessage == message);
        CHECK(editorState.undoSteps.empty());
    }
}

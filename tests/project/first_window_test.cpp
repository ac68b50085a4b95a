// What a user sees of a shipped scene in a window of its first size, 1360 x 820.
#include "editor/components.h"
#include "editor/layout.h"
#include "formats/scene_file.h"
#include "project/project_lifecycle.h"
#include "render/raster/camera.h"
#include "scene/transform.h"
#include "support/editor_input.h"
#include "support/project_input.h"
#include "support/sample_project.h"
#include "support/scratch_folder.h"
#include "viewport/scene_view.h"
#include "viewport/viewport_overlay.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <string>
#include <vector>

static const std::pair<const wchar_t*, const wchar_t*> kShippedScenes[] = {
    {L"Project", L"Main.scene"}, {L"Project", L"Level2.scene"}, {L"Dive", L"Main.scene"},
    {L"Dive", L"Reef.scene"},    {L"Harvest", L"Main.scene"},
};

static void OpenInFirstWindow(const wchar_t* sample, const wchar_t* scene) {
    StartEditor();
    OpenSample(sample);
    REQUIRE(LoadScene(InSample(std::wstring(L"Files\\Scenes\\") + scene)));
    RenderFrame();
}

static int32_t BottomPanelTop() { return LayoutEditor(editorState.panels, 1360, 820).bottomTop; }

// What can be added is offered below the search box, and counts too for the object that a user sees first.
static void CheckFirstInspectorIsWhole() {
    CAPTURE(editorState.scene[static_cast<size_t>(editorState.selectedIndex)].name);
    REQUIRE_FALSE(editorState.inspectorZones.empty());
    for (const HitZone& zone : editorState.inspectorZones) CHECK(zone.rect.bottom <= BottomPanelTop());
}

static void CheckPanelsEndAboveTheBottomPanel() {
    CheckFirstInspectorIsWhole();
    const size_t objects = editorState.scene.size();
    CHECK(editorState.hierarchyRows.size() == objects);
    CHECK(objects <= 21);
    for (const HierarchyRow& row : editorState.hierarchyRows) CHECK(row.y + 22 <= BottomPanelTop());
    for (size_t i = 0; i < objects; ++i) {
        if (editorState.scene[i].isEntity) continue;  // these have coordinates only
        CAPTURE(editorState.scene[i].name);
        editorState.selectedIndex = static_cast<int32_t>(i);
        RenderFrame();
        // The search box comes below every section.
        const auto search =
            std::ranges::find(editorState.inspectorZones, kOpenSearchAction, &HitZone::action);
        REQUIRE(search != editorState.inspectorZones.end());
        CHECK(search->rect.bottom < BottomPanelTop());
    }
}

TEST_CASE(
    "no row and no section of a shipped scene reaches the bottom panel, saved and opened again or not") {
    for (const auto& [sample, scene] : kShippedScenes) {
        CAPTURE(std::wstring(sample) + L" " + scene);
        OpenInFirstWindow(sample, scene);
        CheckPanelsEndAboveTheBottomPanel();
        const ScratchFolder saved;
        REQUIRE(SaveScene(saved / scene));
        REQUIRE(LoadScene(saved / scene));
        RenderFrame();
        CheckPanelsEndAboveTheBottomPanel();
    }
}

TEST_CASE("no row and no section of a template reaches the bottom panel, saved and opened again or not") {
    for (const bool empty : {false, true}) {
        CAPTURE(empty);
        const ScratchFolder folder;
        StartHub(folder);
        AnswerFolder(folder / L"projects");
        CreateProject(empty);
        RenderFrame();
        CheckPanelsEndAboveTheBottomPanel();
        REQUIRE(LoadScene(editorState.scenePath));
        RenderFrame();
        CheckPanelsEndAboveTheBottomPanel();
    }
}

// Where the texts of the scene lie, seen from the editor's camera or from the game's.
static std::vector<Rect> TextRects(bool playing, const Rect& viewport) {
    const Matrix4 view = ViewMatrix(ActiveCamera(editorState.scene, editorState.camera, playing));
    const Matrix4 viewProjection = MultiplyMatrix(
        ProjectionMatrix(viewport.right - viewport.left, viewport.bottom - viewport.top), view);
    std::vector<Rect> rects;
    for (size_t i = 0; i < editorState.scene.size(); ++i) {
        const GameObject& object = editorState.scene[i];
        if (!object.isText) continue;
        const Vec3 at = WorldPosition(editorState.scene, static_cast<int32_t>(i));
        Point anchor;
        REQUIRE(ProjectToPixel(viewProjection, at, viewport, anchor));
        rects.push_back(TextObjectRect(object, anchor));
    }
    return rects;
}

static bool Overlap(const Rect& a, const Rect& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

static void CheckTextsAreReadable(bool playing, const Rect& viewport, const Rect& tools) {
    const std::vector<Rect> texts = TextRects(playing, viewport);
    CHECK(texts.size() == 2);
    for (size_t i = 0; i < texts.size(); ++i) {
        CHECK(texts[i].left >= viewport.left);
        CHECK(texts[i].right <= viewport.right);
        CHECK(texts[i].top >= viewport.top);
        CHECK(texts[i].bottom <= viewport.bottom);
        CHECK_FALSE(Overlap(texts[i], tools));
        for (size_t j = 0; j < i; ++j) CHECK_FALSE(Overlap(texts[i], texts[j]));
    }
}

TEST_CASE("score and hint of a shipped scene are whole, apart from each other and before everything else") {
    for (const auto& [sample, scene] : kShippedScenes) {
        CAPTURE(std::wstring(sample) + L" " + scene);
        OpenInFirstWindow(sample, scene);
        CheckTextsAreReadable(false, LayoutEditor(editorState.panels, 1360, 820).viewport,
                              {238, 50, 353, 159});
        CheckTextsAreReadable(true, {0, 0, 1360, 820}, {});
        const auto firstText = std::ranges::find(editorState.scene, true, &GameObject::isText);
        CHECK(std::all_of(firstText, editorState.scene.end(), [](const GameObject& o) { return o.isText; }));
    }
}

TEST_CASE("the first picture of a shipped scene says how to play, and playing turns that into the score") {
    for (const auto& [sample, scene] : kShippedScenes) {
        CAPTURE(std::wstring(sample) + L" " + scene);
        OpenInFirstWindow(sample, scene);
        CHECK(Named(L"Score").text == L"Press P to play");
        HandleInput({.kind = InputKind::KeyDown, .key = 'P'});
        CHECK(Named(L"Score").text == L"Score: 0");
        HandleInput({.kind = InputKind::KeyDown, .key = 'P'});
        CHECK(Named(L"Score").text == L"Press P to play");
    }
}

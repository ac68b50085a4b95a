#include "editor/components.h"

#include "support/capture.h"
#include "support/changed_field.h"
#include "support/inspector_panel.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// What the Inspector of an object shows.
struct ShownObject {
    std::vector<DrawnText> texts{};
    std::vector<Pixel> pixels{};

    friend bool operator==(const ShownObject&, const ShownObject&) = default;
};

static ShownObject Shown(const GameObject& object) {
    OpenInspector(object, 1360, 3000);
    const auto count = size_t{1360} * 3000;
    return {headless.texts, {frameBuffer.pixels, frameBuffer.pixels + count}};
}

TEST_CASE(
    "every field of an object shows in the Inspector, but for its parent, its prefab and whether it is "
    "active") {
    const GameObject everything = ObjectWithEverything();
    const ShownObject before = Shown(everything);
    for (size_t field = 0; field < kFieldCount; ++field) {
        const std::string name = FieldName(field);
        CAPTURE(name);
        GameObject changed = WithFieldChanged(everything, field);
        if (name == "isLight") changed.isText = false;  // a Text's chip hides that of a Light
        const bool isHidden = name == "parentIndex" || name == "prefabSource" || name == "active" ||
                              name == "textureIndex";  // of no loaded image
        CHECK((Shown(changed) == before) == isHidden);
    }
}

TEST_CASE("no two actions of the Inspector share a number") {
    std::vector<int32_t> numbers{kRemoveScriptAction, kOpenSearchAction};
    for (const Component* component : Components()) {
        for (const InspectorAction& action : component->actions) {
            for (int32_t i = 0; i < action.count; ++i) numbers.push_back(action.number + i);
        }
    }
    for (const ComponentCommand* command : ComponentCommands()) numbers.push_back(command->action);
    std::ranges::sort(numbers);
    for (size_t i = 1; i < numbers.size(); ++i) CHECK(numbers[i] != numbers[i - 1]);
    CHECK(numbers.front() > 0);
}

TEST_CASE("every component that says how it is added is found by the search") {
    for (const Component* component : Components()) {
        if (component->adding.action == 0) continue;
        const std::wstring title = component->adding.title;
        CAPTURE(title);
        CHECK(std::ranges::count(ComponentCommands(), &component->adding) == 1);
    }
}

TEST_CASE("a component that was added shows its section, and its [x] takes it away") {
    for (const Component* component : Components()) {
        if (component->adding.action == 0) continue;
        const std::wstring title = component->look.title;
        CAPTURE(title);
        GameObject object{.hasShape = false};
        CHECK_FALSE(component->isPresent(object));
        component->adding.add(object);
        CHECK(component->isPresent(object));
        CHECK(IsOpen(*component, object));
        OpenInspector(object);
        CHECK(PressZone(component->remove));
        CHECK_FALSE(component->isPresent(InspectedObject()));
    }
}

#include "state/scene_snapshot.h"

#include "scene/object_fields.h"
#include "scene/snapshots.h"
#include "support/capture.h"
#include "support/edited_scene.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <limits>
#include <set>

static Scene NumberedScene(int32_t count) {
    Scene scene;
    for (int32_t i = 0; i < count; ++i) scene.push_back({.name = L"o" + std::to_wstring(i)});
    return scene;
}

static bool SameScenes(const Scene& a, const Scene& b) { return std::ranges::equal(a, b, SameBits); }

static Scene Restored(const SceneSnapshot& snapshot) {
    Scene scene;
    RestoreSnapshot(snapshot, scene);
    return scene;
}

// Runs of `snapshot` that `earlier` does not hold.
static size_t OwnRuns(const SceneSnapshot& snapshot, const SceneSnapshot& earlier) {
    const std::set<std::shared_ptr<const Scene>> shared(earlier.runs.begin(), earlier.runs.end());
    return static_cast<size_t>(
        std::ranges::count_if(snapshot.runs, [&](const auto& run) { return !shared.contains(run); }));
}

TEST_CASE("a snapshot holds the scene that it was taken of") {
    for (const int32_t count : {0, 1, 63, 64, 65, 1000}) {
        const Scene scene = NumberedScene(count);
        const SceneSnapshot snapshot = TakeSnapshot(scene, nullptr);
        CHECK(SameScenes(Restored(snapshot), scene));
        for (const auto& run : snapshot.runs) CHECK((!run->empty() && run->size() <= 64));
    }
}

TEST_CASE("a snapshot of the same scene shares everything") {
    const Scene scene = NumberedScene(1000);
    const SceneSnapshot first = TakeSnapshot(scene, nullptr);
    const SceneSnapshot second = TakeSnapshot(scene, &first);
    CHECK(second.runs == first.runs);
    CHECK(second.parents == first.parents);
}

TEST_CASE("a change in one place costs at most two runs, whatever the change") {
    struct {
        const char* name;
        void (*change)(Scene&);
    } cases[] = {
        {"one object changed", [](Scene& scene) { scene[50'000].position.x = 1; }},
        {"first object changed", [](Scene& scene) { scene.front().position.x = 1; }},
        {"last object changed", [](Scene& scene) { scene.back().position.x = 1; }},
        {"object inserted", [](Scene& scene) { scene.insert(scene.begin() + 50'000, GameObject{}); }},
        {"object inserted first", [](Scene& scene) { scene.insert(scene.begin(), GameObject{}); }},
        {"object appended", [](Scene& scene) { scene.push_back({}); }},
        {"object removed", [](Scene& scene) { scene.erase(scene.begin() + 50'000); }},
        {"first object removed", [](Scene& scene) { scene.erase(scene.begin()); }},
        {"last object removed", [](Scene& scene) { scene.pop_back(); }},
        {"block removed", [](Scene& scene) { scene.erase(scene.begin() + 50'000, scene.begin() + 50'777); }},
    };
    const Scene before = NumberedScene(100'000);
    const SceneSnapshot earlier = TakeSnapshot(before, nullptr);
    for (const auto& [name, change] : cases) {
        CAPTURE(name);
        Scene scene = before;
        change(scene);
        const SceneSnapshot snapshot = TakeSnapshot(scene, &earlier);
        CHECK(OwnRuns(snapshot, earlier) <= 2);
        CHECK(SameScenes(Restored(snapshot), scene));
        CHECK(SameScenes(Restored(earlier), before));
    }
}

TEST_CASE("an object moved far through the scene costs a few runs") {
    const Scene before = NumberedScene(10'000);
    const SceneSnapshot earlier = TakeSnapshot(before, nullptr);
    Scene down = before, up = before;
    std::rotate(down.begin() + 100, down.begin() + 101, down.begin() + 9000);
    std::rotate(up.begin() + 100, up.begin() + 8999, up.begin() + 9000);
    for (const Scene& scene : {down, up}) {
        const SceneSnapshot snapshot = TakeSnapshot(scene, &earlier);
        CHECK(OwnRuns(snapshot, earlier) <= 4);
        CHECK(SameScenes(Restored(snapshot), scene));
    }
}

TEST_CASE("64 snapshots with one object changed each hold less than three times the objects of the scene") {
    Scene scene = NumberedScene(100'000);
    std::vector<SceneSnapshot> history{TakeSnapshot(scene, nullptr)};
    for (size_t i = 1; i < 64; ++i) {
        scene[(i * 7919) % scene.size()].position.y = static_cast<float>(i);
        history.push_back(TakeSnapshot(scene, &history.back()));
    }
    std::set<std::shared_ptr<const Scene>> runs;
    size_t entries = 0;
    for (const SceneSnapshot& snapshot : history) {
        runs.insert(snapshot.runs.begin(), snapshot.runs.end());
        entries += snapshot.runs.size();
    }
    size_t objects = 0;
    for (const auto& run : runs) objects += run->size();
    CHECK(objects <= 100'000 + 63 * 64);

    // With the scene itself, and the lists of runs as if each were an object as large as its share.
    const size_t listBytes = entries * sizeof(std::shared_ptr<const Scene>);
    CHECK((objects + scene.size()) * sizeof(GameObject) + listBytes < 3 * scene.size() * sizeof(GameObject));
}

TEST_CASE("removing the first of 10,000 objects in chains costs a run and the parents of all") {
    Scene before = NumberedScene(10'000);
    for (int32_t i = 1; i < 10'000; ++i) before[i].parentIndex = i % 50 == 1 ? -1 : i - 1;
    const SceneSnapshot earlier = TakeSnapshot(before, nullptr);
    Scene scene = before;
    scene.erase(scene.begin());
    for (GameObject& object : scene) object.parentIndex -= object.parentIndex > 0;
    const SceneSnapshot snapshot = TakeSnapshot(scene, &earlier);
    CHECK(OwnRuns(snapshot, earlier) <= 1);
    CHECK(SameScenes(Restored(snapshot), scene));
    CHECK(SameScenes(Restored(earlier), before));
    RestoreSnapshot(earlier, scene);
    CHECK(SameScenes(scene, before));
}

TEST_CASE("an object with another parent costs no run") {
    Scene scene = NumberedScene(300);
    const SceneSnapshot earlier = TakeSnapshot(scene, nullptr);
    scene[200].parentIndex = 7;
    const SceneSnapshot snapshot = TakeSnapshot(scene, &earlier);
    CHECK(snapshot.runs == earlier.runs);
    CHECK(Restored(snapshot)[200].parentIndex == 7);
    CHECK(Restored(earlier)[200].parentIndex == -1);
}

TEST_CASE("objects appended one by one do not end in runs of one") {
    Scene scene;
    SceneSnapshot snapshot;
    for (int32_t i = 0; i < 640; ++i) {
        scene.push_back({.meshIndex = i});
        snapshot = TakeSnapshot(scene, &snapshot);
    }
    CHECK(snapshot.runs.size() == 10);
}

TEST_CASE("a scene with numbers that are not finite is shared and comes back") {
    Scene scene = NumberedScene(200);
    scene[70].rotation.x = std::numeric_limits<float>::quiet_NaN();
    const SceneSnapshot first = TakeSnapshot(scene, nullptr);
    CHECK(TakeSnapshot(scene, &first).runs == first.runs);

    const Scene before = scene;
    scene[70].rotation.x = 0;
    RestoreSnapshot(first, scene);
    CHECK(SameScenes(scene, before));
}

TEST_CASE("minus zero comes back as minus zero") {
    Scene scene = NumberedScene(3);
    scene[1].position.x = -0.0f;
    const SceneSnapshot snapshot = TakeSnapshot(scene, nullptr);
    scene[1].position.x = 0;
    RestoreSnapshot(snapshot, scene);
    CHECK(std::signbit(scene[1].position.x));
}

TEST_CASE("restoring leaves objects that did not change in their place in memory") {
    Scene scene = NumberedScene(1000);
    for (GameObject& object : scene) object.name.append(100, L'x');
    const SceneSnapshot snapshot = TakeSnapshot(scene, nullptr);
    const wchar_t* const first = scene[0].name.data();
    const wchar_t* const last = scene[999].name.data();
    scene.erase(scene.begin() + 500);
    RestoreSnapshot(snapshot, scene);
    CHECK(scene[0].name.data() == first);
    CHECK(scene[999].name.data() == last);
}

TEST_CASE("whatever happens to a scene, shared snapshots equal plain copies of it") {
    constexpr uint32_t kSeed = 20'240;
    CAPTURE(kSeed);
    RandomSource random(kSeed);
    Scene scene = NumberedScene(300);
    std::vector<SceneSnapshot> snapshots;
    std::vector<Scene> copies;
    for (int round = 0; round < 300; ++round) {
        const auto count = static_cast<int32_t>(scene.size());
        const int32_t at = random.IntBetween(0, count),
                      end = random.IntBetween(at, std::min(at + 150, count));
        switch (random.IntBetween(0, 5)) {
            case 0: scene.erase(scene.begin() + at, scene.begin() + end); break;
            case 1:
                scene.insert(scene.begin() + at, random.IntBetween(1, 100), RandomObject(random, count));
                break;
            case 2:
                if (at < end) std::rotate(scene.begin() + at, scene.begin() + at + 1, scene.begin() + end);
                break;
            case 3:
                for (int32_t i = at; i < end; ++i) scene[i] = RandomObject(random, count);
                break;
            case 4:
                for (GameObject& object : scene) object.parentIndex -= object.parentIndex > at;
                break;
            default:
                if (at < count) scene[at] = RandomObject(random, count);
                break;
        }
        snapshots.push_back(TakeSnapshot(scene, snapshots.empty() ? nullptr : &snapshots.back()));
        copies.push_back(scene);
        const auto i = static_cast<size_t>(random.IntBetween(0, round));
        Scene restored = scene;
        RestoreSnapshot(snapshots[i], restored);
        REQUIRE(SameScenes(restored, copies[i]));
    }
}

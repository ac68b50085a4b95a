#include "scene/object_tree.h"

#include "support/edited_scene.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <vector>

static Scene SceneWithParents(std::initializer_list<int32_t> parents) {
    Scene scene;
    for (const int32_t parent : parents) scene.push_back({.parentIndex = parent});
    return scene;
}

static std::vector<int32_t> Children(const ObjectTree& tree, int32_t parent) {
    std::vector<int32_t> children;
    for (int32_t child = FirstChild(tree, parent); child >= 0; child = tree.nextSibling[child])
        children.push_back(child);
    return children;
}

TEST_CASE("children are listed in scene order, and the roots under -1") {
    const ObjectTree tree = BuildObjectTree(SceneWithParents({-1, 4, 0, 0, -1, 0, 4}));
    CHECK(Children(tree, -1) == std::vector<int32_t>{0, 4});
    CHECK(Children(tree, 0) == std::vector<int32_t>{2, 3, 5});
    CHECK(Children(tree, 1).empty());
    CHECK(Children(tree, 4) == std::vector<int32_t>{1, 6});
    CHECK(Children(tree, 6).empty());
}

TEST_CASE("an object with a parent outside the scene is neither a child nor a root") {
    const ObjectTree tree = BuildObjectTree(SceneWithParents({-1, 3, -2, INT32_MAX, INT32_MIN}));
    CHECK(Children(tree, -1) == std::vector<int32_t>{0});
    for (const int32_t parent : {0, 1, 2, 4}) CHECK(Children(tree, parent).empty());
    CHECK(Children(tree, 3) == std::vector<int32_t>{1});
}

TEST_CASE("an empty scene has no roots") { CHECK(Children(BuildObjectTree({}), -1).empty()); }

TEST_CASE("a subtree is the object and all below it") {
    const Scene scene = SceneWithParents({-1, -1, 1, 2, 1, 0, 3});
    CHECK(MarkSubtree(scene, 1) == std::vector<bool>{false, true, true, true, true, false, true});
    CHECK(MarkSubtree(scene, 6) == std::vector<bool>{false, false, false, false, false, false, true});
}

TEST_CASE("a cycle of parents is below each of its objects and below nothing else") {
    const Scene scene = SceneWithParents({-1, 2, 3, 1, 3, 0});
    CHECK(MarkSubtree(scene, 2) == std::vector<bool>{false, true, true, true, true, false});
    CHECK(MarkSubtree(scene, 4) == std::vector<bool>{false, false, false, false, true, false});
    CHECK(MarkSubtree(scene, 0) == std::vector<bool>{true, false, false, false, false, true});
    CHECK(IsInSubtree(scene, 4, 1));
    CHECK_FALSE(IsInSubtree(scene, 1, 4));
    CHECK_FALSE(IsInSubtree(scene, 1, 0));
}

TEST_CASE("an object that is its own parent is its own subtree") {
    const Scene scene = SceneWithParents({0, -1});
    CHECK(MarkSubtree(scene, 0) == std::vector<bool>{true, false});
    CHECK(IsInSubtree(scene, 0, 0));
    CHECK_FALSE(IsInSubtree(scene, 0, 1));
}

TEST_CASE("the marks of a subtree agree with walking up from every object") {
    constexpr uint32_t kSeed = 77;
    CAPTURE(kSeed);
    RandomSource random(kSeed);
    for (int round = 0; round < 300; ++round) {
        Scene scene(static_cast<size_t>(random.IntBetween(1, 12)));
        const auto count = static_cast<int32_t>(scene.size());
        for (GameObject& object : scene) object.parentIndex = random.IntBetween(-2, count);
        const int32_t root = random.IntBetween(0, count - 1);
        const std::vector<bool> marks = MarkSubtree(scene, root);
        for (int32_t i = 0; i < count; ++i) REQUIRE(marks[i] == IsInSubtree(scene, i, root));
    }
}

TEST_CASE("a chain of 100,000 parents is one subtree") {
    Scene scene(100'000);
    for (int32_t i = 0; i < 100'000; ++i) scene[i].parentIndex = i - 1;
    const std::vector<bool> marks = MarkSubtree(scene, 1);
    CHECK(std::count(marks.begin(), marks.end(), true) == 99'999);
    CHECK(IsInSubtree(scene, 99'999, 0));
}

TEST_CASE("parents are renumbered to where they stand now, and missing ones make roots") {
    Scene scene = SceneWithParents({-1, 0, 2, 7, -3});
    const std::vector<int32_t> newIndices{4, 3, -1};
    RenumberParents(newIndices, scene);
    CHECK(scene[0].parentIndex == -1);
    CHECK(scene[1].parentIndex == 4);
    CHECK(scene[2].parentIndex == -1);
    CHECK(scene[3].parentIndex == -1);
    CHECK(scene[4].parentIndex == -1);
}

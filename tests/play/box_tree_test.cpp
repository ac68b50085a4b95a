#include "play/box_tree.h"

#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <limits>

static Box RandomBox(RandomSource& random) {
    const float reach = random.OneIn(6) ? 20.0f : random.OneIn(6) ? 0.0f : 2.0f;
    const Vec3 place{random.Between(-9, 9), random.Between(-9, 9), random.Between(-9, 9)};
    Box box = Grown({place, place}, random.Between(0, reach));
    if (random.OneIn(30)) box.max.y = std::numeric_limits<float>::infinity();
    if (random.OneIn(30)) box.min.x = box.max.x = std::numeric_limits<float>::quiet_NaN();
    if (random.OneIn(30)) box = Grown(box, 3e38f);
    return box;
}

static int32_t NextPlainly(const Box& box, int32_t after, int32_t except,
                           const std::vector<NumberedBox>& boxes) {
    int32_t next = -1;
    for (const NumberedBox& candidate : boxes) {
        if (candidate.number <= after || candidate.number == except) continue;
        if (next >= 0 && candidate.number > next) continue;
        if (BoxesTouch(candidate.box, box)) next = candidate.number;
    }
    return next;
}

static std::vector<int32_t> AllPlainly(const Box& box, int32_t except,
                                       const std::vector<NumberedBox>& boxes) {
    std::vector<int32_t> all;
    int32_t next = -1;
    while ((next = NextPlainly(box, next, except, boxes)) >= 0) all.push_back(next);
    return all;
}

TEST_CASE("a tree of boxes finds what a walk over all boxes finds, even as they move and more are added") {
    RandomSource random(7);
    for (const int32_t count : {0, 1, 4, 5, 40, 300}) {
        std::vector<NumberedBox> boxes;
        for (int32_t i = 0; i < count; ++i)
            boxes.push_back({RandomBox(random), 3 * i + random.IntBetween(0, 2)});
        BoxTree tree = BuildBoxTree(boxes);
        for (int32_t round = 0; round < 600; ++round) {
            const auto last = static_cast<int32_t>(boxes.size()) - 1;
            if (random.OneIn(4) && last >= 0) {
                NumberedBox& moved = boxes[random.IntBetween(0, last)];
                moved.box = RandomBox(random);
                MoveBox(moved, tree);
            }
            if (random.OneIn(8)) {
                boxes.push_back(
                    {RandomBox(random), boxes.empty() ? 5 : boxes.back().number + random.IntBetween(1, 3)});
                AddBox(boxes.back(), tree);
            }
            const Box box = RandomBox(random);
            const int32_t after = random.IntBetween(-1, 3 * count), except = random.IntBetween(-1, 3 * count);
            CAPTURE(round);
            REQUIRE(NextTouching(box, after, except, tree) == NextPlainly(box, after, except, boxes));
            const std::vector<int32_t> all = AllPlainly(box, except, boxes);
            std::vector<int32_t> found;
            const auto most = static_cast<size_t>(random.IntBetween(0, 20));
            REQUIRE(FindTouching(box, except, most, tree, found) == (all.size() <= most));
            REQUIRE(FindTouching(box, except, 1000, tree, found));
            REQUIRE(found == all);
        }
    }
}

TEST_CASE("a tree whose boxes have all moved finds what a walk over them finds") {
    RandomSource random(11);
    for (const int32_t count : {1, 4, 5, 40, 300}) {
        std::vector<NumberedBox> boxes;
        for (int32_t i = 0; i < count; ++i) boxes.push_back({RandomBox(random), i});
        BoxTree tree = BuildBoxTree(boxes);
        for (int32_t round = 0; round < 100; ++round) {
            for (NumberedBox& moved : boxes) {
                if (!random.OneIn(3)) moved.box = RandomBox(random);
            }
            RefitBoxTree(tree, [&boxes](int32_t number) { return boxes[static_cast<size_t>(number)].box; });
            const Box box = RandomBox(random);
            std::vector<int32_t> found;
            CAPTURE(round);
            REQUIRE(NextTouching(box, -1, -1, tree) == NextPlainly(box, -1, -1, boxes));
            REQUIRE(FindTouching(box, -1, 1000, tree, found));
            REQUIRE(found == AllPlainly(box, -1, boxes));
        }
    }
}

TEST_CASE("boxes are divided along the longest side of their space, so that neighbours stay together") {
    // In each of four parts two neighbours along the axis, ten units apart, which are far from each other
    // along the two shorter ones.
    float Vec3::*const axes[] = {&Vec3::x, &Vec3::y, &Vec3::z};
    for (size_t longest = 0; longest < 3; ++longest) {
        CAPTURE(longest);
        std::vector<NumberedBox> boxes;
        for (int32_t i = 0; i < 8; ++i) {
            Vec3 corner;
            corner.*axes[longest] = static_cast<float>(10 * i);
            corner.*axes[(longest + 1) % 3] = static_cast<float>(3 * i % 8);
            corner.*axes[(longest + 2) % 3] = static_cast<float>(5 * i % 8);
            boxes.push_back({Box{corner, corner + Vec3{1, 1, 1}}, i});
        }
        const BoxTreeNode root = BuildBoxTree(boxes).nodes.at(0);
        for (size_t part = 0; part < 4; ++part)
            CHECK(root.max[longest][part] - root.min[longest][part] == 11);
    }
}

TEST_CASE("added boxes wait outside the tree until they are more than 32 and a quarter of it") {
    for (const int32_t count : {0, 200}) {
        CAPTURE(count);
        RandomSource random(11);
        std::vector<NumberedBox> boxes;
        for (int32_t i = 0; i < count; ++i) boxes.push_back({RandomBox(random), i});
        BoxTree tree = BuildBoxTree(boxes);
        const int32_t waiting = 32 + count / 4;
        for (int32_t i = 0; i < waiting; ++i) AddBox({RandomBox(random), count + i}, tree);
        CHECK(tree.parts.size() == static_cast<size_t>(count));
        AddBox({RandomBox(random), count + waiting}, tree);
        CHECK(tree.parts.size() == static_cast<size_t>(count + waiting + 1));
    }
}

TEST_CASE("moving a box that is not in the tree does nothing") {
    BoxTree tree = BuildBoxTree({{{{0, 0, 0}, {1, 1, 1}}, 4}});
    const Box elsewhere{{5, 5, 5}, {6, 6, 6}};
    MoveBox({elsewhere, 3}, tree);
    MoveBox({elsewhere, 99}, tree);
    CHECK(NextTouching(elsewhere, -1, -1, tree) == -1);
    CHECK(NextTouching({{1, 1, 1}, {2, 2, 2}}, -1, -1, tree) == 4);
}

TEST_CASE("boxes that all lie in one place are found one after the other") {
    std::vector<NumberedBox> boxes;
    for (int32_t i = 0; i < 1000; ++i) boxes.push_back({{{0, 0, 0}, {1, 1, 1}}, i});
    const BoxTree tree = BuildBoxTree(boxes);
    int32_t found = -1;
    for (int32_t i = 0; i < 1000; ++i) {
        found = NextTouching({{1, 1, 1}, {2, 2, 2}}, found, -1, tree);
        REQUIRE(found == i);
    }
    CHECK(NextTouching({{1, 1, 1}, {2, 2, 2}}, found, -1, tree) == -1);
}

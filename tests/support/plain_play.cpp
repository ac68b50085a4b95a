#include "support/plain_play.h"

#include "base/path_text.h"
#include "formats/prefab.h"
#include "platform/files.h"
#include "play/collect.h"
#include "scene/editor_camera.h"
#include "scene/transform.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
// By axis, because the plain way treats all three alike.
struct PlainBox {
    float min[3], max[3];
};
}  // namespace

static Scene& Objects() { return editorState.scene; }
static int32_t Count() { return static_cast<int32_t>(Objects().size()); }
static bool IsIndex(int32_t i) { return i >= 0 && i < Count(); }
static float& On(Vec3& v, int axis) { return axis == 0 ? v.x : axis == 1 ? v.y : v.z; }
static bool IsMarker(const GameObject& o) { return o.isEntity || o.isCamera || o.isLight; }

static PlainBox BoxOf(int32_t i) {
    const GameObject& o = Objects()[i];
    static const std::vector<MeshVertex> cube = {{{-1, -1, -1}}, {{-1, -1, 1}}, {{-1, 1, -1}}, {{-1, 1, 1}},
                                                 {{1, -1, -1}},  {{1, -1, 1}},  {{1, 1, -1}},  {{1, 1, 1}}};
    const bool meshExists = o.meshIndex >= 0 && o.meshIndex < static_cast<int32_t>(editorState.meshes.size());
    const bool hasMesh = o.hasShape && meshExists && !editorState.meshes[o.meshIndex].mesh.vertices.empty();
    const std::vector<MeshVertex>& vertices = hasMesh ? editorState.meshes[o.meshIndex].mesh.vertices : cube;
    const Matrix4 world = WorldMatrix(Objects(), i);
    PlainBox box{};
    for (int axis = 0; axis < 3; ++axis) {
        float low = std::numeric_limits<float>::infinity(), high = -low;
        for (const MeshVertex& vertex : vertices) {
            const Vec3 p = vertex.position;
            const auto& row = world.m[axis];
            const float at = row[0] * p.x + row[1] * p.y + row[2] * p.z + row[3];
            if (at < low) low = at;
            if (at > high) high = at;
        }
        if (high - low < 0.04f) {
            const float centre = (low + high) / 2;
            low = centre - 0.02f;
            high = centre + 0.02f;
        }
        box.min[axis] = low;
        box.max[axis] = high;
    }
    return box;
}

static bool Overlap(const PlainBox& a, const PlainBox& b, float grow = 0) {
    for (int axis = 0; axis < 3; ++axis) {
        const bool meets = a.min[axis] - grow <= b.max[axis] && b.min[axis] <= a.max[axis] + grow;
        if (!meets) return false;
    }
    return true;
}

static void MoveOnAxis(int32_t i, int axis, float step) {
    if (step == 0) return;
    On(Objects()[i].position, axis) += step;
    PlainBox mover = BoxOf(i);
    for (int32_t j = 0; j < Count(); ++j) {
        const GameObject& other = Objects()[j];
        if (j == i || !other.active || !other.hasCollision || !other.hasShape || other.meshIndex < 0)
            continue;
        const PlainBox wall = BoxOf(j);
        if (!Overlap(mover, wall)) continue;
        const float height = std::min(mover.max[1], wall.max[1]) - std::max(mover.min[1], wall.min[1]);
        if (axis != 1 && height < 0.05f) continue;
        const float push =
            step > 0 ? wall.min[axis] - mover.max[axis] - 0.001f : wall.max[axis] - mover.min[axis] + 0.001f;
        On(Objects()[i].position, axis) += push;
        mover.min[axis] += push;
        mover.max[axis] += push;
        On(Objects()[i].velocity, axis) = 0;
        if (axis == 1) Objects()[i].velocityY = 0;
    }
}

static void Move(int32_t i, Vec3 way) {
    GameObject& o = Objects()[i];
    if (!o.active) return;
    if (!o.hasCollision || IsMarker(o)) {
        o.position = o.position + way;
        return;
    }
    const float longest = std::max({std::fabs(way.x), std::fabs(way.y), std::fabs(way.z)});
    int steps = 1;
    while (steps < 64 && static_cast<float>(steps) < std::ceil(longest / 0.2f)) ++steps;
    for (int step = 0; step < steps; ++step) {
        for (int axis = 0; axis < 3; ++axis) MoveOnAxis(i, axis, On(way, axis) / static_cast<float>(steps));
    }
}

static float Damping(const GameObject& o, float dt) {
    const float drag = o.drag > 0 ? std::min(o.drag, 5.0f) : 0;
    const float kept = 1 - dt * drag;
    return kept > 0 ? kept : 0;
}

static void Control(int32_t i, float dt) {
    GameObject& o = Objects()[i];
    const float yaw = o.rotation.y;
    const Vec3 ahead = Normalise({std::sin(yaw), 0, std::cos(yaw)});
    const Vec3 right = Normalise({std::cos(yaw), 0, -std::sin(yaw)});
    const auto held = [](char key) { return static_cast<float>(editorState.keyDown[key]); };
    const Vec3 input = ahead * (held('W') - held('S')) + right * (held('D') - held('A'));
    const bool goes = Length(input) > 0.0001f;
    const Vec3 u = Normalise(input);
    if (!o.hasRigidbody) {
        if (goes) Move(i, {u.x * 4 * dt, u.y * 4 * dt, u.z * 4 * dt});
        return;
    }
    Vec3& v = o.velocity;
    if (goes) {
        const float k = 1 / (o.mass > 0.1f ? o.mass : 0.1f);
        v.x += u.x * 22 * k * dt;
        v.z += u.z * 22 * k * dt;
    }
    v.x *= Damping(o, dt);
    v.z *= Damping(o, dt);
    const float speed = std::sqrt(v.x * v.x + v.z * v.z);
    if (speed > 4) {
        v.x *= 4 / speed;
        v.z *= 4 / speed;
    }
    Move(i, {v.x * dt, 0, v.z * dt});
}

// Flags the object and everything whose chain of parents meets it.
static void Hide(int32_t root) {
    std::vector<int32_t> open{root};
    std::vector<bool> isDone(Objects().size(), false);
    while (!open.empty()) {
        const int32_t i = open.back();
        open.pop_back();
        if (isDone[i]) continue;
        isDone[i] = true;
        Objects()[i].active = false;
        for (int32_t j = 0; j < Count(); ++j) {
            if (Objects()[j].parentIndex == i) open.push_back(j);
        }
    }
}

static void Score(int32_t root, const std::wstring& message) {
    Hide(root);
    ++editorState.score;
    ShowScore();
    editorState.statusMessage = message;
}

static bool IsFile(const std::wstring& path) { return !path.empty() && KindOfPath(path) == PathKind::File; }

static void Collect(int32_t i) {
    const GameObject collector = Objects()[i];
    if (!collector.active) return;
    const PlainBox box = BoxOf(i);
    if (IsFile(collector.collectPrefab)) {
        for (int32_t j = 0; j < Count(); ++j) {
            const GameObject& o = Objects()[j];
            if (j == i || !o.active || o.prefabSource != collector.collectPrefab) continue;
            if (!Overlap(box, BoxOf(j), 0.08f)) continue;
            int32_t root = j;
            for (int32_t steps = 0; steps < Count(); ++steps) {
                const int32_t parent = Objects()[root].parentIndex;
                if (IsIndex(parent) && Objects()[parent].prefabSource == collector.collectPrefab)
                    root = parent;
            }
            Score(root, L"CollectOnTouch: score +1, sebran prefab " + LastComponent(collector.collectPrefab));
            return;
        }
        return;
    }
    if (collector.collectTarget.empty()) return;
    for (int32_t j = 0; j < Count(); ++j) {
        const GameObject target = Objects()[j];
        if (target.name != collector.collectTarget) continue;
        if (j == i || !target.active || !Overlap(box, BoxOf(j), 0.08f)) return;
        Score(j, L"CollectOnTouch: score +1, sebran objekt " + target.name);
        return;
    }
}

static void Fall(int32_t i, float dt) {
    GameObject& o = Objects()[i];
    if (!o.active || IsMarker(o) || (!o.hasGravitation && !o.hasRigidbody)) return;
    float& speed = o.hasRigidbody ? o.velocity.y : o.velocityY;
    speed -= dt * o.gravityStrength;
    if (o.hasRigidbody) speed *= Damping(o, dt);
    Move(i, {0, dt * speed, 0});
    if (o.hasRigidbody) o.velocityY = o.velocity.y;
}

static void Animate(int32_t i, float dt) {
    GameObject& o = Objects()[i];
    if (!o.hasAnimation) return;
    const float s = o.animationSpeed, t = editorState.animationTime;
    if (o.animationType == 0) o.rotation.y += s * dt;
    if (o.animationType == 1) o.scale.x = o.scale.y = o.scale.z = std::sin(s * t * 3.0f) * 0.08f + 1.0f;
    if (o.animationType == 2) o.position.y += std::sin(s * t * 4.0f) * 0.01f;
}

static float Random() {
    editorState.randomState = editorState.randomState * 1664525u + 1013904223u;
    return static_cast<float>(editorState.randomState >> 8) / 16777215;
}

// `placedBy` names for every object the one that placed it in this frame, or -1.
static void Spawn(int32_t i, std::vector<int32_t>& placedBy) {
    if (!Objects()[i].active || !Objects()[i].hasShape) return;
    if (!IsFile(Objects()[i].spawnerPrefab)) {
        const AssetEntry* first = nullptr;
        for (const AssetEntry& file : editorState.fileEntries) {
            if (!first && file.kind == AssetKind::Prefab && IsFile(file.path)) first = &file;
        }
        if (!first) {
            editorState.statusMessage = L"PlanePrefabSpawner: v Files neni zadny .prefab.";
            return;
        }
        Objects()[i].spawnerPrefab = first->path;
    }
    const std::wstring path = Objects()[i].spawnerPrefab;
    for (int32_t j = i; placedBy[j] >= 0; j = placedBy[j]) {
        if (Objects()[j].prefabSource == path) return;
    }
    const PlainBox box = BoxOf(i);
    for (int32_t j = 0; j < Count(); ++j) {
        const GameObject& o = Objects()[j];
        if (j != i && o.active && o.prefabSource == path && Overlap(box, BoxOf(j), 0.1f)) return;
    }
    const float x = Random() * (box.max[0] - box.min[0]) + box.min[0];
    const float z = Random() * (box.max[2] - box.min[2]) + box.min[2];
    if (!SpawnPrefab(path, {x, box.max[1] + 0.04f, z})) return;
    placedBy.resize(Objects().size(), i);
    editorState.statusMessage = L"PlanePrefabSpawner: spawned " + LastComponent(path);
}

static bool Has(int32_t i, const wchar_t* script) {
    return std::ranges::count(Objects()[i].scripts, script) > 0;
}

void UpdatePlayPlainly(float dt) {
    FlyWithKeys(dt);
    editorState.animationTime += dt;
    std::vector<int32_t> placedBy(Objects().size(), -1);
    for (int32_t i = 0; i < Count(); ++i) {
        if (Has(i, L"PlayerController")) Control(i, dt);
        if (Has(i, L"CollectOnTouch")) Collect(i);
        Fall(i, dt);
        Animate(i, dt);
        if (Has(i, L"PlanePrefabSpawner")) Spawn(i, placedBy);
    }
}

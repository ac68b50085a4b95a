#include "scene/object_fields.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

template <typename Field>
static bool SameField(const Field& a, const Field& b) {
    return a == b;
}

static bool SameField(float a, float b) { return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b); }

static bool SameField(const Vec3& a, const Vec3& b) {
    return SameField(a.x, b.x) && SameField(a.y, b.y) && SameField(a.z, b.z);
}

bool SameBitsButParent(const GameObject& a, const GameObject& b) {
    const auto left = FieldsOf(a), right = FieldsOf(b);
    // Addresses and not positions tell the parent: the compiler knows both, and the list may grow before it.
    const auto isParent = [&a](const auto& field) {
        return static_cast<const void*>(&field) == static_cast<const void*>(&a.parentIndex);
    };
    return [&]<size_t... i>(std::index_sequence<i...>) {
        return ((isParent(std::get<i>(left)) || SameField(std::get<i>(left), std::get<i>(right))) && ...);
    }
    (std::make_index_sequence<std::tuple_size_v<decltype(left)>>{});
}

bool SameBits(const GameObject& a, const GameObject& b) {
    return a.parentIndex == b.parentIndex && SameBitsButParent(a, b);
}

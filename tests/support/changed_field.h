// Objects that differ in one field, for tests that must not forget one.
#pragma once

#include "scene/object_fields.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

inline constexpr size_t kFieldCount = std::tuple_size_v<decltype(FieldsOf(std::declval<GameObject&>()))>;

// The name of a field, by its place in the record.
inline std::string FieldName(size_t field) {
    std::string_view names = kObjectFieldNames;
    for (; field > 0; --field) names.remove_prefix(names.find(' ') + 1);
    return std::string(names.substr(0, names.find(',')));
}

// To values that a file may hold: numbers in their range, and a path below the project folder "C:\Game".
inline void ChangeField(bool& flag) { flag = !flag; }
inline void ChangeField(int32_t& number) { ++number; }
inline void ChangeField(uint32_t& color) { color ^= 0xFF00FF; }
inline void ChangeField(float& number) { number = number == 0 ? 0.25f : number / 2; }
inline void ChangeField(Vec3& vector) { vector = {0.25f, 0.5f, 0.75f}; }
inline void ChangeField(std::wstring& text) { text = L"C:\\Game\\changed"; }
inline void ChangeField(std::vector<std::wstring>& list) { list.insert(list.begin(), L"changed"); }

// Runs `act` with a field of `a` and the same field of `b`.
template <typename Act, typename A, typename B>
void WithField(size_t field, A& a, B& b, Act act) {
    const auto left = FieldsOf(a);
    const auto right = FieldsOf(b);
    [&]<size_t... i>(std::index_sequence<i...>) {
        ((i == field ? act(std::get<i>(left), std::get<i>(right)) : void()), ...);
    }
    (std::make_index_sequence<kFieldCount>{});
}

inline GameObject WithFieldChanged(GameObject object, size_t field) {
    WithField(field, object, object, [](auto& changed, auto&) { ChangeField(changed); });
    return object;
}

inline bool FieldIsAlike(size_t field, const GameObject& a, const GameObject& b) {
    bool isAlike = false;
    WithField(field, a, b, [&](const auto& left, const auto& right) { isAlike = left == right; });
    return isAlike;
}

// What stands open over the panels: menus and the boxes in which names and numbers are typed. Every record is
// closed as constructed.
#pragma once

#include "base/rect.h"

#include <cstdint>
#include <string>

// A pop-up menu, for an object or an item where the menu is about one.
struct PopupMenu {
    bool open = false;
    Point corner{};     // top left, pixels
    int32_t item = -1;  // object, Files item or project it was opened for
};

// The box in which names and texts are typed.
struct NameEntry {
    enum class Kind { Closed, Object, File, Text };
    Kind kind = Kind::Closed;
    int32_t target = -1;  // object index, or Files item for Kind::File
    std::wstring text{};  // at most 80 units
};

// The box in which a number is typed.
struct NumberEntry {
    enum class Field { Position, Rotation, Scale, TextSize };
    bool open = false;
    int32_t target = -1;  // object index
    Field field = Field::Position;
    int32_t component = -1;  // 0 x, 1 y, 2 z; -1 for the text size
    std::wstring text{};     // at most 32 units
};

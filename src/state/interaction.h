// What stands open over the panels: menus and the boxes in which names and numbers are typed. Every record is
// closed as constructed.
#pragma once

#include "base/rect.h"

#include <cstdint>
#include <string>

enum class MenuKind : int32_t { Create, Object, FilesCreate, FilesItem, Project, AddNode };

// The pop-up menu that is open.
struct PopupMenu {
    MenuKind kind{};
    Point corner{};     // top left, pixels
    Point openedAt{};   // where the pointer was
    int32_t item = -1;  // object, Files item or project that it is about; -1 for none
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

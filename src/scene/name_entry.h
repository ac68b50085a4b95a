// The box in which names and texts are typed: what its keys do.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

// A new name for a file or folder, ready to be given.
struct FileRename {
    int32_t item = -1;    // index into the Files list
    std::wstring name{};  // not empty, without forbidden characters
};

// Open the box with what there is; any other entry or menu closes. The index is a valid one.
void StartObjectRename(int32_t object);
void StartTextEdit(int32_t object);
void StartFileRename(int32_t item, const std::wstring& name);

bool NameEntryIsOpen();

// What follows is for an open box. A typed character is a UTF-16 unit; those beyond 80 units are dropped. A
// longer name that the box was opened with stays whole.
void TypeIntoNameEntry(wchar_t unit);
void EraseInNameEntry();
void CancelNameEntry();

// Takes what was typed, without spaces around it: renames the object or sets its text and closes the box. For
// a file it closes the box and returns the name for the caller to give. A name that is empty leaves the box
// open, an object that is gone closes it.
std::optional<FileRename> CommitNameEntry();

// Blueprint files: the nodes of the open document on disk.
#pragma once

#include <string>

// Reads EditorState::blueprintNodes from a file. Lines that hold no node are skipped, and the header is not
// checked. Always true: a file that cannot be read or holds no node gives an Event BeginPlay and a Print
// String.
bool LoadBlueprint(const std::wstring& path);

// Writes the nodes in their order. A title is cut off if its line would be too long to be read back. False
// when the path is empty or the file cannot be written; the old file then stays.
bool SaveBlueprint(const std::wstring& path);

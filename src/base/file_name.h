// Names that a file or folder may have.
#pragma once

#include <string>

// The name with each of \ / : * ? " < > | replaced by _, then without spaces at both ends. May be empty.
std::wstring SanitizeFileName(std::wstring name);

// False for what the system does not take for a name, or takes for something else: an empty one, one that
// ends with a dot or a space, control characters, and the names of devices ("NUL", "com1.txt").
bool IsUsableFileName(const std::wstring& name);

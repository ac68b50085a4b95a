// Names that a file or folder may have.
#pragma once

#include <string>

// The name with each of \ / : * ? " < > | replaced by _, then without spaces at both ends. May be empty.
std::wstring SanitizeFileName(std::wstring name);

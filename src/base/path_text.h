// Paths and file names as text: their parts, and which names the system accepts. Nothing here asks the disk.
#pragma once

#include <string>
#include <string_view>

// True for what stands between the components of a path.
constexpr bool IsSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

// What follows the last `\` or `/`; the whole path without one. Empty for a path that ends with a separator.
std::wstring LastComponent(std::wstring_view path);

// What precedes the last separator: "" for a path without one, and for a path of a root ("\file", "C:\file")
// the root with its separator, so that the result still names a folder.
std::wstring ParentFolder(std::wstring_view path);

// The drive or the share that a full path begins with: `C:\` of `C:\a\b`, `\\server\share\` of
// `\\server\share\a`, `\` of `\a`. Empty for a path that begins with none.
std::wstring RootOf(std::wstring_view path);

// From the last dot of the last component on, with the dot ("box.obj" gives ".obj", "a.b\box" gives ""). A
// component that begins with its only dot is all extension (".gitignore").
std::wstring FileExtension(std::wstring_view path);

// The last component without that extension.
std::wstring NameWithoutExtension(std::wstring_view path);

// `stored` under `folder`, with one separator between them. If one of the two is empty, the other one alone.
// `stored` may be absolute; nobody checks.
std::wstring JoinPath(std::wstring_view folder, std::wstring_view stored);

// The part of `path` below `folder`, compared exactly. Empty when both are equal; `path` itself when it does
// not lie below.
std::wstring RelativeTo(std::wstring_view path, std::wstring_view folder);

// True when `path` is `folder` or lies below it, as the disk sees it: case and the kind of separator do not
// matter. False for an empty folder.
bool IsAtOrBelow(std::wstring_view path, std::wstring_view folder);

// The name with each of \ / : * ? " < > | replaced by _, and without spaces at both ends. May be empty.
std::wstring SanitizeFileName(std::wstring name);

// False for names that the system refuses or takes for something else: an empty name, one that ends with a
// dot or a space, control characters, and the names of devices ("NUL", "com1.txt").
bool IsUsableFileName(const std::wstring& name);

// The system's own dialogs, and what the system does on request.
#pragma once

#include <string>

enum class Answer { Yes, No, Cancel };

// Asks for a folder. Empty when the user cancels.
std::wstring PickFolder(const std::wstring& prompt);

// Questions with the question icon, owned by the program's window.
Answer AskYesNo(const std::wstring& text, const std::wstring& caption);
Answer AskYesNoCancel(const std::wstring& text, const std::wstring& caption);

// Moves a folder into the recycle bin. False when it fails or is refused.
bool RecycleFolder(const std::wstring& path);

// Opens a file with the program that the system has for it: with its usual one, else by asking which; as a
// last resort a script (`isScript`) with the system's text editor. False when nothing opened it.
bool OpenWithSystem(const std::wstring& path, bool isScript);

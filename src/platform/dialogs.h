// The system's own dialogs, and what the system does on request.
#pragma once

#include <string>

enum class Answer { Yes, No, Cancel };

// Asks for a folder. Empty when the user cancels.
std::wstring PickFolder(const std::wstring& prompt);

// Asks before something that cannot be taken back: with the warning icon, No is the default. Yes or No.
Answer AskYesNo(const std::wstring& text, const std::wstring& caption);

// Asks with the question icon.
Answer AskYesNoCancel(const std::wstring& text, const std::wstring& caption);

// Tells of an error and waits until the user has read it. Takes no memory of the program.
void TellError(const wchar_t* text, const wchar_t* caption);

// Moves a folder into the recycle bin. False when it fails or is refused, and where there is no bin that
// would take it: nothing is deleted for good without a question.
bool RecycleFolder(const std::wstring& path);

// Opens a file with the program that the system has for it: with its usual one, else by asking which; as a
// last resort a script (`isScript`) with the system's text editor. False when nothing opened it; true when
// the user closed the question.
bool OpenWithSystem(const std::wstring& path, bool isScript);

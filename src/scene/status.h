// The program's only feedback: one sentence that the Console shows.
#pragma once

#include <string>

// Replaces the status message. Where a save has just put another version of a file beside it, the message
// goes on with its name.
void SetStatus(std::wstring message);

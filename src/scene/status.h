// The program's only feedback: one sentence that the Console shows.
#pragma once

#include <string>

// Replaces the status message.
void SetStatus(std::wstring message);

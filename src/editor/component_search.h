// Adding components: the search that typed words drive, and the command.
#pragma once

#include "editor/components.h"

#include <cstdint>
#include <string>
#include <vector>

// The best three components for a query, the best first, equal ones in the order of their table. Upper and
// lower case are one. An empty query finds the first three.
std::vector<const ComponentCommand*> SearchComponents(const std::wstring& query);

// Adds the component of an action number to the selected object. False, without a message, when nothing is
// selected or no component has this number.
bool AddComponent(int32_t action);

// What the keys do while the search is open. A typed character is a UTF-16 unit; those beyond 40 are dropped.
void TypeIntoComponentSearch(wchar_t unit);
void EraseInComponentSearch();

// Closes the search and keeps its text.
void CloseComponentSearch();

// The same, and says so.
void CancelComponentSearch();

// Adds the best component to the selected object, empties the text and closes the search. Without an object
// or a component it only closes.
void CommitComponentSearch();

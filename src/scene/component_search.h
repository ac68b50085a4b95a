// The Add Component search: typed words find components.
#pragma once

#include "scene/component_commands.h"

#include <string>
#include <vector>

// The best three components for a query, the best first, equal ones in the order of their table. Upper and
// lower case are one. An empty query finds the first three.
std::vector<const ComponentCommand*> SearchComponents(const std::wstring& query);

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

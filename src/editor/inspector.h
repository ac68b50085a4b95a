// The Inspector: the selected object as a column of sections, and what a click on them does.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"
#include "state/gesture.h"

// Paints what the panel holds into its frame, and refills EditorState::inspectorZones with what can be
// clicked. Without a selected object only the title stands there.
void DrawInspector(const EditorLayout& layout);

// True when the last frame showed the Add Component box: for an object that takes components, and above the
// panel's end.
bool SearchBoxIsShown(const EditorLayout& layout);

// True for a point of the box with the name of the object that the last frame drew, while it is still
// selected. A double click there renames it.
bool IsOnNameField(Point pointer, const EditorLayout& layout);

// Runs the action of the first zone of the last frame under the pointer that has one, when that object is
// still selected and still has what the action changes. False when the pointer is outside the panel; inside,
// the press is taken even where nothing is.
bool ClickInspector(Point pointer, const EditorLayout& layout);

// Goes on setting the value of a bar or wheel that is held. Ends the drag when another object is selected.
void DragInspectorValue(const InspectorDrag& drag, Point pointer);

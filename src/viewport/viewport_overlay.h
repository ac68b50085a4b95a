// What is drawn into the viewport beside the meshes. Nothing here is tested against depth.
#pragma once

#include "base/matrix4.h"
#include "base/rect.h"
#include "platform/canvas.h"
#include "state/game_object.h"

// The reference grid just above the Ground: drawn before the objects.
void DrawGrid(const Matrix4& viewProjection);

// A square icon around a world position, 24 pixels or 28 with a frame when selected. Nothing for a missing
// icon or a position that is not visible.
void DrawObjectIcon(CanvasImage icon, Vec3 position, const Matrix4& viewProjection, bool selected);

// The icons of what the object is, one over the other: of an entity, a camera and a light.
void DrawMarkerIcons(const GameObject& object, Vec3 position, const Matrix4& viewProjection, bool selected);

// True when that draws an icon for the object, which may be missing.
bool HasMarkerIcon(const GameObject& object);

// The text of a Text object with its top left corner at the object's world position, over a box when
// selected.
void DrawTextObject(const GameObject& object, Vec3 position, const Matrix4& viewProjection, bool selected);

// Cell height of a Text object's text, 8 .. 128 pixels: its text size by its mean scale.
int32_t TextObjectHeight(const GameObject& object);

// Where an object at `anchor` (its place on the screen) is picked: the square of its icon, and the letters of
// its text, each taken as half as wide as high.
Rect IconRect(Point anchor);
Rect TextObjectRect(const GameObject& object, Point anchor);

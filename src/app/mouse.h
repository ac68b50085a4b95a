// What the mouse does in the Scene editor and in the game, and who gets it elsewhere.
#pragma once

#include "base/rect.h"

void PressLeft(Point pointer);
void DoubleClickLeft(Point pointer);
void ReleaseLeft(Point pointer);
void PressRight(Point pointer);
void ReleaseRight();
void MoveMouse(Point pointer);

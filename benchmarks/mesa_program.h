// The shaders that Mesa draws the benchmark scenes with.
#pragma once

#include "mesa_renderer.h"

#include "render/raster/mesh_to_draw.h"

#include <cstdint>

// Inputs of the vertex shaders.
constexpr uint32_t kPosition = 0, kColor = 1, kPoint = 2, kNormal = 3, kWorldRows = 4, kNormalRows = 7;

// A name of OpenGL: the program that draws an object like this one, with everything set that a frame needs.
uint32_t MakeMesaProgram(const MeshDraw& draw, MesaWay way);

// True if one program serves both, which are of the same frame.
bool ShareMesaProgram(const MeshDraw& a, const MeshDraw& b, MesaWay way);

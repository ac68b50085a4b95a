// The textures of a benchmark scene in Mesa's memory, and where its faces read them.
//
// DrawMesh spreads a texture over one texel less than it has in each direction, OpenGL over all of them. A
// repeated texture never shows its last column and row in DrawMesh, so Mesa gets it without them and repeats
// the rest. The others keep all texels, and their coordinates are made smaller.
#pragma once

#include "render/raster/mesh_to_draw.h"

// A name of OpenGL: the object's texture in its tint, or 0 if it has none.
uint32_t MakeMesaTexture(const MeshDraw& draw);

// Where Mesa's copy of the object's texture has what DrawMesh shows at `point`. Row 0 is at v = 0. The object
// must have a texture.
TexturePoint MesaTexturePoint(TexturePoint point, const MeshDraw& draw);

// True if one texture of Mesa's serves both.
bool ShareMesaTexture(const MeshDraw& a, const MeshDraw& b);

// Mesa's software renderer (llvmpipe) on one thread and off screen, with the benchmark scenes in its buffers.
#pragma once

#include "bench_scenes.h"

#include <cstdint>
#include <string>
#include <vector>

enum class MesaWay {
    Instanced,  // a mesh once and a matrix for each object; faces are lit while they are drawn
    PreLit,     // every face of the scene where it stands, in the colour that it ends up with
};

// One draw call. The numbers are names of OpenGL.
struct MesaCall {
    uint32_t vertexArray = 0;
    std::vector<uint32_t> buffers{};
    int32_t indexCount = 0, instanceCount = 1;
    uint32_t program = 0, texture = 0;  // the texture may be 0
};

// A program or a texture, and the first object that it was made for.
struct MesaShared {
    MeshDraw draw{};
    uint32_t name = 0;
};

struct MesaScene {
    int32_t width = 0, height = 0;  // pixels
    uint32_t framebuffer = 0;
    std::vector<uint32_t> renderbuffers{};
    std::vector<MesaShared> programs{}, textures{};
    std::vector<MesaCall> calls{};
};

// What draws, in its own words. Empty when it is anything else than llvmpipe: it must not be measured then.
std::string MesaRenderer();

// Everything that a frame reads goes into Mesa's memory here, before any time is taken. MesaRenderer() must
// have given a name. Of the scenes that are loaded, only the last one can be drawn.
MesaScene LoadMesaScene(const BenchScene& scene, MesaWay way);
void ReleaseMesaScene(const MesaScene& scene);

// A whole frame: clears colour and depth, draws, and waits until the last pixel is there.
void DrawMesaFrame(const MesaScene& scene);

// What was drawn last, in the size of the scene, row 0 at the top.
std::vector<Pixel> MesaPicture(const MesaScene& scene);

// The functions of OpenGL, for the files that give Mesa its work.
#pragma once

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

#include <cstdio>
#include <cstdlib>

// Ends the program after a mistake of these files, not of the machine.
inline void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "Mesa: %s\n", what);
    std::abort();
}

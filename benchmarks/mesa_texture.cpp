#include "mesa_texture.h"

#include "mesa_opengl.h"

#include "render/raster/face_ink.h"

#include <algorithm>

static TextureImage TintedCopy(const TextureImage& image, uint32_t tint) {
    TextureImage copy{.width = image.width, .height = image.height, .texels = image.texels};
    for (Pixel& texel : copy.texels) texel = Tinted(texel, tint);
    return copy;
}

static void SetWrapping(GLint wrapping) {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrapping);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrapping);
}

// Into the texture that is bound.
static void Load(const TextureImage& image, bool repeat) {
    const int32_t lost = repeat ? 1 : 0;
    glPixelStorei(GL_UNPACK_ROW_LENGTH, image.width);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, std::max(image.width - lost, 1),
                 std::max(image.height - lost, 1), 0, GL_BGRA, GL_UNSIGNED_BYTE, image.texels.data());
    SetWrapping(repeat ? GL_REPEAT : GL_CLAMP_TO_EDGE);
}

uint32_t MakeMesaTexture(const MeshDraw& draw) {
    if (draw.texture == nullptr) return 0;
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    Load(TintedCopy(*draw.texture, draw.tint), draw.repeat);
    return texture;
}

static float TexelShare(float coordinate, int32_t size) {
    return coordinate * static_cast<float>(size - 1) / static_cast<float>(size);
}

TexturePoint MesaTexturePoint(TexturePoint point, const MeshDraw& draw) {
    const TexturePoint down{point.u, 1 - point.v};
    if (draw.repeat) return down;
    return {TexelShare(down.u, draw.texture->width), TexelShare(down.v, draw.texture->height)};
}

bool ShareMesaTexture(const MeshDraw& a, const MeshDraw& b) {
    if (a.texture != b.texture) return false;
    return a.texture == nullptr || (a.tint == b.tint && a.repeat == b.repeat);
}

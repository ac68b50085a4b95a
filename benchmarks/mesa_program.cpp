#include "mesa_program.h"

#include "mesa_geometry.h"
#include "mesa_opengl.h"

constexpr auto kLitVertexShader = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec4 color;
layout(location = 2) in vec2 point;
uniform mat4 viewProjection;
uniform float white;
flat out vec3 shown;
out vec2 texturePoint;

void main() {
    gl_Position = viewProjection * vec4(position, 1);
    shown = color.rgb * white;
    texturePoint = point;
}
)";

constexpr auto kInstancedVertexShader = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec4 color;
layout(location = 2) in vec2 point;
layout(location = 3) in vec3 normal;
layout(location = 4) in vec4 world[3];
layout(location = 7) in vec3 normalRows[3];
uniform mat4 viewProjection;
uniform vec3 eye, light;
uniform float roughness, gloss;
flat out vec3 shown;
out vec2 texturePoint;

void main() {
    vec4 p = vec4(position, 1);
    vec3 corner = vec3(dot(world[0], p), dot(world[1], p), dot(world[2], p));
    vec3 n = normalize(vec3(dot(normalRows[0], normal), dot(normalRows[1], normal), dot(normalRows[2], normal)));
    vec3 halfway = normalize(light + normalize(eye - corner));
    float brightness = 0.3 + (0.62 - 0.12 * roughness) * max(dot(n, light), 0.0) +
                       gloss * (1.15 - 0.55 * roughness) *
                           pow(max(dot(n, halfway), 0.0), (1.0 - roughness) * 72.0 + 8.0);
    gl_Position = viewProjection * vec4(corner, 1);
    shown = color.rgb * clamp(brightness, 0.22, 1.6);
    texturePoint = point;
}
)";

constexpr auto kPlainFragmentShader = R"(#version 330 core
flat in vec3 shown;
out vec4 pixel;

void main() { pixel = vec4(shown, 0); }
)";

constexpr auto kTexturedFragmentShader = R"(#version 330 core
flat in vec3 shown;
in vec2 texturePoint;
uniform sampler2D image;
out vec4 pixel;

void main() { pixel = vec4(texture(image, texturePoint).rgb * shown, 0); }
)";

static GLuint CompiledShader(GLenum kind, const char* source) {
    const GLuint shader = glCreateShader(kind);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLint compiled = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    Require(compiled != 0, "a shader does not compile");
    return shader;
}

static GLuint LinkedProgram(const char* vertexShader, const char* fragmentShader) {
    const GLuint program = glCreateProgram();
    for (const GLuint shader : {CompiledShader(GL_VERTEX_SHADER, vertexShader),
                                CompiledShader(GL_FRAGMENT_SHADER, fragmentShader)}) {
        glAttachShader(program, shader);
        glDeleteShader(shader);
    }
    glLinkProgram(program);
    GLint linked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    Require(linked != 0, "a program does not link");
    return program;
}

// Depth from 0 .. w, as the program has it, to -w .. w.
static Matrix4 ToOpenGl(const Matrix4& viewProjection) {
    return MultiplyMatrix({{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 2, -1}, {0, 0, 0, 1}}}}, viewProjection);
}

// A name that a program does not have is passed over.
static void SetUniforms(GLuint program, const MeshDraw& draw, float white) {
    const auto at = [program](const char* name) { return glGetUniformLocation(program, name); };
    const Matrix4 viewProjection = ToOpenGl(draw.viewProjection);
    glUseProgram(program);
    glUniformMatrix4fv(at("viewProjection"), 1, GL_TRUE, viewProjection.m[0].data());
    glUniform3f(at("eye"), draw.eye.x, draw.eye.y, draw.eye.z);
    glUniform3f(at("light"), draw.light.x, draw.light.y, draw.light.z);
    glUniform1f(at("roughness"), draw.roughness);
    glUniform1f(at("gloss"), draw.gloss);
    glUniform1f(at("white"), white);
}

uint32_t MakeMesaProgram(const MeshDraw& draw, MesaWay way) {
    const bool isTextured = draw.texture != nullptr;
    const GLuint program = LinkedProgram(way == MesaWay::PreLit ? kLitVertexShader : kInstancedVertexShader,
                                         isTextured ? kTexturedFragmentShader : kPlainFragmentShader);
    SetUniforms(program, draw, isTextured ? kMesaWhite : 1);
    return program;
}

bool ShareMesaProgram(const MeshDraw& a, const MeshDraw& b, MesaWay way) {
    const bool areAlikeTextured = (a.texture != nullptr) == (b.texture != nullptr);
    if (way == MesaWay::PreLit) return areAlikeTextured;
    return areAlikeTextured && a.roughness == b.roughness && a.gloss == b.gloss;
}

#include "platform/shaders.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <utility>

#include <epoxy/gl.h>

namespace gl {

namespace {

// Row vectors times matrices in rows are, for the shading language, matrices times column vectors without transposing.
const char* const VertexSource = R"(
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;
layout(location = 2) in float slot;
layout(location = 3) in vec4 colour;
layout(location = 4) in vec2 texel;
layout(location = 5) in vec3 otherEnd;
layout(location = 6) in vec3 line; // x: 0 at the first end and 1 at the second, y: side, z: length before the segment
layout(location = 7) in vec3 positionRest;
layout(location = 8) in vec3 otherEndRest;

uniform mat4 projection;
uniform mat4 viewing;
uniform mat3 normalMatrix;
uniform vec3 reference;
uniform vec3 referenceRest;
uniform vec4 materials[3 * MATERIALS];
uniform vec4 lightDirection[LIGHTS + 1];
uniform vec3 lightHalf[LIGHTS + 1];
uniform vec3 lightColour[LIGHTS + 1];
uniform mat4 textureMatrix;
uniform float pointSize; // in pixels
uniform vec4 lineSize; // half of the viewport in pixels, half of the width in pixels, pixels of a dash bit
uniform vec4 clip[6];
uniform vec4 generationPlanes[2];

INTERPOLATION out vec4 frontColour;
#ifdef TWO_SIDED
INTERPOLATION out vec4 backColour;
#endif
#ifdef TEXTURED
out vec2 texelPosition;
#endif
#ifdef LINES
out vec3 linePosition; // across in pixels, along in pixels, each times w; w
#endif
#ifdef CLIP_DISTANCES
out float gl_ClipDistance[CLIP_DISTANCES];
#endif

#ifdef RECORDED
vec3 ToEye(vec3 model, vec3 rest) {
#ifdef PRECISE
    vec3 offset = (model - reference) + (rest - referenceRest);
#else
    vec3 offset = model;
#endif
    return (viewing * vec4(offset, 1.0)).xyz;
}
#endif

#ifdef LIT
void Light(vec3 eye, vec3 n, out vec4 front, out vec4 back) {
#if MATERIALS > 1
    int first = 3 * int(slot);
#else
    const int first = 0;
#endif
    vec4 base = materials[first];
    vec4 diffuse = materials[first + 1];
    vec3 specular = materials[first + 2].rgb;
    vec3 frontSum = base.rgb, backSum = base.rgb;
    for (int i = 0; i < LIGHTS; i++) {
#ifdef LOCAL_LIGHTS
        vec3 l = normalize(lightDirection[i].xyz - eye * lightDirection[i].w);
        vec3 h = normalize(l + vec3(0.0, 0.0, 1.0));
#else
        vec3 l = lightDirection[i].xyz;
        vec3 h = lightHalf[i];
#endif
        float nl = dot(n, l), nh = dot(n, h);
        float shine = pow(max(abs(nh), 1e-6), diffuse.a);
        frontSum += lightColour[i] * (diffuse.rgb * max(nl, 0.0) + specular * (nl > 0.0 && nh > 0.0 ? shine : 0.0));
#ifdef TWO_SIDED
        backSum += lightColour[i] * (diffuse.rgb * max(-nl, 0.0) + specular * (nl < 0.0 && nh < 0.0 ? shine : 0.0));
#endif
    }
    front = vec4(min(frontSum, 1.0), base.a);
    back = vec4(min(backSum, 1.0), base.a);
}
#endif

void main() {
#ifdef RECORDED
#ifdef PRECISE
    vec3 eye = ToEye(position, positionRest);
#else
    vec3 eye = ToEye(position, vec3(0.0));
#endif
    vec3 anyNormal = normalMatrix * normal; // of any length
    vec3 eyeNormal = normalize(anyNormal);
#else
    vec3 eye = position;
    vec3 anyNormal = normal;
    vec3 eyeNormal = normal;
#endif
    gl_Position = projection * vec4(eye, 1.0);
    gl_PointSize = pointSize;

    frontColour = colour;
#ifdef TWO_SIDED
    backColour = colour;
#endif
#ifdef LIT
    if (slot >= 0.0) {
        vec4 front, back;
        Light(eye, eyeNormal, front, back);
        frontColour = front;
#ifdef TWO_SIDED
        backColour = back;
#endif
    }
#endif

#ifdef TEXTURED
    vec2 st = texel;
#if GENERATION == 3
    vec4 model = vec4(position, 1.0);
    st = vec2(dot(generationPlanes[0], model), dot(generationPlanes[1], model));
#elif GENERATION == 2
    st = vec2(dot(generationPlanes[0], vec4(eye, 1.0)), dot(generationPlanes[1], vec4(eye, 1.0)));
#elif GENERATION == 4
    vec3 u = normalize(eye);
    vec3 r = u - 2.0 * eyeNormal * dot(eyeNormal, u);
    st = r.xy / (2.0 * length(r + vec3(0.0, 0.0, 1.0))) + 0.5;
#endif
#ifdef TEXT
    texelPosition = st;
#else
    texelPosition = (textureMatrix * vec4(st, 0.0, 1.0)).xy;
#endif
#endif

#ifdef LINES
#ifdef RECORDED
#ifdef PRECISE
    vec3 otherEye = ToEye(otherEnd, otherEndRest);
#else
    vec3 otherEye = ToEye(otherEnd, vec3(0.0));
#endif
#else
    vec3 otherEye = otherEnd;
#endif
    vec4 here = gl_Position;
    vec4 there = projection * vec4(otherEye, 1.0);
    vec4 p = line.x < 0.5 ? here : there, q = line.x < 0.5 ? there : here;
    // What is behind the near plane has no place on the screen: cut the segment there.
    float a = p.z + p.w, b = q.z + q.w;
    if (a < 0.0 && b > 0.0)
        p = mix(p, q, a / (a - b));
    else if (b < 0.0 && a > 0.0)
        q = mix(q, p, b / (b - a));
    vec2 first = p.xy / p.w * lineSize.xy, second = q.xy / q.w * lineSize.xy;
    vec2 d = second - first;
    float extent = length(d), across = lineSize.z, beyond = lineSize.z;
    vec2 along = extent > 1e-6 ? d / extent : vec2(1.0, 0.0);
    vec2 sideways = vec2(-along.y, along.x);
#ifdef SMOOTH
    across += 0.5;
    beyond = 0.0;
#else
    if (across < 0.75) {
        // One pixel for each step along the longer direction.
        along = abs(d.x) >= abs(d.y) ? vec2(sign(d.x), 0.0) : vec2(0.0, sign(d.y));
        sideways = abs(d.x) >= abs(d.y) ? vec2(0.0, 1.0) : vec2(1.0, 0.0);
    }
#endif
    gl_Position = line.x < 0.5 ? p : q;
    vec2 offset = sideways * (line.y * across) + along * ((line.x < 0.5 ? -1.0 : 1.0) * beyond);
    gl_Position.xy += offset / lineSize.xy * gl_Position.w;
    // The first bit of a style belongs to the pixel of the first end, which reaches half a drawing pixel back.
    float travelled = (line.x < 0.5 ? line.z - beyond : line.z + extent + beyond) + 0.5 * lineSize.w;
    linePosition = vec3(line.y * across, travelled, 1.0) * gl_Position.w;
    if (a < 0.0 && b < 0.0)
        gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
#endif

#if CLIP_PLANES > 0
    vec4 eyePoint = vec4(eye, 1.0);
    for (int i = 0; i < CLIP_PLANES; i++)
        gl_ClipDistance[i] = dot(clip[i], eyePoint);
#endif
#ifdef FACING_LINES
    // From the eye to the point; in parallel projections everywhere the same. Normals are exact to some 1/30000.
    vec3 look = -projection[2][3] * eye - vec3(0.0, 0.0, projection[3][3]);
    gl_ClipDistance[CLIP_PLANES] = -dot(anyNormal, look) - 4e-5 * (abs(look.x) + abs(look.y) + abs(look.z));
#endif
}
)";

const char* const FragmentSource = R"(
INTERPOLATION in vec4 frontColour;
#ifdef TWO_SIDED
INTERPOLATION in vec4 backColour;
#endif
#ifdef TEXTURED
in vec2 texelPosition;
uniform sampler2D image;
#endif
#ifdef LINES
in vec3 linePosition;
uniform vec4 lineSize;
uniform int lineStyle;
#endif
uniform int pattern[16];
uniform vec2 patternOrigin;
uniform float pixelScale;
uniform vec2 alphaTest;
uniform vec4 cue; // depth of the near colour, 1 / (range of depths)
uniform vec3 cueColours[2];
out vec4 fragment;

void main() {
#ifdef PATTERN
    ivec2 cell = ivec2(floor((gl_FragCoord.xy - patternOrigin) / pixelScale)) & 15;
    if (((pattern[cell.y] >> (15 - cell.x)) & 1) == 0)
        discard;
#endif
#ifdef TWO_SIDED
    vec4 c = gl_FrontFacing ? frontColour : backColour;
#else
    vec4 c = frontColour;
#endif
#ifdef DASHED
    int bit = int(floor(linePosition.y / linePosition.z / lineSize.w)) & 15;
    if (((lineStyle >> bit) & 1) == 0)
        discard;
#endif
#ifdef SMOOTH
    c.a *= clamp(lineSize.z + 0.5 - abs(linePosition.x / linePosition.z), 0.0, 1.0);
#endif
#ifdef DEPTH_CUE
    c.rgb = mix(cueColours[0], cueColours[1], clamp((gl_FragCoord.z - cue.x) * cue.y, 0.0, 1.0));
#endif
#ifdef TEXT
    float coverage = texture(image, texelPosition).r;
#ifdef INDEX
    if (coverage < 0.002)
        discard;
    fragment = vec4(c.r, 0.0, coverage, 1.0);
    return;
#else
    c.a *= coverage;
#endif
#elif defined(TEXTURED)
    vec4 t = texture(image, texelPosition);
#if TEXTURED == 1
    c *= t;
#elif TEXTURED == 2
    c = vec4(mix(c.rgb, vec3(1.0), t.rgb), c.a * t.a);
#else
    c.rgb = mix(c.rgb, t.rgb, t.a);
#endif
#endif
#ifdef ALPHA_TEST
    float alpha = floor(c.a * 255.0 + 0.5);
    float reference = alphaTest.x;
    int f = int(alphaTest.y);
    bool pass = f == 1 ? alpha < reference : f == 2 ? alpha == reference : f == 3 ? alpha <= reference :
                f == 4 ? alpha > reference : f == 5 ? alpha != reference : f == 6 ? alpha >= reference : f == 7;
    if (!pass)
        discard;
#endif
#ifdef INDEX
    fragment = vec4(c.r, c.r, 1.0, 1.0);
#else
    fragment = c;
#endif
}
)";

std::string Definitions(const ShaderVariant& v) {
    std::string text;
    auto define = [&text](bool on, const char* name, int value) {
        if (on)
            text += std::string("#define ") + name + ' ' + std::to_string(value) + '\n';
    };
    define(true, "MATERIALS", v.manyMaterials ? MaterialSlots : 1);
    define(true, "LIGHTS", v.lit ? v.lights : 0);
    define(v.lit, "LIT", 1);
    define(v.localLights, "LOCAL_LIGHTS", 1);
    define(v.twoSided, "TWO_SIDED", 1);
    define(v.text || v.environment != 0, "TEXTURED", v.environment ? v.environment : 1);
    define(true, "GENERATION", v.generation);
    define(v.text, "TEXT", 1);
    define(v.index, "INDEX", 1);
    define(v.pattern, "PATTERN", 1);
    define(v.alphaTest, "ALPHA_TEST", 1);
    define(v.lines, "LINES", 1);
    define(v.dashed, "DASHED", 1);
    define(v.smooth, "SMOOTH", 1);
    define(v.depthCue, "DEPTH_CUE", 1);
    define(v.recorded, "RECORDED", 1);
    define(v.precise, "PRECISE", 1);
    int planes = 0;
    for (int bits = v.clipPlanes; bits; bits &= bits - 1)
        planes++;
    define(true, "CLIP_PLANES", planes);
    define(v.facingLines, "FACING_LINES", 1);
    define(planes > 0 || v.facingLines, "CLIP_DISTANCES", planes + v.facingLines);
    text += v.flat ? "#define INTERPOLATION flat\n" : "#define INTERPOLATION\n";
    return text;
}

unsigned Compile(unsigned kind, const std::string& definitions, const char* body) {
    const char* const version = epoxy_is_desktop_gl()
                                    ? "#version 330 core\n"
                                    : "#version 300 es\nprecision highp float;\nprecision highp int;\n";
    const char* parts[3] = {version, definitions.c_str(), body};
    unsigned shader = glCreateShader(kind);
    glShaderSource(shader, 3, parts, nullptr);
    glCompileShader(shader);
    int compiled = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (!compiled) {
        char log[2000] = "";
        glGetShaderInfoLog(shader, sizeof log, nullptr, log);
        std::fprintf(stderr, "Graphics: the driver refused a shader:\n%s%s\n", definitions.c_str(), log);
        std::exit(1);
    }
    return shader;
}

Program Link(const ShaderVariant& variant) {
    const std::string definitions = Definitions(variant);
    Program program;
    program.name = glCreateProgram();
    const unsigned vertex = Compile(GL_VERTEX_SHADER, definitions, VertexSource);
    const unsigned fragment = Compile(GL_FRAGMENT_SHADER, definitions, FragmentSource);
    glAttachShader(program.name, vertex);
    glAttachShader(program.name, fragment);
    glLinkProgram(program.name);
    int linked = 0;
    glGetProgramiv(program.name, GL_LINK_STATUS, &linked);
    if (!linked) {
        char log[2000] = "";
        glGetProgramInfoLog(program.name, sizeof log, nullptr, log);
        std::fprintf(stderr, "Graphics: the driver refused a program:\n%s%s\n", definitions.c_str(), log);
        std::exit(1);
    }
    glDeleteShader(vertex);
    glDeleteShader(fragment);

    const std::pair<int Program::*, const char*> uniforms[] = {
        {&Program::projection, "projection"},
        {&Program::viewing, "viewing"},
        {&Program::normalMatrix, "normalMatrix"},
        {&Program::reference, "reference"},
        {&Program::referenceRest, "referenceRest"},
        {&Program::materials, "materials"},
        {&Program::lightDirection, "lightDirection"},
        {&Program::lightHalf, "lightHalf"},
        {&Program::lightColour, "lightColour"},
        {&Program::textureMatrix, "textureMatrix"},
        {&Program::texture, "image"},
        {&Program::pattern, "pattern"},
        {&Program::patternOrigin, "patternOrigin"},
        {&Program::pixelScale, "pixelScale"},
        {&Program::pointSize, "pointSize"},
        {&Program::alphaTest, "alphaTest"},
        {&Program::lineSize, "lineSize"},
        {&Program::lineStyle, "lineStyle"},
        {&Program::cue, "cue"},
        {&Program::cueColours, "cueColours"},
        {&Program::clip, "clip"},
        {&Program::generationPlanes, "generationPlanes"},
    };
    for (auto& [field, name] : uniforms)
        program.*field = glGetUniformLocation(program.name, name);
    return program;
}

std::deque<std::pair<ShaderVariant, Program>> Programs;

} // namespace

Program& ProgramFor(const ShaderVariant& variant) {
    static size_t last = 0;
    if (last < Programs.size() && Programs[last].first == variant)
        return Programs[last].second;
    for (last = 0; last < Programs.size(); last++)
        if (Programs[last].first == variant)
            return Programs[last].second;
    Programs.emplace_back(variant, Link(variant));
    return Programs[last].second;
}

void DeletePrograms() {
    for (auto& [variant, program] : Programs)
        glDeleteProgram(program.name);
    Programs.clear();
}

} // namespace gl

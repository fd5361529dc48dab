#include "app/studio/view/Shaders.h"

namespace orv::app::view {

namespace {

constexpr char kVersion[] = "#version 330 core\n";

// Light on a surface as a screen shows it: the square root stands for the screen's curve, which
// costs a renderer without a graphics processor much more. As it is a product's, each part has its
// own. The eye is the origin.
constexpr char kLight[] = R"(
uniform vec3 light;
uniform vec3 ahead;  // where the eye looks
float LightOn(vec3 n, vec3 at) {
  // Towards the eye: a side that is seen, but for a crest's, whose smooth normal leads a little away.
  // The middle of the picture stands for all of it.
  float away = max(dot(n, at), 0.0);
  n = away * away > 0.01 * dot(at, at) ? -n : n;
  return sqrt(0.2 + 0.14 * n.y + 0.55 * max(dot(n, light), 0.0) + 0.25 * abs(dot(n, ahead)));
}
)";

constexpr char kMeshVertex[] = R"(
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;
layout(location = 2) in vec4 colour;
layout(location = 3) in vec2 texCoord;
layout(location = 4) in vec4 row0;
layout(location = 5) in vec4 row1;
layout(location = 6) in vec4 row2;
layout(location = 7) in vec4 tint;
layout(location = 8) in uint id;
uniform mat4 viewProjection;
uniform vec4 baseColour;
invariant gl_Position;  // what is drawn twice lies at one depth
#ifdef PLACED
out vec3 at;
#endif
#ifdef NORMALS
out vec3 facing;
#endif
#ifdef VARIED
out vec4 surface;
#else
flat out vec4 surface;
#endif
#ifdef TEXTURED
out vec2 place;
#endif
#ifdef ID
flat out uint shown;
#endif
void main() {
  vec4 p = vec4(position, 1.0);
  vec3 here = vec3(dot(row0, p), dot(row1, p), dot(row2, p));
  gl_Position = viewProjection * vec4(here, 1.0);
  surface = tint * baseColour;
#ifdef COLOURS
  surface *= colour;
#endif
  surface.rgb = sqrt(surface.rgb);
#if defined(NORMALS) || defined(DENSE)
  vec3 n = vec3(dot(cross(row1.xyz, row2.xyz), normal), dot(cross(row2.xyz, row0.xyz), normal),
                dot(cross(row0.xyz, row1.xyz), normal));
#endif
#ifdef DENSE
  surface.rgb *= LightOn(normalize(n), here);
#endif
#ifdef NORMALS
  facing = n;
#endif
#ifdef PLACED
  at = here;
#endif
#ifdef TEXTURED
  place = texCoord;
#endif
#ifdef ID
  shown = id;
#endif
}
)";

constexpr char kMeshFragment[] = R"(
uniform sampler2D picture;
uniform float cutoff;
uniform vec4 plain;
#ifdef PLACED
in vec3 at;
#endif
#ifdef NORMALS
in vec3 facing;
#endif
#ifdef VARIED
in vec4 surface;
#else
flat in vec4 surface;
#endif
#ifdef TEXTURED
in vec2 place;
#endif
#ifdef ID
flat in uint shown;
out uint result;
#else
out vec4 result;
#endif
void main() {
  vec4 c = surface;
#ifdef TEXTURED
  c *= texture(picture, place);
#endif
#ifdef MASKED
  if (c.a < cutoff) discard;
  c.a = 1.0;
#endif
#if defined(ID)
  result = shown;
#elif defined(PLAIN)
  result = plain;
#elif !defined(PLACED)
  result = c;
#elif defined(NORMALS)
  result = vec4(c.rgb * LightOn(normalize(facing), at), c.a);
#else
  result = vec4(c.rgb * LightOn(normalize(cross(dFdx(at), dFdy(at))), at), c.a);
#endif
}
)";

// Lines come in pieces, so that what changes along them is worked out at their ends.
constexpr char kGridVertex[] = R"(
uniform mat4 viewProjection;
uniform vec3 corner;  // of the packet's space: first line of both directions
uniform ivec2 first;  // its number, from the world's origin
uniform float gap;
uniform float focus;  // pixels of a metre at a distance of one
uniform int lines;    // of each direction
uniform int pieces;   // of a line
uniform int skip;     // so many to the next of the coarser ones, 0: none is left out
uniform vec3 ink;
uniform float strength;
out float weight;
flat out vec4 stroke;
vec2 Cell(bool alongZ, int line, int end) {
  vec2 cell = vec2(float(line), float(end) * float(lines - 1) / float(pieces));
  return alongZ ? cell : cell.yx;
}
vec3 Place(vec2 cell) { return corner + vec3(cell.x * gap, 0.0, cell.y * gap); }
// Less to the edge of all, and where lines come to lie close together, as they would be a surface.
float Weight(bool alongZ, vec2 cell) {
  vec2 from = 2.0 * cell / float(lines - 1) - 1.0;
  vec3 at = Place(cell);
  // From this line to the next as the eye sees it, without what runs along the line.
  float far = max(length(at), 1e-6);
  vec3 gaze = at / far, line = alongZ ? vec3(0, 0, 1) : vec3(1, 0, 0), next = line.zyx;
  line -= dot(line, gaze) * gaze;
  next -= dot(next, gaze) * gaze;
  next -= line * dot(line, next) / max(dot(line, line), 1e-6);
  float space = length(next) * gap * focus / far;
  return clamp(1.0 - dot(from, from), 0.0, 1.0) * smoothstep(2.0, 12.0, space);
}
void main() {
  int piece = gl_VertexID / 2, end = gl_VertexID % 2;
  int line = piece / pieces;
  piece %= pieces;
  bool alongZ = line < lines;
  int k = alongZ ? line : line - lines;
  int number = k + (alongZ ? first.x : first.y);
  vec2 cell = Cell(alongZ, k, piece + end);
  weight = Weight(alongZ, cell);
  gl_Position = viewProjection * vec4(Place(cell), 1.0);
  gl_Position.z -= 2e-5 * gl_Position.w;  // wins over a ground in its plane
  stroke = vec4(ink, strength);
  if (number == 0)
    stroke = vec4(alongZ ? vec3(0.3, 0.45, 0.85) : vec3(0.8, 0.3, 0.3), 0.9);
  else if (skip != 0 && number % skip == 0)
    stroke.a = 0.0;
  // What can't be seen is not drawn at all.
  if (stroke.a == 0.0 || weight + Weight(alongZ, Cell(alongZ, k, piece + 1 - end)) == 0.0)
    gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
}
)";

constexpr char kGridFragment[] = R"(
in float weight;
flat in vec4 stroke;
out vec4 result;
void main() { result = vec4(stroke.rgb, stroke.a * weight); }
)";

constexpr char kRectangleVertex[] = R"(
uniform vec4 place;  // left, bottom, width, height in 0 to 1
void main() {
  vec2 c[6] = vec2[6](vec2(0, 0), vec2(1, 0), vec2(1, 1), vec2(0, 0), vec2(1, 1), vec2(0, 1));
  gl_Position = vec4(2.0 * (place.xy + c[gl_VertexID] * place.zw) - 1.0, 0.0, 1.0);
}
)";

constexpr char kRectangleFragment[] = R"(
uniform vec4 plain;
out vec4 result;
void main() { result = plain; }
)";

constexpr char kOutlineVertex[] = R"(
void main() {
  gl_Position = vec4(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0, 0.0, 1.0);
}
)";

constexpr char kOutlineFragment[] = R"(
uniform sampler2D picture;
uniform vec4 plain;
uniform int reach;   // pixels
uniform ivec2 from;  // where the mask's corner lies
out vec4 result;
void main() {
  ivec2 at = ivec2(gl_FragCoord.xy) - from;
  if (texelFetch(picture, at, 0).r > 0.5) discard;
  ivec2 last = textureSize(picture, 0) - 1;
  int side = max(1, (reach * 7) / 10);
  ivec2 ways[8] = ivec2[8](ivec2(reach, 0), ivec2(-reach, 0), ivec2(0, reach), ivec2(0, -reach),
                           ivec2(side, side), ivec2(-side, side), ivec2(side, -side),
                           ivec2(-side, -side));
  float covered = 0.0;
  for (int i = 0; i < 8; ++i)
    covered = max(covered, texelFetch(picture, clamp(at + ways[i], ivec2(0), last), 0).r);
  if (covered < 0.5) discard;
  result = plain;
}
)";

}  // namespace

ShaderSource MeshShader(unsigned bits) {
  const bool isLit = !(bits & (kShadeUnlit | kShadeId | kShadePlain));
  const bool isDense = isLit && bits & kShadeDense;
  std::string head = kVersion;
  if (isDense) head += "#define DENSE\n";
  if (isLit && !isDense) head += "#define PLACED\n";
  if (isLit && !isDense && bits & kShadeNormals) head += "#define NORMALS\n";
  if (isDense || bits & kShadeColours) head += "#define VARIED\n";
  if (bits & kShadeTexture) head += "#define TEXTURED\n";
  if (bits & kShadeMask) head += "#define MASKED\n";
  if (bits & kShadeColours) head += "#define COLOURS\n";
  if (bits & kShadeId) head += "#define ID\n";
  if (bits & kShadePlain) head += "#define PLAIN\n";
  head += kLight;
  return {head + kMeshVertex, head + kMeshFragment};
}

ShaderSource GridShader() {
  return {std::string(kVersion) + kGridVertex, std::string(kVersion) + kGridFragment};
}

ShaderSource RectangleShader() {
  return {std::string(kVersion) + kRectangleVertex, std::string(kVersion) + kRectangleFragment};
}

ShaderSource OutlineShader() {
  return {std::string(kVersion) + kOutlineVertex, std::string(kVersion) + kOutlineFragment};
}

}  // namespace orv::app::view

#include "app/studio/view/LinesPass.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions_3_3_Core>
#include <cstddef>
#include <iterator>

namespace orv::app::view {

namespace {

// Depth is moved a little towards the eye, so that what lies on a surface wins over it.
constexpr char kStrokeVertex[] = R"(#version 330 core
layout(location = 0) in vec3 from;
layout(location = 1) in vec4 fromColour;
layout(location = 2) in vec3 to;
layout(location = 3) in vec4 toColour;
layout(location = 4) in float width;
uniform mat4 viewProjection;
uniform vec2 size;       // of the picture (pixels)
uniform float ratio;     // pixels per pixel of the desktop
uniform float strength;  // of alpha
noperspective out vec4 ink;
noperspective out vec2 place;  // from the middle, across and along (pixels)
flat out float radius;         // pixels
void main() {
  vec4 a = viewProjection * vec4(from, 1.0), b = viewProjection * vec4(to, 1.0);
  vec4 inkA = fromColour, inkB = toColour;
  radius = 0.5 * width * ratio;
  // What lies behind the near plane has no place in the picture.
  float depthA = a.z + 0.999 * a.w, depthB = b.z + 0.999 * b.w;
  ink = vec4(0.0);
  place = vec2(0.0);
  gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
  if (depthA <= 0.0 && depthB <= 0.0) return;
  if (depthA <= 0.0) {
    float part = depthA / (depthA - depthB);
    a = mix(a, b, part);
    inkA = mix(inkA, inkB, part);
  } else if (depthB <= 0.0) {
    float part = depthB / (depthB - depthA);
    b = mix(b, a, part);
    inkB = mix(inkB, inkA, part);
  }
  vec2 pixelA = a.xy / a.w * 0.5 * size, pixelB = b.xy / b.w * 0.5 * size;
  vec2 along = pixelB - pixelA;
  float far = length(along);
  bool isPoint = far < 0.01;
  along = isPoint ? vec2(1.0, 0.0) : along / far;
  bool atEnd = gl_VertexID >= 2;
  float reach = radius + 1.0;
  place.x = gl_VertexID % 2 == 0 ? -reach : reach;
  place.y = !isPoint ? 0.0 : atEnd ? reach : -reach;
  vec4 p = atEnd ? b : a;
  vec2 pixel = (atEnd ? pixelB : pixelA) + along * place.y + vec2(-along.y, along.x) * place.x;
  ink = atEnd ? inkB : inkA;
  ink.a *= strength;
  gl_Position = vec4(pixel / (0.5 * size) * p.w, p.z - 4e-5 * p.w, p.w);
}
)";

constexpr char kStrokeFragment[] = R"(#version 330 core
noperspective in vec4 ink;
noperspective in vec2 place;
flat in float radius;
out vec4 result;
void main() {
  result = vec4(ink.rgb, ink.a * clamp(radius + 0.5 - length(place), 0.0, 1.0));
}
)";

constexpr char kCornerVertex[] = R"(#version 330 core
layout(location = 0) in vec3 at;
layout(location = 1) in vec4 colour;
uniform mat4 viewProjection;
uniform float strength;
out vec4 ink;
void main() {
  gl_Position = viewProjection * vec4(at, 1.0);
  gl_Position.z -= 4e-5 * gl_Position.w;
  ink = vec4(colour.rgb, colour.a * strength);
}
)";

constexpr char kCornerFragment[] = R"(#version 330 core
in vec4 ink;
out vec4 result;
void main() { result = ink; }
)";

struct Attribute {
  GLuint place;
  GLint size;
  GLenum type;
  std::size_t offset;
};

constexpr Attribute kStrokeAttributes[] = {
    {0, 3, GL_FLOAT, offsetof(LineSet::Stroke, from)},
    {1, 4, GL_UNSIGNED_BYTE, offsetof(LineSet::Stroke, fromColour)},
    {2, 3, GL_FLOAT, offsetof(LineSet::Stroke, to)},
    {3, 4, GL_UNSIGNED_BYTE, offsetof(LineSet::Stroke, toColour)},
    {4, 1, GL_FLOAT, offsetof(LineSet::Stroke, width)}};
constexpr Attribute kCornerAttributes[] = {
    {0, 3, GL_FLOAT, offsetof(LineSet::Corner, at)},
    {1, 4, GL_UNSIGNED_BYTE, offsetof(LineSet::Corner, colour)}};

/// Of the buffer that is bound, from one of its elements on.
template <std::size_t N>
void PointAttributes(QOpenGLFunctions_3_3_Core& gl, const Attribute (&attributes)[N],
                     std::size_t stride, std::size_t first) {
  for (const Attribute& one : attributes)
    gl.glVertexAttribPointer(one.place, one.size, one.type, one.type == GL_UNSIGNED_BYTE,
                             static_cast<GLsizei>(stride),
                             reinterpret_cast<const void*>(first * stride + one.offset));
}

}  // namespace

ShaderSource LinesPass::StrokeShader() {
  return {kStrokeVertex, kStrokeFragment};
}

ShaderSource LinesPass::CornerShader() {
  return {kCornerVertex, kCornerFragment};
}

LinesPass::LinesPass(QOpenGLFunctions_3_3_Core& gl, unsigned strokeProgram, unsigned cornerProgram)
    : m_gl(gl) {
  m_strokes.program = strokeProgram;
  m_corners.program = cornerProgram;
  for (Kind* kind : {&m_strokes, &m_corners}) {
    const bool isStroke = kind == &m_strokes;
    kind->viewProjection = m_gl.glGetUniformLocation(kind->program, "viewProjection");
    kind->strength = m_gl.glGetUniformLocation(kind->program, "strength");
    m_gl.glGenVertexArrays(1, &kind->array);
    m_gl.glGenBuffers(1, &kind->buffer);
    m_gl.glBindVertexArray(kind->array);
    for (GLuint i = 0; i < (isStroke ? std::size(kStrokeAttributes) : std::size(kCornerAttributes));
         ++i) {
      m_gl.glEnableVertexAttribArray(i);
      m_gl.glVertexAttribDivisor(i, isStroke ? 1 : 0);
    }
  }
  m_size = m_gl.glGetUniformLocation(m_strokes.program, "size");
  m_ratio = m_gl.glGetUniformLocation(m_strokes.program, "ratio");
  m_gl.glBindVertexArray(0);
}

LinesPass::~LinesPass() {
  if (!QOpenGLContext::currentContext()) return;
  for (const Kind* kind : {&m_strokes, &m_corners}) {
    m_gl.glDeleteProgram(kind->program);
    m_gl.glDeleteVertexArrays(1, &kind->array);
    m_gl.glDeleteBuffers(1, &kind->buffer);
  }
}

void LinesPass::Upload(const FramePacket& packet) {
  // All sets behind one another, so that a picture has one upload of each kind.
  const auto upload = [&](const Kind& kind, auto member, std::size_t size) {
    std::size_t count = 0;
    for (const LineSet* set : packet.lines) count += (set->*member).size();
    if (count == 0) return;
    m_gl.glBindBuffer(GL_ARRAY_BUFFER, kind.buffer);
    m_gl.glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(count * size), nullptr,
                      GL_STREAM_DRAW);
    std::size_t first = 0;
    for (const LineSet* set : packet.lines) {
      const auto& list = set->*member;
      m_gl.glBufferSubData(GL_ARRAY_BUFFER, static_cast<GLintptr>(first * size),
                           static_cast<GLsizeiptr>(list.size() * size), list.data());
      first += list.size();
    }
  };
  upload(m_strokes, &LineSet::strokes, sizeof(LineSet::Stroke));
  upload(m_corners, &LineSet::corners, sizeof(LineSet::Corner));
}

void LinesPass::DrawKinds(const LineSet& set, std::size_t firstStroke, std::size_t firstCorner,
                          float strength) {
  if (!set.corners.empty()) {
    m_gl.glUseProgram(m_corners.program);
    m_gl.glUniform1f(m_corners.strength, strength);
    m_gl.glBindVertexArray(m_corners.array);
    m_gl.glBindBuffer(GL_ARRAY_BUFFER, m_corners.buffer);
    PointAttributes(m_gl, kCornerAttributes, sizeof(LineSet::Corner), firstCorner);
    m_gl.glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(set.corners.size()));
    ++m_draws;
  }
  if (!set.strokes.empty()) {
    m_gl.glUseProgram(m_strokes.program);
    m_gl.glUniform1f(m_strokes.strength, strength);
    m_gl.glBindVertexArray(m_strokes.array);
    m_gl.glBindBuffer(GL_ARRAY_BUFFER, m_strokes.buffer);
    PointAttributes(m_gl, kStrokeAttributes, sizeof(LineSet::Stroke), firstStroke);
    m_gl.glDrawArraysInstanced(GL_TRIANGLE_STRIP, 0, 4, static_cast<GLsizei>(set.strokes.size()));
    ++m_draws;
  }
}

int LinesPass::Draw(const FramePacket& packet, const std::array<float, 16>& viewProjection,
                    int width, int height, double pixelRatio) {
  if (packet.lines.empty()) return 0;
  m_draws = 0;
  Upload(packet);
  for (const Kind* kind : {&m_corners, &m_strokes}) {
    m_gl.glUseProgram(kind->program);
    m_gl.glUniformMatrix4fv(kind->viewProjection, 1, GL_FALSE, viewProjection.data());
  }
  m_gl.glUniform2f(m_size, static_cast<float>(width), static_cast<float>(height));
  m_gl.glUniform1f(m_ratio, static_cast<float>(pixelRatio));
  m_gl.glDisable(GL_CULL_FACE);
  // The far plane stands behind what the scene shows; a way may lead out of that.
  m_gl.glEnable(GL_DEPTH_CLAMP);
  std::size_t firstStroke = 0, firstCorner = 0;
  for (const LineSet* set : packet.lines) {
    if (set->onTop) {
      m_gl.glDisable(GL_DEPTH_TEST);
    } else {
      m_gl.glEnable(GL_DEPTH_TEST);
      m_gl.glDepthFunc(GL_GREATER);
      if (set->hidden > 0.0f) DrawKinds(*set, firstStroke, firstCorner, set->hidden);
      m_gl.glDepthFunc(GL_LEQUAL);
    }
    DrawKinds(*set, firstStroke, firstCorner, 1.0f);
    firstStroke += set->strokes.size();
    firstCorner += set->corners.size();
  }
  m_gl.glDisable(GL_DEPTH_CLAMP);
  m_gl.glDisable(GL_DEPTH_TEST);
  return m_draws;
}

}  // namespace orv::app::view

#include "app/studio/view/Backdrop.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions_3_3_Core>
#include <algorithm>

namespace orv::app::view {

namespace {

constexpr char kBackdropVertex[] = R"(#version 330 core
uniform vec4 place;  // left, bottom, width, height in 0 to 1
out vec2 at;
void main() {
  vec2 corner = vec2(gl_VertexID & 1, gl_VertexID >> 1);
  at = vec2(corner.x, 1.0 - corner.y);
  gl_Position = vec4(2.0 * (place.xy + corner * place.zw) - 1.0, 0.0, 1.0);
}
)";

// As a screen shows it, like all that is drawn.
constexpr char kBackdropFragment[] = R"(#version 330 core
uniform sampler2D picture;
uniform float opacity;
in vec2 at;
out vec4 result;
void main() {
  vec4 texel = texture(picture, at);
  result = vec4(texel.rgb, texel.a * opacity);
}
)";

}  // namespace

BackdropPass::~BackdropPass() {
  if (!m_gl || !QOpenGLContext::currentContext()) return;
  m_gl->glDeleteProgram(m_program);
  for (const Held& held : m_held) m_gl->glDeleteTextures(1, &held.name);
}

bool BackdropPass::Build(QOpenGLFunctions_3_3_Core& gl) {
  m_gl = &gl;
  m_program = gl.glCreateProgram();
  const std::pair<GLenum, const char*> parts[] = {{GL_VERTEX_SHADER, kBackdropVertex},
                                                  {GL_FRAGMENT_SHADER, kBackdropFragment}};
  for (const auto& [kind, text] : parts) {
    const GLuint shader = gl.glCreateShader(kind);
    gl.glShaderSource(shader, 1, &text, nullptr);
    gl.glCompileShader(shader);
    gl.glAttachShader(m_program, shader);
    gl.glDeleteShader(shader);
  }
  gl.glLinkProgram(m_program);
  GLint done = 0;
  gl.glGetProgramiv(m_program, GL_LINK_STATUS, &done);
  if (!done) {
    char told[512] = "";
    gl.glGetProgramInfoLog(m_program, sizeof(told), nullptr, told);
    qWarning("View: pictures behind cameras are not shown: %s", told);
  }
  m_place = gl.glGetUniformLocation(m_program, "place");
  m_opacity = gl.glGetUniformLocation(m_program, "opacity");
  return done != 0;
}

/// The texture, in place of the one that was drawn longest ago.
unsigned BackdropPass::Upload(QOpenGLFunctions_3_3_Core& gl, const Texture& texture) {
  Held* oldest = &m_held.front();
  for (Held& held : m_held) {
    if (held.name && held.id == texture.id) {
      held.used = m_draws;
      return held.name;
    }
    if (held.used < oldest->used) oldest = &held;
  }
  if (!oldest->name) gl.glGenTextures(1, &oldest->name);
  oldest->id = texture.id;
  oldest->used = m_draws;
  gl.glBindTexture(GL_TEXTURE_2D, oldest->name);
  gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
  gl.glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, texture.width, texture.height, 0, GL_RGBA,
                  GL_UNSIGNED_BYTE, texture.pixels.data());
  gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
  gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  return oldest->name;
}

void BackdropPass::Draw(QOpenGLFunctions_3_3_Core& gl, const FramePacket& packet, int width,
                        int height, unsigned empty) {
  const BackdropLook& look = packet.backdrop;
  if (!look.picture || look.opacity <= 0.0f || m_hasFailed || width < 1 || height < 1) return;
  ++m_draws;
  if (!m_program) m_hasFailed = !Build(gl);
  if (m_hasFailed) return;
  Gate gate = packet.gate.visible ? packet.gate : Gate();
  const float room =
      gate.width * static_cast<float>(width) / (gate.height * static_cast<float>(height));
  const float aspect =
      static_cast<float>(look.picture->width) / static_cast<float>(look.picture->height);
  const float across = std::min(1.0f, aspect / room) * gate.width;
  const float up = std::min(1.0f, room / aspect) * gate.height;
  gl.glDisable(GL_DEPTH_TEST);
  gl.glDisable(GL_CULL_FACE);
  gl.glDepthMask(GL_FALSE);
  gl.glEnable(GL_BLEND);
  gl.glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
  gl.glUseProgram(m_program);
  gl.glBindTexture(GL_TEXTURE_2D, Upload(gl, *look.picture));
  gl.glUniform4f(m_place, gate.left + 0.5f * (gate.width - across),
                 gate.bottom + 0.5f * (gate.height - up), across, up);
  gl.glUniform1f(m_opacity, look.opacity);
  gl.glBindVertexArray(empty);
  gl.glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
  gl.glDepthMask(GL_TRUE);
  gl.glDisable(GL_BLEND);
  gl.glEnable(GL_DEPTH_TEST);
}

}  // namespace orv::app::view

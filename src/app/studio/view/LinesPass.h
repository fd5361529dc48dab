// Draws what is to be seen over a scene.
#pragma once

#include <array>
#include <cstddef>

#include "app/studio/view/Shaders.h"
#include "app/studio/view/packet/FramePacket.h"

class QOpenGLFunctions_3_3_Core;

namespace orv::app::view {

/// The sets of a packet's lines. A core profile has no wide lines: each becomes four corners on the
/// graphics processor, with edges as smooth as the pixels bear. Belongs to one context, as its
/// Renderer does.
class LinesPass {
 public:
  static ShaderSource StrokeShader();
  static ShaderSource CornerShader();

  /// Programs of the two shaders, which are deleted with it while the context is current.
  LinesPass(QOpenGLFunctions_3_3_Core& gl, unsigned strokeProgram, unsigned cornerProgram);
  ~LinesPass();
  LinesPass(const LinesPass&) = delete;
  LinesPass& operator=(const LinesPass&) = delete;

  /// Into the framebuffer that is bound, by the depth that stands in it; blending is on, and
  /// depth is not written. Gives the number of draw calls.
  int Draw(const FramePacket& packet, const std::array<float, 16>& viewProjection, int width,
           int height, double pixelRatio);

 private:
  struct Kind {
    unsigned program = 0, array = 0, buffer = 0;
    int viewProjection = -1, strength = -1;  ///< uniforms
  };

  void Upload(const FramePacket& packet);
  void DrawKinds(const LineSet& set, std::size_t firstStroke, std::size_t firstCorner,
                 float strength);

  QOpenGLFunctions_3_3_Core& m_gl;
  Kind m_strokes, m_corners;
  int m_size = -1, m_ratio = -1;  ///< uniforms of strokes
  int m_draws = 0;
};

}  // namespace orv::app::view

// A picture behind all else that a picture shows.
#pragma once

#include <array>
#include <cstdint>

#include "app/studio/view/packet/FramePacket.h"

class QOpenGLFunctions_3_3_Core;

namespace orv::app::view {

/// Draws FramePacket::backdrop, whole, as large as it fits the gate, or the picture where there is
/// none. Belongs to one context, which must be current; textures come with what is drawn and are
/// few.
class BackdropPass {
 public:
  BackdropPass() = default;
  ~BackdropPass();
  BackdropPass(const BackdropPass&) = delete;
  BackdropPass& operator=(const BackdropPass&) = delete;

  /// Into the viewport, `width` by `height` pixels, that has been cleared; the state for meshes is
  /// there again afterwards. `empty` is a vertex array without data.
  void Draw(QOpenGLFunctions_3_3_Core& gl, const FramePacket& packet, int width, int height,
            unsigned empty);

 private:
  struct Held {
    std::uint64_t id = 0;
    unsigned name = 0;
    std::uint64_t used = 0;
  };

  bool Build(QOpenGLFunctions_3_3_Core& gl);
  unsigned Upload(QOpenGLFunctions_3_3_Core& gl, const Texture& texture);

  QOpenGLFunctions_3_3_Core* m_gl = nullptr;
  unsigned m_program = 0;
  bool m_hasFailed = false;
  int m_place = -1, m_opacity = -1;
  std::array<Held, 4> m_held;  ///< one a pane, and one to spare
  std::uint64_t m_draws = 0;
};

}  // namespace orv::app::view

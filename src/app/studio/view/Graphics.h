// What the machine can draw with.
#pragma once

#include <QSurfaceFormat>
#include <string>

namespace orv::app::view {

/// Of OpenGL 3.3 core on this display.
struct Graphics {
  std::string problem;      ///< why there is none; empty when there is
  std::string renderer;     ///< what the driver calls itself
  bool isSoftware = false;  ///< without a graphics processor
};

/// Looked up at the first call; needs an application object.
const Graphics& GetGraphics();
/// Of a context that Renderer works in.
QSurfaceFormat MakeFormat(int samples);

}  // namespace orv::app::view

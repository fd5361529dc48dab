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
/// Samples a pixel for pictures on the screen: without a graphics processor each costs as much as
/// the picture, so there are none, nor in pictures that are to be the same everywhere.
int ChooseSamples(const Graphics& graphics, bool isFixed);

}  // namespace orv::app::view

#include "app/studio/view/Graphics.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLFunctions_3_3_Core>

namespace orv::app::view {

namespace {

Graphics LookUp() {
  Graphics found;
  QOffscreenSurface surface;
  surface.setFormat(MakeFormat(0));
  surface.create();
  QOpenGLContext context;
  context.setFormat(MakeFormat(0));
  if (!context.create() || !context.makeCurrent(&surface)) {
    found.problem = "this display has no OpenGL";
    return found;
  }
  const auto* name = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
  found.renderer = name ? name : "";
  if (!context.versionFunctions<QOpenGLFunctions_3_3_Core>())
    found.problem = "OpenGL 3.3 is not to be had from " + found.renderer;
  for (const char* software : {"llvmpipe", "softpipe", "swrast", "Software", "SwiftShader"})
    found.isSoftware = found.isSoftware || found.renderer.find(software) != std::string::npos;
  context.doneCurrent();
  return found;
}

}  // namespace

const Graphics& GetGraphics() {
  static const Graphics found = LookUp();
  return found;
}

QSurfaceFormat MakeFormat(int samples) {
  QSurfaceFormat format;
  format.setRenderableType(QSurfaceFormat::OpenGL);
  format.setVersion(3, 3);
  format.setProfile(QSurfaceFormat::CoreProfile);
  format.setDepthBufferSize(24);
  format.setSamples(samples);
  return format;
}

}  // namespace orv::app::view

#include "gui/component/qt/Scale.h"

#include <QGuiApplication>
#include <QScreen>

namespace orv::gui::component::qt {

static double Scale() {
  // Of the primary screen: a window keeps its measures when it is moved to another one.
  static const double scale = QGuiApplication::primaryScreen()->logicalDotsPerInchX() / 96.0;
  return scale > 0.0 ? scale : 1.0;
}

int Scaled(int pixels) {
  return qRound(pixels * Scale());
}

int Unscaled(int pixels) {
  return qRound(pixels / Scale());
}

}  // namespace orv::gui::component::qt

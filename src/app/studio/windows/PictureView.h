// A picture in a window.
#pragma once

#include <QImage>
#include <string>

#include "gui/component/qt/ViewHandler.h"

namespace orv::app {

/// As large as its place allows, or a word that there is none.
class PictureView : public gui::component::qt::ViewHandler {
 public:
  /// Bytes of a PNG or JPEG; empty for none.
  void SetPicture(const std::string& bytes);

  void Paint(QPainter& painter, QWidget& widget) override;

 private:
  QImage m_image;
};

}  // namespace orv::app

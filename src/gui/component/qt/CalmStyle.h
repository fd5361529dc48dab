// The style of our own programs.
#pragma once

#include <QProxyStyle>

namespace orv::gui::component::qt {

/// Fusion, with frames and boxes drawn in the palette's line colour, so that they are seen on dark
/// as well as on light.
class CalmStyle : public QProxyStyle {
 public:
  CalmStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override;
};

}  // namespace orv::gui::component::qt

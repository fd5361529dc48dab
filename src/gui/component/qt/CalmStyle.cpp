#include "gui/component/qt/CalmStyle.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

#include "gui/component/qt/Theme.h"

namespace orv::gui::component::qt {

namespace {

void DrawCheckBox(const QStyleOption& option, QPainter& painter) {
  const bool enabled = option.state & QStyle::State_Enabled;
  const bool on = option.state & QStyle::State_On;
  const bool partly = option.state & QStyle::State_NoChange;
  const QRectF box = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
  const double unit = box.width() / 12.0;
  const bool focus = option.state & QStyle::State_HasFocus;
  const bool filled = (on || partly) && enabled;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(focus    ? ToneOf(option.palette, Tone::kAccent)
                      : filled ? option.palette.color(QPalette::Highlight)
                               : ToneOf(option.palette, Tone::kWeakText),
                      focus ? 1.6 : 1.0));
  painter.setBrush(filled ? option.palette.brush(QPalette::Highlight)
                          : option.palette.brush(QPalette::Base));
  painter.setOpacity(enabled ? 1.0 : 0.5);
  painter.drawRoundedRect(box, 2 * unit, 2 * unit);
  painter.setPen(QPen(filled ? option.palette.color(QPalette::HighlightedText)
                             : option.palette.color(QPalette::Text),
                      1.6 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  const auto at = [&](double x, double y) { return box.topLeft() + QPointF(x * unit, y * unit); };
  if (partly) painter.drawLine(at(3, 6), at(9, 6));
  if (on) painter.drawPolyline(QPolygonF({at(2.8, 6.2), at(5.2, 8.6), at(9.4, 3.6)}));
  painter.restore();
}

void DrawFieldFrame(const QStyleOption& option, QPainter& painter) {
  const bool focus = option.state & QStyle::State_HasFocus;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(ToneOf(option.palette, focus ? Tone::kAccent : Tone::kLine));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
  painter.restore();
}

}  // namespace

CalmStyle::CalmStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {
  setObjectName(QStringLiteral("orv-calm"));
}

void CalmStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
  switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
      return DrawCheckBox(*option, *painter);
    case PE_FrameLineEdit:
    case PE_Frame:
      return DrawFieldFrame(*option, *painter);
    default:
      return QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

int CalmStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
  // Mnemonics are seen all the time: the program is worked by keys.
  if (hint == SH_UnderlineShortcut) return 1;
  return QProxyStyle::styleHint(hint, option, widget, data);
}

}  // namespace orv::gui::component::qt

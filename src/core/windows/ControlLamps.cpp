#include "core/windows/ControlLamps.h"

#include <QPainter>
#include <QStringList>
#include <QWidget>

#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::rws::core::windows {

namespace {

using gui::component::qt::Scaled;
using gui::component::qt::Tone;
using gui::component::qt::ToneOf;

constexpr int kAcross = 16;  ///< lamps in a line
constexpr int kPitch = 28;   ///< px at 96 dpi, from lamp to lamp
constexpr int kLamp = 24;    ///< px at 96 dpi

/// The number at the end of a name, or its place.
QString NumberIn(const QString& name, int place) {
  bool isNumber = false;
  const int number = name.section(QLatin1Char(' '), -1).toInt(&isNumber);
  return QString::number(isNumber ? number : place);
}

}  // namespace

ControlLamps::ControlLamps(const std::vector<std::string>& names) : m_lit(names.size(), false) {
  for (const std::string& name : names) m_names.push_back(QString::fromStdString(name));
}

bool ControlLamps::Set(const std::vector<bool>& lit) {
  if (lit == m_lit) return false;
  m_lit = lit;
  return true;
}

QSize ControlLamps::GetSize() const {
  const int count = static_cast<int>(m_names.size());
  const int across = count < kAcross ? count : kAcross;
  return QSize(Scaled(kPitch) * across, Scaled(kPitch) * ((count + kAcross - 1) / kAcross));
}

QRect ControlLamps::PlaceOf(int lamp) const {
  const int pitch = Scaled(kPitch), size = Scaled(kLamp);
  return QRect(lamp % kAcross * pitch, lamp / kAcross * pitch, size, size);
}

void ControlLamps::Paint(QPainter& painter, QWidget& widget) {
  const QPalette& palette = widget.palette();
  painter.setRenderHint(QPainter::Antialiasing);
  for (int i = 0; i < static_cast<int>(m_names.size()); ++i) {
    const bool lit = m_lit[static_cast<std::size_t>(i)];
    const QRectF place = QRectF(PlaceOf(i)).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(lit ? QPen(Qt::NoPen) : QPen(ToneOf(palette, Tone::kLine)));
    painter.setBrush(lit ? palette.brush(QPalette::Highlight)
                         : QBrush(ToneOf(palette, Tone::kField)));
    painter.drawEllipse(place);
    painter.setPen(lit ? palette.color(QPalette::HighlightedText)
                       : ToneOf(palette, Tone::kWeakText));
    painter.drawText(place, Qt::AlignCenter, NumberIn(m_names[static_cast<std::size_t>(i)], i + 1));
  }
}

QString ControlLamps::GetTooltip(const QPoint& place) const {
  for (int i = 0; i < static_cast<int>(m_names.size()); ++i)
    if (PlaceOf(i).contains(place)) return m_names[static_cast<std::size_t>(i)];
  return {};
}

QString ControlLamps::GetAccessibleValue() const {
  QStringList lit;
  for (std::size_t i = 0; i < m_names.size(); ++i)
    if (m_lit[i]) lit << m_names[i];
  return lit.join(QStringLiteral(", "));
}

}  // namespace orv::rws::core::windows

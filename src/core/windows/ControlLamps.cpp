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

/// What has room in a lamp: a short name whole, else its number, or initials.
QString ShortName(const QString& name) {
  if (name.size() <= 3) return name;
  const QStringList words = name.split(QLatin1Char(' '));
  bool isNumber = false;
  words.last().toInt(&isNumber);
  if (isNumber) return words.last();
  if (words.size() == 1) return name.left(2);
  return (words[0].left(1) + words[1].left(1)).toUpper();
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
    const QString name = ShortName(m_names[static_cast<std::size_t>(i)]);
    QFont font = widget.font();
    if (name.size() > 2 && font.pointSizeF() > 0.0) font.setPointSizeF(0.75 * font.pointSizeF());
    painter.setFont(font);
    painter.drawText(place, Qt::AlignCenter, name);
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

#include "gui/component/qt/Theme.h"

#include <QApplication>
#include <QStyle>
#include <algorithm>

#include "gui/component/qt/CalmStyle.h"

namespace orv::gui::component::qt {

namespace {

QColor Grey(int value) {
  return QColor(value, value, value);
}

QColor Mix(const QColor& a, const QColor& b, double share) {
  return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * share,
                          a.greenF() + (b.greenF() - a.greenF()) * share,
                          a.blueF() + (b.blueF() - a.blueF()) * share);
}

struct Greys {
  int window, base, alternate, button, text, light, midlight, mid, dark, shadow, disabled;
};

constexpr Greys kDark{42, 32, 37, 56, 222, 74, 62, 30, 24, 14, 124};
constexpr Greys kLight{242, 255, 248, 236, 28, 255, 246, 190, 168, 120, 140};

/// `accent` behind white text, `link` as text.
QPalette Build(const Greys& greys, const QColor& accent, const QColor& link) {
  QPalette palette;
  const auto set = [&](QPalette::ColorRole role, int grey) { palette.setColor(role, Grey(grey)); };
  set(QPalette::Window, greys.window);
  set(QPalette::Base, greys.base);
  set(QPalette::AlternateBase, greys.alternate);
  set(QPalette::Button, greys.button);
  set(QPalette::Light, greys.light);
  set(QPalette::Midlight, greys.midlight);
  set(QPalette::Mid, greys.mid);
  set(QPalette::Dark, greys.dark);
  set(QPalette::Shadow, greys.shadow);
  set(QPalette::ToolTipBase, greys.base);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                         QPalette::ToolTipText, QPalette::BrightText}) {
    set(role, greys.text);
    palette.setColor(QPalette::Disabled, role, Grey(greys.disabled));
  }
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, Grey(greys.mid));
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, Grey(greys.disabled));
  palette.setColor(QPalette::Link, link);
  palette.setColor(QPalette::LinkVisited, link);
  return palette;
}

double Luminance(const QColor& color) {
  return 0.2126 * color.redF() + 0.7152 * color.greenF() + 0.0722 * color.blueF();
}

}  // namespace

QPalette PaletteOf(Theme theme) {
  return theme == Theme::kDark ? Build(kDark, QColor(40, 108, 178), QColor(110, 176, 244))
                               : Build(kLight, QColor(30, 106, 190), QColor(24, 94, 172));
}

void ApplyTheme(QApplication& application, Theme theme) {
  if (!dynamic_cast<CalmStyle*>(application.style())) application.setStyle(new CalmStyle);
  application.setPalette(PaletteOf(theme));
}

bool IsDark(const QPalette& palette) {
  return Luminance(palette.color(QPalette::WindowText)) >
         Luminance(palette.color(QPalette::Window));
}

QColor ToneOf(const QPalette& palette, Tone tone) {
  const QColor text = palette.color(QPalette::WindowText);
  const QColor window = palette.color(QPalette::Window);
  const bool dark = IsDark(palette);
  switch (tone) {
    case Tone::kAccent:
      return palette.color(QPalette::Link);
    case Tone::kText:
      return text;
    case Tone::kWeakText:
      return Mix(text, window, 0.3);
    case Tone::kLine:
      return Mix(text, window, 0.75);
    case Tone::kField:
      return palette.color(QPalette::Base);
    case Tone::kHover:
      return Mix(text, window, 0.9);
    case Tone::kWarning:
      return dark ? QColor(226, 172, 74) : QColor(136, 84, 0);
    case Tone::kError:
      return dark ? QColor(255, 138, 130) : QColor(190, 32, 32);
    case Tone::kGood:
      return dark ? QColor(112, 190, 122) : QColor(30, 122, 56);
  }
  return text;
}

QColor TextColor(const QPalette& palette, const QColor& wanted) {
  const int most = std::max({wanted.red(), wanted.green(), wanted.blue()});
  const int least = std::min({wanted.red(), wanted.green(), wanted.blue()});
  if (most - least > 8) return wanted;
  // A grey tells how far a text steps back: from black, the text itself, to weak.
  const double share = std::min(0.36, wanted.lightnessF() * 0.6);
  const QColor text = palette.color(QPalette::WindowText);
  return Mix(text, palette.color(QPalette::Window), share);
}

}  // namespace orv::gui::component::qt

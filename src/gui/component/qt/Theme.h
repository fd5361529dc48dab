// Colours of our programs, and of what our windows paint themselves.
#pragma once

#include <QColor>
#include <QPalette>

class QApplication;

namespace orv::gui::component::qt {

enum class Theme { kDark, kLight };

/// Style, palette and the few metrics that differ. For our own programs: within another host it is
/// that one's style and palette that rule. May be called again at any time.
void ApplyTheme(QApplication& application, Theme theme);
QPalette PaletteOf(Theme theme);

/// Colours by what they say, worked out of any palette, dark or light.
enum class Tone {
  kAccent,  ///< the one that calls: selection, a changed value, the live point
  kText,
  kWeakText,  ///< hints, units, what is said beside
  kLine,      ///< separators, grids, frames
  kField,     ///< behind what can be typed in
  kHover,     ///< behind what lies under the mouse
  kWarning,
  kError,
  kGood,
};
QColor ToneOf(const QPalette& palette, Tone tone);

/// Whether the palette's text is lighter than what lies behind it.
bool IsDark(const QPalette& palette);

/// What a document's colour for a text becomes: a grey is mapped to where it stands between the
/// palette's text and background, and kept readable; other colours stay.
QColor TextColor(const QPalette& palette, const QColor& wanted);

}  // namespace orv::gui::component::qt

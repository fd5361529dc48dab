// Which hand moves the eye in which way.
#pragma once

namespace orv::app::view {

/// The habits of other programs.
enum class NavigationPreset { kBlender, kMaya };

enum class PointerButton { kLeft, kMiddle, kRight };

/// What a drag does from its press on.
enum class DragKind { kSelect, kOrbit, kPan, kDolly, kMenu };

/// Blender: the middle button orbits, with Shift it pans, with Ctrl it dollies. Maya: Alt with the
/// left, middle and right button orbits, pans and dollies. Otherwise the left one selects and the
/// right one opens the menu; without a use a button orbits (Blender's middle with Alt).
inline DragKind KindOfDrag(NavigationPreset preset, PointerButton button, bool shift, bool ctrl,
                           bool alt) {
  if (preset == NavigationPreset::kMaya && alt)
    return button == PointerButton::kLeft     ? DragKind::kOrbit
           : button == PointerButton::kMiddle ? DragKind::kPan
                                              : DragKind::kDolly;
  if (button == PointerButton::kLeft) return DragKind::kSelect;
  if (button == PointerButton::kRight) return DragKind::kMenu;
  if (preset == NavigationPreset::kMaya) return DragKind::kPan;
  return shift ? DragKind::kPan : ctrl ? DragKind::kDolly : DragKind::kOrbit;
}

}  // namespace orv::app::view

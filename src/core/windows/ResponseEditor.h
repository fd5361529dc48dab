// The response curve of an input, by number and by hand.
#pragma once

#include <functional>
#include <string>

#include "core/config/InputResponse.h"

namespace orv::gui {
class Component;
}
namespace orv::util {
class Message;
}

namespace orv::rws::core {
class CoreImplementation;
class Instance;
}  // namespace orv::rws::core

namespace orv::rws::core::windows {

/// Draws what an input gives over the places of its control, with the live point and a square each
/// for dead zone, exponent, multiplier and offset, which stand beside as numbers. A drag of a
/// square, or of a number, is one step of undo.
class ResponseEditor {
 public:
  /// Where the squares stand in the drawing's list.
  enum Handle { kDeadzone, kExponent, kMultiplier, kOffset };

  /// `tell` shows why something was refused, or clears it.
  ResponseEditor(CoreImplementation& core, int row, std::function<void(const std::string&)> tell);
  ~ResponseEditor();
  ResponseEditor(const ResponseEditor&) = delete;
  ResponseEditor& operator=(const ResponseEditor&) = delete;

  /// `root` is the window's; its numbers are those of InputConfigId.
  void Build(gui::Component& root) { m_root = &root; }
  /// -1: none.
  void Choose(int input);
  void Show();
  void ShowLive();
  void SetLocked(const std::string& why);
  /// False when it was none of the editor's.
  bool OnComponent(gui::Component& source, const util::Message& message);
  bool IsDragging() const { return m_dragging; }

 private:
  unidevice::Property* FindInput() const;
  void ShowCurve(const unidevice::Property& input);
  void ShowHandles(const unidevice::Property& input);
  InputResponse Dragged(const unidevice::Property& input, int handle) const;
  void Begin();
  void Set(const InputResponse& response);
  void End(bool cancelled);

  CoreImplementation& m_core;
  const int m_row;
  std::function<void(const std::string&)> m_tell;
  gui::Component* m_root = nullptr;
  int m_input = -1;
  bool m_dragging = false;
  double m_from = -1.0;   ///< least place of the control: of a button 0
  double m_range = 1.0;   ///< the drawing reaches so far up and down
  double m_liveAt = 0.0;  ///< place of the control at the live point
};

}  // namespace orv::rws::core::windows

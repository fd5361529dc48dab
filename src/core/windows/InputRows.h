// The inputs of a rig, a row each.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/windows/LiveBar.h"

namespace orv::gui {
class Component;
class Layout;
}  // namespace orv::gui
namespace orv::rws::core {
class CoreImplementation;
class Instance;
}  // namespace orv::rws::core

namespace orv::rws::core::windows {

/// Shows of each input its name, what it is mapped to, what else wants the same control, and live
/// what the control and what the input gives. A row's number is that of its input and 1 more.
class InputRows {
 public:
  explicit InputRows(gui::Layout& layout) : m_layout(layout) {}

  /// Makes the rows in `container`, in place of others.
  void Build(gui::Component& container, const Instance& rig);
  /// The views are taken their painters; to be called before these die while the window stands.
  void Release();
  /// Mappings and conflicts.
  void Refresh(const CoreImplementation& core, const Instance& rig);
  void RefreshLive(const Instance& rig);
  /// Marks the row of the input.
  void Choose(int input);
  /// -1 when the component lies in none of the rows.
  int InputOf(const gui::Component& source) const;
  int GetCount() const { return static_cast<int>(m_rows.size()); }

 private:
  struct Row {
    gui::Component* root;  ///< of the row's document
    std::unique_ptr<LiveBar> bars;
  };

  gui::Layout& m_layout;
  std::vector<Row> m_rows;
};

/// The greatest that the input gives, and at least 1: what a bar or drawing of it must hold.
double OutputRange(double multiplier, double offset);

}  // namespace orv::rws::core::windows

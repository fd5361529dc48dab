// What a toolkit brings so that a component tree can be seen.
#pragma once

#include <memory>

namespace orv::gui {

class Component;

/// What has changed in a component; bits.
enum Change : unsigned {
  kLabelChange = 1u << 0,
  kTooltipChange = 1u << 1,
  kEnabledChange = 1u << 2,
  kVisibleChange = 1u << 3,
  kSizeChange = 1u << 4,
  kStyleChange = 1u << 5,  ///< style, padding and backgrounds
  kMenuChange = 1u << 6,   ///< entries of a popup or menu bar
  kValueChange = 1u << 7,  ///< what a user can change: value, text, state, offset
  kRangeChange = 1u << 8,  ///< limits, step, decimals, axes
  kItemsChange = 1u << 9,  ///< items, columns, curves
  kImageChange = 1u << 10,
  kNameChange = 1u << 11,  ///< accessible name
  kMarkChange = 1u << 12,  ///< SetMarked
  kAllChanges = ~0u
};

/// What a toolkit keeps for one realised component. The component owns it; it reads the component's
/// state and never holds a copy that could differ. It dies when it is no longer needed and nothing
/// is being delivered, since it may be its own widget's event that has led to its end.
class Peer {
 public:
  virtual ~Peer() = default;
  /// The component is about to go, or to be unrealised: it must not be touched any more. `top` is
  /// set for the one whose widget holds those of the others, and is to be hidden.
  virtual void Detach(bool top) = 0;
  /// Brings the widget up to date; bits of `Change`.
  virtual void Update(unsigned changes) = 0;
  /// `child` is realised and stands at `index` among the children.
  virtual void AddChild(Component& child, int index) = 0;
  /// `child` is about to be unrealised.
  virtual void RemoveChild(Component& child) = 0;
  /// Nothing is laid out and painted from the call with true to that with false.
  virtual void Freeze(bool frozen) = 0;
  virtual void TakeFocus() = 0;
  /// Opens the component's popup at a place within it (px at 96 dpi), or at its lower left corner
  /// when x is kUnset.
  virtual void OpenPopup(int x, int y) = 0;
};

class Toolkit {
 public:
  virtual ~Toolkit() = default;
  /// `parent` is null at the root. Children follow by `Peer::AddChild`.
  virtual std::unique_ptr<Peer> Create(Component& component, Peer* parent) = 0;
  /// Has DestroyRetired called from the event loop, once nothing is delivered any more.
  virtual void ScheduleRetired() = 0;
};

}  // namespace orv::gui

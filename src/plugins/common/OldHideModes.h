// The "General Modes" that hide a rig's nodes.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "core/interface/CInterface.h"

namespace orv::rws::addon {

class RigSceneNode;

/// Check boxes that hide nodes, always or during takes only. An edit shows at once and can be
/// undone: undo and redo come back as events behind REALUNDO and REALREDO.
class OldHideModes {
 public:
  enum When { kAlways, kDuringTakes };

  struct Box {
    std::string label;
    std::string tooltip;
    When when = kAlways;
    std::vector<RigSceneNode*> nodes;  ///< the rig's own
    bool on = false;                   ///< bound to the check box
    bool applied = false;              ///< as at the latest event
  };

  /// Adds a box; to be called before Define. The reference stays good.
  Box& Add(std::string label, std::string tooltip, When when, std::vector<RigSceneNode*> nodes);
  std::size_t GetCount() const { return m_boxes.size(); }
  Box& GetBox(std::size_t index) { return m_boxes[index]; }
  /// Declares the group "General Modes" with a check box each.
  void Define(CInterface& core, CInterface::Callback& rig);
  /// Declares the check boxes alone, within a group of the rig's own.
  void DefineBoxes(CInterface& core, CInterface::Callback& rig);
  /// A take begins: hides what is to be hidden during it.
  void Start();
  /// A take has ended: shows again what was hidden for it alone.
  void Stop();
  /// Hides what the boxes say, after a load.
  void Restore();
  /// Handles the event of a box, its undo or its redo. False when the name is none of these.
  bool OnCallback(CInterface& core, CInterface::Callback& rig, const std::string& name);

 private:
  bool IsHidden(const RigSceneNode* node) const;
  void Apply(const Box& box) const;

  std::deque<Box> m_boxes;
  bool m_recording = false;
};

}  // namespace orv::rws::addon

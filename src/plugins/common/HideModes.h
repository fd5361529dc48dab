// The check boxes that hide a rig's nodes.
#pragma once

#include <string>
#include <vector>

#include "core/interface/CInterface.h"
#include "plugins/common/Parameters.h"

namespace orv::rws::addon {

class RigSceneNode;

/// Parameters that hide nodes, always or during takes only. An edit shows at once and can be
/// undone: undo and redo come back as events behind REALUNDO and REALREDO.
class HideModes {
 public:
  /// What the box of the setting `on` hides; both are the rig's own. A second call replaces them.
  void SetNodes(const bool& on, std::vector<RigSceneNode*> nodes);
  /// Takes over what the rows say of their boxes, in Define.
  void Define(const std::vector<Parameter>& parameters);
  /// A take begins: hides what is to be hidden during it.
  void Start();
  /// A take has ended: shows again what was hidden for it alone.
  void Stop();
  /// Hides what the boxes say, after a load.
  void Restore();
  /// Handles the event of a box, its undo or its redo. False when the name is none of these.
  bool OnCallback(CInterface& core, CInterface::Callback& rig, const std::string& name) {
    return !m_boxes.empty() && HandleEvent(core, rig, name);
  }

 private:
  struct Box {
    const bool* on;  ///< the rig's
    std::string label;
    Hides when = Hides::kNothing;
    bool applied = false;  ///< as at the latest event
    std::vector<RigSceneNode*> nodes;
  };

  Box& BoxOf(const bool& on);
  bool HandleEvent(CInterface& core, CInterface::Callback& rig, const std::string& name);
  bool IsHidden(const RigSceneNode* node) const;
  void Apply(const Box& box) const;

  std::vector<Box> m_boxes;
  bool m_recording = false;
};

}  // namespace orv::rws::addon

// What the file of a template tool says, checked and resolved.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "plugins/common/Parameters.h"
#include "plugins/common/RigSceneNode.h"
#include "util/CMesh.h"
#include "util/Vector3.h"
#include "util/xml/Tag.h"

namespace orv::rws::addon {

/// What an output writes of a node. Poses are relative to the parent within the template (m,
/// radians, rotations about X first, then Y, then Z), a lens has its own units (degrees, m).
enum TemplateChannel : int {
  kTranslateX,
  kRotateX = 3,
  kScaleX = 6,
  kPoseChannels = 9,  ///< the channels before are those of the pose
  kFieldOfView = kPoseChannels,
  kFocusDistance,
  kTemplateChannels,
};

/// Name of a channel in files, such as "translate x"; and back, -1 for none.
const char* TemplateChannelName(int channel);
int TemplateChannelOf(const std::string& name);

/// A parameter that a user edits.
struct TemplateParameter {
  ParameterKind kind = ParameterKind::kNumber;  ///< or a count or a flag
  std::string label;
  std::string tooltip;
  int group = -1;  ///< index of its group; -1 for none
  double value = 0.0;
  ParameterRange range{0.0, 0.0, 0.0, 3};
  bool asInput = false;  ///< a control may turn it during a take
};

struct TemplateGroup {
  std::string label;
  std::string tooltip;
};

/// An input that a control drives.
struct TemplateInput {
  std::string label;
  unsigned kinds = 0;  ///< bits of unidevice::ControlKind
};

/// A number of the world pose of a node that the template does not move.
struct TemplateMotion {
  int node = -1;
  int channel = 0;  ///< of the pose
};

struct TemplateNode {
  std::string name;
  int parent = -1;  ///< index of a node before this one; -1 for the world
  bool isCamera = false;
  bool isHelper = false;  ///< the hide modes hide it
  util::CMesh mesh;
  LensValues lens;
  std::optional<util::Vector3<double>> colour;  ///< red, green, blue in [0, 1]
  util::Vector3<double> place;                  ///< of a new node, in its parent's frame (m)
  /// Index of the output of each channel, -1 for none. A pose has either all nine or none.
  std::array<int, kTemplateChannels> outputs{-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};

  bool IsMoved() const { return outputs[0] >= 0; }
};

/// A number that is computed once a frame.
struct TemplateOutput {
  std::string name;               ///< key of its memory
  util::xml::Tag expression{""};  ///< no name: it keeps its value
  util::xml::Tag start{""};       ///< no name: none
  bool readsMemory = false;       ///< it depends on some output's value one frame before
  bool isRemembered = false;      ///< some expression reads it one frame before
  int node = -1;
  int channel = -1;

  bool HasExpression() const { return !expression.name.empty(); }
  bool HasStart() const { return !start.name.empty(); }
};

/// One kind of template tool. The expressions are in the language of core::MathScript, all names
/// resolved to the slots in which a rig keeps the values of the frame.
struct TemplateDefinition {
  std::string id;
  std::string name;
  std::string category;
  std::string description;
  std::string author;
  int simulation = 1;  ///< the author's count of how the rig has moved
  std::vector<TemplateGroup> groups;
  std::vector<TemplateParameter> parameters;
  std::vector<TemplateInput> inputs;
  std::vector<TemplateNode> nodes;  ///< parents first
  std::vector<TemplateMotion> motions;
  std::vector<TemplateOutput> outputs;
  std::vector<int> order;  ///< of the outputs, each behind those that it reads in the same frame

  // Slots: the time, the frame duration, then a slot per parameter, input, motion, output, and per
  // output of its value one frame before.
  static constexpr int kTimeSlot = 0;
  static constexpr int kDurationSlot = 1;
  int ParameterSlot() const { return 2; }
  int InputSlot() const { return ParameterSlot() + static_cast<int>(parameters.size()); }
  int MotionSlot() const { return InputSlot() + static_cast<int>(inputs.size()); }
  int OutputSlot() const { return MotionSlot() + static_cast<int>(motions.size()); }
  int BeforeSlot() const { return OutputSlot() + static_cast<int>(outputs.size()); }
  int SlotCount() const { return BeforeSlot() + static_cast<int>(outputs.size()); }
};

}  // namespace orv::rws::addon

// What collides among the mappings of inputs.
#pragma once

#include <string>
#include <vector>

#include "core/HotKeys.h"
#include "unidevice/ControlChoice.h"
#include "util/Sentence.h"

namespace orv::util::xml {
class Element;
}
namespace orv::unidevice {
class Property;
}

namespace orv::rws::core {

class CoreImplementation;
class Instance;

/// An input of a rig, by the numbers that windows keep.
struct InputUse {
  int row = 0;    ///< InstanceReference::GetId
  int input = 0;  ///< index among the rig's inputs
  std::string rig, name;
};

/// A control that feeds several inputs, alone or as one of a pair.
struct SharedControl {
  unidevice::ControlChoice control;
  std::vector<InputUse> uses;  ///< two or more, in the order of the rigs and their inputs
};

/// A key that inputs are mapped to although it is a hot key as well.
struct HotKeyConflict {
  const HotKey* hotKey;
  std::vector<std::string> inputs;  ///< names of the inputs
  util::Sentence text;
};

/// What feeds the input: the control that it is bound to, else what its mapping names; two of a
/// pair, none for an unmapped one.
std::vector<unidevice::ControlChoice> ControlsOf(const unidevice::Property& input);
/// The controls of all other inputs of the rig: what "Press now!" excludes. Live spinners' too.
std::vector<unidevice::ControlChoice> ControlsTaken(const Instance& instance, int exceptInput);
/// Over all rigs of the scene, or those that take part in takes.
std::vector<SharedControl> FindSharedControls(const CoreImplementation& core, bool onlyChecked);
/// Of an input profile as its file holds it.
std::vector<HotKeyConflict> FindHotKeyConflicts(const util::xml::Element& inputProfile);
/// Of what a rig's inputs are mapped to now.
std::vector<HotKeyConflict> FindHotKeyConflicts(const Instance& instance);

}  // namespace orv::rws::core

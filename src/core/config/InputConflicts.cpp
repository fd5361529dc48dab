#include "core/config/InputConflicts.h"

#include <algorithm>
#include <utility>

#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/RecordKeys.h"
#include "unidevice/ControlFinder.h"
#include "unidevice/ControlTag.h"
#include "unidevice/KeyNames.h"
#include "unidevice/Property.h"

namespace orv::rws::core {

namespace {

using unidevice::ControlChoice;

/// An input and what feeds it.
using Mapped = std::pair<std::string, std::vector<ControlChoice>>;

std::vector<Mapped> MappedInputs(const Instance& instance) {
  std::vector<Mapped> inputs;
  for (const auto& entry : instance.GetProperties().entries)
    inputs.emplace_back(entry.second->name, ControlsOf(*entry.second));
  return inputs;
}

bool IsKey(const ControlChoice& control, const std::string& key) {
  const bool anyKeyboard = control.device.empty() || control.device == unidevice::kKeyboardName;
  return anyKeyboard && control.type == key;
}

std::vector<std::string> UsersOf(const std::vector<Mapped>& inputs, const std::string& key) {
  std::vector<std::string> users;
  for (const auto& [name, controls] : inputs)
    if (std::any_of(controls.begin(), controls.end(),
                    [&key](const ControlChoice& control) { return IsKey(control, key); }))
      users.push_back(name);
  return users;
}

/// Whether the mapped keys alone hold the modifier down that a hot key needs.
bool CanHold(const std::vector<Mapped>& inputs, ModifierNeed need, const std::string& key) {
  return need != ModifierNeed::kDown || !UsersOf(inputs, "Left_" + key).empty() ||
         !UsersOf(inputs, "Right_" + key).empty();
}

std::vector<HotKeyConflict> ConflictsOf(const std::vector<Mapped>& inputs) {
  std::vector<HotKeyConflict> conflicts;
  for (const HotKey& row : HotKeys()) {
    std::vector<std::string> users = UsersOf(inputs, row.input);
    if (users.empty() || !CanHold(inputs, row.control, "Control") ||
        !CanHold(inputs, row.shift, "Shift") || !CanHold(inputs, row.alt, "Alt"))
      continue;
    util::Sentence text{"%1 is mapped to %2, which is a hot key.", {users[0], row.keys}};
    conflicts.push_back({&row, std::move(users), std::move(text)});
  }
  return conflicts;
}

}  // namespace

std::vector<ControlChoice> ControlsOf(const unidevice::Property& input) {
  // A control of no device stands in while a resimulation runs.
  std::vector<ControlChoice> bound;
  if (input.control) bound = unidevice::choicesOf(*input.control);
  return bound.empty() ? unidevice::choicesOf(input.savedControl) : bound;
}

std::vector<ControlChoice> ControlsTaken(const Instance& instance, int exceptInput) {
  std::vector<ControlChoice> taken;
  for (int i = 0; i < instance.GetProperties().count(); ++i) {
    if (i == exceptInput) continue;
    for (ControlChoice& control : ControlsOf(*instance.GetProperties().property(i)))
      taken.push_back(std::move(control));
  }
  return taken;
}

std::vector<SharedControl> FindSharedControls(const CoreImplementation& core, bool onlyChecked) {
  std::vector<SharedControl> controls;
  for (const Instance* rig : core.List(onlyChecked)) {
    for (int i = 0; i < rig->GetProperties().count(); ++i) {
      const unidevice::Property& input = *rig->GetProperties().property(i);
      for (const ControlChoice& control : ControlsOf(input)) {
        auto found = std::find_if(controls.begin(), controls.end(),
                                  [&](const auto& other) { return other.control == control; });
        if (found == controls.end())
          found = controls.insert(controls.end(), SharedControl{control, {}});
        found->uses.push_back({rig->GetIdentity(), i, rig->GetInstanceName(), input.name});
      }
    }
  }
  controls.erase(std::remove_if(controls.begin(), controls.end(),
                                [](const auto& control) { return control.uses.size() < 2; }),
                 controls.end());
  return controls;
}

std::vector<HotKeyConflict> FindHotKeyConflicts(const util::xml::Element& inputProfile) {
  std::vector<Mapped> inputs;
  for (const util::xml::Element* child : inputProfile.children)
    if (child->name == record::kProperty)
      inputs.emplace_back(child->attribute(record::kName),
                          unidevice::choicesOf(child->child(unidevice::kControlTag)));
  return ConflictsOf(inputs);
}

std::vector<HotKeyConflict> FindHotKeyConflicts(const Instance& instance) {
  return ConflictsOf(MappedInputs(instance));
}

}  // namespace orv::rws::core

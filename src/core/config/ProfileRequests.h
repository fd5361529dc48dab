// What a user does with the profiles of a rig.
#pragma once

#include <string>
#include <vector>

#include "core/config/XMLFileManager.h"

namespace orv::rws::core {

class CoreImplementation;
class Instance;

/// Config profiles, or input profiles, of one rig, by the same requests. What changes the rig is
/// one undo step; what changes files isn't undoable, and can't harm a profile that is shipped. All
/// is told by ProfileListChanged, ProfileChanged, ParametersChanged and InputsChanged. Where the
/// rig has gone each is refused.
///
/// A request that answers kAsk is repeated with `confirmed`.
class ProfileRequests {
 public:
  enum class Kind { kConfig, kInputs };

  struct Entry {
    std::string name;
    bool isReadOnly = false;  ///< can't be saved over
    bool isFixed = false;     ///< can be neither renamed nor deleted
    /// The config profile that counts as the rig's own; an input profile whose values the inputs
    /// have.
    bool isCurrent = false;
  };

  /// `row` is InstanceReference::GetId.
  ProfileRequests(CoreImplementation& core, int row, Kind kind);

  std::vector<Entry> List() const;
  /// One undo step. A message with kDone is a warning: an older version, values left out.
  ProfileResult Load(const std::string& name);
  /// Over the rig's own profile.
  ProfileResult Save(bool confirmed);
  /// The profile becomes the rig's own.
  ProfileResult SaveAs(const std::string& name, bool confirmed);
  /// Rigs whose own profile it is follow.
  ProfileResult Rename(const std::string& name, const std::string& newName);
  /// Rigs keep their values.
  ProfileResult Delete(const std::string& name, bool confirmed);
  /// All that the file holds, or nothing.
  ProfileResult Import(const std::string& path, bool confirmed);
  ProfileResult Export(const std::string& name, const std::string& path) const;
  /// What the rig began with, before any profile. One undo step.
  ProfileResult LoadFactorySettings();
  /// What new rigs of this kind begin with from here on.
  ProfileResult SaveStartProfile();

 private:
  Instance* FindRig() const;
  XMLFileManager& ManagerOf(Instance& rig) const;

  CoreImplementation& m_core;
  int m_row;
  Kind m_kind;
};

}  // namespace orv::rws::core

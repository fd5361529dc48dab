// The config profiles of a tool.
#pragma once

#include "core/config/XMLFileManager.h"

namespace orv::rws::core {

class ConfigTree;
class Instance;

/// Named values of a rig's configuration tree.
class ConfigProfileManager : public XMLFileManager {
 public:
  ConfigProfileManager(const std::string& factoryFolder, const std::string& userFolder);

  std::string GetRootName() const override { return "configprofile"; }
  std::string GetFileExtension() const override { return "ocp"; }

  /// Turns a document of any form into profiles of the present one, see XMLFileManager::Parser.
  static bool Parse(const util::xml::Element& root, const std::string& fallbackName,
                    std::vector<util::xml::Tag>& profiles);

  /// Sets the instance's values, callbacks included. An empty text means success.
  std::string Apply(const std::string& name, Instance& instance);
  /// What the user should be told before an old profile is used; empty for a present one.
  std::string GetVersionWarning(const std::string& name) const;
  ProfileResult Save(const std::string& name, const ConfigTree& config, bool overwrite);
  /// Saves the values with which new instances begin.
  ProfileResult SaveStartProfile(const ConfigTree& config);
  /// Takes profiles over from a file of any form; items of the old ones get the ids of `config`.
  ProfileResult Import(const std::string& path, const ConfigTree& config, bool overwrite);

  /// Notes the values of a rig that has just been created as "Factory Settings".
  void RecordFactorySettings(const ConfigTree& config);
  /// Makes "Start Profile" a copy of "Factory Settings", in memory, unless a file has one.
  void EnsureStartProfile();

  using XMLFileManager::Save;
};

}  // namespace orv::rws::core

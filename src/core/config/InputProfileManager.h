// The input profiles of a tool.
#pragma once

#include "core/config/XMLFileManager.h"

namespace orv::unidevice {
class PropertyHandler;
}

namespace orv::rws::core {

/// Named mappings from controls to a rig's inputs.
class InputProfileManager : public XMLFileManager {
 public:
  InputProfileManager(const std::string& factoryFolder, const std::string& userFolder);

  std::string GetRootName() const override { return "inputprofile"; }
  std::string GetFileExtension() const override { return "oip"; }

  /// Turns a document of any form into profiles, see XMLFileManager::Parser.
  static bool Parse(const util::xml::Element& root, const std::string& fallbackName,
                    std::vector<util::xml::Tag>& profiles);
  /// Loads each input that the profile has from it and leaves the others. Empty, or the inputs with
  /// a number that was refused.
  static std::string ApplyTo(const util::xml::Element& profile,
                             unidevice::PropertyHandler& properties);

  /// Whether all inputs that the profile has stand at its values.
  bool IsHeldBy(const std::string& name, const unidevice::PropertyHandler& properties) const;
  /// An empty text means success.
  std::string Apply(const std::string& name, unidevice::PropertyHandler& properties);
  ProfileResult Save(const std::string& name, unidevice::PropertyHandler& properties,
                     bool overwrite);
  /// Saves the mapping with which new instances begin.
  ProfileResult SaveStartProfile(unidevice::PropertyHandler& properties);
  ProfileResult Import(const std::string& path, bool overwrite);

  /// Notes the inputs of a rig that has just been made. It is no profile of the list.
  void RecordFactorySettings(unidevice::PropertyHandler& properties);
  const util::xml::Tag& GetFactorySettings() const { return m_factorySettings; }

  /// Makes "Start Profile" of the present mapping, in memory, unless there is one.
  void EnsureStartProfile(unidevice::PropertyHandler& properties);

  using XMLFileManager::Save;

 private:
  util::xml::Tag m_factorySettings{std::string()};
};

}  // namespace orv::rws::core

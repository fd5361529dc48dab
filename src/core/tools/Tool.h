// A kind of rig that the user can create.
#pragma once

#include <QObject>
#include <string>
#include <vector>

#include "core/config/ConfigProfileManager.h"
#include "core/config/InputProfileManager.h"
#include "core/interface/CExtendable.h"
#include "util/DynamicObject.h"
#include "util/MessageNode.h"

namespace orv::util::xml {
class Tag;
}

namespace orv::rws::core {

class Instance;

/// A creatable kind of rig with its two lists of profiles. Knows its instances and owns none.
/// Owned by its library.
class Tool : public QObject,
             public util::DynamicObject,
             public util::MessageNode,
             public CExtendable {
 public:
  using ConfigProfileManager = core::ConfigProfileManager;
  using InputProfileManager = core::InputProfileManager;

  /// `dataFolder` is the tool's folder below the resources and below the user's data folder.
  explicit Tool(const std::string& dataFolder);
  ~Tool() override;

  virtual bool IsPlugin() = 0;
  /// Key of the licence check; empty means none.
  virtual std::string GetLicenceName() = 0;
  /// Kind identifier, such as "MotionFilterCam": the key in scenes and on the command line.
  virtual std::string GetDisplayId() = 0;
  /// Appends the categories.
  virtual void GetCategories(std::vector<std::string>& out) = 0;
  /// Absolute path of the tool's folder in the user's data folder; it need not exist.
  virtual std::string GetDataPath() = 0;
  /// Shows the product page; a program without windows notes the wish in the log.
  virtual void ShowProductPopup() = 0;
  /// Name of the documentation page, the id and ".html".
  virtual std::string GetDocumentationPage() = 0;
  /// Makes a new rig with its scene nodes, profiles and row. The row owns the instance. An empty
  /// name gets a default. Null when the rig refused; then its scene nodes are gone.
  virtual Instance* CreateInstance(const std::string& name) = 0;
  /// Makes rig and instance and no more: neither Define nor a row. The caller owns the instance.
  virtual Instance* MakeInstance(const std::string& name) = 0;
  /// Makes `tag` the head of an instance's record: "RWT_Plugin" with version and kind.
  virtual void WriteSaveData(util::xml::Tag& tag) = 0;
  /// Name for people.
  virtual std::string GetDisplayName() = 0;
  /// Long text for the tool list.
  virtual std::string GetDescription() = 0;
  /// Author credit.
  virtual std::string GetCreatedBy() = 0;
  /// Version of how rigs of this kind simulate, from 1 up; another one comes to other poses. 0: not
  /// known.
  virtual int GetSimulationVersion() = 0;
  /// Whether a run from the middle of another comes to other poses than that one, because the rig's
  /// memory of a frame is not all that it went on from.
  virtual bool NeedsReplay() = 0;

  /// Reads all profiles, those of the resources first.
  void LoadProfiles();
  ConfigProfileManager& GetConfigProfiles() { return m_configProfiles; }
  InputProfileManager& GetInputProfiles() { return m_inputProfiles; }

  /// Makes the values of an instance that has just been created "Factory Settings", and, where
  /// there is none, "Start Profile". Both live in memory.
  void RecordDefaults(Instance& instance);

  /// Called by an instance at its beginning and its end.
  void AddInstance(Instance* instance);
  void RemoveInstance(Instance* instance);
  const std::vector<Instance*>& GetInstances() const { return m_instances; }

 protected:
  std::string m_dataFolder;

 private:
  std::vector<Instance*> m_instances;
  ConfigProfileManager m_configProfiles;
  InputProfileManager m_inputProfiles;
};

}  // namespace orv::rws::core

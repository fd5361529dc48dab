// The factory of one rig kind.
#pragma once

#include <string>
#include <vector>

#include "core/interface/CExtendable.h"
#include "core/interface/CreationRecord.h"

namespace orv::rws {

class CCamera;

/// Version of the rig interface that core, adaptors and rigs agree on.
inline constexpr int kInterfaceVersion = 0x5AA5;

/// Extension codes that a factory may answer.
enum PluginExtension : int {
  kTellSimulation = 1,  ///< version of how rigs of this kind simulate, from 1 up; 0: not known
  kTellReplay = 2,  ///< 1: what rigs of this kind keep of a frame does not hold all that the next
                    ///< one follows from, to the bit; to go on from it, a run begins where the
                    ///< one that made it did
};

/// Factory of one rig kind, one static instance each. The texts may be asked for at any time and
/// touch no scene.
class CCameraPlugin : public CExtendable {
 public:
  /// A new rig object, owned by the caller, who ends it by its Destroy.
  virtual CCamera* CreateObject(const CreationRecord& record) = 0;
  /// Kind identifier, also the key in save data, such as "MotionFilterCam".
  virtual std::string GetId() = 0;
  /// Folder of the rig's resources under the data root. Default: GetId().
  virtual std::string GetDataFolder();
  /// Display name, such as "Orvel MotionFilterCam".
  virtual std::string GetName() = 0;
  /// One category, such as "Vehicle" or "Camera", or several with semicolons between.
  virtual std::string GetCategory() = 0;
  /// Long text for the tool list.
  virtual std::string GetDescription() = 0;
  /// Author credit of the tool description.
  virtual std::string GetCreatedBy();
  /// Key of the licence check; empty means none.
  virtual std::string GetLicenceFeature();
  /// Kinds that this one needs. A list handed out here goes back through ReleaseList.
  virtual std::vector<std::string>& GetDependencies(std::vector<std::string>& out);
  /// Frees a list handed out by GetDependencies, on the side that allocated it.
  virtual bool ReleaseList(std::vector<std::string>& list);
  virtual int GetInterfaceVersion();
  /// Deletes the factory.
  virtual void Destroy();
  ~CCameraPlugin() override;
};

}  // namespace orv::rws

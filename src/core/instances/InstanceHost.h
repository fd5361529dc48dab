// What instances and tools need of the core.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace orv::rws {
class AdaptorInterface;
}

namespace orv::rws::core {

class Instance;
class InstanceReference;
class MessageQueue;
class Tool;

/// The core as its instances and tools see it, which it outlives. Times are seconds.
class InstanceHost {
 public:
  virtual ~InstanceHost() = default;

  virtual AdaptorInterface* GetAdaptor() const = 0;
  virtual MessageQueue& GetMessages() = 0;
  /// A take or a resimulation runs.
  virtual bool IsRecording() = 0;
  virtual bool IsResimulating() = 0;
  virtual double GetFrameRate() const = 0;
  virtual double GetFrameDuration() const = 0;
  virtual bool CheckLicence(const std::string& feature) = 0;
  virtual int MessageBox(const std::string& title, const std::string& text, unsigned flags) = 0;
  /// Opens the input configuration dialog of an instance, where there are windows.
  virtual void ShowInputConfig(const std::string& instanceName) = 0;

  /// Null when there is no such kind.
  virtual Tool* FindKind(const std::string& id) const = 0;
  /// Next number of a rig object, and of a row.
  virtual int NextObjectId() = 0;
  virtual int NextRowId() = 0;
  /// `name` itself, or with its number counted up until no row has it.
  virtual std::string UniqueName(const std::string& name) const = 0;
  /// Appends a row for an instance that stands already.
  virtual InstanceReference* AddRow(std::unique_ptr<Instance> instance, bool checked = true) = 0;
  /// The instance with this identity, or null.
  virtual Instance* FindByIdentity(int identity) const = 0;
  /// Builds the instance anew as it stands, but with these data of its rig; the object goes.
  virtual void RebuildWithData(Instance& instance, const std::vector<unsigned char>& data) = 0;
  /// Removes the nodes of a rig for good; a user's own under them move to the parent of the rig.
  virtual void DiscardNodes(Instance& instance) = 0;
  /// The instance is going: nothing that runs may use it any more.
  virtual void Forget(Instance* instance) = 0;
};

}  // namespace orv::rws::core

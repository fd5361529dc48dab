// What the rigs that turn inputs into a movement have in common.
#pragma once

#include <string>
#include <vector>

#include "plugins/common/InputFilter.h"
#include "plugins/common/Rig.h"
#include "plugins/common/SaveChunk.h"

namespace orv::unidevice {
class Property;
}

namespace orv::rws::addon {

/// The base node of a link: what the channels move is moved, turned and scaled with it. Never keyed
/// by the rig.
class CRelativeCageNode : public RigMeshNode {
 public:
  explicit CRelativeCageNode(CCamera& rig);
};

/// The node that the channels move, a child of the cage.
class ActuatorNode : public RigMeshNode {
 public:
  ActuatorNode(CCamera& rig, std::string name, const CRelativeCageNode& cage, util::CMesh mesh);

  /// Writes the pose `local`, in the cage's frame, at `time`.
  void Write(double time, const util::Matrix<double>& local) const;

 private:
  const CRelativeCageNode& m_cage;
};

/// Inputs, each through a filter of its own, move an actuator in the frame of a cage. All state
/// that a later frame sees lies in histories by time, so that a take may begin at any frame.
class LinkRig : public Rig {
 public:
  void Start(double time) override;
  void Stop() override;
  void Step(double time) override;
  int Define() override;
  int Create() override;
  int Restore() override;
  int Store() override;
  void OnCallback(std::string name) override;

 protected:
  /// A channel is named by its input, which is also what its parameters begin with.
  struct ChannelKind {
    const char* name;
    double maximum;
  };
  /// What differs between the kinds of links, all of it constant.
  struct Kind {
    const char* chunkName;
    const char* actuatorName;
    std::vector<ChannelKind> channels;
    const InputFilterKeys& keys;
    bool keepsActuatorScale;  ///< the actuator's own scale is no output of the rig
  };
  struct Channel {
    std::string name;
    InputFilter filter;
    unidevice::Property* input = nullptr;  ///< the instance's
  };

  LinkRig(const CreationRecord& record, const Kind& kind, util::CMesh actuatorMesh);

  /// Declares what else the group "General Modes" has.
  virtual void DefineMoreModes() {}
  /// Declares groups between that one and the channels'.
  virtual void DefineMore() {}
  virtual int CreateMore() { return 0; }
  virtual void RestoreMore() {}
  /// The pose in the cage's frame that the channels' outputs make.
  virtual util::Matrix<double> LocalPose() const = 0;
  double Output(int channel) const { return m_channels[channel].filter.state.filterMemory2; }

  CRelativeCageNode m_cage;
  ActuatorNode m_actuator;

 private:
  struct Settings {
    bool hideHelpers = false;                 ///< cage and actuator
    bool hideHelpersDuringRecording = false;  ///< the same ones, in takes and resimulations
  };
  enum Own { kMoreModes, kMore, kChannels };

  void DefineOwn(int which);
  void DefineChannel(Channel& channel);
  std::vector<Parameter> ParametersOfChannel(const std::string& name,
                                             InputFilterSettings& settings) const;
  SaveState LoadBlob();

  const Kind m_kind;
  Settings m_settings;
  std::vector<Channel> m_channels;
  std::vector<InputFilterHistory> m_histories;  ///< one per channel
  util::Vector3<double> m_actuatorScale{1.0, 1.0, 1.0};
};

}  // namespace orv::rws::addon

// A rig without nodes that notes what the core asks of it.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "core/interface/CCamera.h"
#include "core/interface/CCameraPlugin.h"
#include "core/interface/CInterface.h"
#include "unidevice/Property.h"

namespace orv::tests {

/// Adds up its input, so that a missed, doubled or wrong frame shows in the sum.
class ProbeRig : public rws::CCamera, public rws::CInterface::Callback {
 public:
  struct Log {
    std::vector<double> starts;
    std::vector<double> steps;
    std::vector<double> inputs;
    int stops = 0;
    int updates = 0;
    std::vector<std::string> callbacks;
  };
  /// What a rig may do beside its work.
  struct Ways {
    int failDefine = 0;
    double gainOfCreate = 1.0;
    bool growsAtStart = false;  ///< an input a take
    bool couples = false;       ///< an edit of Gain sets Count too
  };

  ProbeRig(const rws::CreationRecord& record, Log& log, const Ways& ways)
      : CCamera(record), m_log(log), m_ways(ways) {}

  void Start(double time) override {
    m_log.starts.push_back(time);
    if (m_ways.growsAtStart)
      m_pInterface->AddInput("Late" + std::to_string(m_log.starts.size()), 7);
  }
  void Stop() override { ++m_log.stops; }
  void Step(double time) override {
    m_log.steps.push_back(time);
    m_log.inputs.push_back(m_input->read());
  }
  void Update(double) override { ++m_log.updates; }
  int Define() override {
    m_pInterface->BeginConfig();
    m_pInterface->BeginGroup("Probe", "");
    m_pInterface->AddSpinner("Gain", "", &gain, 0.0, 100.0, 0.1, 3, true, this);
    m_pInterface->AddSpinnerInt("Count", "", &count, 0, 1000, 1, 0, true, this);
    m_pInterface->AddCheckBox("On", "", &on, this);
    m_pInterface->AddButton("Press", "", this);
    m_pInterface->EndGroup();
    m_pInterface->EndConfig();
    m_input = m_pInterface->AddInput("Input", 7);
    return m_ways.failDefine;
  }
  int Create() override {
    gain = m_ways.gainOfCreate;
    return 0;
  }
  int Restore() override { return 0; }
  int Store() override {
    m_pInterface->SetUserData(&gain, sizeof gain);
    return 0;
  }
  void OnCallback(std::string name) override {
    m_log.callbacks.push_back(name);
    if (m_ways.couples && name == "Gain") count = static_cast<int>(gain);
    if (name == "Press") gain += 1.0;
  }

  double gain = 1.0;
  int count = 3;
  bool on = false;

 private:
  unidevice::Property* m_input = nullptr;
  Log& m_log;
  const Ways& m_ways;
};

class ProbePlugin : public rws::CCameraPlugin {
 public:
  rws::CCamera* CreateObject(const rws::CreationRecord& record) override {
    return last = new ProbeRig(record, log, ways);
  }
  std::string GetId() override { return id; }
  std::string GetName() override { return "Orvel Probe"; }
  std::string GetCategory() override { return category; }
  std::string GetLicenceFeature() override { return feature; }
  std::string GetDataFolder() override { return folder.empty() ? id : folder; }
  int GetInterfaceVersion() override { return version; }
  std::string GetDescription() override { return "Notes what the core asks of it."; }
  void Destroy() override {}

  ProbeRig* last = nullptr;  ///< the rig made last; its instance owns it
  ProbeRig::Log log;
  ProbeRig::Ways ways;
  std::string id = "Probe", category = "Accessory", folder, feature;
  int version = rws::kInterfaceVersion;
};

}  // namespace orv::tests

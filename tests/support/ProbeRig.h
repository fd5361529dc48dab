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

  ProbeRig(const rws::CreationRecord& record, Log& log) : CCamera(record), m_log(log) {}

  void Start(double time) override { m_log.starts.push_back(time); }
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
    return failDefine;
  }
  int Create() override { return 0; }
  int Restore() override { return 0; }
  int Store() override {
    m_pInterface->SetUserData(&gain, sizeof gain);
    return 0;
  }
  void OnCallback(std::string name) override { m_log.callbacks.push_back(name); }

  double gain = 1.0;
  int count = 3;
  bool on = false;
  int failDefine = 0;

 private:
  unidevice::Property* m_input = nullptr;
  Log& m_log;
};

class ProbePlugin : public rws::CCameraPlugin {
 public:
  rws::CCamera* CreateObject(const rws::CreationRecord& record) override {
    last = new ProbeRig(record, log);
    last->failDefine = failDefine;
    return last;
  }
  std::string GetId() override { return "Probe"; }
  std::string GetName() override { return "Orvel Probe"; }
  std::string GetCategory() override { return category; }
  std::string GetDescription() override { return "Notes what the core asks of it."; }
  void Destroy() override {}

  ProbeRig* last = nullptr;  ///< the rig made last; its instance owns it
  ProbeRig::Log log;
  std::string category = "Accessory";
  int failDefine = 0;
};

}  // namespace orv::tests

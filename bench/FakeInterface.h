// A core for one rig: parameters and inputs, and nothing else.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/interface/CCamera.h"
#include "core/interface/CCameraPlugin.h"
#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "core/interface/CUndo.h"
#include "plugins/release/all/AllRigs.h"
#include "unidevice/Control.h"
#include "unidevice/Property.h"
#include "util/Matrix.h"

namespace orv::tests {

/// Without nodes, which a benchmark brings.
class FakeInterface : public rws::CInterface {
 public:
  struct Element {
    std::string label;
    double* number = nullptr;
    bool* flag = nullptr;
    int* choice = nullptr;
  };

  std::vector<Element> elements;
  std::map<std::string, std::unique_ptr<unidevice::Control>> controls;  ///< by input
  std::map<std::string, std::unique_ptr<unidevice::Property>> inputs;   ///< die first

  Element& Find(const std::string& label) {
    for (Element& element : elements)
      if (element.label == label) return element;
    throw std::runtime_error("no element " + label);
  }
  int PushUndo(rws::CUndo* step) override {
    step->Destroy();
    return 0;
  }
  unidevice::Property* AddInput(std::string name, std::string label, unsigned flags) override {
    inputs[name] = std::make_unique<unidevice::Property>(name, label, flags);
    controls[name] = std::make_unique<unidevice::Control>(flags, "Axis", 0);
    inputs[name]->bind(controls[name].get());
    inputs[name]->deadzone = 0.0;
    return inputs[name].get();
  }
  unidevice::Property* AddInput(std::string name, unsigned flags) override {
    return AddInput(name, name, flags);
  }
  unidevice::Property* FindInput(std::string name) override { return inputs[name].get(); }

  void BeginConfig() override {}
  void EndConfig() override {}
  void BeginGroup(std::string, std::string) override {}
  void* EndGroup() override { return nullptr; }
  void AddSpinnerInt(std::string label, std::string, int* value, int, int, int, int, bool,
                     Callback*) override {
    Add(label).choice = value;
  }
  void AddSpinner(std::string label, std::string, double* value, double, double, double, int, bool,
                  Callback*) override {
    Add(label).number = value;
  }
  void AddCheckBox(std::string label, std::string, bool* value, Callback*) override {
    Add(label).flag = value;
  }
  void AddTextBox(std::string label, std::string, std::string*, Callback*) override { Add(label); }
  ComboUpdater* AddComboBox(std::string label, std::string, std::vector<std::string>, int* index,
                            Callback*) override {
    Add(label).choice = index;
    return nullptr;
  }
  void AddButton(std::string label, std::string, Callback*) override { Add(label); }
  void RefreshConfig() override {}
  void ShowInputConfig() override {}

  std::string GetDataPath() override { return {}; }
  void SetUserData(const void*, int) override {}
  const void* GetUserData(int* size) override {
    *size = 0;
    return nullptr;
  }
  void ClearUserData() override {}

  void Reserved2(std::string, util::CMesh) override {}

  rws::CSnapshot_Helper* GetSnapshotHelper(rws::CNode*) override { return nullptr; }
  rws::CSnapshot_Lens* GetSnapshotLens(rws::CNode*, double) override { return nullptr; }
  void ReleaseNode(void*) override {}
  void ReleaseSnapshotLens(rws::CSnapshot_Lens*) override {}
  void ReleaseSnapshotHelper(rws::CSnapshot_Helper*) override {}
  double GetTime() override { return 0.0; }
  double GetFrameRate() override { return 25.0; }
  double GetFrameDuration() override { return 1.0 / 25.0; }
  void RefreshViews() override {}
  int MessageBox(std::string, std::string, unsigned) override { return 0; }
  void RecordInputsAtStart() override {}

 private:
  Element& Add(const std::string& label) {
    elements.push_back({label, nullptr, nullptr, nullptr});
    return elements.back();
  }
};

/// The rig kind of this id.
inline rws::CCameraPlugin& Kind(const std::string& id) {
  for (rws::CCameraPlugin* kind : rws::addon::AllRigs())
    if (kind->GetId() == id) return *kind;
  throw std::runtime_error("no kind " + id);
}

struct FakeWorld {
  struct End {
    void operator()(rws::CCamera* camera) const { camera->Destroy(); }
  };
};

}  // namespace orv::tests

// A rig made of expressions in a file.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "core/interface/CCameraPlugin.h"
#include "plugins/common/Rig.h"
#include "plugins/common/SaveChunk.h"
#include "plugins/release/templatetool/templatetool_TemplateDefinition.h"
#include "util/AVar_Linear.h"
#include "util/MathScriptRoot.h"

namespace orv::unidevice {
class Property;
}

namespace orv::rws::addon {

/// Computes the outputs of its template once a frame and writes them to its nodes. What an
/// expression reads one frame before lies in histories by time, and so do all poses' channels.
///
/// A take that goes on where an earlier one stood takes the outputs from their histories. Any other
/// begins anew: an output that has a start expression takes its value. One that is read one frame
/// before, and depends on such values itself, takes the value that its node has (0 without a node).
/// All others are computed from these, with inputs at rest. The pose at the start is written too,
/// but a node that the user has moved since is left where it is.
///
/// What is no finite number is passed on to whatever reads it in the same frame, the host refuses
/// such a pose, and the memory keeps the latest finite value.
class CTemplateObject : public Rig {
 public:
  /// What a take changes, all of it undone with the take.
  struct Memory {
    std::vector<util::AVar_Linear<double>> histories;  ///< by output; empty where nothing is kept
    bool bReInitialize = false;                        ///< the next take begins anew
  };

  CTemplateObject(const CreationRecord& record,
                  std::shared_ptr<const TemplateDefinition> definition);

  void Start(double time) override;
  void Stop() override;
  void Step(double time) override;
  int Define() override;
  int Create() override;
  int Restore() override;
  int Store() override;
  void OnCallback(std::string name) override;

 private:
  /// The variable that a configuration element is bound to.
  struct Setting {
    double number = 0.0;
    int whole = 0;
    bool on = false;
  };
  struct Modes {
    bool hideHelpers = false;
    bool hideHelpersDuringRecording = false;
  };
  /// An output's expressions over m_values; no child where there is none.
  struct Program {
    core::MathScriptRoot expression;
    core::MathScriptRoot start;
  };

  void MakeNodes();
  void MakePrograms();
  std::vector<Parameter> TemplateParameters();
  void FillSettings(double time);
  double& Value(int output) { return m_values[static_cast<std::size_t>(m_outputSlot + output)]; }
  double& Before(int output) { return m_values[static_cast<std::size_t>(m_beforeSlot + output)]; }
  bool IsKept(int output) const;
  bool GoesOn(int output, double time) const;
  void BeginAnew(int output, double time, bool isAsRemembered);
  bool IsAsRemembered(const TemplateNode& node, std::size_t index, double time) const;
  double ReadChannel(std::size_t node, int channel, double time) const;
  util::Matrix<double> ReadPose(std::size_t node, double time) const;
  void WriteNode(std::size_t node, double time);
  void Remember(int output, double time);
  SaveState LoadBlob();

  const std::shared_ptr<const TemplateDefinition> m_definition;
  const int m_outputSlot;
  const int m_beforeSlot;
  std::vector<double> m_values;  ///< of the frame, by slot
  std::deque<Program> m_programs;
  std::vector<Setting> m_settings;
  Modes m_modes;
  std::vector<unidevice::Property*> m_inputs;  ///< the instance's
  std::vector<std::unique_ptr<RigSceneNode>> m_nodes;
  Memory m_memory;
  bool m_hasHelpers = false;
  bool m_hasMemory = false;  ///< some expression reads an output one frame before
};

/// The kind of rig that one file defines.
class CTemplatePlugin : public CCameraPlugin {
 public:
  explicit CTemplatePlugin(TemplateDefinition definition);

  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return m_definition->id; }
  std::string GetDataFolder() override { return "templates/" + m_definition->id; }
  std::string GetName() override { return m_definition->name; }
  std::string GetCategory() override { return m_definition->category; }
  std::string GetDescription() override { return m_definition->description; }
  std::string GetCreatedBy() override { return m_definition->author; }
  std::intptr_t Extension(int code, void* a, void* b) override;
  void GetExtensions(std::vector<int>& out) override { out.push_back(kTellSimulation); }

 private:
  const std::shared_ptr<const TemplateDefinition> m_definition;  ///< shared with its rigs
};

/// See TemplateMaker.
CCameraPlugin* MakeTemplatePlugin(const std::string& document, std::string& element,
                                  std::string& reason);

}  // namespace orv::rws::addon

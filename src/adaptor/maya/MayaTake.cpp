// The takes of the adaptor over Maya.
#include <maya/MDagModifier.h>
#include <maya/MFnDependencyNode.h>

#include <utility>

#include "adaptor/maya/CMayaNode.h"
#include "adaptor/maya/Channels.h"
#include "adaptor/maya/LoggedModifier.h"
#include "adaptor/maya/MayaAdaptorInterface.h"
#include "adaptor/maya/MelText.h"
#include "adaptor/maya/probes/Features.h"
#include "util/ReturnValue.h"

namespace orv::rws::adaptor::maya {

template <class Visit>
void MayaAdaptorInterface::ForTakeNodes(Visit visit) {
  for (const auto& each : AllNodes()) {
    auto& node = static_cast<CMayaNode&>(*each);
    if (node.IsBuffering()) visit(node);
  }
}

std::string MayaAdaptorInterface::WhyNoTake(CInterface* instance) {
  if (!Features::instance().IsOn(Feature::kTakes))
    return "a rig stays out of the take: " + Features::instance().Why(Feature::kTakes);
  std::vector<core::CoreNode*> nodes;
  util::ReturnValue<std::vector<core::CoreNode*>> result(nodes);
  GetNodesOfOwner(instance, result);
  for (core::CoreNode* each : nodes) {
    auto& node = static_cast<CMayaNode&>(*each);
    const std::string why = node.IsWrittenByRig() ? node.WhyNoKeys() : std::string();
    if (!why.empty())
      return "the rig of node " + node.GetSceneName() + " stays out of the take: " + why +
             " (free it to perform the rig)";
  }
  return {};
}

void MayaAdaptorInterface::BeginRecording(double time,
                                          util::ReturnValue<std::vector<CInterface*>>& instances) {
  LeaveTake();
  std::vector<CInterface*> performing;
  for (CInterface* instance : *instances.get()) {
    std::string why = WhyNoTake(instance);
    if (why.empty())
      performing.push_back(instance);
    else
      NoteProblem(why);
  }
  instances.set(performing);
  ++m_takeSerial;
  m_pace.Restart();
  m_switches.TurnOff();
  m_keyed.clear();
  HostAdaptor::BeginRecording(time, instances);
  ForTakeNodes([](CMayaNode& node) { node.EnterTake(); });
}

void MayaAdaptorInterface::PutTakePoses() {
  ForTakeNodes([](CMayaNode& node) { node.ShowTake(); });
}

void MayaAdaptorInterface::LeaveTake() {
  for (const auto& node : AllNodes()) static_cast<CMayaNode&>(*node).LeaveTake();
  m_switches.Restore();
}

void MayaAdaptorInterface::EndRecording() {
  ForTakeNodes([this](CMayaNode& node) {
    if (node.IsValid() && !node.GetRecorded().empty()) m_keyed.push_back(&node);
  });
  LeaveTake();
  HostAdaptor::EndRecording();
}

void MayaAdaptorInterface::FilterCurves() {
  std::string line;
  for (CMayaNode* node : m_keyed) {
    if (!node->IsValid()) continue;
    const std::array<MPlug, 9> plugs = PosePlugs(node->GetObject());
    for (std::size_t i = 3; i < 6; ++i) {
      const MObject curve = CurveOf(plugs[i]);
      if (!curve.isNull()) line += " " + QuoteMel(MFnDependencyNode(curve).name().asUTF8());
    }
  }
  if (line.empty()) return;
  auto modifier = std::make_shared<MDagModifier>();
  modifier->commandToExecute(("filterCurve" + line).c_str());
  if (!DoLogged(*modifier, "filter the curves of the take")) return;
  const int block = GetUndo().openId();
  PushExchange("CDagModifierRestoreObj", [modifier, block, undone = false]() mutable {
    if (undone)
      RedoLogged(*modifier, block);
    else
      UndoLogged(*modifier, block);
    undone = !undone;
  });
}

}  // namespace orv::rws::adaptor::maya

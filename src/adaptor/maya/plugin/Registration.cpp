#include "adaptor/maya/plugin/Registration.h"

// The entry points stand in PluginMain.cpp.
#define MNoPluginEntry
#define MNoVersionString
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MString.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/maya/plugin/Callbacks.h"
#include "adaptor/maya/plugin/Commands.h"
#include "adaptor/maya/plugin/Platform.h"
#include "adaptor/maya/plugin/PluginSession.h"
#include "adaptor/maya/plugin/SelfTest.h"
#include "adaptor/maya/plugin/Shelf.h"
#include "adaptor/maya/probes/Features.h"
#include "adaptor/maya/scene/CStorageNode.h"
#include "adaptor/maya/scene/StorageNode.h"

namespace orv::rws::adaptor::maya {

namespace {

struct NodeRow {
  const MString& name;
  const MTypeId& id;
  void* (*make)();
  MStatus (*initialize)();
};

const NodeRow kNodeRows[] = {
    {StorageNode::kTypeName, StorageNode::kId, &StorageNode::Create, &StorageNode::Initialize},
    {CStorageNode::kTypeName, CStorageNode::kId, &CStorageNode::Create, &CStorageNode::Initialize},
};

/// What lives while the plug-in is loaded.
struct Loaded {
  std::unique_ptr<PluginSession> session;
  std::unique_ptr<Callbacks> callbacks;
  bool hasShelf = false;
};
std::unique_ptr<Loaded> g_loaded;

/// Steps that were done, to be taken back by walking them backwards.
class Undoing {
 public:
  ~Undoing() {
    for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step) (*step)();
  }
  Undoing() = default;
  Undoing(const Undoing&) = delete;
  Undoing& operator=(const Undoing&) = delete;
  void Add(std::function<void()> step) { m_steps.push_back(std::move(step)); }
  void Keep() { m_steps.clear(); }

 private:
  std::vector<std::function<void()>> m_steps;
};

MStatus RegisterCommand(MFnPlugin& plugin, const CommandRow& row, Undoing& undoing) {
  const MStatus status = plugin.registerCommand(row.name, row.make);
  if (status)
    undoing.Add([&plugin, &row] { plugin.deregisterCommand(row.name); });
  else
    status.perror(row.failure);
  return status;
}

MStatus RegisterAll(MFnPlugin& plugin, Undoing& undoing) {
  for (const CommandRow& row : AllCommands()) {
    const MStatus status = RegisterCommand(plugin, row, undoing);
    if (!status) return status;
  }
  for (const NodeRow& row : kNodeRows) {
    const MStatus status = plugin.registerNode(row.name, row.id, row.make, row.initialize);
    if (!status) {
      status.perror(MString("registerNode ") + row.name + " failed");
      return status;
    }
    undoing.Add([&plugin, &row] { plugin.deregisterNode(row.id); });
  }
  return RegisterCommand(plugin, SelfTestCommand(), undoing);
}

void MakeShelf(Loaded& loaded) {
  const std::string& why = Features::instance().Why(Feature::kShelf);
  std::string problem = why;
  if (why.empty()) loaded.hasShelf = AddShelf(problem);
  if (!loaded.hasShelf) loaded.session->Tell("there is no shelf: " + problem);
}

MStatus DeregisterCommands(MFnPlugin& plugin) {
  std::vector<const CommandRow*> rows;
  for (const CommandRow& row : AllCommands()) rows.push_back(&row);
  rows.push_back(&SelfTestCommand());
  std::stable_sort(rows.begin(), rows.end(),
                   [](const CommandRow* a, const CommandRow* b) { return a->leave < b->leave; });
  MStatus result;
  for (const CommandRow* row : rows) {
    const MStatus status = plugin.deregisterCommand(row->name);
    if (status) continue;
    status.perror(MString("deregisterCommand ") + row->name + " failed");
    result = status;
  }
  return result;
}

}  // namespace

MStatus Load(MObject& object) {
  MFnPlugin plugin(object, "Orvel Motion", "7.0", "Any");
  AddLibraryFolder(std::string(plugin.loadPath().asChar()) + "/data");
  Features::instance().Reset();
  Undoing undoing;
  MStatus status = RegisterAll(plugin, undoing);
  if (!status) return status;
  g_loaded = std::make_unique<Loaded>();
  undoing.Add([] { g_loaded.reset(); });
  const std::string selfTest = ApplyLastSelfTest();
  const bool withWindows = MGlobal::mayaState() == MGlobal::kInteractive;
  g_loaded->session = std::make_unique<PluginSession>(withWindows);
  g_loaded->callbacks = std::make_unique<Callbacks>(*g_loaded->session);
  std::string problem;
  if (!g_loaded->callbacks->Add(problem)) {
    status = MStatus(MStatus::kFailure);
    status.perror(problem.c_str());
    return status;
  }
  g_loaded->session->Start();
  if (!selfTest.empty()) g_loaded->session->Tell(selfTest);
  if (withWindows) MakeShelf(*g_loaded);
  undoing.Keep();
  return MStatus::kSuccess;
}

MStatus Unload(MObject& object) {
  MFnPlugin plugin(object, "Unknown", "Unknown");
  const bool hadShelf = g_loaded && g_loaded->hasShelf;
  // First: nothing may be called on what goes.
  if (g_loaded) g_loaded->callbacks.reset();
  g_loaded.reset();
  MStatus result;
  for (auto row = std::rbegin(kNodeRows); row != std::rend(kNodeRows); ++row) {
    const MStatus status = plugin.deregisterNode(row->id);
    if (status) continue;
    status.perror(MString("deregisterNode ") + row->name + " failed");
    result = status;
  }
  if (hadShelf) RemoveShelf();
  const MStatus commands = DeregisterCommands(plugin);
  return commands ? result : commands;
}

}  // namespace orv::rws::adaptor::maya

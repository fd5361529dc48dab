// Callbacks, and who is told of what.
#include <maya/MCallbackIdArray.h>
#include <maya/MConditionMessage.h>
#include <maya/MDGMessage.h>
#include <maya/MDGModifier.h>
#include <maya/MEventMessage.h>
#include <maya/MNodeMessage.h>
#include <maya/MSceneMessage.h>
#include <maya/MStringArray.h>

#include <algorithm>

#include "Notify.h"
#include "State.h"

namespace mayahost {
namespace {
/// What a callback is for: a kind with a number or a name, and maybe a node.
struct Listener {
  long long id;
  std::string topic;
  const Node* node;
  void (*function)();
  void* data;
  bool dead = false;
};
std::vector<std::shared_ptr<Listener>> g_listeners;
long long g_nextId = 1, g_current = 0;

template <class F>
long long Listen(const std::string& topic, const MObject* object, F function, void* data, MStatus* status) {
  const NodePtr node = object ? NodeOf(*object) : nullptr;
  const bool can = function && (!object || node) && !MustFail(topic);
  Ok(status, can);
  if (!can) return 0;
  g_listeners.push_back(std::make_shared<Listener>(Listener{g_nextId++, topic, node.get(), reinterpret_cast<void (*)()>(function), data}));
  return g_listeners.back()->id;
}
/// Calls all that listen by `call`; one that is removed meanwhile is not called, nor one that is added.
template <class F, class Call>
void Tell(const std::string& topic, const Node* node, Call call) {
  if (g_listeners.empty()) return;
  const auto all = g_listeners;
  for (const auto& listener : all) {
    if (listener->dead || listener->topic != topic || listener->node != node) continue;
    const long long before = g_current;
    g_current = listener->id;
    call(reinterpret_cast<F>(listener->function), listener->data);
    g_current = before;
  }
}
std::string SceneTopic(int message) { return "callback " + std::to_string(message); }
}  // namespace

std::vector<std::string> Callbacks() {
  std::vector<std::string> topics;
  for (const auto& listener : g_listeners) topics.push_back(listener->topic);
  return topics;
}
bool AnybodyHearsDirt() {
  return TheState().computed || std::any_of(g_listeners.begin(), g_listeners.end(), [](const auto& l) { return l->topic == "dirty"; });
}
void NotifyScene(int message) {
  Tell<MMessage::MBasicFunction>(SceneTopic(message), nullptr, [](auto f, void* data) { f(data); });
}
bool AskScene(int message) {
  bool go = true;
  Tell<MMessage::MCheckFunction>("check " + std::to_string(message), nullptr, [&](auto f, void* data) {
    bool one = true;
    f(&one, data);
    go &= one;
  });
  return go;
}
void NotifyNode(bool added, const NodePtr& node) {
  if (g_listeners.empty()) return;
  MObject object = Obj(node);
  for (const NodeType* type = node->info; type; type = type->base)
    Tell<MMessage::MNodeFunction>((added ? "added " : "removed ") + type->name, nullptr, [&](auto f, void* data) { f(object, data); });
}
void NotifyRemoval(const NodePtr& node) {
  if (g_listeners.empty()) return;
  MObject object = Obj(node);
  MDGModifier modifier;
  Tell<MMessage::MNodeModFunction>("about", node.get(), [&](auto f, void* data) { f(object, modifier, data); });
  Tell<MMessage::MNodeFunction>("preRemoval", node.get(), [&](auto f, void* data) { f(object, data); });
}
void NotifyName(const NodePtr& node, const std::string& before) {
  MObject object = Obj(node);
  Tell<MMessage::MNodeStringFunction>("name", node.get(), [&](auto f, void* data) { f(object, before.c_str(), data); });
}
void NotifyAttr(int message, const PlugRef& plug, const PlugRef& other) {
  Tell<MNodeMessage::MAttr2PlugFunction>("attribute", plug.node, [&](auto f, void* data) {
    MPlug a(plug), b(other);
    f(static_cast<MNodeMessage::AttributeMessage>(message), a, b, data);
  });
}
void NotifyDirty(Node& node) {
  Tell<MMessage::MNodeFunction>("dirty", &node, [&](auto f, void* data) {
    MObject object = Obj(node.Ptr());
    f(object, data);
  });
}
void NotifyTime() {
  MTime time = TimeOf(TheScene().now);
  for (const char* topic : {"time", "forceUpdate"}) Tell<MMessage::MTimeFunction>(topic, nullptr, [&](auto f, void* data) { f(time, data); });
  NotifyEvent("timeChanged");
}
void NotifyConnection(const PlugRef& source, const PlugRef& destination, bool made) {
  Tell<MMessage::MPlugFunction>("connection", nullptr, [&](auto f, void* data) {
    MPlug a(source), b(destination);
    f(a, b, made, data);
  });
}
void NotifyEvent(const std::string& event) {
  Tell<MMessage::MBasicFunction>("event " + event, nullptr, [](auto f, void* data) { f(data); });
}
void NotifyCondition(const std::string& condition, bool state) {
  TheState().conditions[condition] = state;
  Tell<MMessage::MStateFunction>("condition " + condition, nullptr, [&](auto f, void* data) { f(state, data); });
}
void NotifySelection() { NotifyEvent("SelectionChanged"); }
}  // namespace mayahost

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN
MStatus MMessage::removeCallback(MCallbackId id) {
  const auto at = std::find_if(g_listeners.begin(), g_listeners.end(), [&](const auto& l) { return l->id == id; });
  if (at == g_listeners.end()) return MS::kFailure;
  (*at)->dead = true;
  return g_listeners.erase(at), MS::kSuccess;
}
MStatus MMessage::removeCallbacks(const MCallbackIdArray& ids) {
  bool all = true;
  for (const MCallbackId id : ids) all &= removeCallback(id) == MS::kSuccess;
  return St(all);
}
MStatus MMessage::nodeCallbacks(const MObject& node, MCallbackIdArray& ids) {
  ids.clear();
  for (const auto& l : g_listeners)
    if (l->node && l->node == node.thing.get()) ids.append(l->id);
  return MS::kSuccess;
}
MCallbackId MMessage::currentCallbackId() { return g_current; }
MCallbackId MSceneMessage::addCallback(Message m, MBasicFunction f, void* data, MStatus* status) {
  if (m < 0 || m >= kLast) return Ok(status, false), 0;
  return Listen(SceneTopic(m), nullptr, f, data, status);
}
MCallbackId MSceneMessage::addCheckCallback(Message m, MCheckFunction f, void* data, MStatus* status) {
  return Listen("check " + std::to_string(m), nullptr, f, data, status);
}
MCallbackId MDGMessage::addTimeChangeCallback(MTimeFunction f, void* data, MStatus* s) { return Listen("time", nullptr, f, data, s); }
MCallbackId MDGMessage::addNodeAddedCallback(MNodeFunction f, const MString& type, void* data, MStatus* s) {
  return Listen(std::string("added ") + type.asChar(), nullptr, FindType(type.asChar()) ? f : nullptr, data, s);
}
MCallbackId MDGMessage::addNodeRemovedCallback(MNodeFunction f, const MString& type, void* data, MStatus* s) {
  return Listen(std::string("removed ") + type.asChar(), nullptr, FindType(type.asChar()) ? f : nullptr, data, s);
}
MCallbackId MNodeMessage::addAttributeChangedCallback(MObject& node, MAttr2PlugFunction f, void* data, MStatus* s) {
  return Listen("attribute", &node, f, data, s);
}
MCallbackId MNodeMessage::addNodeDirtyCallback(MObject& node, MNodeFunction f, void* data, MStatus* s) { return Listen("dirty", &node, f, data, s); }
MCallbackId MNodeMessage::addNameChangedCallback(MObject& node, MNodeStringFunction f, void* data, MStatus* s) { return Listen("name", &node, f, data, s); }
MCallbackId MNodeMessage::addNodePreRemovalCallback(MObject& node, MNodeFunction f, void* data, MStatus* s) { return Listen("preRemoval", &node, f, data, s); }
MCallbackId MNodeMessage::addNodeAboutToDeleteCallback(MObject& node, MNodeModFunction f, void* data, MStatus* s) { return Listen("about", &node, f, data, s); }
MCallbackId MConditionMessage::addConditionCallback(const MString& name, MStateFunction f, void* data, MStatus* s) {
  return Listen(std::string("condition ") + name.asChar(), nullptr, f, data, s);
}
MStatus MConditionMessage::getConditionNames(MStringArray& names) {
  return names = {"playingBack", "SomethingSelected", "busy", "autoKeyframeState"}, MS::kSuccess;
}
bool MConditionMessage::getConditionState(const MString& name, MStatus* status) { return Ok(status), TheState().conditions[name.asChar()]; }
MCallbackId MEventMessage::addEventCallback(const MString& event, MBasicFunction f, void* data, MStatus* s) {
  return Listen(std::string("event ") + event.asChar(), nullptr, f, data, s);
}
MStatus MEventMessage::getEventNames(MStringArray& names) {
  return names = {"timeChanged", "timeUnitChanged", "linearUnitChanged", "playbackRangeChanged", "SelectionChanged", "Undo", "Redo", "quitApplication", "idle"},
         MS::kSuccess;
}
OPENMAYA_MAJOR_NAMESPACE_CLOSE

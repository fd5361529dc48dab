// Callbacks, and who is told of what.
#include <maya/MAnimMessage.h>
#include <maya/MCallbackIdArray.h>
#include <maya/MCommandMessage.h>
#include <maya/MConditionMessage.h>
#include <maya/MDGMessage.h>
#include <maya/MDGModifier.h>
#include <maya/MDagMessage.h>
#include <maya/MEventMessage.h>
#include <maya/MModelMessage.h>
#include <maya/MNodeMessage.h>
#include <maya/MSceneMessage.h>
#include <maya/MStringArray.h>
#include <maya/MTimerMessage.h>
#include <maya/MUserEventMessage.h>

#include <algorithm>

#include "Modifier.h"
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
  return TheState().computed || std::any_of(g_listeners.begin(), g_listeners.end(), [](const auto& l) { return l->topic.find("dirty") == 0; });
}
void NotifyScene(int message) {
  static const std::map<int, const char*> kEvents = {{MSceneMessage::kBeforeNew, "PreFileNewOrOpened"}, {MSceneMessage::kBeforeOpen, "PreFileNewOrOpened"},
                                                     {MSceneMessage::kAfterNew, "NewSceneOpened"},      {MSceneMessage::kAfterOpen, "SceneOpened"},
                                                     {MSceneMessage::kAfterImport, "SceneImported"},    {MSceneMessage::kAfterSave, "SceneSaved"}};
  if (kEvents.count(message)) NotifyEvent(kEvents.at(message));
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
  for (const auto& op : std::exchange(modifier.State().pending, {})) op();
  Tell<MMessage::MNodeFunction>("preRemoval", node.get(), [&](auto f, void* data) { f(object, data); });
}
void NotifyName(const NodePtr& node, const std::string& before) {
  MObject object = Obj(node);
  for (const Node* heard : {node.get(), static_cast<Node*>(nullptr)})
    Tell<MMessage::MNodeStringFunction>("name", heard, [&](auto f, void* data) { f(object, before.c_str(), data); });
  NotifyEvent("NameChanged");
}
void NotifyAttr(int message, const PlugRef& plug, const PlugRef& other) {
  if (message == MNodeMessage_kAdded || message == MNodeMessage_kRemoved)
    Tell<MNodeMessage::MAttrFunction>("attributes", plug.node, [&](auto f, void* data) {
      MPlug a(plug);
      f(static_cast<MNodeMessage::AttributeMessage>(message), a, data);
    });
  Tell<MNodeMessage::MAttr2PlugFunction>("attribute", plug.node, [&](auto f, void* data) {
    MPlug a(plug), b(other);
    f(static_cast<MNodeMessage::AttributeMessage>(message), a, b, data);
  });
}
void NotifyDirty(const PlugRef& ref) {
  if (g_listeners.empty()) return;
  MObject object = Obj(ref.node->Ptr());
  Tell<MMessage::MNodeFunction>("dirty", ref.node, [&](auto f, void* data) { f(object, data); });
  Tell<MMessage::MNodePlugFunction>("dirty plug", ref.node, [&](auto f, void* data) {
    MPlug plug(ref);
    f(object, plug, data);
  });
}
void NotifyPlugin(int message, const std::vector<std::string>& texts) {
  MStringArray all;
  for (const std::string& text : texts) all.append(text.c_str());
  NotifyScene(message);
  Tell<MMessage::MStringArrayFunction>("texts " + std::to_string(message), nullptr, [&](auto f, void* data) { f(all, data); });
}
void NotifyParent(const NodePtr& child, Node* parent, bool added) {
  if (g_listeners.empty() || !parent) return;
  MDagPath above;
  MDagPath::getAPathTo(Obj(parent->Ptr()), above);
  MDagPath path = above;
  path.nodes.push_back(child);
  const auto tell = [&](int message, const Node* heard) {
    Tell<MMessage::MParentChildFunction>("dag " + std::to_string(message), heard, [&](auto f, void* data) { f(path, above, data); });
    Tell<MDagMessage::MMessageParentChildFunction>("dag", heard,
                                                   [&](auto f, void* data) { f(static_cast<MDagMessage::DagMessage>(message), path, above, data); });
  };
  const bool instance = child->parents.size() > (added ? 1u : 0u);
  for (const int message : {MDagMessage::kParentAdded, MDagMessage::kChildAdded, MDagMessage::kInstanceAdded}) {
    if (message == MDagMessage::kInstanceAdded && !instance) continue;
    tell(message + !added, nullptr);
    tell(message + !added, message == MDagMessage::kChildAdded ? parent : child.get());
  }
}
void NotifyCurve(const NodePtr& curve) {
  Tell<MMessage::MObjArrayFunction>("curve", nullptr, [&](auto f, void* data) {
    MObjectArray objects;
    objects.append(Obj(curve));
    f(objects, data);
  });
}
void NotifyDuplicate(bool before) {
  Tell<MMessage::MBasicFunction>(before ? "before duplicate" : "after duplicate", nullptr, [](auto f, void* data) { f(data); });
}
void NotifyCommand(const std::string& line) {
  Tell<MMessage::MStringFunction>("command", nullptr, [&](auto f, void* data) { f(line.c_str(), data); });
}
void NotifySaid(int type, const std::string& text) {
  Tell<MCommandMessage::MMessageFunction>("said", nullptr, [&](auto f, void* data) { f(text.c_str(), static_cast<MCommandMessage::MessageType>(type), data); });
}
void NotifyTimers() {
  for (const auto& l : std::vector<std::shared_ptr<Listener>>(g_listeners))
    if (!l->dead && l->topic.find("timer ") == 0) {
      const float period = static_cast<float>(MString(l->topic.c_str() + 6).asDouble());
      reinterpret_cast<MMessage::MElapsedTimeFunction>(l->function)(period, period, l->data);
    }
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
void NotifySelection() {
  NotifyEvent("SelectionChanged");
  Tell<MMessage::MBasicFunction>("model", nullptr, [](auto f, void* data) { f(data); });
  if (const bool any = !TheScene().selection.items.empty(); any != TheState().conditions["SomethingSelected"]) NotifyCondition("SomethingSelected", any);
}
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
MCallbackId MSceneMessage::addStringArrayCallback(Message m, MStringArrayFunction f, void* data, MStatus* status) {
  const bool plugin = m >= kBeforePluginLoad && m <= kAfterPluginUnload;
  return Listen("texts " + std::to_string(m), nullptr, plugin ? f : nullptr, data, status);
}
MCallbackId MDGMessage::addForceUpdateCallback(MTimeFunction f, void* data, MStatus* s) { return Listen("forceUpdate", nullptr, f, data, s); }
MCallbackId MDGMessage::addConnectionCallback(MPlugFunction f, void* data, MStatus* s) { return Listen("connection", nullptr, f, data, s); }
MCallbackId MTimerMessage::addTimerCallback(float period, MElapsedTimeFunction f, void* data, MStatus* s) {
  return Listen(std::string("timer ") + (MString() + period).asChar(), nullptr, period > 0 ? f : nullptr, data, s);
}
MCallbackId MCommandMessage::addCommandCallback(MStringFunction f, void* data, MStatus* s) { return Listen("command", nullptr, f, data, s); }
MCallbackId MCommandMessage::addCommandOutputCallback(MMessageFunction f, void* data, MStatus* s) { return Listen("said", nullptr, f, data, s); }
MCallbackId MModelMessage::addCallback(Message, MBasicFunction f, void* data, MStatus* s) { return Listen("model", nullptr, f, data, s); }
MCallbackId MModelMessage::addBeforeDuplicateCallback(MBasicFunction f, void* data, MStatus* s) { return Listen("before duplicate", nullptr, f, data, s); }
MCallbackId MModelMessage::addAfterDuplicateCallback(MBasicFunction f, void* data, MStatus* s) { return Listen("after duplicate", nullptr, f, data, s); }
MCallbackId MAnimMessage::addAnimCurveEditedCallback(MObjArrayFunction f, void* data, MStatus* s) { return Listen("curve", nullptr, f, data, s); }
namespace {
template <class F>
MCallbackId ListenDag(const std::string& topic, const MDagPath* path, F f, void* data, MStatus* s) {
  const MObject node = path ? path->node() : MObject();
  return Listen(topic, path ? &node : nullptr, f, data, s);
}
}  // namespace
#define DAG_MESSAGE(Name)                                                                                               \
  MCallbackId MDagMessage::add##Name##Callback(MParentChildFunction f, void* data, MStatus* s) {                        \
    return ListenDag("dag " + std::to_string(k##Name), nullptr, f, data, s);                                            \
  }                                                                                                                     \
  MCallbackId MDagMessage::add##Name##DagPathCallback(MDagPath& path, MParentChildFunction f, void* data, MStatus* s) { \
    return ListenDag("dag " + std::to_string(k##Name), &path, f, data, s);                                              \
  }
DAG_MESSAGE(ParentAdded)
DAG_MESSAGE(ParentRemoved)
DAG_MESSAGE(ChildAdded)
DAG_MESSAGE(ChildRemoved)
DAG_MESSAGE(InstanceAdded)
DAG_MESSAGE(InstanceRemoved)
MCallbackId MDagMessage::addDagCallback(DagMessage message, MParentChildFunction f, void* data, MStatus* s) {
  return ListenDag("dag " + std::to_string(message), nullptr, f, data, s);
}
MCallbackId MDagMessage::addAllDagChangesCallback(MMessageParentChildFunction f, void* data, MStatus* s) { return ListenDag("dag", nullptr, f, data, s); }
MCallbackId MDagMessage::addAllDagChangesDagPathCallback(MDagPath& path, MMessageParentChildFunction f, void* data, MStatus* s) {
  return ListenDag("dag", &path, f, data, s);
}
MStatus MUserEventMessage::registerUserEvent(const MString& event) {
  return event.length() && TheState().userEvents.insert(event.asChar()).second ? MS::kSuccess : MS::kFailure;
}
bool MUserEventMessage::isUserEvent(const MString& event) { return TheState().userEvents.count(event.asChar()); }
MStatus MUserEventMessage::deregisterUserEvent(const MString& event) { return St(TheState().userEvents.erase(event.asChar()) > 0); }
MCallbackId MUserEventMessage::addUserEventCallback(const MString& event, MBasicFunction f, void* data, MStatus* s) {
  return Listen(std::string("user ") + event.asChar(), nullptr, isUserEvent(event) ? f : nullptr, data, s);
}
MStatus MUserEventMessage::postUserEvent(const MString& event, void* posted) {
  if (!isUserEvent(event)) return MS::kFailure;
  Tell<MBasicFunction>(std::string("user ") + event.asChar(), nullptr, [&](auto f, void* data) { f(posted ? posted : data); });
  return MS::kSuccess;
}
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
MCallbackId MNodeMessage::addNodeDirtyPlugCallback(MObject& node, MNodePlugFunction f, void* data, MStatus* s) {
  return Listen("dirty plug", &node, f, data, s);
}
MCallbackId MNodeMessage::addAttributeAddedOrRemovedCallback(MObject& node, MAttrFunction f, void* data, MStatus* s) {
  return Listen("attributes", &node, f, data, s);
}
MCallbackId MNodeMessage::addNameChangedCallback(MObject& node, MNodeStringFunction f, void* data, MStatus* s) {
  return Listen("name", node.isNull() ? nullptr : &node, f, data, s);
}
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
  MStringArray known;
  getEventNames(known);
  return Listen(std::string("event ") + event.asChar(), nullptr, known.indexOf(event) < 0 ? nullptr : f, data, s);
}
MStatus MEventMessage::getEventNames(MStringArray& names) {
  names = {"timeChanged",
           "timeUnitChanged",
           "linearUnitChanged",
           "angularUnitChanged",
           "playbackRangeChanged",
           "SelectionChanged",
           "Undo",
           "Redo",
           "idle",
           "quitApplication",
           "NameChanged",
           "PreFileNewOrOpened",
           "NewSceneOpened",
           "SceneOpened",
           "SceneSaved",
           "SceneImported",
           "DagObjectCreated"};
  return MS::kSuccess;
}
OPENMAYA_MAJOR_NAMESPACE_CLOSE

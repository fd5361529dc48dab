// The program: selection, texts, options, views.
#include <maya/M3dView.h>
#include <maya/MCommandResult.h>
#include <maya/MGlobal.h>
#include <maya/MItSelectionList.h>

#include <algorithm>
#include <fstream>

#include "Fn.h"
#include "Notify.h"
#include "State.h"

namespace mayahost {
State& TheState() {
  static State state;
  return state;
}
void Say(Spoken kind, const std::string& text) {
  static const char* const kKinds[] = {"info", "warning", "error", "status", "box", "shelf"};
  TheState().said.push_back(kKinds[static_cast<int>(kind)] + (": " + text));
  if (kind <= Spoken::kError) NotifySaid(2 + static_cast<int>(kind), text);
  if (!TheState().alone) return;
  if (kind == Spoken::kInfo)
    std::cout << text << std::endl;
  else
    std::cerr << (kind == Spoken::kWarning ? "Warning: " : kind == Spoken::kError ? "Error: " : "") << text << std::endl;
}
bool MustFail(const std::string& name) { return TheState().failing.erase(name) > 0; }
std::vector<std::string>& Said() { return TheState().said; }
std::vector<std::string>& Executed() { return TheState().executed; }
int Refreshes() { return TheState().refreshes; }
void SetBatch(bool batch) { TheState().batch = batch; }
void FailRegistration(const std::string& name) { TheState().failing.insert(name); }
void Pretend(Wrong behaviour) { TheState().wrong = behaviour; }
bool Pretends(Wrong behaviour) { return TheState().wrong == behaviour; }
void SetCondition(const std::string& condition, bool state) { NotifyCondition(condition, state); }
}  // namespace mayahost

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

namespace {
bool IsSame(const MSelectionList::Item& a, const MSelectionList::Item& b) {
  const auto p = std::dynamic_pointer_cast<Component>(a.component.thing), q = std::dynamic_pointer_cast<Component>(b.component.thing);
  const bool parts = p && q ? p->type == q->type && p->elements == q->elements && p->complete == q->complete : !p && !q;
  return a.node == b.node && a.path == b.path && a.plug == b.plug && parts;
}
}  // namespace
bool MSelectionList::isEmpty(MStatus* status) const { return Ok(status), items.empty(); }
unsigned int MSelectionList::length(MStatus* status) const { return Ok(status), static_cast<unsigned int>(items.size()); }
MStatus MSelectionList::getDependNode(unsigned int i, MObject& node) const {
  return i < items.size() ? (node = items[i].node, MS::kSuccess) : MS::kInvalidParameter;
}
MStatus MSelectionList::getDagPath(unsigned int i, MDagPath& path) const {
  if (i >= items.size()) return MS::kInvalidParameter;
  return path = items[i].path, items[i].path.nodes.empty() ? MDagPath::getAPathTo(items[i].node, path) : MStatus(MS::kSuccess);
}
MStatus MSelectionList::getDagPath(unsigned int i, MDagPath& path, MObject& component) const {
  return component = i < items.size() ? items[i].component : MObject(), getDagPath(i, path);
}
MStatus MSelectionList::getPlug(unsigned int i, MPlug& plug) const {
  if (i >= items.size() || items[i].plug.isNull()) return MS::kInvalidParameter;
  return plug = items[i].plug, MS::kSuccess;
}
MStatus MSelectionList::add(const MString& pattern, bool) {
  const std::string text = pattern.asChar();
  const auto dot = text.find('.');
  const auto found = Resolve(text.substr(0, dot));
  for (auto item : found) {
    if (const ComponentPtr part = dot == std::string::npos ? nullptr : ParseComponent(item.path, text.substr(dot + 1))) {
      item.path.extendToShape();
      items.push_back({item.path.node(), item.path, {}, Obj(part)});
      continue;
    }
    if (dot != std::string::npos) item.plug = MPlug(RefOf(NodeOf(item.node), text.substr(dot + 1)));
    if (dot != std::string::npos && item.plug.isNull()) return MS::kInvalidParameter;
    items.push_back(item);
  }
  return found.empty() || (found.size() > 1 && text.find('*') == std::string::npos) ? MS::kInvalidParameter : MS::kSuccess;
}
MStatus MSelectionList::add(const MObject& node, bool merge) {
  if (!NodeOf(node)) return MS::kInvalidParameter;
  MSelectionList::Item item{node, {}, {}};
  MDagPath::getAPathTo(node, item.path);
  if (!merge || !hasItem(node)) items.push_back(item);
  return MS::kSuccess;
}
MStatus MSelectionList::add(const MDagPath& path, const MObject& component, bool merge) {
  if (path.nodes.empty()) return MS::kInvalidParameter;
  if (!merge || !hasItem(path, component)) items.push_back({path.node(), path, {}, component});
  return MS::kSuccess;
}
MStatus MSelectionList::add(const MPlug& plug, bool) {
  return plug.isNull() ? MS::kInvalidParameter : (items.push_back({plug.node(), {}, plug}), MS::kSuccess);
}
MStatus MSelectionList::remove(unsigned int i) { return i < items.size() ? (items.erase(items.begin() + i), MS::kSuccess) : MS::kInvalidParameter; }
MStatus MSelectionList::replace(unsigned int i, const MObject& node) {
  return i < items.size() ? (items[i] = {node, {}, {}}, MS::kSuccess) : MS::kInvalidParameter;
}
MStatus MSelectionList::replace(unsigned int i, const MDagPath& path, const MObject& component) {
  return i < items.size() && !path.nodes.empty() ? (items[i] = {path.node(), path, {}, component}, MS::kSuccess) : MS::kInvalidParameter;
}
MStatus MSelectionList::replace(unsigned int i, const MPlug& plug) {
  return i < items.size() && !plug.isNull() ? (items[i] = {plug.node(), {}, plug}, MS::kSuccess) : MS::kInvalidParameter;
}
MStatus MSelectionList::toggle(const MDagPath& path, const MObject& component) { return merge(path, component, kXORWithList); }
MStatus MSelectionList::intersect(const MSelectionList& other, bool) {
  items.erase(std::remove_if(items.begin(), items.end(),
                             [&](const Item& i) { return std::none_of(other.items.begin(), other.items.end(), [&](const Item& o) { return IsSame(o, i); }); }),
              items.end());
  return MS::kSuccess;
}
bool MSelectionList::hasItem(const MPlug& plug, MStatus* status) const {
  Ok(status);
  return std::any_of(items.begin(), items.end(), [&](const Item& i) { return i.plug == plug; });
}
MStatus MSelectionList::add(const MUuid& uuid, bool merge) {
  for (const auto& [serial, node] : TheScene().nodes)
    if (uuid.asString() == node->uuid.c_str()) return add(Obj(node), merge);
  return MS::kInvalidParameter;
}
bool MSelectionList::hasItem(const MObject& node, MStatus* status) const {
  Ok(status);
  return std::any_of(items.begin(), items.end(), [&](const Item& i) { return i.node == node; });
}
bool MSelectionList::hasItem(const MDagPath& path, const MObject& component, MStatus* status) const {
  Ok(status);
  const Item asked{path.node(), path, {}, component};
  return std::any_of(items.begin(), items.end(), [&](const Item& i) { return IsSame(i, asked); });
}
MStatus MSelectionList::getSelectionStrings(MStringArray& names) const {
  names.clear();
  for (unsigned int i = 0; i < length(); ++i) getSelectionStrings(i, names);
  return MS::kSuccess;
}
MStatus MSelectionList::getSelectionStrings(unsigned int i, MStringArray& names) const {
  if (i >= items.size()) return MS::kInvalidParameter;
  const Item& item = items[i];
  if (const auto part = std::dynamic_pointer_cast<Component>(item.component.thing)) {
    MDagPath transform = item.path;
    if (!transform.hasFn(MFn::kTransform) || transform.node().hasFn(MFn::kShape)) transform.pop();
    for (const std::string& run : RunsOf(*part)) names.append((PathName(transform, false) + "." + run).c_str());
    return MS::kSuccess;
  }
  return names.append(!item.plug.isNull()        ? item.plug.name()
                      : !item.path.nodes.empty() ? PathName(item.path, false).c_str()
                                                 : NodeName(NodeOf(item.node)).c_str());
}
MStatus MSelectionList::merge(const MSelectionList& other, MergeStrategy how) {
  for (const Item& item : other.items) {
    const auto at = std::find_if(items.begin(), items.end(), [&](const Item& i) { return IsSame(i, item); });
    if (at == items.end() && how != kRemoveFromList)
      items.push_back(item);
    else if (at != items.end() && how != kMergeNormal)
      items.erase(at);
  }
  return MS::kSuccess;
}
MStatus MSelectionList::merge(const MDagPath& path, const MObject& component, MergeStrategy how) {
  MSelectionList one;
  return one.add(path, component), merge(one, how);
}

MItSelectionList::MItSelectionList(MSelectionList& list, MFn::Type filter, MStatus* status) : fAll(list) {
  Ok(status);
  setFilter(filter);
}
MItSelectionList::MItSelectionList(const MSelectionList& list, MStatus* status) : fAll(list), fList(list) { Ok(status); }
MStatus MItSelectionList::setFilter(MFn::Type filter) {
  fList.clear(), fAt = 0;
  for (const auto& item : fAll.items)
    if (filter == MFn::kInvalid || item.node.hasFn(filter) || item.path.hasFn(filter) || item.component.hasFn(filter)) fList.items.push_back(item);
  return MS::kSuccess;
}
bool MItSelectionList::isDone(MStatus* status) const { return Ok(status), fAt >= fList.items.size(); }
MItSelectionList::SelItemType MItSelectionList::itemType(MStatus* status) const {
  Ok(status, !isDone());
  return isDone()                              ? kUnknownItem
         : !fList.items[fAt].plug.isNull()     ? kPlugSelectionItem
         : fList.items[fAt].path.nodes.empty() ? kDNselectionItem
                                               : kDagSelectionItem;
}
MStatus MItSelectionList::getDependNode(MObject& node) const { return fList.getDependNode(fAt, node); }
MStatus MItSelectionList::getDagPath(MDagPath& path) const { return fList.getDagPath(fAt, path); }
MStatus MItSelectionList::getDagPath(MDagPath& path, MObject& component) const { return fList.getDagPath(fAt, path, component); }
bool MItSelectionList::hasComponents(MStatus* status) const { return Ok(status, !isDone()), !isDone() && !fList.items[fAt].component.isNull(); }

MGlobal::MMayaState MGlobal::mayaState(MStatus* status) { return Ok(status), TheState().library ? kLibraryApp : TheState().batch ? kBatch : kInteractive; }
bool MGlobal::isYAxisUp(MStatus* status) { return Ok(status), TheScene().yUp != Pretends(Wrong::kAxis); }
bool MGlobal::isZAxisUp(MStatus* status) { return !isYAxisUp(status); }
MStatus MGlobal::setYAxisUp(bool) { return TheScene().yUp = true, MS::kSuccess; }
MStatus MGlobal::setZAxisUp(bool) { return TheScene().yUp = false, MS::kSuccess; }
MVector MGlobal::upAxis(MStatus* status) { return isYAxisUp(status) ? MVector::yAxis : MVector::zAxis; }
MStatus MGlobal::getActiveSelectionList(MSelectionList& list, bool) { return list = TheScene().selection, MS::kSuccess; }
MStatus MGlobal::setActiveSelectionList(const MSelectionList& list, ListAdjustment how) {
  MSelectionList& now = TheScene().selection;
  if (how == kReplaceList) now.clear();
  now.merge(list, how == kXORWithList ? MSelectionList::kXORWithList : how == kRemoveFromList ? MSelectionList::kRemoveFromList : MSelectionList::kMergeNormal);
  return NotifySelection(), MS::kSuccess;
}
namespace {
template <class... T>
MStatus Adjust(MGlobal::ListAdjustment how, const T&... what) {
  MSelectionList list;
  const MStatus status = list.add(what...);
  return status == MS::kSuccess ? MGlobal::setActiveSelectionList(list, how) : status;
}
}  // namespace
MStatus MGlobal::select(const MObject& object, ListAdjustment how) { return Adjust(how, object); }
MStatus MGlobal::select(const MDagPath& path, const MObject& component, ListAdjustment how) { return Adjust(how, path, component); }
MStatus MGlobal::selectByName(const MString& name, ListAdjustment how) { return Adjust(how, name); }
MStatus MGlobal::unselect(const MObject& object) { return Adjust(kRemoveFromList, object); }
MStatus MGlobal::unselect(const MDagPath& path, const MObject& component) { return Adjust(kRemoveFromList, path, component); }
MStatus MGlobal::clearSelectionList() { return setActiveSelectionList(MSelectionList()); }
MStatus MGlobal::getSelectionListByName(const MString& name, MSelectionList& list) { return list.add(name); }
namespace {
MStatus Execute(const MString& command, bool undo, std::vector<std::string>& result) { return St(Run(command.asChar(), undo, result)); }
}  // namespace
bool MGlobal::isSelected(MObject& object) { return TheScene().selection.hasItem(object); }
MStatus MGlobal::unselectByName(const MString& name) { return Adjust(kRemoveFromList, name); }
namespace {
MGlobal::SelectionMode g_selects = MGlobal::kSelectObjectMode;
}
MGlobal::SelectionMode MGlobal::selectionMode(MStatus* status) { return Ok(status), g_selects; }
MStatus MGlobal::setSelectionMode(SelectionMode mode) { return g_selects = mode, MS::kSuccess; }
MStatus MGlobal::selectCommand(const MSelectionList& list, ListAdjustment how) {
  MStringArray names;
  list.getSelectionStrings(names);
  static const char* const kFlags[] = {" -r", " -tgl", " -add", " -d", " -add"};
  MString line = MString("select") + kFlags[how];
  for (const MString& name : names) line += MString(" \"") + name + "\"";
  return executeCommand(line, false, true);
}
MStatus MGlobal::getAssociatedSets(const MSelectionList& list, MSelectionList& sets) {
  sets.clear();
  for (const auto& [serial, set] : TheScene().nodes)
    if (std::any_of(set->members.begin(), set->members.end(), [&](const auto& m) { return list.hasItem(m.node); })) sets.add(Obj(set));
  return MS::kSuccess;
}
MStatus MGlobal::sourceFile(const MString& file) {
  std::ifstream in(file.asChar());
  std::vector<std::string> result;
  const std::string text((std::istreambuf_iterator<char>(in)), {});
  return in ? Execute(text.c_str(), false, result) : (Say(Spoken::kError, std::string("Cannot find file ") + file.asChar()), MStatus(MS::kFailure));
}
MStatus MGlobal::getFunctionSetList(MObject object, MStringArray& names) {
  names.clear();
  for (int type = MFn::kBase; type < MFn::kLast; ++type)
    if (object.hasFn(static_cast<MFn::Type>(type))) names.append(KindName(static_cast<MFn::Type>(type)));
  return St(!object.isNull());
}
MStatus MGlobal::addToModel(MObject& object, MObject& parent) {
  const NodePtr node = NodeOf(object), above = parent.isNull() ? TheScene().world : NodeOf(parent);
  if (!node || !above || !node->IsDag() || !node->parents.empty()) return MS::kFailure;
  return node->inScene ? St(Reparent(node, nullptr, above.get())) : (AddNode(node, above.get()), MS::kSuccess);
}
MStatus MGlobal::removeFromModel(MObject& object) { return deleteNode(object); }
MStatus MGlobal::deleteNode(MObject& object) {
  const NodePtr node = NodeOf(object);
  return St(node && DeleteNode(node));
}
namespace {
/// Results as they are asked for; what isn't so is a failure.
bool To(const MString& text, int& value) { return text.isDouble() && (value = static_cast<int>(text.asDouble()), true); }
bool To(const MString& text, double& value) { return text.isDouble() && (value = text.asDouble(), true); }
bool To(const MString& text, MString& value) { return value = text, true; }
template <class T>
MStatus ToOne(const MStringArray& words, T& value) {
  return St(words.length() > 0 && To(words[0], value));
}
template <class Array>
MStatus ToAll(const MStringArray& words, Array& values) {
  values.clear();
  typename std::decay<decltype(values[0])>::type one{};
  for (const MString& word : words) {
    if (!To(word, one)) return values.clear(), MS::kFailure;
    values.append(one);
  }
  return MS::kSuccess;
}
}  // namespace
MCommandResult::MCommandResult(MStatus* status) { Ok(status); }
MCommandResult::Type MCommandResult::resultType(MStatus* status) const {
  Ok(status);
  if (words.length() == 0) return kInvalid;
  bool whole = true, number = true;
  for (const MString& word : words) whole &= word.isInt(), number &= word.isDouble();
  const bool many = words.length() > 1;
  return whole ? many ? kIntArray : kInt : number ? many ? kDoubleArray : kDouble : many ? kStringArray : kString;
}
MStatus MCommandResult::getResult(int& result) const { return ToOne(words, result); }
MStatus MCommandResult::getResult(double& result) const { return ToOne(words, result); }
MStatus MCommandResult::getResult(MString& result) const { return ToOne(words, result); }
MStatus MCommandResult::getResult(MIntArray& result) const { return ToAll(words, result); }
MStatus MCommandResult::getResult(MDoubleArray& result) const { return ToAll(words, result); }
MStatus MCommandResult::getResult(MStringArray& result) const { return ToAll(words, result); }
MString MCommandResult::stringResult(MStatus* status) const { return Ok(status, words.length() > 0), words.length() ? words[0] : MString(); }
MStatus MGlobal::executeCommand(const MString& command, bool, bool undo) {
  std::vector<std::string> result;
  return Execute(command, undo, result);
}
MStatus MGlobal::executeCommand(const MString& command, MCommandResult& to, bool, bool undo) {
  std::vector<std::string> result;
  const MStatus status = Execute(command, undo, result);
  to.words.clear();
  for (const std::string& one : result) to.words.append(one.c_str());
  return status;
}
#define EXECUTE(Type)                                                                             \
  MStatus MGlobal::executeCommand(const MString& command, Type& value, bool display, bool undo) { \
    MCommandResult result;                                                                        \
    const MStatus status = executeCommand(command, result, display, undo);                        \
    const MStatus told = result.getResult(value);                                                 \
    return status == MS::kSuccess ? told : status;                                                \
  }
EXECUTE(int)
EXECUTE(double)
EXECUTE(MString)
EXECUTE(MStringArray)
EXECUTE(MIntArray)
EXECUTE(MDoubleArray)
MStatus MGlobal::executePythonCommand(const MString&, bool, bool) { return Say(Spoken::kError, "There is no Python here."), MS::kNotImplemented; }
MString MGlobal::executeCommandStringResult(const MString& command, bool display, bool undo, MStatus* status) {
  MString result;
  const MStatus s = executeCommand(command, result, display, undo);
  return status ? void(*status = s) : void(), result;
}
MStatus MGlobal::executeCommandOnIdle(const MString& command, bool) { return TheState().idle.emplace_back(command.asChar()), MS::kSuccess; }
bool MGlobal::isUndoing() { return TheState().undoing; }
bool MGlobal::isRedoing() { return TheState().redoing; }
void MGlobal::displayInfo(const MString& text) { Say(Spoken::kInfo, text.asChar()); }
void MGlobal::displayWarning(const MString& text, bool) { Say(Spoken::kWarning, text.asChar()); }
void MGlobal::displayError(const MString& text, bool) { Say(Spoken::kError, text.asChar()); }
MStatus MGlobal::viewFrame(const MTime& time) { return SetNow(TicksOf(time)), ++TheState().refreshes, MS::kSuccess; }
MStatus MGlobal::viewFrame(double frame) { return viewFrame(MTime(frame, MTime::uiUnit())); }
MString MGlobal::optionVarStringValue(const MString& name, bool* exists) {
  if (exists) *exists = optionVarExists(name);
  return optionVarExists(name) ? TheState().options[name.asChar()].c_str() : "";
}
int MGlobal::optionVarIntValue(const MString& name, bool* exists) { return optionVarStringValue(name, exists).asInt(); }
double MGlobal::optionVarDoubleValue(const MString& name, bool* exists) { return optionVarStringValue(name, exists).asDouble(); }
bool MGlobal::setOptionVarValue(const MString& name, double value) { return setOptionVarValue(name, MString() + value); }
namespace {
std::string g_log;
}
MStatus MGlobal::startErrorLogging(const MString& file) { return g_log = file.length() ? file.asChar() : "mayahost.log", MS::kSuccess; }
MStatus MGlobal::closeErrorLog() { return g_log.clear(), MS::kSuccess; }
MString MGlobal::errorLogPathName(MStatus* status) { return Ok(status), g_log.c_str(); }
bool MGlobal::errorLoggingIsOn(MStatus* status) { return Ok(status), !g_log.empty(); }
MStatus MGlobal::doErrorLogEntry(const MString& text) {
  std::ofstream log(g_log, std::ios::app);
  return g_log.empty() ? MStatus(MS::kFailure) : St(bool(log << text << "\n"));
}
bool MGlobal::optionVarExists(const MString& name) { return TheState().options.count(name.asChar()); }
bool MGlobal::setOptionVarValue(const MString& name, const MString& value) { return TheState().options[name.asChar()] = value.asChar(), true; }
bool MGlobal::setOptionVarValue(const MString& name, int value) { return setOptionVarValue(name, MString() + value); }
bool MGlobal::removeOptionVar(const MString& name) { return TheState().options.erase(name.asChar()) > 0; }

M3dView M3dView::active3dView(MStatus* status) { return Ok(status, !TheState().batch), M3dView(); }
MStatus M3dView::refresh(bool, bool) { return TheState().batch ? MS::kFailure : (++TheState().refreshes, MS::kSuccess); }
OPENMAYA_MAJOR_NAMESPACE_CLOSE

// The program: selection, texts, options, views.
#include <maya/M3dView.h>
#include <maya/MGlobal.h>
#include <maya/MItSelectionList.h>
#include <maya/MQtUtil.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <algorithm>

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

bool MSelectionList::isEmpty(MStatus* status) const { return Ok(status), items.empty(); }
unsigned int MSelectionList::length(MStatus* status) const { return Ok(status), static_cast<unsigned int>(items.size()); }
MStatus MSelectionList::getDependNode(unsigned int i, MObject& node) const {
  return i < items.size() ? (node = items[i].node, MS::kSuccess) : MS::kInvalidParameter;
}
MStatus MSelectionList::getDagPath(unsigned int i, MDagPath& path) const {
  if (i >= items.size()) return MS::kInvalidParameter;
  return path = items[i].path, items[i].path.nodes.empty() ? MDagPath::getAPathTo(items[i].node, path) : MStatus(MS::kSuccess);
}
MStatus MSelectionList::getDagPath(unsigned int i, MDagPath& path, MObject& component) const { return component = MObject(), getDagPath(i, path); }
MStatus MSelectionList::getPlug(unsigned int i, MPlug& plug) const {
  if (i >= items.size() || items[i].plug.isNull()) return MS::kInvalidParameter;
  return plug = items[i].plug, MS::kSuccess;
}
MStatus MSelectionList::add(const MString& pattern, bool) {
  const std::string text = pattern.asChar();
  const auto dot = text.find('.');
  const auto found = Resolve(text.substr(0, dot));
  for (auto item : found) {
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
MStatus MSelectionList::add(const MDagPath& path, const MObject&, bool merge) {
  if (path.nodes.empty()) return MS::kInvalidParameter;
  if (!merge || !hasItem(path)) items.push_back({path.node(), path, {}});
  return MS::kSuccess;
}
MStatus MSelectionList::add(const MPlug& plug, bool) {
  return plug.isNull() ? MS::kInvalidParameter : (items.push_back({plug.node(), {}, plug}), MS::kSuccess);
}
MStatus MSelectionList::remove(unsigned int i) { return i < items.size() ? (items.erase(items.begin() + i), MS::kSuccess) : MS::kInvalidParameter; }
MStatus MSelectionList::replace(unsigned int i, const MObject& node) {
  return i < items.size() ? (items[i] = {node, {}, {}}, MS::kSuccess) : MS::kInvalidParameter;
}
bool MSelectionList::hasItem(const MObject& node, MStatus* status) const {
  Ok(status);
  return std::any_of(items.begin(), items.end(), [&](const Item& i) { return i.node == node; });
}
bool MSelectionList::hasItem(const MDagPath& path, const MObject&, MStatus* status) const {
  Ok(status);
  return std::any_of(items.begin(), items.end(), [&](const Item& i) { return i.path == path; });
}
MStatus MSelectionList::getSelectionStrings(MStringArray& names) const {
  names.clear();
  for (unsigned int i = 0; i < length(); ++i) getSelectionStrings(i, names);
  return MS::kSuccess;
}
MStatus MSelectionList::getSelectionStrings(unsigned int i, MStringArray& names) const {
  if (i >= items.size()) return MS::kInvalidParameter;
  const Item& item = items[i];
  return names.append(!item.plug.isNull()        ? item.plug.name()
                      : !item.path.nodes.empty() ? PathName(item.path, false).c_str()
                                                 : NodeName(NodeOf(item.node)).c_str());
}
MStatus MSelectionList::merge(const MSelectionList& other, MergeStrategy how) {
  for (const Item& item : other.items) {
    const auto at = std::find_if(items.begin(), items.end(), [&](const Item& i) { return i.node == item.node && i.path == item.path && i.plug == item.plug; });
    if (at == items.end() && how != kRemoveFromList)
      items.push_back(item);
    else if (at != items.end() && how != kMergeNormal)
      items.erase(at);
  }
  return MS::kSuccess;
}
MStatus MSelectionList::merge(const MDagPath& path, const MObject&, MergeStrategy how) {
  MSelectionList one;
  return one.add(path), merge(one, how);
}

MItSelectionList::MItSelectionList(MSelectionList& list, MFn::Type filter, MStatus* status) {
  Ok(status);
  for (const auto& item : list.items)
    if (filter == MFn::kInvalid || item.node.hasFn(filter) || item.path.hasFn(filter)) fList.items.push_back(item);
}
MItSelectionList::MItSelectionList(const MSelectionList& list, MStatus* status) : fList(list) { Ok(status); }
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
bool MItSelectionList::hasComponents(MStatus* status) const { return Ok(status), false; }

MGlobal::MMayaState MGlobal::mayaState(MStatus* status) { return Ok(status), TheState().batch ? kBatch : kInteractive; }
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
MStatus MGlobal::deleteNode(MObject& object) {
  const NodePtr node = NodeOf(object);
  return St(node && DeleteNode(node));
}
namespace {
MStatus Execute(const MString& command, bool undo, std::vector<std::string>& result) { return St(Run(command.asChar(), undo, result)); }
template <class T, class F>
MStatus ExecuteOne(const MString& command, T& value, bool undo, F convert) {
  std::vector<std::string> result;
  const MStatus status = Execute(command, undo, result);
  if (status == MS::kSuccess && result.empty()) return MS::kFailure;
  if (!result.empty()) value = convert(MString(result[0].c_str()));
  return status;
}
template <class T, class F>
MStatus ExecuteAll(const MString& command, T& values, bool undo, F convert) {
  std::vector<std::string> result;
  const MStatus status = Execute(command, undo, result);
  values.clear();
  for (const std::string& one : result) values.append(convert(MString(one.c_str())));
  return status;
}
}  // namespace
MStatus MGlobal::executeCommand(const MString& command, bool, bool undo) {
  std::vector<std::string> result;
  return Execute(command, undo, result);
}
MStatus MGlobal::executeCommand(const MString& c, int& v, bool, bool undo) {
  return ExecuteOne(c, v, undo, [](const MString& s) { return s.asInt(); });
}
MStatus MGlobal::executeCommand(const MString& c, double& v, bool, bool undo) {
  return ExecuteOne(c, v, undo, [](const MString& s) { return s.asDouble(); });
}
MStatus MGlobal::executeCommand(const MString& c, MString& v, bool, bool undo) {
  return ExecuteOne(c, v, undo, [](const MString& s) { return s; });
}
MStatus MGlobal::executeCommand(const MString& c, MStringArray& v, bool, bool undo) {
  return ExecuteAll(c, v, undo, [](const MString& s) { return s; });
}
MStatus MGlobal::executeCommand(const MString& c, MIntArray& v, bool, bool undo) {
  return ExecuteAll(c, v, undo, [](const MString& s) { return s.asInt(); });
}
MStatus MGlobal::executeCommand(const MString& c, MDoubleArray& v, bool, bool undo) {
  return ExecuteAll(c, v, undo, [](const MString& s) { return s.asDouble(); });
}
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
bool MGlobal::optionVarExists(const MString& name) { return TheState().options.count(name.asChar()); }
bool MGlobal::setOptionVarValue(const MString& name, const MString& value) { return TheState().options[name.asChar()] = value.asChar(), true; }
bool MGlobal::setOptionVarValue(const MString& name, int value) { return setOptionVarValue(name, MString() + value); }
bool MGlobal::removeOptionVar(const MString& name) { return TheState().options.erase(name.asChar()) > 0; }

M3dView M3dView::active3dView(MStatus* status) { return Ok(status, !TheState().batch), M3dView(); }
QWidget* M3dView::applicationShell(MStatus* status) { return Ok(status, !TheState().batch), MQtUtil::mainWindow(); }
MStatus M3dView::refresh(bool, bool) { return TheState().batch ? MS::kFailure : (++TheState().refreshes, MS::kSuccess); }
QWidget* MQtUtil::mainWindow() {
  static QMainWindow* window = nullptr;
  if (!TheState().batch && qApp && !window) {
    window = new QMainWindow;
    qAddPostRoutine([] { delete std::exchange(window, nullptr); });
  }
  return TheState().batch ? nullptr : window;
}
QWidget* MQtUtil::findControl(const MString& name, const QWidget* parent) {
  const QWidget* from = parent ? parent : mainWindow();
  return from ? from->findChild<QWidget*>(name.asChar()) : nullptr;
}
OPENMAYA_MAJOR_NAMESPACE_CLOSE

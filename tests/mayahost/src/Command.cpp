// Commands of plug-ins and what they are given; plug-ins themselves.
#include <maya/MArgDatabase.h>
#include <maya/MFnPlugin.h>
#include <maya/MPxCommand.h>
#include <maya/MSceneMessage.h>

#include <algorithm>

#include "Command.h"
#include "Fn.h"
#include "Notify.h"

namespace mayahost {
struct SyntaxState {
  struct Flag {
    std::string brief, full;
    std::vector<MSyntax::MArgType> args;
    bool multi = false, queryArgs = false, optional = false;
  };
  std::vector<Flag> flags;
  std::vector<MSyntax::MArgType> args;
  bool query = false, edit = false, selection = false;
  MSyntax::MObjectFormat objects = MSyntax::kNone;
  unsigned min = 0, max = ~0u;
};
struct ArgState {
  struct Use {
    const SyntaxState::Flag* flag;
    MArgList args;
    unsigned at = 0;
  };
  std::shared_ptr<SyntaxState> syntax;
  std::vector<Use> uses;
  MArgList args;
  std::vector<MString> objects;
  bool query = false, edit = false;
};

namespace {
struct Plugin : Thing {
  Plugin() : Thing(MFn::kPlugin) {}
  std::string name, path, vendor, version, api, ui;
};
std::map<std::string, std::shared_ptr<Plugin>>& Plugins() {
  static std::map<std::string, std::shared_ptr<Plugin>> plugins;
  return plugins;
}
std::vector<std::string> g_result;
NodeType* g_initializing = nullptr;

bool IsFlag(const MString& word) {
  const std::string text = word.asChar();
  return text.size() > 1 && text[0] == '-' && !word.isDouble();
}
bool Suits(const MString& word, MSyntax::MArgType type) {
  static const std::set<std::string> kBools = {"0", "1", "on", "off", "true", "false", "yes", "no"};
  if (type == MSyntax::kString || type == MSyntax::kSelectionItem) return true;
  if (type == MSyntax::kBoolean) return kBools.count(word.asChar()) > 0 || word.isInt();
  return type == MSyntax::kLong || type == MSyntax::kUnsigned ? word.isInt() : word.isDouble();
}
bool Refuse(const std::string& text) { return Say(Spoken::kError, text), false; }

const SyntaxState::Flag* Flagged(const SyntaxState& syntax, const std::string& word) {
  const std::string bare = word.substr(word.find_first_not_of('-') == std::string::npos ? 0 : word.find_first_not_of('-'));
  for (const auto& flag : syntax.flags)
    if (bare == flag.brief || bare == flag.full) return &flag;
  return nullptr;
}
bool Parse(ArgState& state, const MArgList& list) {
  const SyntaxState& syntax = *state.syntax;
  for (std::size_t i = 0; i < list.words.size(); ++i) {
    const std::string word = list.words[i].asChar();
    if (IsFlag(word.c_str())) {
      if (syntax.query && (word == "-q" || word == "-query"))
        state.query = true;
      else if (syntax.edit && (word == "-e" || word == "-edit"))
        state.edit = true;
      else if (const auto* flag = Flagged(syntax, word)) {
        const bool again = std::any_of(state.uses.begin(), state.uses.end(), [&](const auto& use) { return use.flag == flag; });
        if (again && !flag->multi) return Refuse("Flag '" + word + "' is given more than once.");
        state.uses.push_back({flag, {}, static_cast<unsigned>(i)});
        for (const auto type : flag->args) {
          if (state.query && (!flag->queryArgs || (flag->optional && (i + 1 >= list.words.size() || IsFlag(list.words[i + 1]))))) break;
          if (++i >= list.words.size() || !Suits(list.words[i], type)) return Refuse("Invalid arguments for flag '" + word + "'.");
          state.uses.back().args.words.push_back(list.words[i]);
        }
      } else {
        return Refuse("Invalid flag '" + word + "'.");
      }
    } else if (state.args.words.size() < syntax.args.size()) {
      if (!Suits(word.c_str(), syntax.args[state.args.words.size()])) return Refuse("Wrong type of argument '" + word + "'.");
      state.args.words.push_back(list.words[i]);
    } else if (syntax.objects != MSyntax::kNone && state.objects.size() < syntax.max) {
      state.objects.push_back(list.words[i]);
    } else {
      return Refuse("Too many arguments: '" + word + "'.");
    }
  }
  if (syntax.selection && state.objects.empty()) {
    MStringArray names;
    TheScene().selection.getSelectionStrings(names);
    state.objects.assign(names.begin(), names.end());
  }
  return state.query || (state.args.words.size() == syntax.args.size() && state.objects.size() >= syntax.min) || Refuse("Wrong number of arguments.");
}
}  // namespace

bool RunCommand(const std::string& name, const std::vector<std::string>& words, std::vector<std::string>& result, Journal* journal) {
  const Command command = TheState().commands.at(name);
  std::shared_ptr<MPxCommand> object(static_cast<MPxCommand*>(command.creator()));
  object->name = name.c_str();
  MArgList list;
  object->line = name.c_str();
  for (const std::string& word : words) list.words.emplace_back(word.c_str()), object->line += (" " + word).c_str();
  const auto before = std::exchange(g_result, {});
  MStatus status;
  {
    const Recording none(nullptr);
    status = object->doIt(list);
  }
  result = std::exchange(g_result, before);
  if (status == MS::kSuccess && object->isUndoable() && journal) journal->steps.push_back({[object] { object->undoIt(); }, [object] { object->redoIt(); }});
  return status == MS::kSuccess;
}

bool Load(const std::string& name, EntryPoint initialize, const std::string& path) {
  const auto plugin = std::make_shared<Plugin>();
  plugin->name = name, plugin->path = path;
  Plugins()[name] = plugin;
  NotifyPlugin(MSceneMessage::kBeforePluginLoad, {path});
  const bool good = initialize(MObject(plugin)) == MS::kSuccess;
  good ? NotifyPlugin(MSceneMessage::kAfterPluginLoad, {path, name}) : void(Plugins().erase(name));
  return good;
}
bool Unload(const std::string& name, EntryPoint uninitialize) {
  const auto at = Plugins().find(name);
  if (at == Plugins().end()) return false;
  NotifyPlugin(MSceneMessage::kBeforePluginUnload, {name});
  if (uninitialize(MObject(at->second)) != MS::kSuccess) return false;
  const std::string path = at->second->path;
  Plugins().erase(name);
  return NotifyPlugin(MSceneMessage::kAfterPluginUnload, {name, path}), true;
}
std::vector<std::string> Registered() {
  std::vector<std::string> all;
  for (const auto& [name, command] : TheState().commands) all.push_back("command " + name);
  for (const std::string& type : PluginTypes()) all.push_back("node " + type);
  for (const std::string& topic : Callbacks()) all.push_back(topic);
  return all;
}
void RegisterCommand(const std::string& name, MPxCommand* (*creator)()) { TheState().commands[name].creator = reinterpret_cast<MCreatorFunction>(creator); }
NodeType* Initializing() { return g_initializing; }
}  // namespace mayahost

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

MStatus MPxCommand::doIt(const MArgList&) { return MS::kNotImplemented; }
MSyntax MPxCommand::syntax() const {
  const auto at = TheState().commands.find(name.asChar());
  return at != TheState().commands.end() && at->second.syntax ? at->second.syntax() : MSyntax();
}
MPxCommand::MResultType MPxCommand::currentResultType() {
  const auto all = [](auto is) { return std::all_of(g_result.begin(), g_result.end(), [&](const std::string& one) { return (MString(one.c_str()).*is)(); }); };
  return g_result.empty() ? kNoArg : all(&MString::isInt) ? kLong : all(&MString::isDouble) ? kDouble : kString;
}
bool MPxCommand::isCurrentResultArray() { return g_result.size() > 1; }
int MPxCommand::currentIntResult(MStatus* s) { return Ok(s, !g_result.empty()), g_result.empty() ? 0 : MString(g_result[0].c_str()).asInt(); }
double MPxCommand::currentDoubleResult(MStatus* s) { return Ok(s, !g_result.empty()), g_result.empty() ? 0 : MString(g_result[0].c_str()).asDouble(); }
MString MPxCommand::currentStringResult(MStatus* s) { return Ok(s, !g_result.empty()), g_result.empty() ? "" : g_result[0].c_str(); }
void MPxCommand::clearResult() { g_result.clear(); }
void MPxCommand::setResult(const MString& value) { g_result = {value.asChar()}; }
void MPxCommand::setResult(int value) { setResult(MString() + value); }
void MPxCommand::setResult(unsigned int value) { setResult(MString() + value); }
void MPxCommand::setResult(bool value) { setResult(MString() + int(value)); }
void MPxCommand::setResult(double value) { setResult(MString() + value); }
#define RESULTS(Array)                                                                 \
  void MPxCommand::setResult(const Array& all) { clearResult(), appendToResult(all); } \
  void MPxCommand::appendToResult(const Array& all) {                                  \
    for (const auto& v : all) appendToResult(v);                                       \
  }
RESULTS(MIntArray)
RESULTS(MDoubleArray)
RESULTS(MStringArray)
void MPxCommand::appendToResult(const MString& value) { g_result.emplace_back(value.asChar()); }
void MPxCommand::appendToResult(int value) { appendToResult(MString() + value); }
void MPxCommand::appendToResult(double value) { appendToResult(MString() + value); }

unsigned int MArgList::length(MStatus* status) const { return Ok(status), static_cast<unsigned int>(words.size()); }
MStatus MArgList::get(unsigned int i, MString& value) const { return i < words.size() ? (value = words[i], MS::kSuccess) : MS::kInvalidParameter; }
MStatus MArgList::get(unsigned int i, int& value) const {
  return i < words.size() && words[i].isInt() ? (value = words[i].asInt(), MS::kSuccess) : MS::kFailure;
}
MStatus MArgList::get(unsigned int i, double& value) const {
  return i < words.size() && words[i].isDouble() ? (value = words[i].asDouble(), MS::kSuccess) : MS::kFailure;
}
MStatus MArgList::get(unsigned int i, bool& value) const {
  if (i >= words.size() || !Suits(words[i], MSyntax::kBoolean)) return MS::kFailure;
  return value = words[i] == "on" || words[i] == "true" || words[i] == "yes" || words[i].asInt() != 0, MS::kSuccess;
}
namespace {
template <class T>
T ArgOf(const MArgList& list, unsigned int i, MStatus* status) {
  T value{};
  const MStatus s = list.get(i, value);
  return status ? void(*status = s) : void(), value;
}
/// A number in the user's unit.
template <class T, class Unit>
MStatus InUnit(const MArgList& list, unsigned int i, T& value, Unit unit) {
  double n = 0;
  const MStatus s = list.get(i, n);
  return s == MS::kSuccess ? (value = T(n, unit), s) : s;
}
template <class T>
MStatus Several(const MArgList& list, unsigned int& i, T& value, unsigned int count) {
  T made;
  for (unsigned int k = 0; k < count; ++k)
    if (list.get(i + k, made[k]) != MS::kSuccess) return MS::kFailure;
  return i += count ? count - 1 : 0, value = made, MS::kSuccess;
}
/// All that follow and are of the kind.
template <class Array, class T>
MStatus Rest(const MArgList& list, unsigned int& i, Array& values) {
  values.clear();
  T one{};
  while (list.get(i, one) == MS::kSuccess && !IsFlag(list.words[i])) values.append(one), ++i;
  if (values.length()) --i;
  return St(values.length() > 0);
}
template <class T>
T RestOf(const MArgList& list, unsigned int& i, MStatus* status) {
  T value;
  const MStatus s = list.get(i, value);
  return status ? void(*status = s) : void(), value;
}
}  // namespace
MStatus MArgList::get(unsigned int i, unsigned int& value) const {
  int n = 0;
  const MStatus s = get(i, n);
  return n < 0 ? MStatus(MS::kFailure) : (value = static_cast<unsigned>(n), s);
}
MStatus MArgList::get(unsigned int i, MTime& value) const { return InUnit(*this, i, value, MTime::uiUnit()); }
MStatus MArgList::get(unsigned int i, MAngle& value) const { return InUnit(*this, i, value, MAngle::uiUnit()); }
MStatus MArgList::get(unsigned int i, MDistance& value) const { return InUnit(*this, i, value, MDistance::uiUnit()); }
MStatus MArgList::get(unsigned int& i, MVector& value, unsigned int count) const { return Several(*this, i, value, std::min(count, 3u)); }
MStatus MArgList::get(unsigned int& i, MPoint& value, unsigned int count) const { return Several(*this, i, value, std::min(count, 4u)); }
MStatus MArgList::get(unsigned int& i, MIntArray& value) const { return Rest<MIntArray, int>(*this, i, value); }
MStatus MArgList::get(unsigned int& i, MDoubleArray& value) const { return Rest<MDoubleArray, double>(*this, i, value); }
MStatus MArgList::get(unsigned int& i, MStringArray& value) const { return Rest<MStringArray, MString>(*this, i, value); }
bool MArgList::asBool(unsigned int i, MStatus* s) const { return ArgOf<bool>(*this, i, s); }
int MArgList::asInt(unsigned int i, MStatus* s) const { return ArgOf<int>(*this, i, s); }
double MArgList::asDouble(unsigned int i, MStatus* s) const { return ArgOf<double>(*this, i, s); }
MString MArgList::asString(unsigned int i, MStatus* s) const { return ArgOf<MString>(*this, i, s); }
MTime MArgList::asTime(unsigned int i, MStatus* s) const { return ArgOf<MTime>(*this, i, s); }
MAngle MArgList::asAngle(unsigned int i, MStatus* s) const { return ArgOf<MAngle>(*this, i, s); }
MDistance MArgList::asDistance(unsigned int i, MStatus* s) const { return ArgOf<MDistance>(*this, i, s); }
MVector MArgList::asVector(unsigned int& i, unsigned int count, MStatus* status) const {
  MVector value;
  const MStatus s = get(i, value, count);
  return status ? void(*status = s) : void(), value;
}
MPoint MArgList::asPoint(unsigned int& i, unsigned int count, MStatus* status) const {
  MPoint value;
  const MStatus s = get(i, value, count);
  return status ? void(*status = s) : void(), value;
}
MIntArray MArgList::asIntArray(unsigned int& i, MStatus* s) const { return RestOf<MIntArray>(*this, i, s); }
MDoubleArray MArgList::asDoubleArray(unsigned int& i, MStatus* s) const { return RestOf<MDoubleArray>(*this, i, s); }
MStringArray MArgList::asStringArray(unsigned int& i, MStatus* s) const { return RestOf<MStringArray>(*this, i, s); }
unsigned int MArgList::flagIndex(const char* brief, const char* full) const {
  const auto same = [](const MString& word, const char* flag) {
    const std::string bare = flag ? flag : "";
    return !bare.empty() && (word == bare.c_str() || word == ("-" + bare).c_str());
  };
  for (unsigned int i = 0; i < words.size(); ++i)
    if (IsFlag(words[i]) && (same(words[i], brief) || same(words[i], full))) return i;
  return kInvalidArgIndex;
}
MStatus MArgList::addArg(int value) { return addArg(MString() + value); }
MStatus MArgList::addArg(double value) { return addArg(MString() + value); }

MSyntax::MSyntax() : state(new SyntaxState) {}
MStatus MSyntax::addFlag(const char* brief, const char* full, MArgType a1, MArgType a2, MArgType a3, MArgType a4, MArgType a5, MArgType a6) {
  const std::string b = brief ? brief : "", f = full ? full : "";
  const auto bare = [](const std::string& text) { return text.substr(std::min(text.find_first_not_of('-'), text.size())); };
  SyntaxState::Flag flag;
  flag.brief = bare(b), flag.full = bare(f);
  // Long names have four letters at least, short ones three at most.
  if (flag.full.size() < 2 || flag.brief.empty()) return MS::kInvalidParameter;
  for (const MArgType type : {a1, a2, a3, a4, a5, a6})
    if (type != kNoArg && type != kInvalidArgType) flag.args.push_back(type);
  return state->flags.push_back(flag), MS::kSuccess;
}
MStatus MSyntax::makeFlagMultiUse(const char* name) {
  for (auto& flag : state->flags)
    if (&flag == Flagged(*state, name)) return flag.multi = true, MS::kSuccess;
  return MS::kInvalidParameter;
}
MStatus MSyntax::makeFlagQueryWithFullArgs(const char* name, bool optional) {
  for (auto& flag : state->flags)
    if (&flag == Flagged(*state, name)) return flag.queryArgs = true, flag.optional = optional, MS::kSuccess;
  return MS::kInvalidParameter;
}
unsigned int MSyntax::minObjects() const { return state->min; }
unsigned int MSyntax::maxObjects() const { return state->max; }
MStatus MSyntax::addArg(MArgType type) { return state->args.push_back(type), MS::kSuccess; }
void MSyntax::enableQuery(bool on) { state->query = on; }
void MSyntax::enableEdit(bool on) { state->edit = on; }
bool MSyntax::canQuery() const { return state->query; }
bool MSyntax::canEdit() const { return state->edit; }
MStatus MSyntax::setObjectType(MObjectFormat type, unsigned int min) { return setObjectType(type, min, ~0u); }
MStatus MSyntax::setObjectType(MObjectFormat type, unsigned int min, unsigned int max) {
  return state->objects = type, state->min = min, state->max = max, MS::kSuccess;
}
void MSyntax::setMinObjects(unsigned int count) { state->min = count; }
void MSyntax::setMaxObjects(unsigned int count) { state->max = count; }
void MSyntax::useSelectionAsDefault(bool use) { state->selection = use; }

MArgParser::MArgParser(const MSyntax& syntax, const MArgList& args, MStatus* status) : fState(new ArgState) {
  fState->syntax = syntax.state;
  Ok(status, Parse(*fState, args));
}
namespace {
const ArgState::Use* UseOf(const ArgState& state, const char* name, unsigned nth = 0) {
  const auto* flag = Flagged(*state.syntax, name);
  for (const auto& use : state.uses)
    if (use.flag == flag && flag && nth-- == 0) return &use;
  return nullptr;
}
template <class T>
MStatus FlagArg(const ArgState& state, const char* flag, unsigned int i, T& value) {
  const auto* use = UseOf(state, flag);
  return use ? use->args.get(i, value) : MStatus(MS::kInvalidParameter);
}
template <class T, class Ask>
T Asked(Ask ask, MStatus* status) {
  T value{};
  const MStatus s = ask(value);
  return status ? void(*status = s) : void(), value;
}
}  // namespace
bool MArgParser::isFlagSet(const char* flag, MStatus* status) const { return Ok(status, Flagged(*fState->syntax, flag)), UseOf(*fState, flag); }
bool MArgParser::isEdit(MStatus* status) const { return Ok(status), fState->edit; }
bool MArgParser::isQuery(MStatus* status) const { return Ok(status), fState->query; }
unsigned int MArgParser::numberOfFlagsUsed() const { return static_cast<unsigned int>(fState->uses.size()); }
unsigned int MArgParser::numberOfFlagUses(const char* name) const {
  const auto* flag = Flagged(*fState->syntax, name);
  return static_cast<unsigned int>(std::count_if(fState->uses.begin(), fState->uses.end(), [&](const auto& use) { return use.flag == flag; }));
}
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, bool& v) const { return FlagArg(*fState, f, i, v); }
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, int& v) const { return FlagArg(*fState, f, i, v); }
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, double& v) const { return FlagArg(*fState, f, i, v); }
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, MString& v) const { return FlagArg(*fState, f, i, v); }
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, unsigned int& v) const { return FlagArg(*fState, f, i, v); }
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, MTime& v) const { return FlagArg(*fState, f, i, v); }
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, MAngle& v) const { return FlagArg(*fState, f, i, v); }
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, MDistance& v) const { return FlagArg(*fState, f, i, v); }
MStatus MArgParser::getCommandArgument(unsigned int i, bool& v) const { return fState->args.get(i, v); }
MStatus MArgParser::getCommandArgument(unsigned int i, int& v) const { return fState->args.get(i, v); }
MStatus MArgParser::getCommandArgument(unsigned int i, double& v) const { return fState->args.get(i, v); }
MStatus MArgParser::getCommandArgument(unsigned int i, MString& v) const { return fState->args.get(i, v); }
MStatus MArgParser::getCommandArgument(unsigned int i, unsigned int& v) const { return fState->args.get(i, v); }
MStatus MArgParser::getCommandArgument(unsigned int i, MTime& v) const { return fState->args.get(i, v); }
MStatus MArgParser::getCommandArgument(unsigned int i, MAngle& v) const { return fState->args.get(i, v); }
MStatus MArgParser::getCommandArgument(unsigned int i, MDistance& v) const { return fState->args.get(i, v); }
#define ARGUMENT(Type, Name)                                                             \
  Type MArgParser::flagArgument##Name(const char* f, unsigned int i, MStatus* s) const { \
    return Asked<Type>([&](Type& v) { return getFlagArgument(f, i, v); }, s);            \
  }                                                                                      \
  Type MArgParser::commandArgument##Name(unsigned int i, MStatus* s) const {             \
    return Asked<Type>([&](Type& v) { return getCommandArgument(i, v); }, s);            \
  }
ARGUMENT(bool, Bool)
ARGUMENT(int, Int)
ARGUMENT(double, Double)
ARGUMENT(MString, String)
ARGUMENT(MTime, MTime)
ARGUMENT(MAngle, MAngle)
ARGUMENT(MDistance, MDistance)
MStatus MArgParser::getFlagArgumentList(const char* name, unsigned int nth, MArgList& args) const {
  const auto* use = UseOf(*fState, name, nth);
  return use ? (args = use->args, MS::kSuccess) : MS::kInvalidParameter;
}
MStatus MArgParser::getFlagArgumentPosition(const char* name, unsigned int nth, unsigned int& position) const {
  const auto* use = UseOf(*fState, name, nth);
  return use ? (position = use->at, MS::kSuccess) : MS::kInvalidParameter;
}
MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int i, MSelectionList& list) const {
  MString name;
  const MStatus s = getFlagArgument(flag, i, name);
  return s == MS::kSuccess ? list.add(name) : s;
}
MStatus MArgDatabase::getCommandArgument(unsigned int i, MSelectionList& list) const {
  MString name;
  const MStatus s = getCommandArgument(i, name);
  return s == MS::kSuccess ? list.add(name) : s;
}
MStatus MArgParser::getObjects(MStringArray& names) const {
  names.clear();
  for (const MString& name : fState->objects) names.append(name);
  return MS::kSuccess;
}
MStatus MArgDatabase::getObjects(MSelectionList& list) const {
  list.clear();
  bool all = true;
  for (const MString& name : fState->objects) all &= list.add(name) == MS::kSuccess;
  return St(all);
}

MFnPlugin::MFnPlugin(MObject& object, const char* vendor, const char* version, const char* api, MStatus* status) {
  fObject = object;
  const auto plugin = As<Plugin>(object);
  Ok(status, plugin != nullptr);
  if (plugin && plugin->vendor.empty()) plugin->vendor = vendor, plugin->version = version, plugin->api = api;
}
MFn::Type MFnPlugin::type() const { return MFn::kPlugin; }
namespace {
MString PluginText(const MObject& object, std::string Plugin::*which, MStatus* status) {
  const auto plugin = As<Plugin>(object);
  Ok(status, plugin != nullptr);
  return plugin ? ((*plugin).*which).c_str() : "";
}
}  // namespace
MString MFnPlugin::vendor(MStatus* s) const { return PluginText(fObject, &Plugin::vendor, s); }
MString MFnPlugin::version(MStatus* s) const { return PluginText(fObject, &Plugin::version, s); }
MString MFnPlugin::apiVersion(MStatus* s) const { return PluginText(fObject, &Plugin::api, s); }
MStatus MFnPlugin::setVersion(const MString& version) {
  return As<Plugin>(fObject) ? (As<Plugin>(fObject)->version = version.asChar(), MS::kSuccess) : MS::kFailure;
}
MString MFnPlugin::name(MStatus* s) const { return PluginText(fObject, &Plugin::name, s); }
MString MFnPlugin::loadPath(MStatus* s) const { return PluginText(fObject, &Plugin::path, s); }
MStatus MFnPlugin::setName(const MString& name, bool) { return As<Plugin>(fObject) ? (As<Plugin>(fObject)->name = name.asChar(), MS::kSuccess) : MS::kFailure; }
MStatus MFnPlugin::registerCommand(const MString& name, MCreatorFunction creator, MCreateSyntaxFunction syntax) {
  auto& commands = TheState().commands;
  if (!As<Plugin>(fObject) || !creator || commands.count(name.asChar()) || MustFail(name.asChar())) return MS::kFailure;
  return commands[name.asChar()] = {creator, syntax, As<Plugin>(fObject)->name}, MS::kSuccess;
}
MStatus MFnPlugin::deregisterCommand(const MString& name) { return St(TheState().commands.erase(name.asChar()) > 0); }
MStatus MFnPlugin::registerNode(const MString& name, const MTypeId& id, MCreatorFunction creator, MInitializeFunction initialize, int kind, const MString*) {
  if (!As<Plugin>(fObject) || !creator || FindType(name.asChar()) || FindType(id.id()) || MustFail(name.asChar())) return MS::kFailure;
  const char* base = kind == MPxNode::kLocatorNode     ? "locator"
                     : kind == MPxNode::kTransformNode ? "transform"
                     : kind == MPxNode::kObjectSet     ? "objectSet"
                                                       : "dependNode";
  const MFn::Type fn = kind == MPxNode::kLocatorNode     ? MFn::kPluginLocatorNode
                       : kind == MPxNode::kTransformNode ? MFn::kPluginTransformNode
                                                         : MFn::kPluginDependNode;
  NodeType& type = AddType(name.asChar(), fn, FindType(base), id.id());
  type.plugin = As<Plugin>(fObject)->name;
  g_initializing = &type;
  const MStatus status = initialize ? initialize() : MStatus(MS::kSuccess);
  g_initializing = nullptr;
  type.creator = creator;
  if (status != MS::kSuccess) RemoveType(id.id());
  return status;
}
MStatus MFnPlugin::deregisterNode(const MTypeId& id) {
  const NodeType* type = FindType(id.id());
  if (!type || !type->creator || MustFail("deregister " + type->name)) return MS::kFailure;
  // A type that nodes are of can't go; what undo still holds is lost with the queue.
  for (const auto& [serial, node] : TheScene().nodes)
    if (node->info == type) return MS::kFailure;
  RemoveType(id.id());
  return MS::kSuccess;
}
MStatus MFnPlugin::registerFileTranslator(const MString& name, const char*, MCreatorFunction creator, const char*, const char* options, bool) {
  auto& translators = TheState().translators;
  if (!As<Plugin>(fObject) || !creator || translators.count(name.asChar()) || MustFail(name.asChar())) return MS::kFailure;
  return translators[name.asChar()] = {creator, options ? options : ""}, MS::kSuccess;
}
MStatus MFnPlugin::deregisterFileTranslator(const MString& name) { return St(TheState().translators.erase(name.asChar()) > 0); }
MObject MFnPlugin::findPlugin(const MString& name) { return Plugins().count(name.asChar()) ? MObject(Plugins()[name.asChar()]) : MObject(); }
bool MFnPlugin::isNodeRegistered(const MString& type) { return FindType(type.asChar()); }
OPENMAYA_MAJOR_NAMESPACE_CLOSE

// Commands on nodes, attributes, keys and plug-ins.
#include <dlfcn.h>
#include <maya/MAnimControl.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnCamera.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnTransform.h>

#include <algorithm>
#include <cmath>

#include "Command.h"
#include "Fn.h"
#include "Mel.h"

namespace mayahost {
namespace {

double Value(const std::string& word) { return IsOn(word) ? 1 : MString(word.c_str()).asDouble(); }
std::vector<double> Values(const Args& args, const char* flag) {
  std::vector<double> values;
  if (args.Has(flag))
    for (const std::string& word : args.flags.at(flag)) values.push_back(Value(word));
  return values;
}
/// What is there at the path or the plug that is asked for.
NodePtr One(const std::string& name) {
  const auto found = Resolve(name);
  return found.size() == 1 ? NodeOf(found[0].node) : nullptr;
}

// Attributes.

AttrPtr NewAttr(const Args& args) {
  static const std::map<std::string, int> kNumbers = {
      {"bool", MFnNumericData::kBoolean},    {"byte", MFnNumericData::kByte},       {"short", MFnNumericData::kShort},   {"long", MFnNumericData::kInt},
      {"int", MFnNumericData::kInt},         {"float", MFnNumericData::kFloat},     {"double", MFnNumericData::kDouble}, {"float3", MFnNumericData::k3Float},
      {"double3", MFnNumericData::k3Double}, {"double2", MFnNumericData::k2Double}, {"float2", MFnNumericData::k2Float}};
  static const std::map<std::string, int> kUnits = {{"doubleAngle", 1}, {"doubleLinear", 2}, {"time", 3}};
  static const std::map<std::string, int> kData = {{"string", MFnData::kString},
                                                   {"stringArray", MFnData::kStringArray},
                                                   {"doubleArray", MFnData::kDoubleArray},
                                                   {"Int32Array", MFnData::kIntArray},
                                                   {"mesh", MFnData::kMesh},
                                                   {"vectorArray", MFnData::kVectorArray},
                                                   {"pointArray", MFnData::kPointArray},
                                                   {"matrix", MFnData::kMatrix},
                                                   {"nurbsCurve", MFnData::kNurbsCurve}};
  const std::string type = args.Has("dt") ? args["dt"] : args.Has("at") ? args["at"] : "double";
  const std::string name = args.Has("ln") ? args["ln"] : args["sn"], brief = args.Has("sn") ? args["sn"] : name;
  if (name.empty() || LegalName(name) != name) return nullptr;
  if (kUnits.count(type)) return MakeAttr(MFn::kUnitAttribute, name, brief, kUnits.at(type));
  if (kData.count(type)) return MakeAttr(MFn::kTypedAttribute, name, brief, kData.at(type));
  if (kNumbers.count(type)) return MakeAttr(NumericAttr(kNumbers.at(type)), name, brief, kNumbers.at(type));
  if (type == "matrix" || type == "fltMatrix") return MakeAttr(MFn::kMatrixAttribute, name, brief, MFnData::kMatrix);
  if (type == "message") return MakeAttr(MFn::kMessageAttribute, name, brief, 0);
  if (type == "compound") return MakeAttr(MFn::kCompoundAttribute, name, brief, 0);
  if (type != "enum") return nullptr;
  const AttrPtr attr = MakeAttr(MFn::kEnumAttribute, name, brief, 0);
  std::string word;
  short i = 0;
  for (const char c : args["en"] + ":") {
    if (c != ':') word += c;
    if (c != ':' || word.empty()) continue;
    if (const auto at = word.find('='); at != std::string::npos) i = static_cast<short>(std::atoi(word.c_str() + at + 1)), word.resize(at);
    attr->fields[i++] = std::exchange(word, "");
  }
  return attr;
}
bool AddOne(const NodePtr& node, const Args& args) {
  const AttrPtr attr = NewAttr(args);
  if (!attr) return Fail("addAttr: no legal name or type.");
  if (args.Has("dv")) attr->fallback = Value(args["dv"]) * Unit({node.get(), attr.get(), {}});
  if (args.Has("min")) attr->min = args.Number("min");
  if (args.Has("max")) attr->max = args.Number("max");
  if (args.Has("smn")) attr->softMin = args.Number("smn");
  if (args.Has("smx")) attr->softMax = args.Number("smx");
  const auto flag = [&](const char* name, unsigned bit, bool off = false) {
    if (args.Has(name)) attr->flags = IsOn(args[name]) != off ? attr->flags | bit : attr->flags & ~bit;
  };
  flag("k", kKeyable), flag("h", kHidden), flag("w", kWritable), flag("r", kReadable), flag("s", kStorable);
  if (args.Has("m")) attr->flags |= kIsArray;
  if (args.Has("uac")) attr->flags |= kUsedAsColor;
  if (args.Has("uaf")) attr->flags |= kFileName;
  if (args.Has("ct")) attr->categories.insert(args["ct"]);
  attr->nice = args["nn"];
  if (!args.Has("p")) return AddAttr(node, attr) || Fail("addAttr: the name is taken.");
  const AttrPtr above = FindAttr(*node, args["p"]);
  const bool room = above && (above->type == MFn::kCompoundAttribute || above->children.size() < std::size_t(PartsOf(above->subtype).first));
  if (!room || above->IsData() || above->type == MFn::kUnitAttribute || FindAttr(*node, attr->name))
    return Fail("addAttr: no such parent, or the name is taken.");
  attr->flags |= kDynamicAttr;
  Do([=] { AddChildAttr(*above, attr); }, [=] { above->children.pop_back(); });
  return true;
}
/// What is asked of an attribute, or changed in it.
bool EditAttribute(const Args& args, Words& result) {
  const PlugRef plug = args.rest.empty() ? PlugRef{} : FindPlug(args.rest[0]);
  if (!plug.node) return Fail("addAttr: no such attribute.");
  if (!args.Has("q")) {
    if (!plug.attr->Is(kDynamicAttr)) return Fail("addAttr: the attribute isn't dynamic.");
    Attr& attr = *plug.attr;
    if (args.Has("k")) SetPlugFlag(plug, kKeyable, IsOn(args["k"]));
    if (args.Has("dv")) attr.fallback = Value(args["dv"]) * Unit(plug);
    for (const auto& [flag, bound] :
         {std::pair("min", &Attr::min), std::pair("max", &Attr::max), std::pair("smn", &Attr::softMin), std::pair("smx", &Attr::softMax)})
      if (args.Has(flag)) attr.*bound = args.Number(flag);
    if (args.Has("nn")) attr.nice = args["nn"];
    return true;
  }
  const auto number = [](const std::optional<double>& v) { return v ? Words{Text(*v)} : Words(); };
  const std::string type = MPlug(plug).isNull() ? "" : TypeText(*plug.attr);
  result = args.Has("min")   ? number(plug.attr->min)
           : args.Has("max") ? number(plug.attr->max)
           : args.Has("smn") ? number(plug.attr->softMin)
           : args.Has("smx") ? number(plug.attr->softMax)
           : args.Has("dv")  ? Words{Text(plug.attr->fallback / Unit(plug))}
           : args.Has("ln")  ? Words{plug.attr->name}
           : args.Has("sn")  ? Words{plug.attr->brief}
           : args.Has("nn")  ? Words{plug.attr->nice}
           : args.Has("k")   ? Words{PlugFlags(plug) & kKeyable ? "1" : "0"}
           : args.Has("at")  ? Words{plug.attr->IsData()                          ? "typed"
                                     : plug.attr->type == MFn::kCompoundAttribute ? "compound"
                                                                                  : type}
           : args.Has("dt")  ? Words{type}
                             : Words();
  return true;
}
bool NewAttribute(const Words& words, Words& result) {
  const Args args = Sort(words,
                         "ln/longName:1 sn/shortName:1 nn/niceName:1 at/attributeType:1 dt/dataType:1 dv/defaultValue:1 min/minValue:1 max/maxValue:1 "
                         "smn/softMinValue:1 smx/softMaxValue:1 k/keyable:1 h/hidden:1 w/writable:1 r/readable:1 s/storable:1 en/enumName:1 m/multi "
                         "im/indexMatters:1 p/parent:1 nc/numberOfChildren:1 uac/usedAsColor uaf/usedAsFilename ct/category:1");
  if (!args.bad && (args.Has("q") || args.Has("e"))) return EditAttribute(args, result);
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items) || items.empty()) return false;
  return std::all_of(items.begin(), items.end(), [&](const auto& item) { return AddOne(NodeOf(item.node), args); });
}
bool DeleteAttribute(const Words& words, Words&) {
  const Args args = Sort(words, "at/attribute:1");
  if (args.bad || args.rest.empty()) return Fail("deleteAttr: no attribute.");
  const PlugRef plug = FindPlug(args.Has("at") ? args.rest[0] + "." + args["at"] : args.rest[0]);
  if (!plug.node) return Fail("deleteAttr: no such attribute.");
  return RemoveAttr(plug.node->Ptr(), std::static_pointer_cast<Attr>(plug.attr->shared_from_this())) || Fail("deleteAttr: the attribute isn't dynamic.");
}
bool Alias(const Words& words, Words& result) {
  const Args args = Sort(words, "rm/remove:1");
  if (args.Has("q")) {
    const NodePtr node = args.rest.empty() ? nullptr : One(args.rest[0].substr(0, args.rest[0].find('.')));
    const PlugRef plug = node ? FindPlug(args.rest[0]) : PlugRef{};
    if (!node) return Fail("aliasAttr: no such node.");
    if (plug.node) return result = {AliasOf(plug)}, true;
    for (const auto& [alias, key] : node->aliases) result.push_back(alias), result.push_back(PlugName({node.get(), key.first, key.second}, true));
    return true;
  }
  if (args.Has("rm")) {
    const PlugRef plug = FindPlug(args["rm"]);
    return (plug.node && SetAlias(plug, "")) || Fail("aliasAttr: no such attribute.");
  }
  for (std::size_t i = 0; i + 1 < args.rest.size(); i += 2) {
    const PlugRef plug = FindPlug(args.rest[i + 1]);
    if (!plug.node || !SetAlias(plug, args.rest[i])) return Fail("aliasAttr: the name is taken or not legal, or there is no such attribute.");
  }
  return !args.bad;
}
bool RemoveElement(const Words& words, Words&) {
  const Args args = Sort(words, "b/break:1");
  for (const std::string& name : args.rest) {
    const PlugRef plug = FindPlug(name);
    if (!plug.node || !MPlug(plug).isElement()) return Fail("removeMultiInstance: no element: " + name);
    const NodePtr node = plug.node->Ptr();
    const auto inside = [&](const PlugKey& key) {
      bool below = false;
      for (const Attr* a = key.first; a; a = a->parent) below |= a == plug.attr;
      return below && key.second.size() >= plug.idx.size() && std::equal(plug.idx.begin(), plug.idx.end(), key.second.begin());
    };
    std::vector<std::pair<PlugRef, PlugRef>> ties;
    for (const auto& [key, from] : node->inputs)
      if (inside(key)) ties.push_back({from, {node.get(), key.first, key.second}});
    for (const auto& [key, all] : node->outputs)
      for (const PlugRef& to : all)
        if (inside(key)) ties.push_back({{node.get(), key.first, key.second}, to});
    if (!ties.empty() && !IsOn(args["b"])) return Fail("removeMultiInstance: the element is connected: " + name);
    for (const auto& [from, to] : ties) Disconnect(from, to);
    auto after = node->values;
    for (auto at = after.begin(); at != after.end();) at = inside(at->first) ? after.erase(at) : std::next(at);
    Do([=] { node->values = after, Dirty(plug); }, [=, before = node->values] { node->values = before, Dirty(plug); });
  }
  return !args.bad;
}
bool RenameAttribute(const Words& words, Words& result) {
  const PlugRef plug = words.size() == 3 ? FindPlug(words[1]) : PlugRef{};
  if (!plug.node || !plug.attr->Is(kDynamicAttr) || FindAttr(*plug.node, words[2]) || LegalName(words[2]) != words[2])
    return Fail("renameAttr: the attribute isn't dynamic, or the name is taken or not legal.");
  const auto attr = std::static_pointer_cast<Attr>(plug.attr->shared_from_this());
  Do([=, name = words[2]] { attr->name = name; }, [=, name = attr->name] { attr->name = name; });
  return result = {words[2]}, true;
}
std::string NiceName(const Attr& attr) {
  std::string nice = attr.nice;
  for (const char c : nice.empty() ? attr.name : "") {
    const auto u = static_cast<unsigned char>(c);
    if (!nice.empty() && nice.back() != ' ' && (std::isupper(u) || (std::isdigit(u) && !std::isdigit(static_cast<unsigned char>(nice.back()))))) nice += ' ';
    nice += nice.empty() ? static_cast<char>(std::toupper(u)) : c == '_' ? ' ' : c;
  }
  return nice;
}
bool AskAttribute(const Words& words, Words& result) {
  const Args args = Sort(words,
                         "n/node:1 typ/type:1 ex/exists k/keyable w/writable m/multi ln/longName sn/shortName nn/niceName min/minimum max/maximum "
                         "mne/minExists mxe/maxExists smn/softMin smx/softMax h/hidden s/storable ch/channelBox r/readable c/connectable le/listEnum "
                         "ld/listDefault lc/listChildren lp/listParent at/attributeType");
  const NodePtr node = One(args["n"]);
  const AttrPtr attr = node && !args.rest.empty() ? FindAttr(*node, args.rest[0]) : nullptr;
  if (args.Has("ex")) return result = {attr ? "1" : "0"}, !args.bad;
  if (args.bad || !attr) return Fail("attributeQuery: no such attribute.");
  const auto number = [](const std::optional<double>& v) { return v ? Words{Text(*v)} : Words(); };
  const auto flag = [](bool on) { return Words{on ? "1" : "0"}; };
  if (args.Has("k")) result = flag(attr->Is(kKeyable));
  if (args.Has("w")) result = flag(attr->Is(kWritable));
  if (args.Has("m")) result = flag(attr->Is(kIsArray));
  if (args.Has("h")) result = flag(attr->Is(kHidden));
  if (args.Has("s")) result = flag(attr->Is(kStorable));
  if (args.Has("ch")) result = flag(attr->Is(kChannelBox));
  if (args.Has("r")) result = flag(attr->Is(kReadable));
  if (args.Has("c")) result = flag(attr->Is(kConnectable));
  if (args.Has("smn")) result = number(attr->softMin);
  if (args.Has("smx")) result = number(attr->softMax);
  if (args.Has("ln")) result = {attr->name};
  if (args.Has("sn")) result = {attr->brief};
  if (args.Has("nn")) result = {NiceName(*attr)};
  if (args.Has("min")) result = number(attr->min);
  if (args.Has("max")) result = number(attr->max);
  if (args.Has("mne")) result = flag(attr->min.has_value());
  if (args.Has("mxe")) result = flag(attr->max.has_value());
  if (args.Has("ld")) result = {Text(attr->fallback)};
  if (args.Has("lp") && attr->parent) result = {attr->parent->name};
  for (const AttrPtr& child : args.Has("lc") ? attr->children : std::vector<AttrPtr>()) result.push_back(child->name);
  std::string fields;
  for (const auto& [i, name] : attr->fields) fields += (fields.empty() ? "" : ":") + name;
  if (args.Has("le")) result = {fields};
  return true;
}
bool ListAttributes(const Words& words, Words& result) {
  const Args args = Sort(words, "k/keyable ud/userDefined l/locked u/unlocked sn/shortNames s/scalar st/string:1 w/write r/read c/connectable m/multi");
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items)) return false;
  for (const auto& item : items) {
    const NodePtr node = NodeOf(item.node);
    for (const AttrPtr& attr : AllAttrs(*node)) {
      const PlugRef plug{node.get(), attr.get(), {}};
      const bool keyed = PlugFlags(plug) & kKeyable && attr->children.empty();
      if ((args.Has("k") && !keyed) || (args.Has("ud") && !attr->Is(kDynamicAttr)) || (args.Has("l") && !IsLocked(plug)) || (args.Has("u") && IsLocked(plug)))
        continue;
      if ((args.Has("w") && !attr->Is(kWritable)) || (args.Has("st") && args["st"] != attr->name && args["st"] != attr->brief)) continue;
      result.push_back(args.Has("sn") ? attr->brief : attr->name);
    }
  }
  return true;
}
bool Relatives(const Words& words, Words& result) {
  const Args args = Sort(words, "c/children p/parent ap/allParents ad/allDescendents s/shapes f/fullPath pa/path typ/type:1 ni/noIntermediate");
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items)) return false;
  const auto add = [&](const MDagPath& path) {
    const NodePtr& node = path.nodes.back();
    if (args.Has("s") && !node->info->IsA("shape")) return;
    if (args.Has("typ") && !node->info->IsA(args["typ"])) return;
    result.push_back(args.Has("f") ? PathName(path, true) : args.Has("pa") ? PathName(path, false) : node->name);
  };
  const std::function<void(const MDagPath&, bool)> below = [&](const MDagPath& path, bool all) {
    for (const NodePtr& child : path.nodes.back()->children) {
      MDagPath next = path;
      next.nodes.push_back(child);
      if (all) below(next, true);
      add(next);
    }
  };
  for (const auto& item : items) {
    if (item.path.nodes.empty()) continue;
    MDagPath above = item.path;
    if (!args.Has("p") && !args.Has("ap"))
      below(item.path, args.Has("ad"));
    else if (above.pop(), !above.nodes.empty())
      add(above);
  }
  return true;
}
bool Connections(const Words& words, Words& result) {
  const Args args = Sort(words, "s/source:1! d/destination:1! p/plugs:1! c/connections:1! t/type:1 scn/skipConversionNodes:1! et/exactType:1!");
  std::vector<MSelectionList::Item> items;
  const auto asked = [&](const char* flag, bool fallback) { return args.Has(flag) ? IsOn(args[flag]) : fallback; };
  for (const std::string& name : args.rest) {
    const PlugRef plug = FindPlug(name);
    if (plug.node)
      items.push_back({Obj(plug.node->Ptr()), {}, MPlug(plug)});
    else if (!Find({name}, items))
      return false;
  }
  if (args.bad || (args.rest.empty() && !Find({}, items))) return false;
  const auto add = [&](const PlugRef& own, const PlugRef& other) {
    if (args.Has("t") && !other.node->info->IsA(args["t"])) return;
    if (asked("c", false)) result.push_back(MPlug(own).name().asChar());
    result.push_back(asked("p", false) ? MPlug(other).name().asChar() : NodeName(other.node->Ptr()));
  };
  for (const auto& item : items) {
    const NodePtr node = NodeOf(item.node);
    const auto here = [&](const PlugKey& key) {
      if (item.plug.isNull()) return true;
      for (const Attr* a = key.first; a; a = a->parent)
        if (a == item.plug.Ref().attr) return std::equal(item.plug.fIndices.begin(), item.plug.fIndices.end(), key.second.begin());
      return false;
    };
    for (const auto& [key, from] : node->inputs)
      if (asked("s", true) && here(key)) add({node.get(), key.first, key.second}, from);
    for (const auto& [key, all] : node->outputs)
      for (const PlugRef& to : all)
        if (asked("d", true) && here(key)) add({node.get(), key.first, key.second}, to);
  }
  return true;
}
bool Connected(const Words& words, Words& result) {
  const Args args = Sort(words, "iuc/ignoreUnitConversion isd/isDestination iss/isSource sfd/sourceFromDestination dfs/destinationFromSource");
  const PlugRef plug = args.rest.empty() ? PlugRef{} : FindPlug(args.rest[0]);
  const PlugRef* in = plug.node ? InputOf(plug) : nullptr;
  if (args.bad || !plug.node) return Fail(words[0] + ": no such attribute.");
  if (words[0] == "isConnected") {
    const PlugRef to = args.rest.size() > 1 ? FindPlug(args.rest[1]) : PlugRef{};
    const PlugRef* from = to.node ? InputOf(to) : nullptr;
    return result = {from && *from == plug ? "1" : "0"}, true;
  }
  if (args.Has("isd")) result = {in ? "1" : "0"};
  if (args.Has("iss")) result = {OutputsOf(plug).empty() ? "0" : "1"};
  if (args.Has("sfd")) result = {in ? MPlug(*in).name().asChar() : ""};
  for (const PlugRef& to : args.Has("dfs") ? OutputsOf(plug) : std::vector<PlugRef>()) result.push_back(MPlug(to).name().asChar());
  return true;
}

// Keys.

void PutCurve(const NodePtr& node, const Curve& after) {
  const PlugRef out = NumberOf(node, "output");
  Do([=] { *node->curve = after, Dirty(out); }, [=, before = *node->curve] { *node->curve = before, Dirty(out); });
}
/// Plugs that are meant: named ones, or those of nodes by their attributes, or all that are keyable.
bool Plugs(const Args& args, std::vector<PlugRef>& plugs) {
  Words names;
  for (const std::string& word : args.rest) {
    const PlugRef plug = FindPlug(word);
    if (!plug.node)
      names.push_back(word);
    else if (plug.attr->children.empty())
      plugs.push_back(plug);
    for (std::size_t i = 0; plug.node && i < plug.attr->children.size(); ++i) plugs.push_back(ChildOf(plug, i));
  }
  std::vector<MSelectionList::Item> items;
  if ((!names.empty() || args.rest.empty()) && !Find(names, items)) return false;
  for (const auto& item : items) {
    const NodePtr node = NodeOf(item.node);
    for (const AttrPtr& attr : AllAttrs(*node)) {
      const PlugRef plug{node.get(), attr.get(), {}};
      bool meant = !args.Has("at") && PlugFlags(plug) & kKeyable && !attr->Is(kIsArray);
      for (const std::string& name : args.Has("at") ? args.flags.at("at") : Words())
        meant |= attr->name == name || attr->brief == name || (attr->parent && (attr->parent->name == name || attr->parent->brief == name));
      if (meant && attr->children.empty() && !attr->IsData()) plugs.push_back(plug);
    }
  }
  return true;
}
NodePtr CurveOn(const PlugRef& plug) {
  if (plug.node->curve) return plug.node->Ptr();
  const PlugRef* in = InputOf(plug);
  return in && in->node->curve ? in->node->Ptr() : nullptr;
}
short Tangent(const std::string& name) {
  static const std::map<std::string, short> kTypes = {{"fixed", 1}, {"linear", 2}, {"flat", 3},    {"smooth", 4},  {"spline", 4},    {"step", 5},
                                                      {"slow", 6},  {"fast", 7},   {"clamped", 8}, {"plateau", 9}, {"stepnext", 10}, {"auto", 11}};
  return kTypes.count(name) ? kTypes.at(name) : short(MFnAnimCurve::kTangentGlobal);
}
std::string TangentName(short type) {
  static const char* const kNames[] = {"global", "fixed", "linear", "flat", "spline", "step", "slow", "fast", "clamped", "plateau", "stepnext", "auto"};
  return kNames[type];
}
/// From and to (ticks) of "3" or "1:24"; all time without it.
std::vector<std::pair<long long, long long>> Spans(const Args& args) {
  std::vector<std::pair<long long, long long>> spans;
  const auto ticks = [](const std::string& text, long long none) {
    return text.empty() ? none : TicksOf(MTime(MString(text.c_str()).asDouble(), MTime::uiUnit()));
  };
  for (const std::string& text : args.Has("t") ? args.flags.at("t") : Words()) {
    const auto colon = text.find(':');
    const long long from = ticks(text.substr(0, colon), -(1LL << 60));
    spans.emplace_back(from, colon == std::string::npos ? from : ticks(text.substr(colon + 1), 1LL << 60));
  }
  if (spans.empty()) spans.emplace_back(-(1LL << 60), 1LL << 60);
  return spans;
}
bool Within(const std::vector<std::pair<long long, long long>>& spans, long long ticks) {
  return std::any_of(spans.begin(), spans.end(), [&](const auto& s) { return ticks >= s.first && ticks <= s.second; });
}
/// Gives a curve what a function set did to it, as one change that can be undone.
template <class F>
void ChangeKeys(const NodePtr& curve, F change) {
  const Curve before = *curve->curve;
  MFnAnimCurve fn(Obj(curve));
  change(fn);
  const Curve after = *curve->curve;
  *curve->curve = before;
  PutCurve(curve, after);
}
bool SetKey(const Words& words, Words& result) {
  const Args args = Sort(words, "t/time:1 v/value:1 at/attribute:1 itt/inTangentType:1 ott/outTangentType:1 bd/breakdown:1 i/insert s/shape:1 hi/hierarchy:1");
  std::vector<PlugRef> plugs;
  if (args.bad || !Plugs(args, plugs)) return false;
  int count = 0;
  for (const PlugRef& plug : plugs) {
    NodePtr curve = CurveOn(plug);
    if (IsLocked(plug) || (!curve && InputOf(plug))) continue;
    const double value = args.Has("v") ? Value(args["v"]) * Unit(plug) : Get(plug).number;
    MPlug handle(plug);
    if (!curve) curve = NodeOf(MFnAnimCurve().create(handle));
    const auto type = [&](const char* flag) { return static_cast<MFnAnimCurve::TangentType>(Tangent(args[flag])); };
    ChangeKeys(curve, [&](MFnAnimCurve& fn) {
      for (const auto& [from, to] : args.Has("t") ? Spans(args) : decltype(Spans(args)){{TheScene().now, 0}}) {
        unsigned int at = 0;
        const bool had = fn.find(TimeOf(from), at);
        if (had && !args.Has("itt") && !args.Has("ott"))
          fn.setValue(at, value);
        else
          fn.addKey(TimeOf(from), value, type("itt"), type("ott"));
        ++count;
      }
    });
  }
  return result = {std::to_string(count)}, count > 0 || Fail("setKeyframe: nothing to key.");
}
bool Keyframe(const Words& words, Words& result) {
  const Args args =
      Sort(words, "t/time:1! at/attribute:1! tc/timeChange:1 vc/valueChange:1 kc/keyframeCount n/name sl/selected r/relative a/absolute iv/indexValue ev/eval");
  std::vector<PlugRef> plugs;
  if (args.bad || !Plugs(args, plugs)) return false;
  const auto spans = Spans(args);
  int count = 0;
  std::vector<NodePtr> curves;
  for (const PlugRef& plug : plugs) {
    const NodePtr curve = CurveOn(plug);
    if (!curve || std::find(curves.begin(), curves.end(), curve) != curves.end()) continue;
    curves.push_back(curve);
    const double unit = Unit(plug.node->curve ? NumberOf(curve, "output") : plug);
    if (args.Has("q") && args.Has("ev")) {
      const long long at = args.Has("t") ? spans[0].first : TheScene().now;
      result.push_back(Text(Evaluate(*curve->curve, Seconds(at)) / unit));
      continue;
    }
    Curve after = *curve->curve;
    for (Key& key : after.keys) {
      if (!Within(spans, key.ticks)) continue;
      ++count;
      if (args.Has("q") && args.Has("tc")) result.push_back(Text(TimeOf(key.ticks).value()));
      if (args.Has("q") && args.Has("vc")) result.push_back(Text(key.value / unit));
      if (args.Has("q")) continue;
      if (args.Has("vc")) key.value = Value(args["vc"]) * unit + (args.Has("r") ? key.value : 0);
      if (args.Has("tc")) key.ticks = TicksOf(MTime(Value(args["tc"]), MTime::uiUnit())) + (args.Has("r") ? key.ticks : 0);
    }
    if (args.Has("q") && args.Has("n")) result.push_back(curve->name);
    if (args.Has("q")) continue;
    std::sort(after.keys.begin(), after.keys.end(), [](const Key& a, const Key& b) { return a.ticks < b.ticks; });
    SetTangents(after, 0, after.keys.size());
    PutCurve(curve, after);
  }
  if (args.Has("kc") || !args.Has("q")) result = {std::to_string(count)};
  return true;
}
bool DrivenKey(const Words& words, Words& result) {
  const Args args = Sort(words, "cd/currentDriver:1 dv/driverValue:1 v/value:1 at/attribute:1 itt/inTangentType:1 ott/outTangentType:1");
  const PlugRef driver = args.Has("cd") ? FindPlug(args["cd"]) : PlugRef{};
  std::vector<PlugRef> plugs;
  if (args.bad || !Plugs(args, plugs)) return false;
  if (!driver.node) return Fail("setDrivenKeyframe: no driver.");
  int count = 0;
  for (const PlugRef& plug : plugs) {
    NodePtr curve = CurveOn(plug);
    MPlug handle(plug);
    if (IsLocked(plug) || (!curve && InputOf(plug))) continue;
    if (!curve) {
      curve = NodeOf(MFnAnimCurve().create(handle, MFnAnimCurve().unitlessAnimCurveTypeForPlug(handle)));
      if (!Connect(driver, NumberOf(curve, "input"))) return Fail("setDrivenKeyframe: the driver can't be connected.");
    }
    const PlugRef* in = InputOf(NumberOf(curve, "input"));
    if (!in || !(*in == driver)) continue;
    const double at = args.Has("dv") ? Value(args["dv"]) * Unit(driver) : Get(driver).number;
    const double value = args.Has("v") ? Value(args["v"]) * Unit(plug) : Get(plug).number;
    const auto type = [&](const char* flag) { return static_cast<MFnAnimCurve::TangentType>(Tangent(args[flag])); };
    ChangeKeys(curve, [&](MFnAnimCurve& fn) { fn.addKey(at, value, type("itt"), type("ott")); });
    ++count;
  }
  return result = {std::to_string(count)}, count > 0 || Fail("setDrivenKeyframe: nothing to key.");
}
bool Bake(const Words& words, Words& result) {
  const Args args =
      Sort(words,
           "t/time:1 at/attribute:1 sb/sampleBy:1 sm/simulation:1 pok/preserveOutsideKeys:1 sac/sparseAnimCurveBake:1 dic/disableImplicitControl:1 "
           "mr/minimizeRotation:1");
  std::vector<PlugRef> plugs;
  if (args.bad || !Plugs(args, plugs)) return false;
  const auto span = Spans(args)[0];
  const double step = args.Number("sb", 1);
  if (!args.Has("t") || step <= 0) return Fail("bakeResults: no range of time.");
  std::vector<MTime> times;
  for (MTime t = TimeOf(span.first); TicksOf(t) <= span.second; t += MTime(step, MTime::uiUnit())) times.push_back(t);
  int count = 0;
  for (const PlugRef& plug : plugs) {
    if (IsLocked(plug)) continue;
    std::vector<double> values;
    for (const MTime& t : times) {
      const MDGContext before = MDGContext(t).makeCurrent();
      values.push_back(Get(plug).number);
      before.makeCurrent();
    }
    NodePtr curve = CurveOn(plug);
    MPlug handle(plug);
    if (const PlugRef* in = InputOf(plug); in && (!curve || InputOf(NumberOf(curve, "input")))) Disconnect(PlugRef(*in), plug), curve = nullptr;
    if (!curve) curve = NodeOf(MFnAnimCurve().create(handle));
    const bool keep = args.Has("pok") && IsOn(args["pok"]);
    Curve after = *curve->curve;
    after.keys.erase(
        std::remove_if(after.keys.begin(), after.keys.end(), [&](const Key& k) { return !keep || (k.ticks >= span.first && k.ticks <= span.second); }),
        after.keys.end());
    PutCurve(curve, after);
    ChangeKeys(curve, [&](MFnAnimCurve& fn) {
      for (std::size_t i = 0; i < times.size(); ++i) fn.addKey(times[i], values[i]);
    });
    ++count;
  }
  return result = {std::to_string(count)}, true;
}
bool Infinity(const Words& words, Words& result) {
  const Args args = Sort(words, "pri/preInfinite:1 poi/postInfinite:1 at/attribute:1!");
  // As MFnAnimCurve numbers them.
  static const std::map<std::string, int> kTypes = {{"constant", 0}, {"linear", 1}, {"cycle", 3}, {"cycleRelative", 4}, {"oscillate", 5}};
  std::vector<PlugRef> plugs;
  if (args.bad || !Plugs(args, plugs)) return false;
  for (const char* flag : {"pri", "poi"})
    if (!args.Has("q") && args.Has(flag) && !kTypes.count(args[flag])) return Fail("setInfinity: no such kind: " + args[flag]);
  for (const PlugRef& plug : plugs) {
    const NodePtr curve = CurveOn(plug);
    if (!curve) continue;
    Curve after = *curve->curve;
    for (const auto& [name, type] : kTypes)
      if (args.Has("q") && type == (args.Has("pri") ? after.pre : after.post)) result.push_back(name);
    if (args.Has("q")) continue;
    if (args.Has("pri")) after.pre = kTypes.at(args["pri"]);
    if (args.Has("poi")) after.post = kTypes.at(args["poi"]);
    PutCurve(curve, after);
  }
  return true;
}
bool FindKey(const Words& words, Words& result) {
  const Args args = Sort(words, "t/time:1 w/which:1 at/attribute:1 c/curve");
  std::vector<PlugRef> plugs;
  if (args.bad || !Plugs(args, plugs)) return false;
  std::set<long long> times;
  for (const PlugRef& plug : plugs)
    if (const NodePtr curve = CurveOn(plug))
      for (const Key& key : curve->curve->keys) times.insert(key.ticks);
  const long long now = args.Has("t") ? Spans(args)[0].first : TheScene().now;
  const std::string which = args.Has("w") ? args["w"] : "next";
  if (which != "first" && which != "last" && which != "next" && which != "previous") return Fail("findKeyframe: which?");
  if (times.empty()) return result = {Text(TimeOf(now).value())}, true;
  // Beyond the last key the search goes on at the other end.
  const auto after = times.upper_bound(now), from = times.lower_bound(now);
  const long long found = which == "first"  ? *times.begin()
                          : which == "last" ? *times.rbegin()
                          : which == "next" ? (after == times.end() ? *times.begin() : *after)
                                            : (from == times.begin() ? *times.rbegin() : *std::prev(from));
  return result = {Text(TimeOf(found).value())}, true;
}
bool CutKeys(const Words& words, Words& result) {
  const Args args = Sort(words, "t/time:1 at/attribute:1 cl/clear s/selectKey");
  std::vector<PlugRef> plugs;
  if (args.bad || !Plugs(args, plugs)) return false;
  const auto spans = Spans(args);
  int count = 0;
  for (const PlugRef& plug : plugs) {
    const NodePtr curve = CurveOn(plug);
    if (!curve) continue;
    Curve after = *curve->curve;
    const auto end = std::remove_if(after.keys.begin(), after.keys.end(), [&](const Key& k) { return Within(spans, k.ticks); });
    count += static_cast<int>(after.keys.end() - end);
    after.keys.erase(end, after.keys.end());
    SetTangents(after, 0, after.keys.size());
    PutCurve(curve, after);
    if (after.keys.empty() && !plug.node->curve) DeleteNode(curve);
  }
  return result = {std::to_string(count)}, true;
}
bool KeyTangents(const Words& words, Words& result) {
  const Args args = Sort(words, "t/time:1! at/attribute:1! itt/inTangentType:1 ott/outTangentType:1 wt/weightedTangents:1 g/global l/lock:1 a/absolute");
  std::vector<PlugRef> plugs;
  if (args.bad) return false;
  if (args.Has("g")) {
    if (args.Has("itt")) MAnimControl::setGlobalInTangentType(static_cast<MFnAnimCurve::TangentType>(Tangent(args["itt"])));
    if (args.Has("ott")) MAnimControl::setGlobalOutTangentType(static_cast<MFnAnimCurve::TangentType>(Tangent(args["ott"])));
    return true;
  }
  if (!Plugs(args, plugs)) return false;
  const auto spans = Spans(args);
  for (const PlugRef& plug : plugs) {
    const NodePtr curve = CurveOn(plug);
    if (!curve) continue;
    Curve after = *curve->curve;
    if (args.Has("wt") && !args.Has("q")) after.weighted = IsOn(args["wt"]);
    for (Key& key : after.keys) {
      if (!Within(spans, key.ticks)) continue;
      if (args.Has("q") && args.Has("itt")) result.push_back(TangentName(key.type[0]));
      if (args.Has("q") && args.Has("ott")) result.push_back(TangentName(key.type[1]));
      if (args.Has("q")) continue;
      if (args.Has("itt")) key.type[0] = Tangent(args["itt"]);
      if (args.Has("ott")) key.type[1] = Tangent(args["ott"]);
      if (args.Has("l")) key.tied = IsOn(args["l"]);
    }
    if (args.Has("q") && args.Has("wt")) result = {after.weighted ? "1" : "0"};
    if (args.Has("q")) continue;
    SetTangents(after, 0, after.keys.size());
    PutCurve(curve, after);
  }
  return true;
}

// Places.

void PutTriple(const NodePtr& node, const char* name, const MVector& v) {
  const PlugRef plug = NumberOf(node, name);
  for (unsigned i = 0; i < 3; ++i)
    if (Get(ChildOf(plug, i)).number != v[i]) Put(ChildOf(plug, i), {v[i], nullptr});
}
void Tell(const MVector& v, double unit, Words& result) {
  for (unsigned i = 0; i < 3; ++i) result.push_back(Text(v[i] / unit));
}
bool AskPlace(const MDagPath& path, const Args& args, Words& result) {
  const bool world = args.Has("ws");
  const double cm = MDistance(1, MDistance::uiUnit()).asCentimeters(), rad = MAngle(1, MAngle::uiUnit()).asRadians();
  const MFnTransform fn(path);
  MEulerRotation turn;
  fn.getRotation(turn);
  const MMatrix matrix = world ? path.inclusiveMatrix() : LocalMatrix(*path.nodes.back());
  double scale[3];
  fn.getScale(scale);
  if (world) MTransformationMatrix(matrix).getScale(scale, MSpace::kTransform);
  if (args.Has("m"))
    for (unsigned i = 0; i < 16; ++i) result.push_back(Text(matrix(i / 4, i % 4)));
  if (args.Has("t")) Tell(fn.getTranslation(world ? MSpace::kWorld : MSpace::kTransform), cm, result);
  if (args.Has("ro")) Tell((world ? MEulerRotation::decompose(MTransformationMatrix(matrix).asRotateMatrix(), turn.order) : turn).asVector(), rad, result);
  if (args.Has("s")) Tell(MVector(scale), 1, result);
  if (args.Has("rp") || args.Has("piv")) Tell(MVector(fn.rotatePivot(world ? MSpace::kWorld : MSpace::kTransform)), cm, result);
  if (args.Has("sp") || args.Has("piv")) Tell(MVector(fn.scalePivot(world ? MSpace::kWorld : MSpace::kTransform)), cm, result);
  if (args.Has("bb")) {
    MBoundingBox box = fn.boundingBox();
    box.transformUsing(path.exclusiveMatrix());
    Tell(MVector(box.min()), cm, result), Tell(MVector(box.max()), cm, result);
  }
  static const char* const kOrders[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};
  if (args.Has("roo")) result = {kOrders[turn.order]};
  return true;
}
bool Place(const Words& words, Words& result) {
  const Args args =
      Sort(words,
           "ws/worldSpace os/objectSpace r/relative a/absolute t/translation:3 ro/rotation:3 s/scale:3 m/matrix:16 rp/rotatePivot:3 sp/scalePivot:3 "
           "piv/pivots:3 bb/boundingBox roo/rotateOrder:1 cp/centerPivots p/preserve:1 eu/euler");
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items) || items.empty()) return Fail("xform: no nodes.");
  const double cm = MDistance(1, MDistance::uiUnit()).asCentimeters(), rad = MAngle(1, MAngle::uiUnit()).asRadians();
  for (const auto& item : items) {
    if (item.path.nodes.empty() || !item.path.nodes.back()->info->IsA("transform")) return Fail("xform: no transform: " + NodeName(NodeOf(item.node)));
    if (args.Has("q")) return AskPlace(item.path, args, result);
    const NodePtr node = item.path.nodes.back();
    MFnTransform fn(item.path);
    const MSpace::Space space = args.Has("ws") ? MSpace::kWorld : MSpace::kTransform;
    MEulerRotation turn;
    fn.getRotation(turn);
    const auto t = Values(args, "t"), r = Values(args, "ro"), s = Values(args, "s"), m = Values(args, "m"), rp = Values(args, "rp"), sp = Values(args, "sp");
    if (t.size() == 3) fn.setTranslation(MVector(t.data()) * cm + (args.Has("r") ? fn.getTranslation(space) : MVector()), space);
    if (r.size() == 3) {
      const MEulerRotation wanted(MVector(r.data()) * rad, turn.order);
      if (args.Has("r"))
        PutTriple(node, "rotate", turn.asVector() + wanted.asVector());
      else if (space == MSpace::kWorld)
        fn.setRotation(wanted.asQuaternion(), space);
      else
        PutTriple(node, "rotate", wanted.asVector());
    }
    double now[3];
    fn.getScale(now);
    if (s.size() == 3) PutTriple(node, "scale", args.Has("r") ? MVector(now[0] * s[0], now[1] * s[1], now[2] * s[2]) : MVector(s.data()));
    if (rp.size() == 3) fn.setRotatePivot(MPoint(MVector(rp.data()) * cm), space, false);
    if (sp.size() == 3) fn.setScalePivot(MPoint(MVector(sp.data()) * cm), space, false);
    if (m.size() == 16) {
      MMatrix local;
      std::copy(m.begin(), m.end(), &local.matrix[0][0]);
      MTransformationMatrix to;
      to.rotateTo(MEulerRotation(0, 0, 0, turn.order));
      to = args.Has("ws") ? local * item.path.exclusiveMatrixInverse() : local;
      fn.set(to);
    }
  }
  return true;
}
/// move, rotate and scale are parts of xform.
bool Transform(const Words& words, Words& result) {
  const Args args = Sort(words, "r/relative a/absolute ws/worldSpace os/objectSpace ls/localSpace x/moveX y/moveY z/moveZ");
  if (args.bad || args.rest.size() < 3) return Fail(words[0] + ": three numbers are needed.");
  const char* flag = words[0] == "move" ? "-t" : words[0] == "rotate" ? "-ro" : "-s";
  Words line{"xform", flag, args.rest[0], args.rest[1], args.rest[2]};
  if (args.Has("r")) line.emplace_back("-r");
  if (words[0] == "move" && !args.Has("r") && !args.Has("os") && !args.Has("ls")) line.emplace_back("-ws");
  line.insert(line.end(), args.rest.begin() + 3, args.rest.end());
  return Place(line, result);
}

// New nodes.

NodePtr Fresh(const char* type, const std::string& name, const char* fallback) {
  const NodePtr node = CreateDag(FindType(type), name.empty() ? fallback : name, MObject());
  return node;
}
void SelectOnly(const NodePtr& node) {
  MSelectionList list;
  list.add(Obj(node));
  Selected(list);
}
bool Group(const Words& words, Words& result) {
  const Args args = Sort(words, "n/name:1 em/empty w/world p/parent:1 r/relative a/absolute");
  std::vector<MSelectionList::Item> items;
  if (args.bad || (!args.Has("em") && !Find(args.rest, items))) return false;
  const NodePtr above = args.Has("p") ? One(args["p"]) : nullptr;
  Node* const common = items.empty() || args.Has("w") || items[0].path.nodes.size() < 2 ? nullptr : items[0].path.nodes[items[0].path.nodes.size() - 2].get();
  const NodePtr group = MakeNode(FindType("transform"), args.Has("n") ? LegalName(args["n"]) : "group1");
  AddNode(group, above ? above.get() : common);
  for (const auto& item : items)
    if (!item.path.nodes.empty())
      Reparent(item.path.nodes.back(), item.path.nodes.size() > 1 ? item.path.nodes[item.path.nodes.size() - 2].get() : TheScene().world.get(), group.get());
  return SelectOnly(group), result = {NodeName(group)}, true;
}
bool Locator(const Words& words, Words& result) {
  const Args args = Sort(words, "n/name:1 p/position:3 a/absolute r/relative");
  if (args.bad) return false;
  const NodePtr node = Fresh("locator", args["n"], "locator1");
  if (const auto p = Values(args, "p"); p.size() == 3) PutTriple(node->children[0], "localPosition", MVector(p.data()));
  return SelectOnly(node), result = {NodeName(node)}, true;
}
bool NewCamera(const Words& words, Words& result) {
  const Args args = Sort(words,
                         "n/name:1 p/position:3 rot/rotation:3 fl/focalLength:1 ncp/nearClipPlane:1 fcp/farClipPlane:1 hfa/horizontalFilmAperture:1 "
                         "vfa/verticalFilmAperture:1 hfv/horizontalFieldOfView:1 o/orthographic:1 fd/focusDistance:1");
  static const std::map<std::string, const char*> kLens = {{"fl", "focalLength"},           {"ncp", "nearClipPlane"},
                                                           {"fcp", "farClipPlane"},         {"hfa", "horizontalFilmAperture"},
                                                           {"vfa", "verticalFilmAperture"}, {"fd", "focusDistance"}};
  if (args.bad) return false;
  NodePtr shape;
  if (args.Has("q") || args.Has("e")) {
    const NodePtr asked = args.rest.empty() ? nullptr : One(args.rest[0]);
    shape = asked && asked->info->IsA("transform") && !asked->children.empty() ? asked->children[0] : asked;
    if (!shape || !shape->info->IsA("camera")) return Fail("camera: no such camera.");
  } else {
    const NodePtr node = Fresh("camera", args["n"], "camera1");
    shape = node->children[0], result = {NodeName(node), NodeName(shape)};
    if (const auto p = Values(args, "p"); p.size() == 3) PutTriple(node, "translate", MVector(p.data()) * MDistance(1, MDistance::uiUnit()).asCentimeters());
    if (const auto r = Values(args, "rot"); r.size() == 3) PutTriple(node, "rotate", MVector(r.data()) * MAngle(1, MAngle::uiUnit()).asRadians());
    SelectOnly(node);
  }
  for (const auto& [flag, name] : kLens) {
    if (!args.Has(flag.c_str())) continue;
    if (args.Has("q")) return result = {Text(GetNumber(*shape, name) / Unit(NumberOf(shape, name)))}, true;
    PutNumber(*shape, name, args.Number(flag.c_str()) * Unit(NumberOf(shape, name)));
  }
  MFnCamera fn(Obj(shape));
  if (args.Has("q") && args.Has("hfv")) result = {Text(MAngle(fn.horizontalFieldOfView()).as(MAngle::uiUnit()))};
  if (!args.Has("q") && args.Has("hfv")) fn.setHorizontalFieldOfView(MAngle(args.Number("hfv"), MAngle::uiUnit()).asRadians());
  return true;
}
bool NewJoint(const Words& words, Words& result) {
  const Args args = Sort(words, "n/name:1 p/position:3 a/absolute r/relative o/orientation:3 rad/radius:1");
  if (args.bad) return false;
  const auto selected = TheScene().selection.items;
  MObject above = selected.size() == 1 && selected[0].path.hasFn(MFn::kTransform) ? selected[0].node : MObject();
  const NodePtr node = CreateDag(FindType("joint"), args.Has("n") ? args["n"] : "joint1", above);
  MDagPath path;
  MDagPath::getAPathTo(Obj(node), path);
  if (const auto p = Values(args, "p"); p.size() == 3)
    MFnTransform(path).setTranslation(MVector(p.data()), args.Has("r") ? MSpace::kTransform : MSpace::kWorld);
  if (const auto o = Values(args, "o"); o.size() == 3) PutTriple(node, "jointOrient", MVector(o.data()) * MAngle(1, MAngle::uiUnit()).asRadians());
  return SelectOnly(node), result = {NodeName(node)}, true;
}
bool NewMesh(const MPointArray& points, const MIntArray& counts, const MIntArray& connects, const std::string& name, const char* fallback, Words& result) {
  MFnMesh mesh;
  const NodePtr node = Fresh("mesh", name, fallback);
  MObject scratch = Obj(std::make_shared<Data>(MFn::kMeshData));
  mesh.create(static_cast<int>(points.length()), static_cast<int>(counts.length()), points, counts, connects, scratch);
  node->children[0]->shape = As<Data>(scratch)->shape;
  for (const auto& [serial, set] : TheScene().nodes)
    if (const NodePtr group = set; set->name == "initialShadingGroup") {
      MDagPath path;
      MDagPath::getAPathTo(Obj(node->children[0]), path);
      const MSelectionList::Item member{Obj(node->children[0]), path, {}};
      Do([=] { group->members.push_back(member); }, [=] { group->members.pop_back(); });
    }
  return SelectOnly(node), result = {NodeName(node)}, true;
}
bool Cube(const Words& words, Words& result) {
  const Args args = Sort(
      words,
      "n/name:1 w/width:1 h/height:1 d/depth:1 sx/subdivisionsX:1 sy/subdivisionsY:1 sz/subdivisionsZ:1 ch/constructionHistory:1 cuv/createUVs:1 ax/axis:3");
  if (args.bad) return false;
  for (const char* parts : {"sx", "sy", "sz"})
    if (args.Number(parts, 1) != 1) return Fail("polyCube: subdivisions aren't known here.");
  const double x = args.Number("w", 1) / 2, y = args.Number("h", 1) / 2, z = args.Number("d", 1) / 2;
  return NewMesh({{-x, -y, z}, {x, -y, z}, {-x, y, z}, {x, y, z}, {-x, y, -z}, {x, y, -z}, {-x, -y, -z}, {x, -y, -z}}, MIntArray(6, 4),
                 {0, 1, 3, 2, 2, 3, 5, 4, 4, 5, 7, 6, 6, 7, 1, 0, 1, 7, 5, 3, 6, 0, 2, 4}, args["n"], "pCube1", result);
}
bool Plane(const Words& words, Words& result) {
  const Args args = Sort(words, "n/name:1 w/width:1 h/height:1 sx/subdivisionsX:1 sy/subdivisionsY:1 ch/constructionHistory:1 cuv/createUVs:1 ax/axis:3");
  if (args.bad) return false;
  const int nx = static_cast<int>(args.Number("sx", 10)), ny = static_cast<int>(args.Number("sy", 10));
  const double w = args.Number("w", 1), h = args.Number("h", 1);
  if (nx < 1 || ny < 1) return Fail("polyPlane: no such subdivisions.");
  MPointArray points;
  MIntArray counts, connects;
  for (int j = 0; j <= ny; ++j)
    for (int i = 0; i <= nx; ++i) points.append(MPoint(w * (double(i) / nx - 0.5), 0, h * (0.5 - double(j) / ny)));
  for (int j = 0; j < ny; ++j)
    for (int i = 0; i < nx; ++i) {
      const int a = j * (nx + 1) + i;
      counts.append(4);
      for (const int v : {a, a + 1, a + nx + 2, a + nx + 1}) connects.append(v);
    }
  return NewMesh(points, counts, connects, args["n"], "pPlane1", result);
}
bool NewCurve(const Words& words, Words& result) {
  const Args args = Sort(words, "n/name:1 d/degree:1 p/point:3 k/knot:1 per/periodic:1");
  const auto p = Values(args, "p"), k = Values(args, "k");
  const unsigned degree = static_cast<unsigned>(args.Number("d", 3)), count = static_cast<unsigned>(p.size() / 3);
  if (args.bad || degree < 1 || count <= degree) return Fail("curve: more points are needed.");
  MPointArray cvs;
  MDoubleArray knots(k.data(), static_cast<unsigned>(k.size()));
  for (unsigned i = 0; i < count; ++i) cvs.append(MPoint(p[3 * i], p[3 * i + 1], p[3 * i + 2]));
  // Without knots: whole numbers between several alike at both ends.
  for (unsigned i = 0; k.empty() && i < count + degree - 1; ++i) knots.append(std::clamp(int(i) - int(degree) + 1, 0, int(count - degree)));
  MStatus status;
  MFnNurbsCurve fn;
  const MObject made = fn.create(cvs, knots, degree, MFnNurbsCurve::kOpen, false, false, MObject::kNullObj, &status);
  if (status != MStatus::kSuccess) return Fail("curve: the knots don't suit the points.");
  if (args.Has("n")) Rename(NodeOf(made), args["n"]);
  return result = {NodeName(NodeOf(made))}, true;
}
bool Kind(const Words& words, Words& result) {
  const Args args = Sort(words, "i/inherited api/apiType isa/isAType:1! typ/isType:1! tgt/tagFromType");
  const NodePtr node = args.rest.empty() ? nullptr : One(args.rest[0].substr(0, args.rest[0].find('.')));
  if (args.bad || !node) return Fail(words[0] + ": no such node.");
  if (args.Has("isa")) return result = {node->info->IsA(args["isa"]) ? "1" : "0"}, true;
  if (args.Has("typ")) return result = {node->info->name == args["typ"] ? "1" : "0"}, true;
  if (args.Has("api")) return result = {KindName(node->type)}, true;
  for (const NodeType* type = node->info; args.Has("i") && type; type = type->base) result.insert(result.begin(), type->name);
  if (!args.Has("i")) result = {node->info->name};
  return true;
}
bool Visibility(const Words& words, Words&) {
  const Args args = Sort(words, "all/all a/above b/below");
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items)) return false;
  for (const auto& item : items)
    if (NodeOf(item.node)->IsDag()) PutNumber(*NodeOf(item.node), "visibility", words[0] == "hide" ? 0 : 1);
  return true;
}
bool NamespaceInfo(const Words& words, Words& result) {
  const Args args = Sort(words, "cur/currentNamespace lon/listOnlyNamespaces lod/listOnlyDependencyNodes ls/listNamespace r/recurse an/absoluteName");
  const std::string space = args.rest.empty() ? TheScene().currentNamespace : args.rest[0] == ":" ? "" : args.rest[0];
  if (args.bad) return false;
  if (args.Has("cur")) return result = {TheScene().currentNamespace.empty() ? ":" : TheScene().currentNamespace}, true;
  const auto within = [&](const std::string& name) { return NamespaceOf(name) == space || (args.Has("r") && (space.empty() || name.find(space + ":") == 0)); };
  if (!args.Has("lod"))
    for (const std::string& name : TheScene().namespaces)
      if (within(name)) result.push_back(name);
  if (!args.Has("lon"))
    for (const auto& [serial, node] : TheScene().nodes)
      if (within(node->name)) result.push_back(node->name);
  return true;
}

// Plug-ins as libraries.

std::map<std::string, void*>& Libraries() {
  static std::map<std::string, void*> libraries;
  return libraries;
}
std::string PluginName(const std::string& path) {
  const std::string name = path.substr(path.rfind('/') + 1);
  return name.substr(0, name.rfind('.'));
}
bool LoadLibrary(const Words& words, Words& result) {
  const Args args = Sort(words, "n/name:1 qt/quiet a/allPlugins");
  if (args.bad || args.rest.empty()) return Fail("loadPlugin: no file.");
  const std::string name = args.Has("n") ? args["n"] : PluginName(args.rest[0]);
  if (Libraries().count(name)) return result = {name}, true;
  void* const library = dlopen(args.rest[0].c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const entry = library ? dlsym(library, "initializePlugin") : nullptr;
  if (!entry) return Fail("loadPlugin: " + args.rest[0] + ": " + dlerror());
  if (!Load(name, reinterpret_cast<MStatus (*)(MObject)>(entry), args.rest[0])) return dlclose(library), Fail("loadPlugin: (initializePlugin failed) " + name);
  return Libraries()[name] = library, result = {name}, true;
}
bool UnloadLibrary(const Words& words, Words& result) {
  const Args args = Sort(words, "f/force");
  const std::string name = args.rest.empty() ? "" : PluginName(args.rest[0]);
  const auto at = Libraries().find(name);
  if (args.bad || at == Libraries().end()) return Fail("unloadPlugin: not loaded: " + name);
  void* const entry = dlsym(at->second, "uninitializePlugin");
  if (!entry || !Unload(name, reinterpret_cast<MStatus (*)(MObject)>(entry))) return Fail("unloadPlugin: it is in use: " + name);
  // What undo still holds is of the library's code: that stays in memory.
  return Libraries().erase(at), result = {name}, true;
}
bool PluginInfo(const Words& words, Words& result) {
  const Args args = Sort(words, "l/loaded ls/listPlugins v/version vd/vendor p/path c/command");
  const std::string name = args.rest.empty() ? "" : PluginName(args.rest[0]);
  MObject plugin = MFnPlugin::findPlugin(name.c_str());
  if (args.Has("l")) return result = {plugin.isNull() ? "0" : "1"}, !args.bad;
  if (args.Has("ls")) {
    for (const auto& [one, library] : Libraries()) result.push_back(one);
    return true;
  }
  if (args.bad || plugin.isNull()) return Fail("pluginInfo: not loaded: " + name);
  const MFnPlugin fn(plugin);
  return result = {(args.Has("v") ? fn.version() : args.Has("vd") ? fn.vendor() : fn.loadPath()).asChar()}, true;
}
bool Evaluated(const Words& words, Words& result) {
  std::string line;
  for (std::size_t i = 1; i < words.size(); ++i) line += (i > 1 ? " " : "") + words[i];
  return Run(line, CurrentJournal() != nullptr, result);
}

}  // namespace

const std::map<std::string, Builtin>& NodeCommands() {
  static const std::map<std::string, Builtin> kCommands = {{"addAttr", NewAttribute},
                                                           {"deleteAttr", DeleteAttribute},
                                                           {"attributeQuery", AskAttribute},
                                                           {"aliasAttr", Alias},
                                                           {"removeMultiInstance", RemoveElement},
                                                           {"renameAttr", RenameAttribute},
                                                           {"listAttr", ListAttributes},
                                                           {"listRelatives", Relatives},
                                                           {"listConnections", Connections},
                                                           {"isConnected", Connected},
                                                           {"connectionInfo", Connected},
                                                           {"setKeyframe", SetKey},
                                                           {"keyframe", Keyframe},
                                                           {"cutKey", CutKeys},
                                                           {"setDrivenKeyframe", DrivenKey},
                                                           {"bakeResults", Bake},
                                                           {"setInfinity", Infinity},
                                                           {"findKeyframe", FindKey},
                                                           {"keyTangent", KeyTangents},
                                                           {"xform", Place},
                                                           {"move", Transform},
                                                           {"rotate", Transform},
                                                           {"scale", Transform},
                                                           {"group", Group},
                                                           {"spaceLocator", Locator},
                                                           {"camera", NewCamera},
                                                           {"joint", NewJoint},
                                                           {"polyCube", Cube},
                                                           {"polyPlane", Plane},
                                                           {"curve", NewCurve},
                                                           {"objectType", Kind},
                                                           {"nodeType", Kind},
                                                           {"hide", Visibility},
                                                           {"showHidden", Visibility},
                                                           {"namespaceInfo", NamespaceInfo},
                                                           {"loadPlugin", LoadLibrary},
                                                           {"unloadPlugin", UnloadLibrary},
                                                           {"pluginInfo", PluginInfo},
                                                           {"eval", Evaluated}};
  return kCommands;
}
}  // namespace mayahost

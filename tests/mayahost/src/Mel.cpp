// The command language, as far as plug-ins send it, and undo.
#include <maya/MAnimControl.h>
#include <maya/MFnDagNode.h>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "Command.h"
#include "Fn.h"
#include "Mel.h"
#include "Modifier.h"
#include "Notify.h"

namespace mayahost {
Args Sort(const Words& words, const std::string& known) {
  Args args;
  const bool query = std::any_of(words.begin(), words.end(), [](const std::string& w) { return w == "-q" || w == "-query"; });
  for (std::size_t i = 1; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (word.size() < 2 || word[0] != '-' || MString(word.c_str()).isDouble()) {
      args.rest.push_back(word);
      continue;
    }
    const std::string padded = " q/query e/edit " + known + " ", bare = word.substr(1);
    std::size_t at = padded.find(" " + bare + "/");
    if (at == std::string::npos && (at = padded.find("/" + bare + " ")) == std::string::npos && (at = padded.find("/" + bare + ":")) == std::string::npos) {
      Say(Spoken::kError, "Invalid flag '" + word + "'.");
      args.bad = true;
      continue;
    }
    const std::size_t from = padded.rfind(' ', at + (padded[at] == ' ')) + 1, slash = padded.find('/', from), colon = padded.find(':', slash);
    const bool counted = colon < padded.find(' ', slash);
    char* behind = nullptr;
    const long count = counted ? std::strtol(padded.c_str() + colon + 1, &behind, 10) : 0;
    Words& values = args.flags[padded.substr(from, slash - from)];
    for (long k = 0; k < count && (!query || *behind == '!') && i + 1 < words.size(); ++k) values.push_back(words[++i]);
  }
  return args;
}

std::string Text(double value) {
  char text[40];
  return {text, std::to_chars(text, text + 40, value).ptr};
}
bool Fail(const std::string& text) { return Say(Spoken::kError, text), false; }
bool IsOn(const std::string& word) { return word == "1" || word == "on" || word == "true" || word == "yes"; }

bool Find(const Words& names, std::vector<MSelectionList::Item>& found) {
  if (names.empty()) found = TheScene().selection.items;
  for (const std::string& name : names) {
    const auto items = Resolve(name);
    if (items.empty()) return Fail("No object matches name: " + name);
    if (items.size() > 1 && name.find('*') == std::string::npos) return Fail("More than one object matches name: " + name);
    found.insert(found.end(), items.begin(), items.end());
  }
  return true;
}
PlugRef FindPlug(const std::string& text) {
  const auto dot = text.find('.');
  const auto found = dot == std::string::npos ? std::vector<MSelectionList::Item>() : Resolve(text.substr(0, dot));
  return found.size() == 1 ? RefOf(NodeOf(found[0].node), text.substr(dot + 1)) : PlugRef{};
}
double Unit(const PlugRef& plug) {
  if (plug.attr->type != MFn::kUnitAttribute) return 1;
  return plug.attr->subtype == 1   ? MAngle(1, MAngle::uiUnit()).asRadians()
         : plug.attr->subtype == 2 ? MDistance(1, MDistance::uiUnit()).asCentimeters()
                                   : MTime(1, MTime::uiUnit()).as(MTime::kSeconds);
}
std::string NameOf(const MSelectionList::Item& item) { return item.path.nodes.empty() ? NodeOf(item.node)->name : PathName(item.path, false); }
void Selected(const MSelectionList& list) {
  Do([list] { TheScene().selection = list, NotifySelection(); }, [before = TheScene().selection] { TheScene().selection = before, NotifySelection(); });
}

namespace {
Journal* g_entry = nullptr;  ///< of the line that runs, if it can be undone

/// A new parent that keeps the place in the world, unless it is to keep the numbers.
void Move(const MDagPath& path, const NodePtr& to, const MMatrix& above, bool relative) {
  const NodePtr node = path.nodes.back();
  const MMatrix world = path.inclusiveMatrix();
  Node* from = path.nodes.size() > 1 ? path.nodes[path.nodes.size() - 2].get() : TheScene().world.get();
  if (!Reparent(node, from, to.get()) || relative || !node->info->IsA("transform")) return;
  const MMatrix local = world * above.inverse();
  MTransformationMatrix t;
  const auto order = static_cast<MEulerRotation::RotationOrder>(std::lround(GetNumber(*node, "rotateOrder")));
  t.rotateTo(MEulerRotation(0, 0, 0, order));
  t = local;
  double scale[3], shear[3];
  t.getScale(scale, MSpace::kTransform), t.getShear(shear, MSpace::kTransform);
  const MEulerRotation now(GetNumber(*node, "rotateX"), GetNumber(*node, "rotateY"), GetNumber(*node, "rotateZ"), order);
  const MMatrix axis = MEulerRotation(GetNumber(*node, "rotateAxisX"), GetNumber(*node, "rotateAxisY"), GetNumber(*node, "rotateAxisZ")).asMatrix();
  const MEulerRotation turn = MEulerRotation::decompose(axis.inverse() * t.asRotateMatrix(), order).closestSolution(now);
  const auto put = [&](const char* name, const double* v) {
    const PlugRef plug = NumberOf(node, name);
    for (std::size_t i = 0; i < 3; ++i)
      if (std::fabs(Get(ChildOf(plug, i)).number - v[i]) > 1e-12) Put(ChildOf(plug, i), {v[i], nullptr});
  };
  const double angles[3] = {turn.x, turn.y, turn.z};
  put("scale", scale), put("shear", shear), put("rotate", angles);
  const MMatrix now2 = LocalMatrix(*node);
  const PlugRef move = NumberOf(node, "translate");
  double place[3];
  for (unsigned i = 0; i < 3; ++i) place[i] = Get(ChildOf(move, i)).number + local(3, i) - now2(3, i);
  put("translate", place);
}

bool Parent(const Words& words, Words& result) {
  const Args args = Sort(words, "w/world r/relative s/shape add/addObject nc/noConnections");
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items)) return false;
  if (items.size() < (args.Has("w") ? 1u : 2u)) return Fail("Not enough objects to parent.");
  MDagPath above;
  if (!args.Has("w")) above = items.back().path, items.pop_back();
  const NodePtr to = args.Has("w") ? TheScene().world : above.nodes.empty() ? nullptr : above.nodes.back();
  for (const auto& item : items) {
    if (!to || item.path.nodes.empty() || IsBelow(to.get(), item.path.nodes.back().get())) return Fail("Cannot parent an object to itself or below it.");
    const NodePtr node = item.path.nodes.back();
    const bool there = std::find(node->parents.begin(), node->parents.end(), to.get()) != node->parents.end();
    if (node->reference && !node->parents.empty() && node->parents[0]->reference) return Fail("A referenced node's parent can't be changed.");
    if (node->locked) return Fail("Node is locked.");
    if (args.Has("add") && !there)
      Reparent(node, nullptr, to.get(), true);
    else if (!there)
      Move(item.path, to, above.inclusiveMatrix(), args.Has("r"));
    result.push_back(NodeName(node));
  }
  return true;
}

bool Delete(const Words& words, Words&) {
  const Args args = Sort(words, "ch/constructionHistory all/all");
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items)) return false;
  if (args.Has("ch")) return true;
  for (const auto& item : items)
    if (const NodePtr node = NodeOf(item.node); node->inScene && !DeleteNode(node))
      return Fail("Cannot delete locked, default or referenced node: " + node->name);
  return true;
}

bool RenameNode(const Words& words, Words& result) {
  const Args args = Sort(words, "is/ignoreShape uuid/uuid");
  std::vector<MSelectionList::Item> items;
  if (args.bad || args.rest.empty() || !Find(args.rest.size() > 1 ? Words{args.rest[0]} : Words(), items) || items.empty())
    return Fail("rename: what, and to what?");
  const NodePtr node = NodeOf(items[0].node);
  const std::string before = Short(node->name), made = Rename(node, args.rest.back());
  if (made.empty()) return Fail("New name is not legal or the node is locked or read-only.");
  for (const NodePtr& child : node->children)
    if (child->info->IsA("shape") && Short(child->name) == before + "Shape" && !args.Has("is")) Rename(child, made + "Shape");
  result = {made};
  return true;
}

}  // namespace
std::string TypeText(const Attr& attr) {
  static const std::map<int, const char*> kNumbers = {
      {MFnNumericData::kBoolean, "bool"},    {MFnNumericData::kByte, "byte"},     {MFnNumericData::kShort, "short"},     {MFnNumericData::kInt, "long"},
      {MFnNumericData::kFloat, "float"},     {MFnNumericData::kDouble, "double"}, {MFnNumericData::k3Double, "double3"}, {MFnNumericData::k3Float, "float3"},
      {MFnNumericData::k2Double, "double2"}, {MFnNumericData::k2Float, "float2"}, {MFnNumericData::k3Int, "long3"},      {MFnNumericData::k2Int, "long2"},
      {MFnNumericData::k3Short, "short3"},   {MFnNumericData::k2Short, "short2"}};
  static const std::map<int, const char*> kData = {
      {MFnData::kString, "string"},           {MFnData::kStringArray, "stringArray"}, {MFnData::kMatrix, "matrix"},
      {MFnData::kDoubleArray, "doubleArray"}, {MFnData::kIntArray, "Int32Array"},     {MFnData::kMesh, "mesh"},
      {MFnData::kPointArray, "pointArray"},   {MFnData::kVectorArray, "vectorArray"}, {MFnData::kNurbsCurve, "nurbsCurve"}};
  if (attr.type == MFn::kUnitAttribute) return attr.subtype == 1 ? "doubleAngle" : attr.subtype == 2 ? "doubleLinear" : "time";
  if (attr.type == MFn::kEnumAttribute) return "enum";
  if (attr.type == MFn::kMessageAttribute) return "message";
  if (attr.type == MFn::kCompoundAttribute) return "TdataCompound";
  const auto& names = attr.IsData() ? kData : kNumbers;
  return names.count(attr.subtype) ? names.at(attr.subtype) : "generic";
}
namespace {
/// Values of one datum as `setAttr -type` takes them; null where there are too few, or none of that kind.
DataPtr Datum(const std::string& type, const Words& words) {
  struct Kind {
    MFn::Type type;
    std::size_t each;
  };
  static const std::map<std::string, Kind> kKinds = {{"doubleArray", {MFn::kDoubleArrayData, 1}},
                                                     {"Int32Array", {MFn::kIntArrayData, 1}},
                                                     {"vectorArray", {MFn::kVectorArrayData, 3}},
                                                     {"pointArray", {MFn::kPointArrayData, 4}},
                                                     {"stringArray", {MFn::kStringArrayData, 1}}};
  const auto number = [&](std::size_t i) { return MString(words[i].c_str()).asDouble(); };
  if (type == "matrix") {
    if (words.size() != 16) return nullptr;
    const auto data = std::make_shared<Data>(MFn::kMatrixData);
    for (unsigned i = 0; i < 16; ++i) data->matrix(i / 4, i % 4) = number(i);
    return data;
  }
  if (type == "string") {
    const auto data = std::make_shared<Data>(MFn::kStringData);
    if (!words.empty()) data->text = words[0];
    return words.size() > 1 ? nullptr : data;
  }
  const auto kind = kKinds.find(type);
  if (kind == kKinds.end() || (!words.empty() && words.size() != 1 + std::size_t(number(0)) * kind->second.each)) return nullptr;
  const auto data = std::make_shared<Data>(kind->second.type);
  for (std::size_t i = 1; i < words.size(); ++i) type == "stringArray" ? data->texts.push_back(words[i]) : data->numbers.push_back(number(i));
  return data;
}
bool SetAttr(const Words& words, Words&) {
  const Args args = Sort(words, "type/type:1 l/lock:1 k/keyable:1 cb/channelBox:1 c/clamp av/alteredValue ca/caching:1 s/size:1");
  PlugRef plug = args.rest.empty() ? PlugRef{} : FindPlug(args.rest[0]);
  if (args.bad || !plug.node) return Fail("setAttr: No object matches name: " + (args.rest.empty() ? "" : args.rest[0]));
  if (args.Has("l")) SetPlugFlag(plug, kLockedPlug, IsOn(args["l"]));
  if (args.Has("k")) SetPlugFlag(plug, kKeyable, IsOn(args["k"]));
  if (args.Has("cb")) SetPlugFlag(plug, kChannelBox, IsOn(args["cb"]));
  if (plug.attr->IsData() && args.rest.size() + args.Has("type") > 1) {
    const std::string kind = args.Has("type") ? args["type"] : TypeText(*plug.attr);
    const DataPtr data = Datum(kind, Words(args.rest.begin() + 1, args.rest.end()));
    if (!data || (plug.attr->type != MFn::kGenericAttribute && kind != TypeText(*plug.attr)))
      return Fail("setAttr: '" + PlugName(plug, true) + "' can't take these values as " + kind + ".");
    return Put(plug, {0, data}) || Fail("setAttr: The attribute '" + PlugName(plug, true) + "' is locked or connected and cannot be modified.");
  }
  for (std::size_t i = 1; i < args.rest.size(); ++i) {
    const PlugRef one = plug.attr->children.size() >= i ? ChildOf(plug, i - 1) : plug;
    Value value;
    value.number = (IsOn(args.rest[i]) ? 1 : MString(args.rest[i].c_str()).asDouble()) * Unit(one);
    const bool low = one.attr->min && value.number < *one.attr->min, high = one.attr->max && value.number > *one.attr->max;
    if ((low || high) && !args.Has("c"))
      return Fail("setAttr: Cannot set the attribute '" + PlugName(one, true) + "' past its " + (low ? "minimum" : "maximum") + " value.");
    if (!Put(one, value)) return Fail("setAttr: The attribute '" + PlugName(one, true) + "' is locked or connected and cannot be modified.");
  }
  return true;
}
bool GetAttr(const Words& words, Words& result) {
  const Args args = Sort(words, "l/lock k/keyable typ/type t/time:1 s/size as/asString mi/multiIndices se/settable cb/channelBox sl/silent ca/caching");
  const PlugRef plug = args.rest.empty() ? PlugRef{} : FindPlug(args.rest[0]);
  if (args.bad || !plug.node) return Fail("getAttr: No object matches name: " + (args.rest.empty() ? "" : args.rest[0]));
  if (args.Has("l") || args.Has("k")) return result = {IsLocked(plug) && args.Has("l") ? "1" : args.Has("k") && PlugFlags(plug) & kKeyable ? "1" : "0"}, true;
  if (args.Has("typ")) return result = {TypeText(*plug.attr)}, true;
  if (args.Has("s")) return result = {std::to_string(Indices(plug).size())}, true;
  if (args.Has("cb")) return result = {PlugFlags(plug) & kChannelBox ? "1" : "0"}, true;
  if (args.Has("se")) return result = {MPlug(plug).isFreeToChange() == MPlug::kFreeToChange ? "1" : "0"}, true;
  for (const int i : args.Has("mi") ? Indices(plug) : std::vector<int>()) result.push_back(std::to_string(i));
  if (args.Has("mi")) return true;
  const MDGContext before = args.Has("t") ? MDGContext(MTime(MString(args["t"].c_str()).asDouble(), MTime::uiUnit())).makeCurrent() : MDGContext::current();
  for (std::size_t i = 0; i < std::max<std::size_t>(1, plug.attr->children.size()); ++i) {
    const PlugRef one = plug.attr->children.empty() ? plug : ChildOf(plug, i);
    const Value value = Get(one);
    const auto field = one.attr->fields.find(static_cast<short>(std::lround(value.number)));
    if (value.data && one.attr->type == MFn::kTypedAttribute && value.data->type != MFn::kStringData && value.data->type != MFn::kMatrixData) {
      for (const std::string& text : value.data->texts) result.push_back(text);
      for (const double number : value.data->numbers) result.push_back(Text(number));
    } else if (one.attr->type == MFn::kTypedAttribute && one.attr->subtype != MFnData::kMatrix)
      result.push_back(value.data ? value.data->text : "");
    else if (args.Has("as") && field != one.attr->fields.end())
      result.push_back(field->second);
    else if (!one.attr->IsData())
      result.push_back(Text(value.number / Unit(one)));
    for (int k = 0; k < 16 && value.data && value.data->type == MFn::kMatrixData; ++k)
      result.push_back(Text(value.data->matrix(unsigned(k) / 4, unsigned(k) % 4)));
  }
  before.makeCurrent();
  return true;
}
bool Wire(const Words& words, Words&) {
  const Args args = Sort(words, "f/force na/nextAvailable");
  const PlugRef from = args.rest.size() < 2 ? PlugRef{} : FindPlug(args.rest[0]);
  PlugRef to = args.rest.size() < 2 ? PlugRef{} : FindPlug(args.rest[1]);
  if (!from.node || !to.node) return Fail(words[0] + ": an attribute was not found.");
  if (args.Has("na") && MPlug(to).isArray()) {
    const auto taken = Indices(to);
    to.idx.push_back(taken.empty() ? 0 : taken.back() + 1);
  }
  if (const PlugRef* in = InputOf(to); in && args.Has("f")) Disconnect(PlugRef(*in), to);
  return (words[0] == "connectAttr" ? Connect(from, to) : Disconnect(from, to)) || Fail(words[0] + ": could not be done.");
}

bool Create(const Words& words, Words& result) {
  const Args args = Sort(words, "n/name:1 p/parent:1 s/shared ss/skipSelect");
  const NodeType* type = args.rest.empty() ? nullptr : FindType(args.rest[0]);
  const auto above = args.Has("p") ? Resolve(args["p"]) : std::vector<MSelectionList::Item>();
  if (!type || (args.Has("p") && above.size() != 1)) return Fail("createNode: no such type or parent.");
  const MObject parent = above.empty() ? MObject() : above[0].node;
  NodePtr node;
  if (type->IsA("dagNode"))
    node = CreateDag(type, args["n"], parent);
  else
    AddNode(node = MakeNode(type, LegalName(args["n"])), nullptr);
  result = {NodeName(node)};
  return true;
}
bool Duplicated(const Words& words, Words& result) {
  const Args args = Sort(words, "n/name:1 un/upstreamNodes st/smartTransform ic/inputConnections rr/returnRootsOnly po/parentOnly ilf/instanceLeaf");
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items)) return false;
  for (const auto& item : items) {
    const NodePtr node = NodeOf(item.node);
    const NodePtr copy = node->IsDag() ? NodeOf(MFnDagNode(item.node).duplicate(words[0] == "instance")) : DuplicateNode(node, nullptr);
    if (!copy) return Fail("Cannot duplicate.");
    if (args.Has("n")) Rename(copy, args["n"]);
    result.push_back(NodeName(copy));
  }
  return true;
}
bool Triangulate(const Words& words, Words& result) {
  const Args args = Sort(words, "ch/constructionHistory:1");
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items)) return false;
  for (auto item : items) {
    if (!item.path.hasFn(MFn::kMesh)) return Fail("polyTriangulate needs a mesh.");
    item.path.extendToShape();
    const NodePtr node = item.path.nodes.back();
    const ShapePtr old = ShapeOf(*node);
    const auto made = std::make_shared<Shape>(*old);
    made->counts.clear(), made->connects.clear();
    int at = 0;
    for (const int count : old->counts) {
      for (int i = 2; i < count; ++i) {
        made->counts.push_back(3);
        for (const int k : {0, i - 1, i}) made->connects.push_back(old->connects[static_cast<std::size_t>(at + k)]);
      }
      at += count;
    }
    Do([node, made] { node->shape = made; }, [node, old] { node->shape = old; });
    result.push_back(NodeName(node));
  }
  return true;
}
bool Select(const Words& words, Words&) {
  const Args args = Sort(words, "r/replace add/add d/deselect tgl/toggle cl/clear ne/noExpand hi/hierarchy all/all");
  std::vector<MSelectionList::Item> items;
  if (args.bad || (!args.Has("cl") && !Find(args.rest, items))) return false;
  for (std::size_t i = 0; args.Has("hi") && i < items.size(); ++i)
    for (const NodePtr& child : items[i].path.nodes.empty() ? std::vector<NodePtr>() : items[i].path.nodes.back()->children) {
      MDagPath below = items[i].path;
      below.nodes.push_back(child), items.push_back({Obj(child), below, {}});
    }
  MSelectionList list, more;
  if (args.Has("add") || args.Has("d") || args.Has("tgl")) list = TheScene().selection;
  more.items = items;
  list.merge(more, args.Has("d") ? MSelectionList::kRemoveFromList : args.Has("tgl") ? MSelectionList::kXORWithList : MSelectionList::kMergeNormal);
  return Selected(list), true;
}
bool List(const Words& words, Words& result) {
  const Args args = Sort(words,
                         "sl/selection type/type:1 et/exactType:1 l/long dag/dag s/shapes tr/transforms ca/cameras g/geometry as/assemblies fl/flatten "
                         "ap/allPaths uid/uuid io/intermediateObjects ni/noIntermediate lf/leaf "
                         "ro/readOnly rn/referencedNodes ln/lockedNodes");
  std::vector<MSelectionList::Item> items;
  if (args.Has("sl"))
    items = TheScene().selection.items;
  else if (args.rest.empty())
    items = Resolve("*");
  for (const std::string& name : args.rest)
    for (const auto& item : Resolve(name)) items.push_back(item);
  const auto fits = [&](const MSelectionList::Item& item) {
    const NodePtr node = NodeOf(item.node);
    if (args.Has("dag") && !node->IsDag()) return false;
    if (args.Has("as") && (!node->IsDag() || node->parents.empty() || node->parents[0] != TheScene().world.get())) return false;
    const bool between = node->IsDag() && GetNumber(*node, "intermediateObject") != 0;
    if ((args.Has("io") && !between) || (args.Has("ni") && between)) return false;
    if (((args.Has("rn") || args.Has("ro")) && !node->reference) || (args.Has("ln") && !node->locked)) return false;
    bool any = false, asked = false;
    for (const auto& [flag, type] : {std::pair("s", "shape"), std::pair("tr", "transform"), std::pair("ca", "camera"), std::pair("g", "controlPoint")})
      if (args.Has(flag)) asked = true, any |= node->info->IsA(type);
    for (const std::string& type : args.Has("type") ? args.flags.at("type") : Words()) asked = true, any |= node->info->IsA(type);
    for (const std::string& type : args.Has("et") ? args.flags.at("et") : Words()) asked = true, any |= node->info->name == type;
    return any || !asked;
  };
  for (const auto& item : items)
    if (fits(item))
      result.push_back(args.Has("uid")                             ? NodeOf(item.node)->uuid
                       : !item.plug.isNull()                       ? item.plug.name().asChar()
                       : args.Has("l") && !item.path.nodes.empty() ? PathName(item.path, true)
                                                                   : NameOf(item));
  return true;
}
bool Sets(const Words& words, Words& result) {
  const Args args =
      Sort(words,
           "fe/forceElement:1! add/addElement:1! in/include:1! rm/remove:1! cl/clear:1! im/isMember:1! r/renderable n/name:1 nss/noSurfaceShader em/empty "
           "s/size t/text:1 no/noIntermediate");
  std::vector<MSelectionList::Item> items;
  if (args.Has("q")) {
    const auto asked = args.rest.empty() ? std::vector<MSelectionList::Item>() : Resolve(args.rest[0]);
    if (asked.size() != 1) return Fail("sets: no such set.");
    const auto& members = NodeOf(asked[0].node)->members;
    if (args.Has("s")) return result = {std::to_string(members.size())}, true;
    for (const auto& member : members) result.push_back(NameOf(member));
    return true;
  }
  if (args.Has("im") || args.Has("cl")) {
    const auto asked = Resolve(args.Has("im") ? args["im"] : args["cl"]);
    if (args.bad || asked.size() != 1 || !Find(args.rest, items)) return Fail("sets: no such set.");
    const NodePtr set = NodeOf(asked[0].node);
    if (args.Has("cl")) return Do([set] { set->members.clear(); }, [set, before = set->members] { set->members = before; }), true;
    const bool all = std::all_of(items.begin(), items.end(), [&](const auto& item) {
      return std::any_of(set->members.begin(), set->members.end(), [&](const auto& m) { return m.node == item.node && m.path == item.path; });
    });
    return result = {all ? "1" : "0"}, true;
  }
  if (!args.Has("fe") && !args.Has("add") && !args.Has("in") && !args.Has("rm")) {
    const NodePtr made = MakeNode(FindType(args.Has("r") ? "shadingEngine" : "objectSet"), args.Has("n") ? LegalName(args["n"]) : "set1");
    AddNode(made, nullptr);
    if (args.bad || (!args.Has("em") && !Find(args.rest, items))) return false;
    Do([made, items] { made->members = items; }, [made] { made->members.clear(); });
    return result = {made->name}, true;
  }
  const std::string name = args.Has("fe") ? args["fe"] : args.Has("add") ? args["add"] : args.Has("in") ? args["in"] : args["rm"];
  const auto sets = Resolve(name);
  if (args.bad || !Find(args.rest, items) || sets.size() != 1) return Fail("sets: no such set.");
  for (const auto& [serial, other] : std::map<int, NodePtr>(TheScene().nodes)) {
    const NodePtr set = other;
    const bool own = Obj(set) == sets[0].node, shading = set->info->IsA("shadingEngine") && NodeOf(sets[0].node)->info->IsA("shadingEngine");
    if (!own && !shading) continue;
    auto members = set->members;
    for (const auto& item : items)
      members.erase(std::remove_if(members.begin(), members.end(), [&](const auto& m) { return m.node == item.node; }), members.end());
    if (own && !args.Has("rm")) members.insert(members.end(), items.begin(), items.end());
    if (members.size() != set->members.size() || own) Do([set, members] { set->members = members; }, [set, before = set->members] { set->members = before; });
  }
  return true;
}
bool FilterCurve(const Words& words, Words& result) {
  const Args args = Sort(words, "f/filter:1 s/startTime:1 e/endTime:1");
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items)) return false;
  // Turns that jump by whole rounds are unrolled, which is what the filter does without other flags.
  for (const auto& item : items) {
    const NodePtr node = NodeOf(item.node);
    if (!node->curve) return Fail("filterCurve needs animation curves.");
    Curve after = *node->curve;
    for (std::size_t i = 1; i < after.keys.size() && node->info->name == "animCurveTA"; ++i)
      after.keys[i].value -= 2 * M_PI * std::round((after.keys[i].value - after.keys[i - 1].value) / (2 * M_PI));
    SetTangents(after, 0, after.keys.size());
    Do([node, after] { *node->curve = after; }, [node, before = *node->curve] { *node->curve = before; });
  }
  result = {std::to_string(items.size())};
  return true;
}

bool HotKeys(const Words& words, Words& result) {
  const Args args =
      Sort(words, "k/keyShortcut:1! n/name:1 rn/releaseName:1 ctl/ctrlModifier alt/altModifier sht/shiftModifier cmd/commandModifier ctx/ctxClient:1");
  auto& keys = TheState().hotKeys[TheState().hotKeySet];
  const std::string key = (args.Has("k") ? args["k"] : args.rest.empty() ? "" : args.rest[0]);
  if (args.bad || key.empty()) return Fail("hotkey: no key.");
  // A dash by itself would be read as a flag.
  const std::string full =
      std::string(args.Has("ctl") ? "ctl+" : "") + (args.Has("alt") ? "alt+" : "") + (args.Has("sht") ? "sht+" : "") + (key == "Dash" ? "-" : key);
  const auto at = keys.find(full);
  if (args.Has("q")) return result = {at == keys.end() || Pretends(Wrong::kHotKeys) ? "" : args.Has("rn") ? at->second.release : at->second.name}, true;
  if (TheState().hotKeySet == "Maya_Default") return Fail("The default hotkey set is read-only.");
  if (args.Has("n")) keys[full].name = args["n"];
  if (args.Has("rn")) keys[full].release = args["rn"];
  return true;
}
bool HotKeySet(const Words& words, Words& result) {
  const Args args = Sort(words, "cu/current ex/exists hka/hotkeySetArray src/source:1 del/delete");
  State& state = TheState();
  if (args.Has("q") && args.Has("cu")) return result = {state.hotKeySet}, true;
  if (args.Has("q") && args.Has("hka")) {
    for (const auto& [name, keys] : state.hotKeys) result.push_back(name);
    return true;
  }
  const std::string name = args.rest.empty() ? "" : args.rest[0];
  if (args.Has("ex") || args.Has("q")) return result = {state.hotKeys.count(name) ? "1" : "0"}, true;
  if (!args.Has("e")) state.hotKeys[name] = state.hotKeys[args.Has("src") ? args["src"] : state.hotKeySet];
  if (args.Has("e") && args.Has("del")) return name != state.hotKeySet && state.hotKeys.erase(name) > 0;
  if (args.Has("cu") && state.hotKeys.count(name)) state.hotKeySet = name;
  return true;
}
bool NameCommand(const Words& words, Words& result) {
  const Args args = Sort(words, "ann/annotation:1 c/command:1 d/default:1 stp/sourceType:1");
  if (args.bad || args.rest.empty()) return Fail("nameCommand: no name.");
  return TheState().nameCommands[args.rest[0]] = args["c"], result = {args.rest[0]}, true;
}
bool Confirm(const Words& words, Words& result) {
  const Args args = Sort(words, "t/title:1 m/message:1 b/button:1 db/defaultButton:1 cb/cancelButton:1 ds/dismissString:1 icn/icon:1 p/parent:1");
  if (args.bad) return false;
  if (TheState().batch) return Fail("confirmDialog: not in batch mode.");
  Say(Spoken::kBox, args["t"] + "|" + args["m"]);
  return result = {args.Has("db") ? args["db"] : args["b"]}, true;
}

/// Time units by their names: those of films, and "12fps" for frames in whole numbers.
const std::map<std::string, MTime::Unit>& TimeUnits() {
  static const std::map<std::string, MTime::Unit> kUnits = [] {
    std::map<std::string, MTime::Unit> units = {
        {"hour", MTime::kHours},        {"min", MTime::kMinutes},      {"sec", MTime::kSeconds},         {"millisec", MTime::kMilliseconds},
        {"game", MTime::kGames},        {"film", MTime::kFilm},        {"pal", MTime::kPALFrame},        {"ntsc", MTime::kNTSCFrame},
        {"show", MTime::kShowScan},     {"palf", MTime::kPALField},    {"ntscf", MTime::kNTSCField},     {"23.976fps", MTime::k23_976FPS},
        {"29.97fps", MTime::k29_97FPS}, {"29.97df", MTime::k29_97DF},  {"47.952fps", MTime::k47_952FPS}, {"59.94fps", MTime::k59_94FPS},
        {"44100fps", MTime::k44100FPS}, {"48000fps", MTime::k48000FPS}};
    for (int unit = MTime::k2FPS; unit <= MTime::k6000FPS; ++unit)
      units[std::to_string(std::lround(MTime(1, MTime::kSeconds).as(static_cast<MTime::Unit>(unit)))) + "fps"] = static_cast<MTime::Unit>(unit);
    return units;
  }();
  return kUnits;
}
const char* const kLengths[] = {"", "in", "ft", "yd", "mi", "mm", "cm", "km", "m"};
bool CurrentUnit(const Words& words, Words& result) {
  const Args args = Sort(words, "l/linear:1 a/angle:1 t/time:1 ua/updateAnimation:1");
  if (args.bad) return false;
  if (args.Has("q")) {
    for (const auto& [name, unit] : TimeUnits())
      if (args.Has("t") && unit == MTime::uiUnit()) result = {name};
    if (args.Has("l")) result = {kLengths[MDistance::uiUnit()]};
    if (args.Has("a")) result = {MAngle::uiUnit() == MAngle::kRadians ? "rad" : "deg"};
    return true;
  }
  const auto length = std::find(std::begin(kLengths) + 1, std::end(kLengths), args["l"]);
  if ((args.Has("t") && !TimeUnits().count(args["t"])) || (args.Has("l") && length == std::end(kLengths))) return Fail("currentUnit: no such unit.");
  if (args.Has("t")) MTime::setUIUnit(TimeUnits().at(args["t"]));
  if (args.Has("l")) MDistance::setUIUnit(static_cast<MDistance::Unit>(length - kLengths));
  if (args.Has("a")) MAngle::setUIUnit(args["a"] == "rad" ? MAngle::kRadians : MAngle::kDegrees);
  return true;
}
bool Playback(const Words& words, Words& result) {
  const Args args = Sort(words, "min/minTime:1 max/maxTime:1 ast/animationStartTime:1 aet/animationEndTime:1 ps/playbackSpeed:1 l/loop:1");
  const auto number = [&](const char* f) { return MTime(MString(args[f].c_str()).asDouble(), MTime::uiUnit()); };
  if (args.bad) return false;
  if (args.Has("q")) {
    const MTime t = args.Has("min")   ? MAnimControl::minTime()
                    : args.Has("max") ? MAnimControl::maxTime()
                    : args.Has("ast") ? MAnimControl::animationStartTime()
                                      : MAnimControl::animationEndTime();
    return result = {Text(t.value())}, true;
  }
  if (args.Has("min")) MAnimControl::setMinTime(number("min"));
  if (args.Has("max")) MAnimControl::setMaxTime(number("max"));
  if (args.Has("ast")) MAnimControl::setAnimationStartTime(number("ast"));
  if (args.Has("aet")) MAnimControl::setAnimationEndTime(number("aet"));
  return true;
}
bool CurrentTime(const Words& words, Words& result) {
  const Args args = Sort(words, "u/update:1");
  if (args.Has("q") || args.rest.empty()) return result = {Text(TimeOf(TheScene().now).value())}, true;
  const long long to = TicksOf(MTime(MString(args.rest[0].c_str()).asDouble(), MTime::uiUnit()));
  Do([to] { SetNow(to); }, [before = TheScene().now] { SetNow(before); });
  return true;
}
bool UpAxis(const Words& words, Words& result) {
  const Args args = Sort(words, "ax/axis:1 rv/rotateView");
  if (args.Has("q")) return result = {TheScene().yUp ? "y" : "z"}, true;
  return TheScene().yUp = args["ax"] != "z", !args.bad;
}
bool UndoInfo(const Words& words, Words& result) {
  const Args args = Sort(words,
                         "st/state:1 swf/stateWithoutFlush:1 l/length:1 infinity/infinity:1 uqe/undoQueueEmpty rqe/redoQueueEmpty un/undoName rn/redoName "
                         "ock/openChunk cck/closeChunk cn/chunkName:1 pq/printQueue");
  State& s = TheState();
  if (args.bad) return false;
  const bool wrong = Pretends(Wrong::kUndoQueue);
  if (args.Has("q")) {
    if (args.Has("uqe"))
      result = {s.undo.empty() != wrong ? "1" : "0"};
    else if (args.Has("rqe"))
      result = {s.redo.empty() ? "1" : "0"};
    else if (args.Has("un"))
      result = {s.undo.empty() ? "" : s.undo.back().name};
    else if (args.Has("rn"))
      result = {s.redo.empty() ? "" : s.redo.back().name};
    else if (args.Has("cn"))
      result = {s.chunks ? s.chunkName : ""};
    else if (args.Has("st") || args.Has("swf"))
      result = {s.undoOn ? "1" : "0"};
    else
      result = {args.Has("l") ? std::to_string(s.undoLength) : s.undoInfinite ? "1" : "0"};
    return true;
  }
  if (args.Has("st") && !(s.undoOn = IsOn(args["st"]))) FlushUndo();
  if (args.Has("swf")) s.undoOn = IsOn(args["swf"]);
  if (args.Has("ock") && s.chunks++ == 0) s.chunkName = args["cn"], s.chunkBegun = false;
  if (args.Has("cck") && s.chunks > 0 && --s.chunks == 0) s.chunkBegun = false;
  if (args.Has("infinity")) s.undoInfinite = IsOn(args["infinity"]);
  if (args.Has("l")) s.undoLength = MString(args["l"].c_str()).asInt();
  while (!s.undoInfinite && s.undo.size() > static_cast<std::size_t>(s.undoLength)) s.undo.pop_front();
  return true;
}
bool LockNode(const Words& words, Words& result) {
  const Args args = Sort(words, "l/lock:1");
  std::vector<MSelectionList::Item> items;
  if (args.bad || !Find(args.rest, items)) return false;
  for (const auto& item : items) {
    if (args.Has("q"))
      result.push_back(NodeOf(item.node)->locked ? "1" : "0");
    else
      MFnDependencyNode(item.node).setLocked(!args.Has("l") || IsOn(args["l"]));
  }
  return true;
}
bool Evaluator(const Words& words, Words& result) {
  const Args args = Sort(words, "n/name:1! en/enable:1");
  bool& on = TheState().evaluators[args["n"]];
  if (args.Has("q")) return result = {on ? "1" : "0"}, true;
  return on = IsOn(args["en"]), !args.bad;
}
bool AutoKey(const Words& words, Words& result) {
  const Args args = Sort(words, "st/state:1");
  if (args.Has("q")) return result = {MAnimControl::autoKeyMode() ? "1" : "0"}, true;
  return MAnimControl::setAutoKeyMode(IsOn(args["st"])), !args.bad;
}
bool About(const Words& words, Words& result) {
  const Args args = Sort(words, "v/version api/apiVersion b/batch p/product");
  return result = {args.Has("api") ? std::to_string(MAYA_API_VERSION) : args.Has("b") ? TheState().batch ? "1" : "0" : "2019"}, !args.bad;
}
bool OptionVar(const Words& words, Words& result) {
  const Args args = Sort(words, "iv/intValue:2 sv/stringValue:2 ex/exists:1! rm/remove:1");
  auto& options = TheState().options;
  if (args.Has("ex")) return result = {options.count(args["ex"]) ? "1" : "0"}, true;
  if (args.Has("rm")) options.erase(args["rm"]);
  for (const char* flag : {"iv", "sv"})
    if (args.Has(flag) && args.flags.at(flag).size() == 2) options[args.flags.at(flag)[0]] = args.flags.at(flag)[1];
  return !args.bad;
}
bool Exists(const Words& words, Words& result) {
  const std::string name = words.size() > 1 ? words[1] : "";
  const bool there = name.find('.') == std::string::npos ? !Resolve(name).empty() : FindPlug(name).node != nullptr;
  return result = {there ? "1" : "0"}, true;
}
const std::map<std::string, Builtin> kBuiltins = {
    {"parent", Parent},
    {"delete", Delete},
    {"rename", RenameNode},
    {"setAttr", SetAttr},
    {"getAttr", GetAttr},
    {"connectAttr", Wire},
    {"disconnectAttr", Wire},
    {"createNode", Create},
    {"duplicate", Duplicated},
    {"instance", Duplicated},
    {"polyTriangulate", Triangulate},
    {"select", Select},
    {"ls", List},
    {"sets", Sets},
    {"filterCurve", FilterCurve},
    {"hotkey", HotKeys},
    {"hotkeySet", HotKeySet},
    {"nameCommand", NameCommand},
    {"confirmDialog", Confirm},
    {"currentUnit", CurrentUnit},
    {"playbackOptions", Playback},
    {"currentTime", CurrentTime},
    {"upAxis", UpAxis},
    {"undoInfo", UndoInfo},
    {"lockNode", LockNode},
    {"evaluator", Evaluator},
    {"autoKeyframe", AutoKey},
    {"about", About},
    {"optionVar", OptionVar},
    {"objExists", Exists},
    {"undo", [](const Words&, Words&) { return StepBack() || (Say(Spoken::kWarning, "There are no more commands to undo."), true); }},
    {"redo", [](const Words&, Words&) { return StepForward() || (Say(Spoken::kWarning, "There are no more commands to redo."), true); }},
    {"flushUndo", [](const Words&, Words&) { return FlushUndo(), true; }},
    {"refresh", [](const Words&, Words&) { return ++TheState().refreshes, true; }},
    {"evalDeferred", [](const Words& w, Words&) { return TheState().idle.push_back(w.back()), true; }},
    {"print", [](const Words& w, Words&) { return Say(Spoken::kInfo, w.back()), true; }},
    {"warning", [](const Words& w, Words&) { return Say(Spoken::kWarning, w.back()), true; }},
    {"error", [](const Words& w, Words&) { return Fail(w.back()); }}};

/// Statements of words; quotes keep blanks, a backslash within them what follows.
bool Split(const std::string& mel, std::vector<Words>& statements) {
  statements.assign(1, {});
  for (std::size_t i = 0; i < mel.size(); ++i) {
    const char c = mel[i];
    if (c == ';' || c == '\n') {
      if (!statements.back().empty()) statements.emplace_back();
    } else if (c == '/' && i + 1 < mel.size() && mel[i + 1] == '/') {
      i = std::min(mel.find('\n', i), mel.size()) - 1;
    } else if (c == '"') {
      std::string word;
      for (++i; i < mel.size() && mel[i] != '"'; ++i) {
        if (mel[i] == '\n') return Fail("Unterminated string.");
        if (mel[i] == '\\' && ++i < mel.size())
          word += mel[i] == 'n' ? '\n' : mel[i] == 't' ? '\t' : mel[i];
        else
          word += mel[i];
      }
      if (i >= mel.size()) return Fail("Unterminated string.");
      statements.back().push_back(word);
    } else if (!std::isspace(static_cast<unsigned char>(c))) {
      std::string word;
      for (; i < mel.size() && !std::isspace(static_cast<unsigned char>(mel[i])) && mel[i] != ';' && mel[i] != '"'; ++i) word += mel[i];
      if (word.find_first_of("`$(){}") != std::string::npos) return Fail("Syntax error: " + word);
      statements.back().push_back(word);
      --i;
    }
  }
  if (statements.back().empty()) statements.pop_back();
  return true;
}

/// The scripts that make and remove a shelf are kept as text; whether the tab is there is remembered.
bool ShelfScript(const std::string& mel) {
  if (mel.find("$gShelfTopLevel") == std::string::npos) return false;
  const auto from = mel.find("$tabName"), quote = mel.find('"', from), end = mel.find('"', quote + 1);
  const std::string tab = from == std::string::npos ? "" : mel.substr(quote + 1, end - quote - 1);
  Say(Spoken::kShelf, mel);
  if (TheState().batch) return true;
  if (mel.find("addNewShelfTab") != std::string::npos) TheState().shelves.emplace(tab, mel.find("shelfButton") != std::string::npos);
  if (mel.find("deleteShelfTab") != std::string::npos) TheState().shelves.erase(tab);
  return true;
}

bool RunStatements(const std::string& mel, Journal* journal, Words& result) {
  std::vector<Words> statements;
  if (ShelfScript(mel)) return true;
  if (!Split(mel, statements)) return false;
  for (const Words& words : statements) {
    result.clear();
    NotifyCommand(words[0]);
    Journal* const outer = std::exchange(g_entry, journal);
    bool good = false;
    if (TheState().commands.count(words[0])) {
      good = RunCommand(words[0], Words(words.begin() + 1, words.end()), result, journal);
    } else if (const auto at = kBuiltins.find(words[0]); at != kBuiltins.end()) {
      const Recording recording(journal);
      good = at->second(words, result);
    } else if (const auto more = NodeCommands().find(words[0]); more != NodeCommands().end()) {
      const Recording recording(journal);
      good = more->second(words, result);
    } else if (const auto files = FileCommands().find(words[0]); files != FileCommands().end()) {
      const Recording recording(journal);
      good = files->second(words, result);
    } else {
      Fail("Cannot find procedure \"" + words[0] + "\".");
    }
    g_entry = outer;
    if (!good) return false;
  }
  return true;
}
}  // namespace

bool RunInModifier(const std::string& command) {
  TheState().executed.push_back(command);
  Words result;
  return RunStatements(command, CurrentJournal(), result);
}

bool Run(const std::string& mel, bool undo, Words& result) {
  State& state = TheState();
  state.executed.push_back(mel);
  if (state.undoing || state.redoing || !undo || !state.undoOn) return RunStatements(mel, nullptr, result);
  if (g_entry) return RunStatements(mel, g_entry, result);
  const auto journal = std::make_shared<Journal>();
  const bool before = state.chunks > 0, good = RunStatements(mel, journal.get(), result);
  if (journal->steps.empty()) return good;
  state.redo.clear();
  const bool chunk = before || state.chunks > 0, named = chunk && !state.chunkName.empty();
  if (chunk && state.chunkBegun) {
    auto& steps = state.undo.back().journal.steps;
    std::move(journal->steps.begin(), journal->steps.end(), std::back_inserter(steps));
    return good;
  }
  state.undo.push_back({named ? state.chunkName : mel, std::move(*journal)});
  state.chunkBegun = state.chunks > 0;
  while (!state.undoInfinite && state.undo.size() > static_cast<std::size_t>(state.undoLength)) state.undo.pop_front();
  return good;
}

namespace {
bool Step(std::deque<Entry>& from, std::deque<Entry>& to, bool& doing, void (Journal::*step)(), const char* event) {
  if (from.empty() || TheState().undoing || TheState().redoing) return false;
  TheState().chunkBegun = false;
  Entry entry = std::move(from.back());
  from.pop_back();
  doing = true;
  (entry.journal.*step)();
  doing = false;
  to.push_back(std::move(entry));
  NotifyEvent(event);
  return true;
}
Words Names(const std::deque<Entry>& entries) {
  Words names;
  for (const Entry& entry : entries) names.push_back(entry.name);
  return names;
}
}  // namespace
bool StepBack() { return Step(TheState().undo, TheState().redo, TheState().undoing, &Journal::Undo, "Undo"); }
bool StepForward() { return Step(TheState().redo, TheState().undo, TheState().redoing, &Journal::Redo, "Redo"); }
void FlushUndo() {
  // Destroyed from the front, with the queue already empty: what goes may look at it.
  TheState().chunkBegun = false;
  std::deque<Entry> gone = std::exchange(TheState().undo, {});
  while (!gone.empty()) gone.pop_front();
  gone = std::exchange(TheState().redo, {});
}
std::string Type(const std::string& mel) {
  Words result;
  TheState().failed = !Run(mel, true, result);
  std::string text;
  for (const std::string& one : result) text += (text.empty() ? "" : " ") + one;
  return text;
}
bool Failed() { return TheState().failed; }
bool Undo() { return StepBack(); }
bool Redo() { return StepForward(); }
Words UndoQueue() { return Names(TheState().undo); }
Words RedoQueue() { return Names(TheState().redo); }
void Idle() {
  Words result;
  for (const std::string& line : std::exchange(TheState().idle, {})) Run(line, false, result);
  NotifyTimers();
  NotifyEvent("idle");
}
void Play(bool on) { on ? MAnimControl::playForward() : MAnimControl::stop(); }

}  // namespace mayahost

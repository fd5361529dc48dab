// Values, connections and what is computed from them.
#include <algorithm>
#include <cmath>

#include <maya/MDataHandle.h>

#include "Handles.h"
#include "Notify.h"
#include "State.h"

namespace mayahost {
namespace {
/// How many indices a plug of the attribute has when it is one value.
std::size_t Depth(const Attr* attr) { return attr ? Depth(attr->parent) + attr->Is(kIsArray) : 0; }
PlugRef ParentOf(const PlugRef& plug) {
  if (!plug.attr->parent) return {};
  PlugRef above{plug.node, plug.attr->parent, plug.idx};
  above.idx.resize(std::min(above.idx.size(), Depth(above.attr)));
  return above;
}
bool g_quiet = false, g_telling = false;  ///< the latter while a node is told what it keeps itself
}  // namespace

PlugRef ChildOf(const PlugRef& plug, std::size_t i) { return {plug.node, plug.attr->children[i].get(), plug.idx}; }

PlugRef RefOf(const NodePtr& node, const std::string& text) {
  PlugRef plug{node.get(), nullptr, {}};
  std::string word;
  for (const char c : text + ".") {
    if (c != '.' && c != '[' && c != ']') {
      word += c;
      continue;
    }
    if (c == ']')
      plug.idx.push_back(std::atoi(word.c_str()));
    else if (!word.empty()) {
      const auto alias = std::find_if(node->aliases.begin(), node->aliases.end(), [&](const auto& a) { return a.first == word; });
      if (!plug.attr && alias != node->aliases.end())
        plug.attr = alias->second.first, plug.idx = alias->second.second;
      else
        plug.attr = FindAttr(*node, word).get();
    }
    if (c != ']' && !word.empty() && !plug.attr) return {};
    word.clear();
  }
  return plug.attr ? plug : PlugRef{};
}

namespace {
std::string OwnName(const PlugRef& plug, bool longNames) {
  const bool element = plug.attr->Is(kIsArray) && !plug.idx.empty() && plug.idx.size() == Depth(plug.attr);
  return (longNames ? plug.attr->name : plug.attr->brief) + (element ? "[" + std::to_string(plug.idx.back()) + "]" : "");
}
}  // namespace
std::string PlugName(const PlugRef& plug, bool longNames, bool full) {
  PlugRef above = ParentOf(plug);
  // What a plug needs to be found are the elements that it is in.
  while (!full && above.node && !above.attr->Is(kIsArray)) above = ParentOf(above);
  return (above.node ? PlugName(above, longNames, full) + "." : "") + OwnName(plug, longNames);
}

const PlugRef* InputOf(const PlugRef& plug) {
  const auto at = plug.node->inputs.find(plug.Key());
  return at == plug.node->inputs.end() ? nullptr : &at->second;
}
std::vector<PlugRef> OutputsOf(const PlugRef& plug) {
  const auto at = plug.node->outputs.find(plug.Key());
  return at == plug.node->outputs.end() ? std::vector<PlugRef>() : at->second;
}
std::vector<int> Indices(const PlugRef& array) {
  std::set<int> found;
  const auto look = [&](const auto& map) {
    for (const auto& [key, value] : map) {
      bool inside = false;
      for (const Attr* a = key.first; a; a = a->parent) inside |= a == array.attr;
      if (inside && key.second.size() > array.idx.size() && std::equal(array.idx.begin(), array.idx.end(), key.second.begin()))
        found.insert(key.second[array.idx.size()]);
    }
  };
  look(array.node->values), look(array.node->inputs), look(array.node->outputs);
  if (array.attr->Is(kWorldSpaceAttr))
    for (std::size_t i = 0; i < PathsTo(array.node->Ptr()).size(); ++i) found.insert(static_cast<int>(i));
  return {found.begin(), found.end()};
}

unsigned PlugFlags(const PlugRef& plug) {
  const auto at = plug.node->flags.find(plug.Key());
  return at == plug.node->flags.end() ? plug.attr->flags : at->second;
}
void SetPlugFlag(const PlugRef& plug, AttrFlag flag, bool on) {
  const unsigned before = PlugFlags(plug), after = on ? before | flag : before & ~flag;
  const NodePtr node = plug.node->Ptr();
  const int told = flag == kLockedPlug ? MNodeMessage_kLocked : flag == kKeyable ? MNodeMessage_kKeyable : 0;
  const auto set = [=](unsigned flags, bool now) {
    node->flags[plug.Key()] = flags;
    if (told && before != after) NotifyAttr(now ? told : 2 * told, plug);
  };
  Do([=] { set(after, on); }, [=] { set(before, !on); });
}
bool IsLocked(const PlugRef& plug) {
  const PlugRef above = ParentOf(plug);
  return (PlugFlags(plug) & kLockedPlug) || (above.node && IsLocked(above));
}

std::string AliasOf(const PlugRef& plug) {
  for (const auto& [alias, key] : plug.node->aliases)
    if (key == plug.Key()) return alias;
  return "";
}
bool SetAlias(const PlugRef& plug, const std::string& alias) {
  if (!alias.empty() && (RefOf(plug.node->Ptr(), alias).node || LegalName(alias) != alias || alias.find(':') != std::string::npos)) return false;
  const NodePtr node = plug.node->Ptr();
  auto after = node->aliases;
  after.erase(std::remove_if(after.begin(), after.end(), [&](const auto& a) { return a.second == plug.Key(); }), after.end());
  if (!alias.empty()) after.emplace_back(alias, plug.Key());
  Do([=] { node->aliases = after; }, [=, before = node->aliases] { node->aliases = before; });
  return true;
}

namespace {
/// Attributes of whole numbers keep whole ones.
bool IsWhole(const Attr& attr) {
  using D = MFnNumericData;
  const int t = attr.subtype;
  return attr.type == MFn::kEnumAttribute ||
         (attr.type == MFn::kNumericAttribute && (t == D::kByte || t == D::kChar || t == D::kShort || t == D::kInt || t == D::kInt64));
}
void Spread(const PlugRef& plug, std::set<std::pair<Node*, PlugKey>>& seen) {
  if (!seen.insert({plug.node, plug.Key()}).second) return;
  NotifyDirty(plug);
  const NodePtr node = plug.node->Ptr();
  const auto out = [&](Attr* attr, const std::vector<int>* idx) {
    for (const auto& [key, to] : node->outputs)
      if (key.first == attr && (!idx || key.second == *idx))
        for (const PlugRef& next : std::vector<PlugRef>(to)) Spread(next, seen);
  };
  std::vector<Attr*> family{plug.attr};
  if (plug.attr->parent) family.push_back(plug.attr->parent);
  for (const AttrPtr& child : plug.attr->children) family.push_back(child.get());
  for (Attr* attr : family) {
    out(attr, &plug.idx);
    for (Attr* affected : attr->affects) {
      for (auto at = node->clean.begin(); at != node->clean.end();) at = at->first == affected ? node->clean.erase(at) : std::next(at);
      Spread({node.get(), affected, {}}, seen);
      out(affected, nullptr);
    }
  }
  if (node->user) {
    MPlugArray more;
    node->user->setDependentsDirty(MPlug(plug), more);
    for (const MPlug& m : more) {
      node->clean.erase(m.Ref().Key());
      Spread(m.Ref(), seen);
    }
    return;
  }
  for (const auto& [key, to] : std::map<PlugKey, std::vector<PlugRef>>(node->outputs))
    if (!(key.first->flags & kWritable)) out(key.first, &key.second);
  if (node->IsDag())
    for (const NodePtr& child : node->children) Spread({child.get(), FindAttr(*child, "parentMatrix").get(), {0}}, seen);
}
}  // namespace

void Dirty(const PlugRef& plug) {
  if (g_quiet || !AnybodyHearsDirt()) return;
  std::set<std::pair<Node*, PlugKey>> seen;
  Spread(plug, seen);
}

namespace {
std::optional<Value> ValueBefore(const PlugRef& plug) {
  const auto at = plug.node->values.find(plug.Key());
  return at == plug.node->values.end() ? std::nullopt : std::optional<Value>(at->second);
}
void PutBack(const PlugRef& plug, const std::optional<Value>& value) {
  if (value)
    plug.node->values[plug.Key()] = *value;
  else
    plug.node->values.erase(plug.Key());
}
}  // namespace

bool Put(const PlugRef& plug, const Value& value, bool callbacks) {
  if (callbacks && (IsLocked(plug) || InputOf(plug) || (plug.attr->parent && InputOf(ParentOf(plug))))) return false;
  const NodePtr node = plug.node->Ptr();
  const PlugKey key = plug.Key();
  Value put = value;
  if (IsWhole(*plug.attr)) put.number = std::trunc(put.number);
  if (plug.attr->type == MFn::kNumericAttribute && plug.attr->subtype == MFnNumericData::kBoolean) put.number = put.number != 0;
  if (plug.attr->min) put.number = std::max(put.number, *plug.attr->min);
  if (plug.attr->max) put.number = std::min(put.number, *plug.attr->max);
  const bool own = callbacks && plug.node->user && plug.attr->Is(kInternal);
  const std::optional<Value> before = own ? Get(plug) : ValueBefore(plug);
  const auto change = [=](const std::optional<Value>& v) {
    if (node->info->name == "time" && v) return SetNow(std::llround(v->number * MTime::ticksPerSecond()));
    const std::optional<Value> kept = ValueBefore(plug);
    if (v)
      node->values[key] = *v;
    else
      node->values.erase(key);
    // What the node keeps itself isn't kept here.
    if (v && own) {
      g_telling = true;
      const MDataHandle handle{MPlug(plug)};
      if (node->user->setInternalValueInContext(MPlug(plug), handle, MDGContext::fsNormal)) PutBack(plug, kept);
      g_telling = false;
    }
    if (v && v->data && v->data->shape && !node->curve && node->IsDag()) node->shape = v->data->shape;
    Dirty(plug);
    if (callbacks) NotifyAttr(MNodeMessage_kAttributeSet | MNodeMessage_kIncoming, plug);
  };
  Do([=] { change(put); }, [=] { change(before); });
  return true;
}

double GetNumber(Node& node, const char* name) {
  const AttrPtr attr = FindAttr(node, name);
  return attr ? Get({&node, attr.get(), {}}).number : 0;
}
bool PutNumber(Node& node, const char* name, double value) {
  const AttrPtr attr = FindAttr(node, name);
  return attr && Put({&node, attr.get(), {}}, {value, nullptr});
}

namespace {
void Tell(const PlugRef& source, const PlugRef& destination, bool made) {
  const MPlug from(source), to(destination);
  const auto hear = [&](const NodePtr& node, const MPlug& own, const MPlug& other, bool asSrc) {
    if (node->user) made ? node->user->connectionMade(own, other, asSrc) : node->user->connectionBroken(own, other, asSrc);
  };
  hear(source.node->Ptr(), from, to, true);
  hear(destination.node->Ptr(), to, from, false);
  Dirty(destination);
  NotifyConnection(source, destination, made);
  const int what = (made ? MNodeMessage_kMade : MNodeMessage_kBroken) | MNodeMessage_kOther;
  NotifyAttr(what | MNodeMessage_kIncoming, destination, source);
  NotifyAttr(what, source, destination);
}
void Tie(const PlugRef& source, const PlugRef& destination) {
  destination.node->inputs[destination.Key()] = source;
  source.node->outputs[source.Key()].push_back(destination);
  Tell(source, destination, true);
}
void Untie(const PlugRef& source, const PlugRef& destination) {
  // What came in last stays behind.
  if (!destination.attr->IsCompound() && destination.attr->type != MFn::kMessageAttribute) destination.node->values[destination.Key()] = Get(destination);
  destination.node->inputs.erase(destination.Key());
  auto& to = source.node->outputs[source.Key()];
  to.erase(std::find(to.begin(), to.end(), destination));
  if (to.empty()) source.node->outputs.erase(source.Key());
  // An element that goes with its connection, or a value that goes back to what it was by itself.
  if (destination.attr->disconnect != 2) destination.node->values.erase(destination.Key());
  Tell(source, destination, false);
}
}  // namespace

bool Connect(const PlugRef& source, const PlugRef& destination) {
  if (!source.node || !destination.node || InputOf(destination) || IsLocked(destination)) return false;
  if (!destination.attr->Is(kWritable) || !destination.attr->Is(kConnectable) || !source.attr->Is(kReadable)) return false;
  if (source.attr->children.size() != destination.attr->children.size() && source.attr->type != MFn::kMessageAttribute) return false;
  const bool wantsMessage = destination.attr->type == MFn::kMessageAttribute;
  if (source.attr->type == MFn::kMessageAttribute && !wantsMessage) return false;
  const NodePtr a = source.node->Ptr(), b = destination.node->Ptr();
  bool legal = true;
  if (a->user && a->user->legalConnection(MPlug(source), MPlug(destination), true, legal) == MStatus::kSuccess && !legal) return false;
  if (b->user && b->user->legalConnection(MPlug(destination), MPlug(source), false, legal) == MStatus::kSuccess && !legal) return false;
  Do([a, b, source, destination] { Tie(source, destination); },
     [a, b, source, destination, before = ValueBefore(destination)] { Untie(source, destination), PutBack(destination, before); });
  return true;
}
bool Disconnect(const PlugRef& source, const PlugRef& destination) {
  const PlugRef* from = destination.node ? InputOf(destination) : nullptr;
  if (!from || !(*from == source)) return false;
  const NodePtr a = source.node->Ptr(), b = destination.node->Ptr();
  Do([a, b, source, destination] { Untie(source, destination); },
     [a, b, source, destination, before = ValueBefore(destination)] { PutBack(destination, before), Tie(source, destination); });
  return true;
}

bool AddAttr(const NodePtr& node, const AttrPtr& attr) {
  if (FindAttr(*node, attr->name) || FindAttr(*node, attr->brief) || (node->locked && node->inScene)) return false;
  attr->flags |= kDynamicAttr;
  Do(
      [=] {
        node->dynamic.push_back(attr), NotifyAttr(MNodeMessage_kAdded, {node.get(), attr.get(), {}});
      },
      [=] { node->dynamic.erase(std::find(node->dynamic.begin(), node->dynamic.end(), attr)); });
  return true;
}
bool RemoveAttr(const NodePtr& node, const AttrPtr& attr) {
  const auto at = std::find(node->dynamic.begin(), node->dynamic.end(), attr);
  if (at == node->dynamic.end() || node->locked) return false;
  if (const PlugRef* in = InputOf({node.get(), attr.get(), {}})) Disconnect(PlugRef(*in), {node.get(), attr.get(), {}});
  for (const PlugRef& out : OutputsOf({node.get(), attr.get(), {}})) Disconnect({node.get(), attr.get(), {}}, out);
  const auto place = at - node->dynamic.begin();
  if (const std::string alias = AliasOf({node.get(), attr.get(), {}}); !alias.empty()) SetAlias({node.get(), attr.get(), {}}, "");
  const auto before = node->values;
  Do(
      [=] {
        node->dynamic.erase(node->dynamic.begin() + place);
        for (auto v = node->values.begin(); v != node->values.end();) v = v->first.first == attr.get() ? node->values.erase(v) : std::next(v);
        NotifyAttr(MNodeMessage_kRemoved, {node.get(), attr.get(), {}});
      },
      [=] { node->dynamic.insert(node->dynamic.begin() + place, attr), node->values = before; });
  return true;
}

// What is computed.

namespace {
DataPtr Matrix(const MMatrix& m) {
  const auto data = std::make_shared<Data>(MFn::kMatrixData);
  data->matrix = m;
  return data;
}
MVector Triple(Node& node, const char* name) {
  const AttrPtr attr = FindAttr(node, name);
  const PlugRef plug{&node, attr.get(), {}};
  return {Get(ChildOf(plug, 0)).number, Get(ChildOf(plug, 1)).number, Get(ChildOf(plug, 2)).number};
}
MMatrix WorldOf(Node& node, int instance, bool inclusive) {
  const auto paths = PathsTo(node.Ptr());
  if (paths.empty()) return inclusive ? LocalMatrix(node) : MMatrix();
  const MDagPath& path = paths[std::min<std::size_t>(static_cast<std::size_t>(instance), paths.size() - 1)];
  return inclusive ? path.inclusiveMatrix() : path.exclusiveMatrix();
}
Value Computed(const PlugRef& plug) {
  Node& node = *plug.node;
  const std::string& name = plug.attr->name;
  const int instance = plug.idx.empty() ? 0 : plug.idx[0];
  if (node.curve) {
    node.readsTime = true;
    const PlugRef* in = InputOf({&node, FindAttr(node, "input").get(), {}});
    const double seconds = in && in->node->info->name != "time" ? Get(*in).number : EvaluationSeconds();
    return {Evaluate(*node.curve, seconds), nullptr};
  }
  if (name == "worldMatrix") return {0, Matrix(WorldOf(node, instance, true))};
  if (name == "worldInverseMatrix") return {0, Matrix(WorldOf(node, instance, true).inverse())};
  if (name == "parentMatrix") return {0, Matrix(WorldOf(node, instance, false))};
  if (name == "parentInverseMatrix") return {0, Matrix(WorldOf(node, instance, false).inverse())};
  if (name == "matrix") return {0, Matrix(LocalMatrix(node))};
  if (name == "inverseMatrix") return {0, Matrix(LocalMatrix(node).inverse())};
  if (node.info->name == "addDoubleLinear") return {GetNumber(node, "input1") + GetNumber(node, "input2"), nullptr};
  if (node.info->name == "multDoubleLinear") return {GetNumber(node, "input1") * GetNumber(node, "input2"), nullptr};
  if (plug.attr->parent && plug.attr->parent->name == "outColor") return Get(RefOf(node.Ptr(), "color" + name.substr(name.size() - 1)));
  if (plug.attr->parent && plug.attr->parent->name == "outTranslate") {
    const std::string axis = name.substr(name.size() - 1);
    const double w = GetNumber(node, "weight"), a = GetNumber(node, ("inTranslate1" + axis).c_str()), b = GetNumber(node, ("inTranslate2" + axis).c_str());
    return {a + (b - a) * w, nullptr};
  }
  Value value;
  if (const ShapePtr shape = ShapeOf(node)) {
    const int kind = plug.attr->subtype;
    value.data = std::make_shared<Data>(kind == MFnData::kMesh ? MFn::kMeshData : kind == MFnData::kNurbsCurve ? MFn::kNurbsCurveData : MFn::kNurbsSurfaceData);
    value.data->shape = shape;
  }
  return value;
}

}  // namespace

Value Kept(const PlugRef& plug) {
  const auto at = plug.node->values.find(plug.Key());
  if (at != plug.node->values.end()) return at->second;
  return {plug.attr->fallback, plug.attr->type == MFn::kMatrixAttribute && !plug.attr->fallbackData ? Matrix(MMatrix()) : plug.attr->fallbackData};
}

namespace {
/// What the last computation left, or what one for another time gives, which leaves nothing.
Value OfUserNode(const PlugRef& plug) {
  Node& node = *plug.node;
  const bool other = !MDGContext::current().isNormal();
  if (!other && node.clean.count(plug.Key())) return Kept(plug);
  const auto values = node.values;
  const auto clean = node.clean;
  MDataBlock block;
  block.node = &node;
  node.clean.insert(plug.Key());
  g_quiet = TheState().computed = true;
  const NodePtr keep = node.Ptr();
  const Recording none(nullptr);
  {
    const HandlesKept handles;
    const MStatus status = keep->user->compute(MPlug(plug), block);
    if (status != MStatus::kSuccess && plug.attr->parent) keep->user->compute(MPlug(ParentOf(plug)), block);
  }
  g_quiet = false;
  const Value value = Kept(plug);
  if (other) node.values = values, node.clean = clean;
  return value;
}
}  // namespace

Value Get(const PlugRef& plug) {
  if (const PlugRef* in = InputOf(plug)) return Get(*in);
  if (plug.attr->parent && !plug.node->inputs.empty()) {
    if (const PlugRef* in = InputOf(ParentOf(plug)); in && in->attr->children.size() == plug.attr->parent->children.size()) {
      const auto& siblings = plug.attr->parent->children;
      for (std::size_t i = 0; i < siblings.size(); ++i)
        if (siblings[i].get() == plug.attr) return Get(ChildOf(*in, i));
    }
  }
  if (plug.node->info->name == "time") return {EvaluationSeconds(), nullptr};
  if (plug.node->user && plug.attr->Is(kInternal) && !g_telling) {
    MDataHandle handle(MPlug(plug), true);
    const Recording none(nullptr);
    plug.node->user->getInternalValueInContext(MPlug(plug), handle, MDGContext::fsNormal);
  }
  if (plug.node->user && (plug.attr->computed || (plug.attr->parent && plug.attr->parent->computed))) return OfUserNode(plug);
  if (!plug.node->user && !plug.attr->Is(kWritable)) return Computed(plug);
  if (plug.node->user && plug.node->IsDag() && !plug.attr->Is(kWritable) && !plug.attr->Is(kDynamicAttr)) return Computed(plug);
  return Kept(plug);
}

MMatrix LocalMatrix(Node& node) {
  if (!node.info->IsA("transform")) return {};
  MTransformationMatrix t;
  const MVector rotate = Triple(node, "rotate"), axis = Triple(node, "rotateAxis");
  const auto order = static_cast<MEulerRotation::RotationOrder>(static_cast<int>(GetNumber(node, "rotateOrder")));
  const auto put = [&](const char* name) { return Triple(node, name); };
  const double scale[3] = {put("scale").x, put("scale").y, put("scale").z}, shear[3] = {put("shear").x, put("shear").y, put("shear").z};
  t.setScale(scale, MSpace::kTransform);
  t.setShear(shear, MSpace::kTransform);
  t.setScalePivot(put("scalePivot"), MSpace::kTransform, false);
  t.setScalePivotTranslation(put("scalePivotTranslate"), MSpace::kTransform);
  t.setRotatePivot(put("rotatePivot"), MSpace::kTransform, false);
  t.setRotatePivotTranslation(put("rotatePivotTranslate"), MSpace::kTransform);
  t.setRotationOrientation(MEulerRotation(axis).asQuaternion());
  MEulerRotation turn(rotate, order);
  MMatrix m;
  const MVector move = put("translate");
  t.rotateTo(turn);
  if (node.info->IsA("joint")) {
    m = t.asMatrix() * MEulerRotation(Triple(node, "jointOrient")).asMatrix();
  } else {
    m = t.asMatrix();
  }
  for (int c = 0; c < 3; ++c) m(3, c) += move[c];
  return m;
}

ShapePtr ShapeOf(Node& node) {
  const AttrPtr attr = FindAttr(node, node.info->IsA("mesh") ? "inMesh" : "create");
  const PlugRef* in = attr ? InputOf({&node, attr.get(), {}}) : nullptr;
  if (!in) return node.shape;
  const Value value = Get(*in);
  return value.data ? value.data->shape : nullptr;
}

bool IsTimeDependent(Node& node) {
  for (const auto& [key, source] : node.inputs)
    if (source.node->curve || source.node->info->name == "time" || IsTimeDependent(*source.node)) return true;
  return false;
}

NodePtr ShadingOf(const Node& shape) {
  for (const auto& [serial, set] : TheScene().nodes)
    if (set->info->IsA("shadingEngine"))
      for (const auto& member : set->members)
        if (member.node.thing.get() == &shape) return set;
  return nullptr;
}

}  // namespace mayahost

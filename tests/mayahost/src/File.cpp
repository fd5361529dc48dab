// Scenes as text, and what is done with files.
#include <maya/MFileIO.h>
#include <maya/MPxFileTranslator.h>
#include <maya/MSceneMessage.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iomanip>
#include <sstream>

#include "Command.h"
#include "Fn.h"
#include "Notify.h"

namespace mayahost {
namespace {

std::string Quoted(const std::string& text) {
  std::string made = "\"";
  for (const char c : text) made += c == '\n' ? "\\n" : c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
  return made + '"';
}
/// Words of a line, as Quoted writes texts.
std::vector<std::string> Words(const std::string& line) {
  std::vector<std::string> words;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == ' ') continue;
    std::string word;
    if (line[i] == '"') {
      for (++i; i < line.size() && line[i] != '"'; ++i) word += line[i] != '\\' ? line[i] : line[++i] == 'n' ? '\n' : line[i];
    } else {
      for (; i < line.size() && line[i] != ' '; ++i) word += line[i];
    }
    words.push_back(word);
  }
  return words;
}
std::string Text(double value) {
  char text[40];
  return {text, std::to_chars(text, text + 40, value).ptr};
}
double Number(const std::string& text) { return MString(text.c_str()).asDouble(); }
template <class List>
std::string Joined(const List& list) {
  std::string text;
  for (const auto& v : list) text += " " + Text(static_cast<double>(v));
  return text;
}
std::string Of(const NodePtr& node) {
  const auto paths = PathsTo(node);
  return Quoted(paths.empty() ? node->name : PathName(paths[0], true));
}

std::string DataText(const Data& data) {
  if (data.type == MFn::kStringData) return " text " + Quoted(data.text);
  if (data.type == MFn::kStringArrayData) {
    std::string text = " texts";
    for (const std::string& one : data.texts) text += " " + Quoted(one);
    return text;
  }
  if (data.type == MFn::kMatrixData) return " matrix" + Joined(std::vector<double>(&data.matrix.matrix[0][0], &data.matrix.matrix[0][0] + 16));
  static const std::map<MFn::Type, const char*> kKinds = {
      {MFn::kIntArrayData, " ints"}, {MFn::kPointArrayData, " places"}, {MFn::kVectorArrayData, " vectors"}, {MFn::kMatrixArrayData, " matrices"}};
  return (kKinds.count(data.type) ? kKinds.at(data.type) : " numbers") + Joined(data.numbers);
}
/// Whether it is as the file has it, whose node this is.
template <class Map>
bool IsOriginal(const Map& then, const PlugKey& key, const typename Map::mapped_type& now) {
  const auto at = then.find(key);
  if constexpr (std::is_same_v<typename Map::mapped_type, Value>)
    return at != then.end() && at->second.number == now.number && at->second.data == now.data;
  else
    return at != then.end() && at->second == now;
}
void WriteValues(std::ostream& out, Node& node) {
  const Origin* const origin = node.origin.get();
  for (const AttrPtr& attr : AllAttrs(node)) {
    for (auto at = node.values.lower_bound({attr.get(), {}}); at != node.values.end() && at->first.first == attr.get(); ++at) {
      const PlugRef plug{&node, attr.get(), at->first.second};
      if (!attr->Is(kStorable) || InputOf(plug) || attr->computed) continue;
      bool save = true;
      if (node.user && node.user->shouldSave(MPlug(plug), save) == MStatus::kSuccess && !save) continue;
      const bool whole = attr->parent && InputOf({&node, attr->parent, plug.idx});
      if (whole || (attr->IsData() && (!at->second.data || at->second.data->shape))) continue;
      if (origin ? IsOriginal(origin->values, at->first, at->second) : !attr->IsData() && at->second.number == attr->fallback) continue;
      out << "set " << Quoted(PlugName(plug, true)) << (attr->IsData() ? DataText(*at->second.data) : " number " + Text(at->second.number)) << "\n";
    }
    for (auto at = node.flags.lower_bound({attr.get(), {}}); at != node.flags.end() && at->first.first == attr.get(); ++at)
      if (origin ? !IsOriginal(origin->flags, at->first, at->second) : at->second != attr->flags)
        out << "flags " << Quoted(PlugName({&node, attr.get(), at->first.second}, true)) << " " << at->second << "\n";
  }
}
void WriteShape(std::ostream& out, const Shape& s) {
  out << "points" << Joined(s.points) << "\ncounts" << Joined(s.counts) << "\nconnects" << Joined(s.connects) << "\n";
  if (!s.u.empty()) out << "u" << Joined(s.u) << "\nv" << Joined(s.v) << "\nuvs" << Joined(s.uvs) << "\n";
  if (s.cvs.empty()) return;
  out << "cvs";
  for (const MPoint& p : s.cvs) out << " " << Text(p.x) << " " << Text(p.y) << " " << Text(p.z);
  out << "\nknots" << Joined(s.knots) << "\nvknots" << Joined(s.vKnots) << "\nform " << s.degree << " " << s.form << " " << s.vDegree << " " << s.vForm << "\n";
}
void WriteAttr(std::ostream& out, const Attr& attr) {
  out << "attr " << attr.name << " " << attr.brief << " " << attr.type << " " << attr.subtype << " " << attr.flags << " " << Text(attr.fallback) << " "
      << (attr.parent ? attr.parent->name : "-") << " " << (attr.min ? Text(*attr.min) : "-") << " " << (attr.max ? Text(*attr.max) : "-");
  for (const auto& [i, field] : attr.fields) out << " " << i << " " << Quoted(field);
  out << "\n";
  if (!attr.nice.empty() || attr.softMin || attr.softMax)
    out << "about " << attr.name << " " << Quoted(attr.nice) << " " << (attr.softMin ? Text(*attr.softMin) : "-") << " "
        << (attr.softMax ? Text(*attr.softMax) : "-") << "\n";
  if (attr.fallbackData && !attr.fallbackData->shape) out << "default " << attr.name << DataText(*attr.fallbackData) << "\n";
  for (const std::string& category : attr.categories) out << "category " << attr.name << " " << Quoted(category) << "\n";
  for (const AttrPtr& child : attr.children) WriteAttr(out, *child);
}
void WriteNode(std::ostream& out, Node& node) {
  if (!node.raw.empty()) {
    out << node.raw;
    return;
  }
  const std::string above = node.parents.empty() || node.parents[0] == TheScene().world.get() ? "\"\"" : Of(node.parents[0]->Ptr());
  out << "node " << node.info->name << " " << Quoted(node.name) << " " << above << (node.isDefault ? " default" : "") << (node.locked ? " locked" : "") << "\n";
  for (const AttrPtr& attr : node.dynamic) {
    WriteAttr(out, *attr);
  }
  WriteValues(out, node);
  for (const auto& [alias, key] : node.aliases) out << "alias " << alias << " " << Quoted(PlugName({&node, key.first, key.second}, true)) << "\n";
  if (node.shape && node.IsDag()) WriteShape(out, *node.shape);
  if (node.unloaded) out << "unloaded " << Quoted(node.edits) << "\n";
  if (!node.curve) return;
  out << "curve " << node.curve->pre << " " << node.curve->post << " " << node.curve->weighted << "\n";
  for (const Key& k : node.curve->keys)
    out << "key " << k.ticks << " " << Text(k.value) << " " << k.type[0] << " " << k.type[1] << " " << Text(k.x[0]) << " " << Text(k.y[0]) << " "
        << Text(k.x[1]) << " " << Text(k.y[1]) << " " << k.tied << " " << k.weightTied << " " << k.breakdown << "\n";
}
/// What was done to a node of a reference since its file was read.
void WriteEdits(std::ostream& out, Node& node) {
  std::ostringstream edits;
  for (std::size_t i = node.origin->dynamic; i < node.dynamic.size(); ++i) WriteAttr(edits, *node.dynamic[i]);
  WriteValues(edits, node);
  if (node.IsDag() && !node.parents.empty() && node.parents[0] != node.origin->parent)
    out << "move " << Quoted(node.origin->path) << " " << (node.parents[0] == TheScene().world.get() ? "\"\"" : Of(node.parents[0]->Ptr())) << "\n";
  for (const auto& [key, from] : node.origin->inputs)
    if (const PlugRef plug{&node, key.first, key.second}; !InputOf(plug)) out << "cut " << Of(node.Ptr()) << " " << Quoted(PlugName(plug, true)) << "\n";
  if (!edits.str().empty()) out << "edit " << Of(node.Ptr()) << "\n" << edits.str();
}
void WriteTies(std::ostream& out, Node& node) {
  out << node.rawTies;
  for (std::size_t i = 1; !node.origin && i < node.parents.size(); ++i) out << "instance " << Of(node.Ptr()) << " " << Of(node.parents[i]->Ptr()) << "\n";
  for (const AttrPtr& attr : AllAttrs(node))
    for (auto at = node.inputs.lower_bound({attr.get(), {}}); at != node.inputs.end() && at->first.first == attr.get(); ++at)
      if (at->second.node->inScene && !(node.origin && IsOriginal(node.origin->inputs, at->first, at->second)))
        out << "connect " << Of(at->second.node->Ptr()) << " " << Quoted(PlugName(at->second, true)) << " " << Of(node.Ptr()) << " "
            << Quoted(PlugName({&node, attr.get(), at->first.second}, true)) << "\n";
  for (const auto& member : node.members)
    if (!node.origin || !NodeOf(member.node)->origin) out << "member " << Of(node.Ptr()) << " " << Of(NodeOf(member.node)) << "\n";
}
/// Parents stand ahead of what is below them, children in their order.
void InOrder(const NodePtr& node, const Node* above, std::vector<NodePtr>& order) {
  if (above && node->parents[0] != above) return;
  order.push_back(node);
  for (const NodePtr& child : node->children) InOrder(child, node.get(), order);
}
}  // namespace

std::string WriteScene(bool everything, const std::vector<NodePtr>* only) {
  const Scene& s = TheScene();
  std::ostringstream out;
  out << "mayahost 1\nunits " << s.timeUnit << " " << s.lengthUnit << " " << s.angleUnit << "\nup " << (s.yUp ? "y" : "z") << "\nrange " << s.minTime << " "
      << s.maxTime << " " << s.startTime << " " << s.endTime << " " << s.now << "\n";
  for (const auto& [key, text] : s.info) out << "info " << Quoted(key) << " " << Quoted(text) << "\n";
  for (const std::string& space : s.namespaces) out << "namespace " << Quoted(space) << "\n";
  std::vector<NodePtr> order;
  for (const NodePtr& top : s.world->children) InOrder(top, s.world.get(), order);
  for (const auto& [serial, node] : s.nodes)
    if (!node->IsDag()) order.push_back(node);
  const auto goes = [&](const NodePtr& node) {
    if (everything) return true;
    return !node->reference && !node->doNotWrite &&
           (!only || std::any_of(only->begin(), only->end(), [&](const NodePtr& o) { return IsBelow(node.get(), o.get()); }));
  };
  // The nodes that references bring have to be there when others are hung below them.
  for (int references = 1; references >= 0; --references)
    for (const NodePtr& node : order)
      if (goes(node) && (node->info->name == "reference") == (references == 1))
        WriteNode(out, *node);
      else if (!everything && !only && node->origin && !references)
        WriteEdits(out, *node);
  for (const NodePtr& node : order)
    if (goes(node) || (!only && node->origin)) WriteTies(out, *node);
  if (everything)
    for (const auto& item : s.selection.items) out << "selected " << Of(NodeOf(item.node)) << "\n";
  return out.str();
}
std::string Dump() { return WriteScene(true); }
std::string SceneText() { return WriteScene(false); }

namespace {

struct Reader {
  std::string space;  ///< with its colon
  std::string clash;  ///< what goes ahead of names that are taken
  Node* reference = nullptr;
  bool settings = false;
  NodePtr node;
  std::shared_ptr<Shape> shape;
  std::map<std::string, NodePtr> byName;  ///< as the file calls them
  bool lost = false;                      ///< lines are of a node that isn't there any more

  NodePtr Find(const std::string& name) const {
    const auto at = byName.find(name);
    if (at != byName.end()) return at->second;
    const auto found = Resolve(name);
    return found.empty() ? nullptr : NodeOf(found[0].node);
  }
  bool MakeOne(const std::vector<std::string>& w, const std::string& line) {
    if (w.size() < 4) return false;
    const std::string path = w[3].empty() ? "|" + w[2] : w[3] + "|" + w[2];
    const bool isDefault = std::find(w.begin() + 4, w.end(), "default") != w.end();
    const NodeType* type = FindType(w[1]);
    const auto known = isDefault ? Resolve(w[2]) : std::vector<MSelectionList::Item>();
    const NodePtr above = w[3].empty() ? nullptr : Find(w[3]);
    if (!w[3].empty() && !above) return false;
    if (!known.empty()) {
      node = NodeOf(known[0].node);
    } else {
      node = MakeNode(type ? type : FindType("unknown"), space + w[2]);
      if (!type) node->raw = line + "\n";
      const std::string wanted = node->name;
      const Node* at = above ? above.get() : TheScene().world.get();
      if (!clash.empty() && UniqueName(wanted, *node, at) != wanted) node->name = clash + "_" + wanted;
      AddNode(node, above.get());
      node->reference = reference;
      node->locked = std::find(w.begin() + 4, w.end(), "locked") != w.end();
      node->isDefault = isDefault && settings;
    }
    shape.reset();
    byName[node->IsDag() ? path : w[2]] = node;
    return true;
  }
  /// What there is to say of an attribute besides its line.
  bool AboutAttr(const std::vector<std::string>& w) {
    const AttrPtr attr = w.size() > 2 ? FindAttr(*node, w[1]) : nullptr;
    if (!attr) return false;
    if (w[0] == "category") return attr->categories.insert(w[2]), true;
    attr->nice = w[2];
    if (w.at(3) != "-") attr->softMin = Number(w[3]);
    if (w.at(4) != "-") attr->softMax = Number(w[4]);
    return true;
  }
  bool SetOne(const std::vector<std::string>& w) {
    const PlugRef plug = w.size() > 2 ? RefOf(node, w[1]) : PlugRef{};
    if (!plug.node) return false;
    std::vector<double> numbers;
    for (std::size_t i = 3; i < w.size(); ++i) numbers.push_back(Number(w[i]));
    if (w[2] == "number") return plug.node->values[plug.Key()] = {numbers.at(0), nullptr}, true;
    static const std::map<std::string, MFn::Type> kKinds = {
        {"text", MFn::kStringData},         {"texts", MFn::kStringArrayData}, {"matrix", MFn::kMatrixData},       {"ints", MFn::kIntArrayData},
        {"numbers", MFn::kDoubleArrayData}, {"places", MFn::kPointArrayData}, {"vectors", MFn::kVectorArrayData}, {"matrices", MFn::kMatrixArrayData}};
    const auto data = std::make_shared<Data>(kKinds.at(w[2]));
    if (w[2] == "text" && w.size() > 3) data->text = w[3];
    if (w[2] == "texts") data->texts.assign(w.begin() + 3, w.end());
    if (w[2] == "matrix" && numbers.size() == 16) std::copy(numbers.begin(), numbers.end(), &data->matrix.matrix[0][0]);
    if (w[2] != "text" && w[2] != "texts" && w[2] != "matrix") data->numbers = numbers;
    w[0] == "default" ? void(plug.attr->fallbackData = data) : void(node->values[plug.Key()] = {0, data});
    return true;
  }
  bool ShapeLine(const std::vector<std::string>& w) {
    if (!shape) node->shape = shape = std::make_shared<Shape>();
    std::vector<double> n;
    for (std::size_t i = 1; i < w.size(); ++i) n.push_back(Number(w[i]));
    if (w[0] == "points") shape->points.assign(n.begin(), n.end());
    if (w[0] == "counts") shape->counts.assign(n.begin(), n.end());
    if (w[0] == "connects") shape->connects.assign(n.begin(), n.end());
    if (w[0] == "knots") shape->knots = n;
    if (w[0] == "vknots") shape->vKnots = n;
    for (std::size_t i = 0; w[0] == "cvs" && i + 2 < n.size(); i += 3) shape->cvs.emplace_back(n[i], n[i + 1], n[i + 2]);
    if (w[0] == "u") shape->u.assign(n.begin(), n.end());
    if (w[0] == "v") shape->v.assign(n.begin(), n.end());
    if (w[0] == "uvs") shape->uvs.assign(n.begin(), n.end());
    if (w[0] == "form" && n.size() == 4) shape->degree = int(n[0]), shape->form = int(n[1]), shape->vDegree = int(n[2]), shape->vForm = int(n[3]);
    return true;
  }
  static bool HasReferences() {
    const auto& nodes = TheScene().nodes;
    return std::any_of(nodes.begin(), nodes.end(), [](const auto& entry) { return entry.second->info->name == "reference"; });
  }
  /// A change of what a reference brought; a file that has no such node any more loses it.
  bool EditLine(const std::vector<std::string>& w, const std::string& line) {
    node = Find(w[1]), shape.reset();
    lost = !node;
    if (lost) return Say(Spoken::kWarning, "Not found in a referenced file: " + line), true;
    if (w[0] == "cut" && w.size() > 2)
      if (const PlugRef to = RefOf(node, w[2]); to.node && InputOf(to)) Disconnect(PlugRef(*InputOf(to)), to);
    if (w[0] != "move") return true;
    const NodePtr above = w.size() > 2 && !w[2].empty() ? Find(w[2]) : TheScene().world;
    return above && Reparent(node, node->parents.at(0), above.get());
  }
  bool TieLine(const std::vector<std::string>& w, const std::string& line) {
    const NodePtr a = w.size() > 2 ? Find(w[1]) : nullptr, b = w[0] == "connect" ? w.size() > 4 ? Find(w[3]) : nullptr : w.size() > 2 ? Find(w[2]) : nullptr;
    if (!a || !b) return HasReferences() && (Say(Spoken::kWarning, "Not found in a referenced file: " + line), true);
    if (w[0] == "instance") return Reparent(a, nullptr, b.get(), true);
    if (w[0] == "member") {
      MDagPath path;
      MDagPath::getAPathTo(Obj(b), path);
      if (std::none_of(a->members.begin(), a->members.end(), [&](const auto& m) { return m.node == Obj(b); })) a->members.push_back({Obj(b), path, {}});
      return true;
    }
    const NodePtr lost = !a->raw.empty() ? a : !b->raw.empty() ? b : nullptr;
    if (lost) return lost->rawTies += line + "\n", true;
    const PlugRef from = RefOf(a, w[2]), to = RefOf(b, w[4]);
    return from.node && to.node && (InputOf(to) || Connect(from, to));
  }
  bool NodeLine(const std::vector<std::string>& w) {
    if (w[0] == "about" || w[0] == "category") return AboutAttr(w);
    if (w[0] == "default") return SetOne(w);
    if (w[0] == "alias" && w.size() > 2) {
      const PlugRef plug = RefOf(node, w[2]);
      return plug.node && (AliasOf(plug) == w[1] || SetAlias(plug, w[1]));
    }
    if (w[0] == "attr" && w.size() > 9) {
      const AttrPtr attr = MakeAttr(static_cast<MFn::Type>(std::stoi(w[3])), w[1], w[2], std::stoi(w[4]));
      attr->flags = static_cast<unsigned>(std::stoul(w[5])), attr->fallback = Number(w[6]);
      if (w.at(8) != "-") attr->min = Number(w[8]);
      if (w.at(9) != "-") attr->max = Number(w[9]);
      for (std::size_t i = 10; i + 1 < w.size(); i += 2) attr->fields[static_cast<short>(std::stoi(w[i]))] = w[i + 1];
      if (FindAttr(*node, w[1])) return true;
      const AttrPtr above = w[7] != "-" ? FindAttr(*node, w[7]) : nullptr;
      return above ? (AddChildAttr(*above, attr), true) : AddAttr(node, attr);
    }
    if (w[0] == "set") return SetOne(w);
    if (w[0] == "flags" && w.size() > 2) {
      const PlugRef plug = RefOf(node, w[1]);
      return plug.node && (node->flags[plug.Key()] = static_cast<unsigned>(std::stoul(w[2])), true);
    }
    if (w[0] == "curve" && w.size() > 3 && node->curve)
      return node->curve->pre = std::stoi(w[1]), node->curve->post = std::stoi(w[2]), node->curve->weighted = w[3] == "1", true;
    if (w[0] == "key" && w.size() > 9 && node->curve) {
      Key k;
      k.ticks = std::stoll(w[1]), k.value = Number(w[2]), k.type[0] = std::stoi(w[3]), k.type[1] = std::stoi(w[4]);
      k.x[0] = Number(w[5]), k.y[0] = Number(w[6]), k.x[1] = Number(w[7]), k.y[1] = Number(w[8]), k.tied = w[9] == "1";
      if (w.size() > 11) k.weightTied = w[10] == "1", k.breakdown = w[11] == "1";
      return node->curve->keys.push_back(k), true;
    }
    return ShapeLine(w);
  }
  /// A reference brings its nodes once it is read itself.
  void Finish() {
    const NodePtr read = std::exchange(node, nullptr);
    if (read && read->info->name == "reference" && !read->unloaded) LoadReference(read);
  }
  bool TryLine(const std::string& line) {
    try {
      return Line(line);
    } catch (const std::exception&) {
      return false;
    }
  }
  bool Line(const std::string& line) {
    const auto w = Words(line);
    if (w.empty()) return true;
    Scene& s = TheScene();
    if (w[0] == "units" && w.size() > 3)
      return !settings || (s.timeUnit = static_cast<MTime::Unit>(std::stoi(w[1])), s.lengthUnit = static_cast<MDistance::Unit>(std::stoi(w[2])),
                           s.angleUnit = static_cast<MAngle::Unit>(std::stoi(w[3])), true);
    if (w[0] == "up" && w.size() > 1) return !settings || (s.yUp = w[1] == "y", true);
    if (w[0] == "range" && w.size() > 5)
      return !settings || (s.minTime = std::stoll(w[1]), s.maxTime = std::stoll(w[2]), s.startTime = std::stoll(w[3]), s.endTime = std::stoll(w[4]),
                           s.now = std::stoll(w[5]), true);
    if (w[0] == "info" && w.size() > 2) return !settings || (s.info[w[1]] = w[2], true);
    if (w[0] == "namespace" && w.size() > 1) return s.namespaces.insert(space + w[1]), true;
    const bool tie = w[0] == "instance" || w[0] == "connect" || w[0] == "member", edit = (w[0] == "edit" || w[0] == "cut" || w[0] == "move") && w.size() > 1;
    if (tie || edit || w[0] == "node") Finish();
    if (tie) return TieLine(w, line);
    if (edit) return EditLine(w, line);
    if (w[0] == "node") return lost = false, MakeOne(w, line);
    if (lost) return true;
    if (!node) return false;
    if (w[0] == "unloaded" && w.size() > 1) return node->unloaded = true, node->edits = w[1], true;
    if (!node->raw.empty()) return node->raw += line + "\n", true;
    return NodeLine(w);
  }
};
struct During {
  explicit During(bool& flag, const std::string& file) : m_flag(flag), m_before(flag) { m_flag = true, TheState().asked = file; }
  ~During() { m_flag = m_before; }
  bool& m_flag;
  bool m_before;
};
bool Load(const std::string& file, std::string& text) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return Say(Spoken::kError, "File not found: " + file), false;
  text.assign(std::istreambuf_iterator<char>(in), {});
  return true;
}
using M = MSceneMessage;
}  // namespace

bool ReadScene(const std::string& text, const std::string& space, Node* reference, bool settings) {
  const Recording none(nullptr);
  const std::string current = std::exchange(TheScene().currentNamespace, "");
  Reader reader;
  reader.reference = reference, reader.settings = settings;
  if (!space.empty())
    TheScene().namespaces.insert(space), reader.space = space + ":";
  else if (!settings)
    reader.clash = LegalName(
        std::string(TheState().asked.substr(TheState().asked.rfind('/') + 1)).substr(0, TheState().asked.substr(TheState().asked.rfind('/') + 1).find('.')));
  NotifyScene(M::kBeforeFileRead);
  std::istringstream lines(text);
  std::string line;
  bool good = static_cast<bool>(std::getline(lines, line)) && line == "mayahost 1";
  {
    const During reading(TheState().reading, TheState().asked);
    for (int number = 2; good && std::getline(lines, line); ++number)
      if (!reader.TryLine(line)) good = (Say(Spoken::kError, "Line " + std::to_string(number) + " of the file can't be read: " + line), false);
  }
  if (good) reader.Finish();
  TheScene().currentNamespace = current;
  if (good) NotifyScene(M::kAfterFileRead);
  return good;
}

namespace {
NodePtr AddDefault(const char* type, const char* name, Node* parent) {
  const NodePtr node = MakeNode(FindType(type), name);
  AddNode(node, parent);
  node->isDefault = true;
  return node;
}
void AddDefaults() {
  TheScene().time = AddDefault("time", "time1", nullptr);
  const struct {
    const char* name;
    double x, y, z, rx, ry;
  } kCameras[] = {{"persp", 28, 21, 28, -0.48, 0.785}, {"top", 0, 1000.1, 0, -M_PI / 2, 0}, {"front", 0, 0, 1000.1, 0, 0}, {"side", 1000.1, 0, 0, 0, M_PI / 2}};
  for (const auto& c : kCameras) {
    const NodePtr node = AddDefault("transform", c.name, nullptr);
    AddDefault("camera", (std::string(c.name) + "Shape").c_str(), node.get());
    PutNumber(*node, "translateX", c.x), PutNumber(*node, "translateY", c.y), PutNumber(*node, "translateZ", c.z);
    PutNumber(*node, "rotateX", c.rx), PutNumber(*node, "rotateY", c.ry), PutNumber(*node, "visibility", 0);
  }
  const NodePtr shader = AddDefault("lambert", "lambert1", nullptr), group = AddDefault("shadingEngine", "initialShadingGroup", nullptr);
  Connect(RefOf(shader, "outColor"), RefOf(group, "surfaceShader"));
}
}  // namespace

void ClearScene() {
  const Recording none(nullptr);
  FlushUndo();
  TheState().redo.clear();
  Scene& s = TheScene();
  s.selection.clear();
  const auto nodes = s.nodes;
  for (const auto& [serial, node] : nodes) NotifyNode(false, node), node->inScene = false;
  for (const auto& [serial, node] : nodes)
    node->parents.clear(), node->children.clear(), node->inputs.clear(), node->outputs.clear(), node->members.clear(), node->reference = nullptr,
                                                                                                                       node->origin.reset();
  const auto [time, length, angle, up] = std::tuple(s.timeUnit, s.lengthUnit, s.angleUnit, s.yUp);
  const NodePtr world = s.world;
  world->children.clear();
  const int serial = s.nextSerial, uuid = s.nextUuid;
  s = Scene();
  s.world = world, s.timeUnit = time, s.lengthUnit = length, s.angleUnit = angle, s.yUp = up, s.nextSerial = serial, s.nextUuid = uuid;
  AddDefaults();
  s.modified = false;
}

void Reset() {
  ClearScene();
  State& state = TheState();
  const auto commands = state.commands;
  const auto translators = state.translators;
  state = State();
  state.commands = commands, state.translators = translators;
  const NodePtr world = TheScene().world;
  TheScene().timeUnit = MTime::kFilm, TheScene().lengthUnit = MDistance::kCentimeters, TheScene().angleUnit = MAngle::kDegrees, TheScene().yUp = true;
  MDGContext::fsNormal.makeCurrent();
}

bool NewScene() {
  if (!AskScene(M::kBeforeNewCheck)) return false;
  const During now(TheState().newing, "");
  NotifyScene(M::kBeforeNew);
  ClearScene();
  NotifyScene(M::kSceneUpdate);
  NotifyScene(M::kAfterNew);
  return TheScene().modified = false, true;
}
namespace {
bool IsOwn(const std::string& type) { return type.empty() || type == "mayaAscii" || type == "mayaBinary"; }
/// By a plug-in's format, if there is one for it; `done` when it was tried.
bool ByPlugin(const std::string& file, const std::string& type, std::string options, int mode, bool& done) {
  const bool write = mode >= MPxFileTranslator::kSaveAccessMode;
  const auto translator = IsOwn(type) && (write || !type.empty()) ? nullptr : TranslatorFor(type, file, write, options);
  done = translator || !IsOwn(type);
  if (!translator && done) Say(Spoken::kError, "Unrecognized file type: " + type);
  return translator && Translate(*translator, file, options, mode);
}
}  // namespace
bool OpenScene(const std::string& file, const std::string& type) {
  if (!AskScene(M::kBeforeOpenCheck)) return false;
  const During now(TheState().opening, file);
  NotifyScene(M::kBeforeOpen);
  std::string text;
  bool done = false;
  if (!Load(file, text)) return false;
  ClearScene();
  TheScene().file = file;
  const bool good = ByPlugin(file, type, "", MPxFileTranslator::kOpenAccessMode, done);
  if (done ? !good : !ReadScene(text, "", nullptr, true)) return false;
  NotifyScene(M::kSceneUpdate);
  NotifyScene(M::kAfterOpen);
  return TheScene().modified = false, true;
}
namespace {
bool Write(const std::string& file, const std::string& text) {
  std::ofstream out(file, std::ios::binary);
  out << text;
  return out.flush() ? true : (Say(Spoken::kError, "Can't write: " + file), false);
}
}  // namespace
bool SaveScene(const std::string& file) {
  if (file.empty()) return Say(Spoken::kError, "The scene has no file name."), false;
  if (!AskScene(M::kBeforeSaveCheck)) return false;
  {
    const During now(TheState().writing, file);
    NotifyScene(Pretends(Wrong::kCallbackOrder) ? M::kAfterSave : M::kBeforeSave);
    if (!Write(file, WriteScene(false))) return false;
  }
  TheScene().file = file, TheScene().modified = false;
  NotifyScene(Pretends(Wrong::kCallbackOrder) ? M::kBeforeSave : M::kAfterSave);
  return true;
}
bool ExportScene(const std::string& file, bool selected, const std::string& type, const std::string& options) {
  const During now(TheState().writing, file);
  NotifyScene(M::kBeforeExport);
  std::vector<NodePtr> only;
  for (const auto& item : TheScene().selection.items) only.push_back(NodeOf(item.node));
  bool done = false;
  bool good = ByPlugin(file, type, options, selected ? MPxFileTranslator::kExportActiveAccessMode : MPxFileTranslator::kExportAccessMode, done);
  if (!done) good = Write(file, WriteScene(false, selected ? &only : nullptr));
  NotifyScene(M::kAfterExport);
  return good;
}
bool ImportScene(const std::string& file, const std::string& space, const std::string& type, const std::string& options) {
  std::string text;
  const During now(TheState().importing, file);
  NotifyScene(M::kBeforeImport);
  bool done = false, good = Load(file, text) && ByPlugin(file, type, options, MPxFileTranslator::kImportAccessMode, done);
  if (!done && !text.empty()) good = ReadScene(text, space, nullptr, false);
  NotifyScene(M::kAfterImport);
  return TheScene().modified = true, good;
}
std::string FileOf(const NodePtr& reference) {
  const Value v = Get(NumberOf(reference, "fileNames"));
  return v.data ? v.data->text : "";
}
std::string WithoutCopy(const std::string& file) {
  const auto brace = file.rfind('{');
  return brace != std::string::npos && file.back() == '}' ? file.substr(0, brace) : file;
}
std::string SpaceOf(const Node& reference) { return reference.name.substr(0, reference.name.rfind("RN")); }
NodePtr FindReference(const std::string& name) {
  for (const auto& [serial, node] : TheScene().nodes)
    if (node->info->name == "reference" && (node->name == name || FileOf(node) == name)) return node;
  return nullptr;
}
std::vector<NodePtr> NodesOf(const Node* reference) {
  std::vector<NodePtr> found;
  for (const auto& [serial, node] : TheScene().nodes)
    for (const Node* above = node->reference; above; above = above->reference)
      if (above == reference) {
        found.push_back(node);
        break;
      }
  return found;
}
namespace {
void NoteOrigins(const Node* reference) {
  for (const NodePtr& node : NodesOf(reference)) {
    node->origin = std::make_unique<Origin>();
    *node->origin = {node->values, node->flags, node->inputs, node->dynamic.size(), node->parents.empty() ? nullptr : node->parents[0], ""};
    if (const auto paths = PathsTo(node); !paths.empty()) node->origin->path = PathName(paths[0], true);
  }
}
/// Cuts what leads in or out; the answer is what brings back all edits.
std::string TakeEdits(const std::vector<NodePtr>& nodes) {
  std::ostringstream edits;
  const auto among = [&](const Node* node) { return std::any_of(nodes.begin(), nodes.end(), [&](const NodePtr& n) { return n.get() == node; }); };
  for (const NodePtr& node : nodes) WriteEdits(edits, *node);
  for (const NodePtr& node : nodes) WriteTies(edits, *node);
  for (const NodePtr& node : nodes)
    for (const auto& [key, all] : node->outputs)
      for (const PlugRef& to : all)
        if (!among(to.node))
          edits << "connect " << Of(node) << " " << Quoted(PlugName({node.get(), key.first, key.second}, true)) << " " << Of(to.node->Ptr()) << " "
                << Quoted(PlugName(to, true)) << "\n";
  for (const auto& [serial, set] : TheScene().nodes)
    for (const auto& member : set->members)
      if (!among(set.get()) && among(NodeOf(member.node).get())) edits << "member " << Of(set) << " " << Of(NodeOf(member.node)) << "\n";
  for (const NodePtr& node : nodes) {
    for (const auto& [key, from] : std::map<PlugKey, PlugRef>(node->inputs))
      if (!among(from.node)) Disconnect(from, {node.get(), key.first, key.second});
    for (const auto& [key, all] : std::map<PlugKey, std::vector<PlugRef>>(node->outputs))
      for (const PlugRef& to : all)
        if (!among(to.node)) Disconnect({node.get(), key.first, key.second}, to);
  }
  return edits.str();
}
}  // namespace
bool LoadReference(const NodePtr& reference) {
  const std::string file = WithoutCopy(FileOf(reference));
  std::string text;
  if (!Load(file, text)) return false;
  const During now(TheState().referencing, file);
  NotifyScene(M::kBeforeLoadReference);
  if (!NodesOf(reference.get()).empty()) RemoveReference(reference, true);
  const bool good = ReadScene(text, SpaceOf(*reference), reference.get(), false);
  NoteOrigins(reference.get());
  reference->unloaded = false;
  if (const std::string edits = std::exchange(reference->edits, ""); !edits.empty()) {
    const Recording none(nullptr);
    Reader reader;
    std::istringstream lines(edits);
    for (std::string line; std::getline(lines, line);)
      if (!reader.TryLine(line)) Say(Spoken::kWarning, "An edit of a reference can't be made: " + line);
  }
  NotifyScene(M::kAfterLoadReference);
  return good;
}
NodePtr ReferenceScene(const std::string& file, const std::string& space) {
  const Recording none(nullptr);
  const std::string base = file.substr(file.rfind('/') + 1);
  NotifyScene(M::kBeforeCreateReference);
  const std::string wanted = FullNamespace(LegalName(space.empty() ? base.substr(0, base.find('.')) : space));
  std::string own = wanted;
  for (int i = 1; TheScene().namespaces.count(own) || !Resolve(own + "RN").empty(); ++i) own = wanted + std::to_string(i);
  const NodePtr node = MakeNode(FindType("reference"), ":" + own + "RN");
  const auto data = std::make_shared<Data>(MFn::kStringData);
  data->text = file;
  for (int i = 1; FindReference(data->text); ++i) data->text = file + "{" + std::to_string(i) + "}";
  AddNode(node, nullptr);
  Put(NumberOf(node, "fileNames"), {0, data});
  const bool good = LoadReference(node);
  if (!good)
    DeleteNode(node, true);
  else
    NotifyScene(M::kAfterCreateReference), NotifyScene(M::kAfterCreateReferenceAndRecordEdits);
  return good ? node : nullptr;
}
bool ImportReference(const NodePtr& reference) {
  const Recording none(nullptr);
  NotifyScene(M::kBeforeImportReference);
  for (const auto& [serial, node] : TheScene().nodes)
    if (node->reference == reference.get()) node->reference = reference->reference, node->origin.reset();
  DeleteNode(reference, true);
  NotifyScene(M::kAfterImportReference);
  return TheScene().modified = true;
}
bool RemoveReference(const NodePtr& reference, bool unload) {
  const Recording none(nullptr);
  NotifyScene(unload ? M::kBeforeUnloadReference : M::kBeforeRemoveReference);
  const std::vector<NodePtr> nodes = NodesOf(reference.get());
  std::string edits = unload && !nodes.empty() ? TakeEdits(nodes) : reference->edits;
  for (const NodePtr& node : nodes) {
    if (node->inScene) DeleteNode(node, true);
    node->origin.reset();
  }
  reference->unloaded = unload, reference->edits = std::move(edits);
  if (!unload) DeleteNode(reference, true);
  NotifyScene(unload ? M::kAfterUnloadReference : M::kAfterRemoveReference);
  return true;
}
}  // namespace mayahost

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN
MString MFileIO::currentFile() { return TheScene().file.empty() ? "untitled" : TheScene().file.c_str(); }
MStatus MFileIO::newFile(bool force) { return St((force || !TheScene().modified) && NewScene()); }
namespace {
const char* Given(const char* text) { return text ? text : ""; }
}  // namespace
MStatus MFileIO::open(const MString& file, const char* type, bool force, ReferenceMode, bool) {
  return St((force || !TheScene().modified) && OpenScene(file.asChar(), Given(type)));
}
MStatus MFileIO::save(bool) { return St(SaveScene(TheScene().file)); }
MStatus MFileIO::saveAs(const MString& file, const char*, bool) { return St(SaveScene(file.asChar())); }
MStatus MFileIO::import(const MString& file, const char* type, bool, const char* space, bool) {
  return St(ImportScene(file.asChar(), Given(space), Given(type)));
}
MStatus MFileIO::reference(const MString& file, bool, bool, const MString& space) { return St(ReferenceScene(file.asChar(), space.asChar()) != nullptr); }
namespace {
template <class F>
MStatus WithReference(F fits, bool unload) {
  for (const auto& [serial, node] : TheScene().nodes)
    if (node->info->name == "reference" && fits(node)) return St(RemoveReference(NodePtr(node), unload));
  return MS::kFailure;
}
}  // namespace
MString MFileIO::fileType() { return "mayaAscii"; }
MStatus MFileIO::getReferences(MStringArray& files) {
  files.clear();
  for (const auto& [serial, node] : TheScene().nodes)
    if (node->info->name == "reference") files.append(FileOf(node).c_str());
  return MS::kSuccess;
}
MStatus MFileIO::getReferenceNodes(const MString& file, MStringArray& names) {
  names.clear();
  for (const auto& [serial, node] : TheScene().nodes)
    if (node->reference && file == FileOf(node->reference->Ptr()).c_str()) names.append(NodeName(node).c_str());
  return St(names.length() > 0);
}
MStatus MFileIO::removeReference(const MString& file) {
  return WithReference([&](const NodePtr& n) { return file == FileOf(n).c_str(); }, false);
}
MStatus MFileIO::unloadReferenceByNode(const MObject& object) {
  return WithReference([&](const NodePtr& n) { return n == NodeOf(object); }, true);
}
MStatus MFileIO::loadReferenceByNode(const MObject& object) {
  const NodePtr node = NodeOf(object);
  return St(node && node->info->name == "reference" && LoadReference(node));
}
MStatus MFileIO::exportAll(const MString& file, const char* type, bool) { return St(ExportScene(file.asChar(), false, Given(type))); }
MStatus MFileIO::exportSelected(const MString& file, const char* type, bool) { return St(ExportScene(file.asChar(), true, Given(type))); }
MStatus MFileIO::setCurrentFile(const MString& file) { return TheScene().file = file.asChar(), MS::kSuccess; }
MString MFileIO::beforeOpenFilename() { return TheState().asked.c_str(); }
MString MFileIO::beforeSaveFilename() { return beforeOpenFilename(); }
MString MFileIO::beforeImportFilename() { return beforeOpenFilename(); }
MString MFileIO::beforeExportFilename() { return beforeOpenFilename(); }
MString MFileIO::beforeReferenceFilename() { return beforeOpenFilename(); }
bool MFileIO::isReadingFile() { return TheState().reading; }
bool MFileIO::isWritingFile() { return TheState().writing; }
bool MFileIO::isOpeningFile() { return TheState().opening; }
bool MFileIO::isNewingFile() { return TheState().newing; }
bool MFileIO::isImportingFile() { return TheState().importing; }
bool MFileIO::isReferencingFile() { return TheState().referencing; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE

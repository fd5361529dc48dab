// Nodes, their names and places.
#include "Scene.h"

#include <algorithm>
#include <cctype>

#include "Notify.h"
#include "State.h"

namespace mayahost {
namespace {
Journal* g_journal = nullptr;
}

void Journal::Undo() {
  const Recording none(nullptr);
  for (auto step = steps.rbegin(); step != steps.rend(); ++step) step->undo();
}
void Journal::Redo() {
  const Recording none(nullptr);
  for (const Step& step : steps) step.redo();
}
Recording::Recording(Journal* journal) : m_before(g_journal) { g_journal = journal; }
Recording::~Recording() { g_journal = m_before; }
Journal* CurrentJournal() { return g_journal; }
void Do(std::function<void()> redo, std::function<void()> undo) {
  redo();
  if (g_journal) g_journal->steps.push_back({std::move(undo), std::move(redo)});
  TheScene().modified = true;
}

Scene& TheScene() {
  static Scene scene;
  return scene;
}
Scene::Scene() {
  world = std::make_shared<Node>(MFn::kWorld);
  static NodeType type{"dagNode", MFn::kWorld, FindType("dagNode"), 0, {}, FindType("dagNode")->byName, nullptr, ""};
  world->info = &type;
  world->name = "world";
  world->inScene = true;
  minTime = startTime = TicksOf(MTime(1, MTime::kFilm));
  maxTime = TicksOf(MTime(120, MTime::kFilm));
  endTime = TicksOf(MTime(200, MTime::kFilm));
  now = minTime;
}
Scene::~Scene() = default;

std::string NamespaceOf(const std::string& name) {
  const auto at = name.rfind(':');
  return at == std::string::npos ? "" : name.substr(0, at);
}
std::string FullNamespace(const std::string& name) {
  if (!name.empty() && name[0] == ':') return name.substr(1);
  const std::string& now = TheScene().currentNamespace;
  return now.empty() || name.empty() ? now + name : now + ":" + name;
}
std::string LegalName(const std::string& name) {
  std::string made;
  for (const char c : name) {
    const bool good = std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == ':';
    if (made.empty() && std::isdigit(static_cast<unsigned char>(c))) continue;
    made += good ? c : '_';
  }
  return made;
}

namespace {

bool IsTaken(const std::string& name, const Node& node, const Node* parent) {
  const auto [from, to] = TheScene().byName.equal_range(name);
  return std::any_of(from, to, [&](const auto& entry) {
    const Node* other = entry.second;
    if (other == &node) return false;
    if (!other->IsDag() || !node.IsDag()) return true;
    return std::find(other->parents.begin(), other->parents.end(), parent) != other->parents.end();
  });
}

void SetName(const NodePtr& node, const std::string& name) {
  auto& byName = TheScene().byName;
  const std::string before = node->name;
  for (auto [at, to] = byName.equal_range(before); at != to; ++at)
    if (at->second == node.get()) {
      byName.erase(at);
      break;
    }
  node->name = name;
  if (node->inScene) byName.emplace(name, node.get());
  if (node->inScene && before != name) NotifyName(node, before);
}

void Hang(const NodePtr& node, Node* parent, std::size_t at) {
  parent->children.insert(parent->children.begin() + static_cast<std::ptrdiff_t>(std::min(at, parent->children.size())), node);
  node->parents.push_back(parent);
  NotifyParent(node, parent, true);
}
std::size_t Unhang(const NodePtr& node, Node* parent) {
  const auto at = std::find(parent->children.begin(), parent->children.end(), node);
  const auto place = static_cast<std::size_t>(at - parent->children.begin());
  if (at != parent->children.end()) parent->children.erase(at);
  node->parents.erase(std::find(node->parents.begin(), node->parents.end(), parent));
  NotifyParent(node, parent, false);
  return place;
}
void Enter(const NodePtr& node) {
  if (node->inScene) return;
  Scene& scene = TheScene();
  node->inScene = true;
  if (!node->serial) node->serial = scene.nextSerial++;
  scene.nodes[node->serial] = node;
  scene.byName.emplace(node->name, node.get());
  NotifyNode(true, node);
}
void Leave(const NodePtr& node) {
  Scene& scene = TheScene();
  for (auto [at, to] = scene.byName.equal_range(node->name); at != to; ++at)
    if (at->second == node.get()) {
      scene.byName.erase(at);
      break;
    }
  scene.nodes.erase(node->serial);
  node->inScene = false;
  NotifyNode(false, node);
}
template <class List>
void DropMember(List& items, const Node* node) {
  items.erase(std::remove_if(items.begin(), items.end(),
                             [&](const MSelectionList::Item& item) {
                               return item.node.thing.get() == node ||
                                      std::any_of(item.path.nodes.begin(), item.path.nodes.end(), [&](const auto& n) { return n.get() == node; });
                             }),
              items.end());
}

}  // namespace

std::string UniqueName(const std::string& wanted, const Node& node, const Node* parent) {
  if (!IsTaken(wanted, node, parent)) return wanted;
  std::size_t end = wanted.size();
  while (end > 0 && std::isdigit(static_cast<unsigned char>(wanted[end - 1]))) --end;
  long number = end < wanted.size() ? std::strtol(wanted.c_str() + end, nullptr, 10) : 0;
  std::string name;
  do name = wanted.substr(0, end) + std::to_string(++number);
  while (IsTaken(name, node, parent));
  return name;
}

namespace {
/// A name below the current namespace, or below the root with a colon ahead; a namespace that isn't there makes underlines.
std::string FullName(const std::string& name) {
  std::string full = FullNamespace(name);
  if (const std::string space = NamespaceOf(full); !space.empty() && !TheScene().namespaces.count(space)) std::replace(full.begin(), full.end(), ':', '_');
  return full;
}
}  // namespace

NodePtr MakeNode(const NodeType* type, const std::string& name) {
  Scene& scene = TheScene();
  const auto node = std::make_shared<Node>(type->fn);
  node->info = type;
  node->name = FullName(name.empty() ? (type->name == "mesh" ? "polySurfaceShape" : type->name) + "1" : name);
  char uuid[40];
  std::snprintf(uuid, sizeof uuid, "%08X-0000-4000-8000-000000000000", static_cast<unsigned>(scene.nextUuid++));
  node->uuid = uuid;
  if (type->IsA("animCurve")) node->curve = std::make_unique<Curve>();
  if (type->creator) {
    node->user.reset(static_cast<MPxNode*>(type->creator()));
    node->user->thing = node;
    node->user->postConstructor();
  }
  return node;
}

void AddNode(const NodePtr& node, Node* parent) {
  if (node->IsDag()) {
    const NodePtr above = parent ? parent->Ptr() : TheScene().world;
    node->name = UniqueName(node->name, *node, above.get());
    Do([=] { Hang(node, above.get(), above->children.size()), Enter(node); }, [=] { Leave(node), Unhang(node, above.get()); });
  } else {
    node->name = UniqueName(node->name, *node, nullptr);
    Do([=] { Enter(node); }, [=] { Leave(node); });
  }
}

namespace {
void DisconnectAll(const NodePtr& node, std::vector<NodePtr>& orphans) {
  const auto inputs = node->inputs;
  for (const auto& [key, source] : inputs) {
    const NodePtr from = source.node->Ptr();
    Disconnect(source, {node.get(), key.first, key.second});
    const bool alone = from->user ? from->user->existWithoutOutConnections() : !from->curve;
    if (!alone && from->outputs.empty() && from->inScene) orphans.push_back(from);
  }
  const auto outputs = node->outputs;
  for (const auto& [key, to] : outputs)
    for (const PlugRef& plug : to) {
      const NodePtr below = plug.node->Ptr();
      Disconnect({node.get(), key.first, key.second}, plug);
      if (below->user && !below->user->existWithoutInConnections() && below->inputs.empty() && below->inScene) orphans.push_back(below);
    }
}
}  // namespace

bool DeleteNode(const NodePtr& node, bool force) {
  if (!node->inScene || (!force && (node->locked || node->isDefault || node->reference))) return false;
  NotifyRemoval(node);
  const auto children = node->children;
  for (const NodePtr& child : children) {
    if (child->parents.size() == 1) {
      if (!DeleteNode(child, force)) return false;
    } else {
      Reparent(child, node.get(), nullptr);
    }
  }
  std::vector<NodePtr> orphans;
  DisconnectAll(node, orphans);
  for (const auto& [serial, set] : TheScene().nodes) {
    if (set->members.empty()) continue;
    auto after = set->members;
    DropMember(after, node.get());
    const NodePtr s = set;
    if (after.size() != set->members.size()) Do([=] { s->members = after; }, [s, before = set->members] { s->members = before; });
  }
  auto selected = TheScene().selection.items;
  DropMember(selected, node.get());
  if (selected.size() != TheScene().selection.items.size())
    Do([=] { TheScene().selection.items = selected; }, [before = TheScene().selection.items] { TheScene().selection.items = before; });
  const auto parents = node->parents;
  auto places = std::make_shared<std::vector<std::size_t>>();
  Do(
      [=] {
        Leave(node);
        places->clear();
        for (Node* parent : parents) places->push_back(Unhang(node, parent));
      },
      [=] {
        for (std::size_t i = parents.size(); i-- > 0;) Hang(node, parents[i], (*places)[i]);
        node->parents = parents;
        Enter(node);
      });
  for (const NodePtr& orphan : orphans)
    if (orphan->inScene) DeleteNode(orphan, true);
  return true;
}

std::string Rename(const NodePtr& node, const std::string& text) {
  std::string name = LegalName(text) + (Pretends(Wrong::kRename) ? "_" : "");
  if (!name.empty()) name = FullName(name);
  if (name.empty() || node->reference || node->isDefault || (node->locked && node->inScene)) return "";
  name = UniqueName(name, *node, node->parents.empty() ? TheScene().world.get() : node->parents[0]);
  Do([=] { SetName(node, name); }, [=, before = node->name] { SetName(node, before); });
  return name;
}

void MoveNamespace(const std::string& from, const std::string& to) {
  const auto moved = [&](const std::string& space) { return space == from ? to : to.empty() ? space.substr(from.size() + 1) : to + space.substr(from.size()); };
  const auto within = [&](const std::string& space) { return (space + ":").find(from + ":") == 0; };
  std::set<std::string> after;
  for (const std::string& space : TheScene().namespaces) after.insert(within(space) ? moved(space) : space);
  after.erase("");
  Do([=] { TheScene().namespaces = after; }, [before = TheScene().namespaces] { TheScene().namespaces = before; });
  for (const auto& [serial, node] : std::map<int, NodePtr>(TheScene().nodes)) {
    const NodePtr one = node;
    const std::string space = NamespaceOf(one->name);
    if (space.empty() || !within(space)) continue;
    const std::string now = moved(space), wanted = (now.empty() ? "" : now + ":") + Short(one->name);
    const std::string name = UniqueName(wanted, *one, one->parents.empty() ? nullptr : one->parents[0]);
    Do([=] { SetName(one, name); }, [=, before = one->name] { SetName(one, before); });
  }
}

bool IsBelow(const Node* node, const Node* ancestor) {
  return node == ancestor || std::any_of(node->parents.begin(), node->parents.end(), [&](const Node* p) { return IsBelow(p, ancestor); });
}

bool Reparent(const NodePtr& node, Node* from, Node* to, bool add) {
  if (!node->IsDag() || (to && IsBelow(to, node.get()))) return false;
  const std::string before = node->name;
  const auto place = std::make_shared<std::size_t>(0);
  const NodePtr f = from && !add ? from->Ptr() : nullptr, t = to ? to->Ptr() : nullptr;
  const std::string name = t ? UniqueName(before, *node, to) : before;
  Do(
      [=] {
        if (f) *place = Unhang(node, f.get());
        if (t) Hang(node, t.get(), t->children.size());
        if (name != node->name) SetName(node, name);
      },
      [=] {
        if (t) Unhang(node, t.get());
        if (f) Hang(node, f.get(), *place);
        if (before != node->name) SetName(node, before);
      });
  return true;
}

std::vector<MDagPath> PathsTo(const NodePtr& node) {
  std::vector<MDagPath> paths;
  if (!node || !node->IsDag()) return paths;
  for (Node* parent : node->parents) {
    std::vector<MDagPath> above(1);
    if (parent != TheScene().world.get()) above = PathsTo(parent->Ptr());
    for (MDagPath& path : above) {
      path.nodes.push_back(node);
      paths.push_back(path);
    }
  }
  return paths;
}

std::string NodeName(const NodePtr& node) {
  const auto paths = PathsTo(node);
  return paths.empty() ? node->name : PathName(paths[0], false);
}

namespace {
bool Fits(const std::string& name, const std::string& pattern) {
  const auto star = pattern.find('*');
  if (star == std::string::npos) return name == pattern;
  if (name.compare(0, star, pattern, 0, star) != 0) return false;
  for (std::size_t i = star; i <= name.size(); ++i)
    if (Fits(name.substr(i), pattern.substr(star + 1))) return true;
  return false;
}
bool FitsPath(const MDagPath& path, const std::vector<std::string>& parts, bool whole) {
  if (parts.size() > path.nodes.size() || (whole && parts.size() != path.nodes.size())) return false;
  for (std::size_t i = 0; i < parts.size(); ++i)
    if (!Fits(path.nodes[path.nodes.size() - 1 - i]->name, parts[parts.size() - 1 - i])) return false;
  return true;
}
}  // namespace

std::string PathName(const MDagPath& path, bool full) {
  std::string name;
  std::vector<std::string> parts;
  for (std::size_t i = path.nodes.size(); i-- > 0;) {
    name = path.nodes[i]->name + (name.empty() ? "" : "|" + name);
    parts.insert(parts.begin(), path.nodes[i]->name);
    int fits = 0;
    for (auto [at, to] = TheScene().byName.equal_range(parts.back()); !full && at != to; ++at)
      for (const MDagPath& other : PathsTo(at->second->Ptr())) fits += FitsPath(other, parts, false);
    if (fits == 1) return name;
  }
  return "|" + name;
}

std::vector<MSelectionList::Item> Resolve(const std::string& pattern) {
  std::vector<MSelectionList::Item> found;
  std::vector<std::string> parts(1);
  const bool whole = !pattern.empty() && pattern[0] == '|';
  for (const char c : whole ? pattern.substr(1) : pattern) {
    if (c == '|')
      parts.emplace_back();
    else
      parts.back() += c;
  }
  for (std::string& part : parts)
    if (!part.empty() && part[0] == ':') part.erase(0, 1);
  const auto look = [&](const NodePtr& node) {
    if (!node->IsDag()) {
      if (!whole && parts.size() == 1 && Fits(node->name, parts[0])) found.push_back({Obj(node), {}, {}});
      return;
    }
    if (!Fits(node->name, parts.back())) return;
    const auto paths = PathsTo(node);
    for (const MDagPath& path : paths)
      if (FitsPath(path, parts, whole)) {
        found.push_back({Obj(node), path, {}});
        if (parts.size() == 1) break;
      }
  };
  if (parts.back().find('*') == std::string::npos) {
    for (auto [at, to] = TheScene().byName.equal_range(parts.back()); at != to; ++at) look(at->second->Ptr());
  } else {
    for (const auto& [serial, node] : TheScene().nodes) look(node);
  }
  return found;
}

}  // namespace mayahost

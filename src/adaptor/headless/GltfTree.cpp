#include "adaptor/headless/GltfTree.h"

#include <algorithm>
#include <map>
#include <set>

namespace orv::rws::adaptor::headless {

namespace {

/// Nodes below nodes that are accepted: a pose is worked out from the root down.
constexpr std::size_t kDeepestNode = 1000;

}  // namespace

GltfReader::Tree::Tree(OpenFile& file) : m_file(file) {
  ReadTree();
  ChooseScene();
  NameNodes();
}

std::vector<std::size_t> GltfReader::Tree::ParentsFirst() const {
  std::vector<std::size_t> order = m_roots;
  for (std::size_t i = 0; i < order.size(); ++i)
    order.insert(order.end(), m_children[order[i]].begin(), m_children[order[i]].end());
  return order;
}

/// Parents of all nodes; refuses second parents and circles.
void GltfReader::Tree::ReadTree() {
  const Json& nodes = m_file.List("nodes");
  m_parents.assign(nodes.size(), -1);
  m_children.resize(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const Place place("nodes", i);
    if (!nodes[i].is_object()) place.Fail("is no object");
    const Json& children = ListAt(nodes[i], "children", place);
    for (std::size_t k = 0; k < children.size(); ++k) {
      const Place here = place.In("children", k);
      const std::size_t child = WholeNumber(children[k], here);
      if (child >= nodes.size())
        here.Fail("refers to node " + std::to_string(child) + ", but there are only " +
                  std::to_string(nodes.size()));
      if (m_parents[child] >= 0)
        here.Fail("node " + std::to_string(child) + " already has node " +
                  std::to_string(m_parents[child]) + " as its parent");
      m_parents[child] = static_cast<int>(i);
      m_children[i].push_back(child);
    }
  }
  std::vector<std::size_t> depth(nodes.size(), 0);
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < nodes.size(); ++i)
    if (m_parents[i] < 0) open.push_back(i);
  for (const std::size_t root : open) depth[root] = 1;
  while (!open.empty()) {
    const std::size_t node = open.back();
    open.pop_back();
    if (depth[node] > kDeepestNode)
      Place("nodes", node).Fail("lies deeper than " + std::to_string(kDeepestNode) + " levels");
    for (const std::size_t child : m_children[node]) {
      depth[child] = depth[node] + 1;
      open.push_back(child);
    }
  }
  for (std::size_t i = 0; i < nodes.size(); ++i)
    if (depth[i] == 0)
      Place("nodes", i).Fail("is in a circle of nodes that are each other's children");
}

void GltfReader::Tree::ChooseScene() {
  const Json& scenes = m_file.List("scenes");
  for (std::size_t s = 0; s < scenes.size(); ++s) CheckScene(scenes[s], Place("scenes", s));
  m_file.document->loaded.assign(m_parents.size(), false);
  int shown = IndexAt(m_file.json, "scene", scenes.size(), Place(""));
  if (shown < 0 && !scenes.empty()) shown = 0;
  m_file.document->sceneIndex = shown;
  if (shown >= 0) {
    const auto index = static_cast<std::size_t>(shown);
    for (const Json& root : ListAt(scenes[index], "nodes", Place("scenes", index)))
      m_roots.push_back(root.get<std::size_t>());
  } else {
    for (std::size_t i = 0; i < m_parents.size(); ++i)
      if (m_parents[i] < 0) m_roots.push_back(i);
  }
  std::vector<std::size_t> open = m_roots;
  while (!open.empty()) {
    const std::size_t node = open.back();
    open.pop_back();
    m_file.document->loaded[node] = true;
    open.insert(open.end(), m_children[node].begin(), m_children[node].end());
  }
}

void GltfReader::Tree::CheckScene(const Json& scene, const Place& place) const {
  if (!scene.is_object()) place.Fail("is no object");
  const Json& roots = ListAt(scene, "nodes", place);
  std::set<std::size_t> seen;
  for (std::size_t i = 0; i < roots.size(); ++i) {
    const Place here = place.In("nodes", i);
    const std::size_t root = WholeNumber(roots[i], here);
    if (root >= m_parents.size())
      here.Fail("refers to node " + std::to_string(root) + ", but there are only " +
                std::to_string(m_parents.size()));
    if (m_parents[root] >= 0)
      here.Fail("node " + std::to_string(root) + " is a child of node " +
                std::to_string(m_parents[root]));
    if (!seen.insert(root).second) here.Fail("names node " + std::to_string(root) + " twice");
  }
}

/// The first node of a name keeps it; further ones get a number behind it.
void GltfReader::Tree::NameNodes() {
  const Json& nodes = m_file.List("nodes");
  m_names.resize(nodes.size());
  std::set<std::string> taken;
  std::vector<std::size_t> others;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (!m_file.document->loaded[i]) continue;
    m_names[i] = TextAt(nodes[i], "name", Place("nodes", i));
    if (m_names[i].empty() || !taken.insert(m_names[i]).second) others.push_back(i);
  }
  std::map<std::string, std::size_t> next;
  std::size_t twins = 0;
  std::string told;
  for (const std::size_t i : others) {
    const std::string base = m_names[i].empty() ? "node_" + std::to_string(i) : m_names[i];
    std::string name = base;
    std::size_t& number = next[base];
    for (number = std::max<std::size_t>(number, m_names[i].empty() ? 1 : 2);
         !taken.insert(name = number > 1 ? base + "_" + std::to_string(number) : base).second;)
      ++number;
    if (!m_names[i].empty() && ++twins <= 3)
      told += (told.empty() ? "\"" : ", \"") + m_names[i] + "\" is \"" + name + '"';
    m_names[i] = name;
  }
  if (twins == 0) return;
  if (twins > 3) told += ", ...";
  m_file.warnings.push_back("nodes: " + std::to_string(twins) + (twins == 1 ? " has" : " have") +
                            " a name that another has already; here " + told);
}

}  // namespace orv::rws::adaptor::headless

/// The nodes of a glTF file as a tree.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "adaptor/headless/GltfOpenFile.h"

namespace orv::rws::adaptor::headless {

/// Who is whose child, which nodes the shown scene has, and what they are called in memory. All by
/// a node's index in the file. Steps throw GltfError.
class GltfReader::Tree {
 public:
  /// Reads the tree and tells the document what is shown of it.
  explicit Tree(OpenFile& file);

  std::size_t GetNodeCount() const { return m_parents.size(); }
  /// -1 for a node without one.
  int ParentOf(std::size_t node) const { return m_parents[node]; }
  /// Unique; empty for a node outside the shown scene.
  const std::string& Name(std::size_t node) const { return m_names[node]; }
  /// The nodes of the shown scene, parents before their children, siblings in the file's order.
  std::vector<std::size_t> ParentsFirst() const;

 private:
  void ReadTree();
  void ChooseScene();
  void CheckScene(const Json& scene, const Place& place) const;
  void NameNodes();

  OpenFile& m_file;
  std::vector<int> m_parents;
  std::vector<std::vector<std::size_t>> m_children;
  std::vector<std::size_t> m_roots;  ///< of the shown scene
  std::vector<std::string> m_names;
};

}  // namespace orv::rws::adaptor::headless

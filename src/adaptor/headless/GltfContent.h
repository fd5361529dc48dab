/// What the nodes of a glTF file hold.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "adaptor/headless/GltfMesh.h"
#include "adaptor/headless/GltfTree.h"

namespace orv::rws::adaptor::headless {

/// Makes the scene's nodes with their poses, lenses, meshes and curves, and the keys of one clip.
/// Steps throw GltfError.
class GltfReader::Content {
 public:
  Content(OpenFile& file, const Tree& tree, const ReadOptions& options)
      : m_file(file), m_tree(tree), m_options(options) {}

  void Read();
  /// Notes how each node was read, so that a save can tell what has changed since: the last step.
  void KeepSources();

 private:
  void BuildNodes();
  void ReadNode(std::size_t index, SceneNode& node);
  void ReadPose(const Json& json, const Place& place, SceneNode& node, SceneNode::Source& source);
  void ReadLens(const Json& json, const Place& place, SceneNode& node);
  void ReadMesh(const Json& json, const Place& place, SceneNode& node, SceneNode::Source& source);
  void ChooseClip();
  void ReadChannels();
  void ReadChannel(const Json& json, const Json& samplers, const Place& place, const Place& clip);
  std::shared_ptr<Channel> DecodeSampler(const Json& samplers, std::size_t index, ChannelPath path,
                                         const Place& clip);
  void KeepSource(SceneNode& node);

  OpenFile& m_file;
  const Tree& m_tree;
  const ReadOptions& m_options;
  std::vector<std::unique_ptr<MeshContent>> m_meshes;
  std::map<std::pair<std::size_t, ChannelPath>, std::shared_ptr<Channel>> m_decoded;
  std::map<int, const Channel*> m_firstOfTimes;  ///< the first channel of an accessor of times
};

}  // namespace orv::rws::adaptor::headless

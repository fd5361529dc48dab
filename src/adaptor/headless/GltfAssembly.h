/// Puts a scene's glTF together in memory.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "adaptor/headless/GltfJson.h"
#include "adaptor/headless/GltfKeys.h"
#include "adaptor/headless/GltfReferences.h"
#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/Scene.h"

namespace orv::rws::adaptor::headless {

/// The JSON and the bytes of a scene as it is to be saved: the document that the scene was read
/// from, what has changed since put in its place, what is new behind it, and what only an earlier
/// save of ours needed left out. Steps throw GltfError.
class GltfWriter::Assembly {
 public:
  Assembly(const Scene& scene, GltfForm form);

  /// Does all the work. Call once.
  void run();

  Json& json() { return m_json; }
  /// What goes into the binary chunk: others' bytes, then our own.
  std::string_view foreignBytes() const { return m_foreign; }
  std::string_view ownBytes() const { return m_own; }
  bool hasChunk() const { return m_hasChunk; }
  const std::vector<std::string>& warnings() const { return m_warnings; }
  /// Index in the document of each buffer of the new JSON; -1 for one of ours.
  const std::vector<int>& bufferSources() const { return m_bufferSources; }

 private:
  const SceneNode::Source* sourceOf(const SceneNode& node) const;
  Json& list(const char* name);
  std::size_t append(const char* name, Json element);

  void copyDocument();
  void dropStrayExactKeys();
  void placeNodes();
  void refuseLostJoints(const std::vector<bool>& removed);
  void dropSkins(const std::vector<bool>& unused);
  void writeTree();
  void writeRoots();
  void writeNode(const SceneNode& node);
  void writePose(const SceneNode& node, const SceneNode::Source* source, Json& json);
  void writeExtras(const SceneNode& node, const SceneNode::Source* source, Json& json);
  void writeVisible(const SceneNode& node, Json& json);
  void writeLens(const SceneNode& node, const SceneNode::Source* source, Json& json);
  bool isUsed(Table table, std::size_t index);

  void writeShape(const SceneNode& node, const SceneNode::Source* source, Json& json);
  Json trianglePrimitive(const SceneNode& node, const util::CMesh& mesh);
  Json curvePrimitive(const SceneNode& node, const Curve& curve);
  int materialOf(const Colour& colour);

  void writeKeys();
  Json& clip();
  void dropEmptyClips();
  void writeChannel(const SceneNode& node, ChannelPath path, const Channel* channel);
  std::size_t addSampler(const SceneNode& node, const Channel& channel);
  bool channelChanged(const SceneNode& node, ChannelPath path) const;

  void noteChanges();
  bool somethingChanged() const;
  void writeRecord();
  Json rigJson(const RigRecord& rig) const;
  Json exactJson();
  void appendExact(const SceneNode& node, std::vector<double>& numbers, Json& nodes);

  std::size_t addView(std::string bytes, int target);
  std::size_t addAccessor(const std::vector<float>& values, const char* type, int components,
                          int target, bool bounds);
  std::size_t addIndices(const std::vector<std::uint32_t>& values);

  void compact();
  void layOut();
  bool isDropped(std::size_t buffer) const;
  void layOutOwn();
  void dropEmptyLists();

  const Scene& m_scene;
  const GltfForm m_form;
  const GltfDocument* m_document;
  Json m_json;
  std::vector<SceneNode*> m_nodes;  ///< parents before children
  std::unordered_map<const SceneNode*, std::size_t> m_indices;
  std::vector<std::string_view> m_viewBytes;  ///< by buffer view; of those that are ours
  std::deque<std::string> m_storage;
  std::map<std::vector<float>, std::size_t> m_timeAccessors;
  std::map<Colour, int> m_materials;
  bool m_keysChanged = false;  ///< or channels went with their nodes
  bool m_touched = false;      ///< nodes or keys are not as they were read
  std::string_view m_foreign;
  std::string m_own;
  bool m_hasChunk = false;
  std::vector<int> m_bufferSources;
  std::vector<std::string> m_warnings;
};

}  // namespace orv::rws::adaptor::headless

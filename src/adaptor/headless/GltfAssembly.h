/// Puts a scene's glTF together in memory.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
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
  /// Takes bytes in parts; false ends the save.
  using Sink = std::function<bool(std::string_view)>;

  /// `folder` is that of the file that is written; null in memory.
  Assembly(const Scene& scene, GltfForm form, const std::string* folder);

  /// Does all the work. Call once.
  void Run();

  Json& GetJson() { return m_json; }
  /// Sends a `.glb` in parts and takes the JSON with it: once, as the last call. What is ours of
  /// the binary chunk is worked out on the way, since a second copy of many nodes' keys is large.
  bool SendBinary(const Sink& sink);
  const std::vector<std::string>& GetWarnings() const { return m_warnings; }
  /// Index in the document of each buffer of the new JSON; -1 for one of ours.
  const std::vector<int>& GetBufferSources() const { return m_bufferSources; }

 private:
  using Emit = std::function<void(std::string_view)>;
  /// The bytes of a buffer view of ours: how many, and what gives them, in parts.
  struct ViewBytes {
    std::size_t size = 0;
    std::function<void(const Emit&)> send;  ///< empty for a view of others
  };

  const SceneNode::Source* SourceOf(const SceneNode& node) const;
  Json& List(const char* name);
  std::size_t Append(const char* name, Json element);

  void CopyDocument();
  void DropStrayExactKeys();
  void PlaceNodes();
  void RefuseLostJoints(const std::vector<bool>& removed);
  void DropSkins(const std::vector<bool>& unused);
  void WriteTree();
  void WriteRoots();
  void WriteNode(const SceneNode& node);
  void WritePose(const SceneNode& node, const SceneNode::Source* source, Json& json);
  void WriteExtras(const SceneNode& node, const SceneNode::Source* source, Json& json);
  void WriteVisible(const SceneNode& node, Json& json);
  void WriteLens(const SceneNode& node, const SceneNode::Source* source, Json& json);
  bool IsUsed(Table table, std::size_t index);

  void FindMeshes();
  bool ShareMesh(const SceneNode& node, Json& json);
  void WriteShape(const SceneNode& node, const SceneNode::Source* source, Json& json);
  Json TrianglePrimitive(const SceneNode& node, const util::CMesh& mesh);
  Json CurvePrimitive(const SceneNode& node, const Curve& curve);
  int MaterialOf(const Colour& colour);

  void WriteKeys();
  Json& Clip();
  void DropEmptyClips();
  void WriteChannel(const SceneNode& node, ChannelPath path, const Channel* channel);
  void FindChannels();
  void DropChannels();
  std::size_t AddSampler(const SceneNode& node, const Channel& channel);
  bool ChannelChanged(const SceneNode& node, ChannelPath path) const;

  void NoteChanges();
  bool SomethingChanged() const;
  void WriteRecord();
  Json RigJson(const RigRecord& rig) const;
  Json ExactJson();
  void AppendExact(const SceneNode& node, std::vector<std::string_view>& parts, std::size_t& count,
                   Json& nodes);

  static Json OwnMark();
  static ViewBytes Held(std::string_view bytes);
  std::size_t AddView(ViewBytes bytes, int target);
  std::size_t AddView(std::string bytes, int target);
  std::size_t AddValues(const Channel& channel, std::size_t count);
  std::size_t AddAccessor(const std::vector<float>& values, const char* type, int components,
                          int target, bool bounds);
  std::size_t AddIndices(const std::vector<std::uint32_t>& values);

  void Compact();
  void LayOut();
  bool IsDropped(std::size_t buffer) const;
  void LayOutOwn();
  bool SendOwn(const Sink& sink) const;
  void DropEmptyLists();

  const Scene& m_scene;
  const GltfForm m_form;
  const std::string* const m_folder;
  const GltfDocument* m_document;
  Json m_json;
  std::vector<SceneNode*> m_nodes;  ///< parents before children
  std::unordered_map<const SceneNode*, std::size_t> m_indices;
  std::vector<ViewBytes> m_viewBytes;  ///< by buffer view
  std::deque<std::string> m_storage;
  std::map<std::vector<float>, std::size_t> m_timeAccessors;
  std::map<Colour, int> m_materials;
  /// Elements of "meshes" that show nothing but these triangles in this colour.
  std::map<std::pair<const util::CMesh*, Colour>, std::size_t> m_meshes;
  std::unordered_map<std::size_t, std::size_t> m_channelAt;  ///< first of a target, by TargetOf
  std::set<std::size_t> m_lostTargets;                       ///< whose channels go
  bool m_keysChanged = false;                                ///< or channels went with their nodes
  bool m_touched = false;  ///< nodes or keys are not as they were read
  std::string_view m_foreign;
  std::size_t m_ownSize = 0;
  std::size_t m_ownStart = 0;  ///< zeros in front of our first view
  bool m_hasChunk = false;
  std::vector<int> m_bufferSources;
  std::vector<std::string> m_warnings;
};

}  // namespace orv::rws::adaptor::headless

/// A glTF file as it was read.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace orv::util {
class CMesh;
}

namespace orv::rws::adaptor::headless {

struct AccessorView;

/// The JSON and the buffers of a glTF file, kept as they were for the next save, and checked: every
/// buffer view lies in its buffer, every accessor in its view. Immutable after loading, apart from
/// the meshes that it builds when they are asked for.
class GltfDocument {
 public:
  /// Where a buffer's bytes came from.
  enum class Origin { kChunk, kDataUri, kFile, kAbsent };

  struct Buffer {
    Origin origin = Origin::kAbsent;
    std::string uri;  ///< as in the file; the JSON holds "" for a data: URI to save memory
    std::shared_ptr<const std::string> storage;  ///< owns what `bytes` shows
    std::string_view bytes;                      ///< as long as the buffer's byteLength
    std::size_t foreignSize = 0;  ///< bytes in front that we did not write in an earlier save
  };

  GltfDocument();
  ~GltfDocument();
  GltfDocument(const GltfDocument&) = delete;
  GltfDocument& operator=(const GltfDocument&) = delete;

  /// Takes over the content of a `.glb` or `.gltf` file. `folder` is where side files are looked
  /// for; null allows none. Throws GltfError.
  void Load(std::string content, const std::string* folder);

  const nlohmann::ordered_json& GetJson() const { return *m_json; }
  const std::vector<Buffer>& GetBuffers() const { return m_buffers; }
  /// True when what we wrote in an earlier save lies apart from all else and can be left out.
  bool OwnPartsApart() const { return m_ownPartsApart; }
  /// Whether this is `other` or was merged from it, so that what it holds stands here under the
  /// same indices.
  bool Includes(const GltfDocument* other) const;
  /// Chunks of a `.glb` behind JSON and BIN, headers included.
  std::string_view GetFurtherChunks() const { return m_furtherChunks; }
  /// Folder of the file, with which relative URIs begin; "" for a file read from memory.
  const std::string& GetFolder() const { return m_folder; }
  bool FromMemory() const { return m_fromMemory; }

  /// Bytes of a buffer view; checked at loading.
  std::string_view ViewBytes(std::size_t view) const;
  /// The elements of an accessor; checked at loading.
  AccessorView Accessor(std::size_t index) const;

  /// Takes `amount` from what may be decoded of this file. Throws GltfError at `place` when a small
  /// file wants to become huge by showing the same bytes again and again.
  void Spend(std::size_t amount, const class Place& place) const;

  /// The triangles of a mesh, built at the first call and shared by all who ask; -1 gives an empty
  /// mesh.
  std::shared_ptr<const util::CMesh> Triangles(int mesh) const;
  /// The same, or null while nobody has asked for them.
  std::shared_ptr<const util::CMesh> BuiltTriangles(int mesh) const;

  /// Set by the reader: the scene that is shown (-1: none) and which nodes are in it.
  int sceneIndex = -1;
  std::vector<bool> loaded;

 private:
  friend class DocumentMerge;

  std::string_view SplitContainer(const std::shared_ptr<const std::string>& content);
  void Parse(std::string_view text);
  void CheckAsset() const;
  void LoadBuffers(const std::shared_ptr<const std::string>& content, const std::string* folder);
  void LoadBuffer(std::size_t index, const std::shared_ptr<const std::string>& content,
                  const std::string* folder);
  void CheckViews() const;
  void CheckAccessors() const;
  void SeparateOwnParts();

  std::unique_ptr<nlohmann::ordered_json> m_json;
  std::vector<Buffer> m_buffers;
  std::string_view m_chunk;  ///< BIN chunk
  bool m_hasChunk = false;
  std::string_view m_furtherChunks;
  std::shared_ptr<const std::string> m_content;
  std::string m_folder;
  bool m_fromMemory = true;
  bool m_ownPartsApart = true;
  std::shared_ptr<const GltfDocument> m_base;  ///< what this was merged from first; or null
  mutable std::size_t m_budget = 0;
  mutable std::map<int, std::shared_ptr<const util::CMesh>> m_meshes;
};

}  // namespace orv::rws::adaptor::headless

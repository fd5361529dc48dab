/// Two glTF files into one.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/GltfJson.h"

namespace orv::rws::adaptor::headless {

/// Puts all parts of a document but its scenes and animations behind those of another: what refers
/// to a part by its index is adapted, what comes in is marked as ours. Steps throw GltfError.
class DocumentMerge {
 public:
  /// `base` may be null.
  DocumentMerge(std::shared_ptr<const GltfDocument> base,
                const std::shared_ptr<const GltfDocument>& added);

  /// Does all the work. Call once.
  std::shared_ptr<const GltfDocument> run();

  /// Index in the outcome of the first element of `added` in this list.
  std::size_t first(const char* list) const;
  const std::vector<std::string>& GetWarnings() const { return m_warnings; }

 private:
  void RefuseCompressed() const;
  void DropUnknownExtensions();
  void TakeImagesIn();
  void MarkOwn();
  void MergeLights();
  void Renumber();
  void Append();
  void AppendBuffers();

  std::shared_ptr<const GltfDocument> m_base;
  std::shared_ptr<const GltfDocument> m_added;
  std::shared_ptr<GltfDocument> m_result;
  Json m_json;  ///< of what comes in
  std::vector<GltfDocument::Buffer> m_buffers;
  std::vector<std::string> m_warnings;
};

}  // namespace orv::rws::adaptor::headless

/// Two scenes into one.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace orv::rws::adaptor::headless {

class GltfDocument;
class Scene;

/// What HeadlessAdaptor::Merge does to the documents from which scenes were read.
class SceneMerge {
 public:
  /// Puts the document of `added` behind that of `scene` and lets the nodes of `added` refer to
  /// the outcome, which `scene` does not have yet. What comes in so counts as ours: a save drops
  /// the parts that no node uses any more. Images beside the file are taken in. An empty text means
  /// success, any other says why nothing has changed.
  static std::string MergeDocuments(const Scene& scene, Scene& added,
                                    std::shared_ptr<const GltfDocument>& document,
                                    std::vector<std::string>& warnings);
  static void ExchangeDocument(Scene& scene, std::shared_ptr<const GltfDocument>& document);
};

}  // namespace orv::rws::adaptor::headless

#include "adaptor/headless/SceneMerge.h"

#include <new>
#include <utility>

#include "adaptor/headless/DocumentMerge.h"
#include "adaptor/headless/Scene.h"

namespace orv::rws::adaptor::headless {

std::string SceneMerge::MergeDocuments(const Scene& scene, Scene& added,
                                       std::shared_ptr<const GltfDocument>& document,
                                       std::vector<std::string>& warnings) try {
  document = scene.m_document;
  if (added.m_document == nullptr) return {};
  DocumentMerge merge(scene.m_document, added.m_document);
  document = merge.run();
  warnings = merge.GetWarnings();
  const auto firstNode = static_cast<int>(merge.first("nodes"));
  const auto firstMesh = static_cast<int>(merge.first("meshes"));
  for (SceneNode* node : added.GetNodes()) {
    if (!node->m_source || node->m_source->document != added.m_document) continue;
    auto source = std::make_unique<SceneNode::Source>(*node->m_source);
    source->document = document;
    source->index += firstNode;
    if (source->mesh >= 0) source->mesh += firstMesh;
    // The keys go to the scene's own clip.
    source->animation.channels = {};
    source->exact = {};
    node->m_source = std::move(source);
  }
  return {};
} catch (const GltfError& e) {
  return e.what();
} catch (const Json::exception& e) {
  return e.what();
} catch (const std::bad_alloc&) {
  return "there is not enough memory for it";
}

void SceneMerge::ExchangeDocument(Scene& scene, std::shared_ptr<const GltfDocument>& document) {
  std::swap(scene.m_document, document);
}

}  // namespace orv::rws::adaptor::headless

/// A glTF file while it is read.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/GltfJson.h"
#include "adaptor/headless/GltfReader.h"

namespace orv::rws::adaptor::headless {

inline util::Vector3<double> VectorOf(const double* v) {
  return {v[0], v[1], v[2]};
}

/// What the steps of reading share: the document, the scene that it becomes, and what was found
/// odd.
struct GltfReader::OpenFile {
  explicit OpenFile(std::shared_ptr<GltfDocument> loaded)
      : document(std::move(loaded)), json(document->GetJson()), scene(std::make_unique<Scene>()) {}

  const Json& List(const char* name) const { return ListAt(json, name, Place("")); }
  void Warn(const Place& place, const std::string& what) {
    warnings.push_back(place.Text() + ": " + what);
  }

  std::shared_ptr<GltfDocument> document;
  const Json& json;
  std::unique_ptr<Scene> scene;
  std::vector<SceneNode*> nodes;  ///< by index in the file; null outside the shown scene
  std::map<const SceneNode*, std::unique_ptr<SceneNode::Source>> sources;
  std::vector<std::string> warnings;
};

}  // namespace orv::rws::adaptor::headless

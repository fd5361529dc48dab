/// Writes glTF 2.0 scenes.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::adaptor::headless {

class Scene;

struct WriteResult {
  std::string error;                  ///< empty on success
  std::vector<std::string> warnings;  ///< what could not be kept

  explicit operator bool() const { return error.empty(); }
};

enum class GltfForm { kBinary, kText };

/// Writer of `.glb` and `.gltf`. What the scene did not change goes through as it was read. A scene
/// is not changed by being written. No exceptions leave it.
class GltfWriter {
 public:
  /// Writes `path` in the form of its extension; each file is put in place whole or not at all.
  /// Buffers and images beside the source are copied when the folder is another one.
  static WriteResult Write(const Scene& scene, const std::string& path);
  /// Writes to memory; references to files beside the source stay as they are.
  static WriteResult WriteMemory(const Scene& scene, GltfForm form, std::string& bytes);

 private:
  class Assembly;
};

}  // namespace orv::rws::adaptor::headless

/// Reads glTF 2.0 scenes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/Scene.h"

namespace orv::rws::adaptor::headless {

struct ReadOptions {
  /// Name or index of the animation clip to evaluate; empty for the first.
  std::string clip;
  /// Of readMemory: where files beside it are looked for, with its slash. Empty: they are refused.
  std::string folder{};
};

struct ReadResult {
  std::unique_ptr<Scene> scene;       ///< null when reading failed
  std::string error;                  ///< "file: place: what is wrong"; empty on success
  std::vector<std::string> warnings;  ///< what was found odd and how it was taken

  explicit operator bool() const { return scene != nullptr; }
};

/// Reader of `.glb` and `.gltf`. Nothing in a file is trusted: whatever is wrong gives an error
/// that names the file and the place, and no scene. No exceptions leave it.
class GltfReader {
 public:
  /// Reads a file and the buffers beside it; the form is told from the content.
  static ReadResult Read(const std::string& path, const ReadOptions& options = {});
  /// Reads from memory; `name` stands for the file in messages. Buffers beside the file are
  /// refused unless the options name its folder.
  static ReadResult ReadMemory(std::string bytes, const std::string& name,
                               const ReadOptions& options = {});

 private:
  struct OpenFile;
  class Tree;
  class Content;
  class Record;

  static void Fill(OpenFile& file, const ReadOptions& options);
  static void WarnOfExtensions(OpenFile& file);
  static ReadResult Build(std::string bytes, const std::string& name, const std::string* folder,
                          const ReadOptions& options);
};

}  // namespace orv::rws::adaptor::headless

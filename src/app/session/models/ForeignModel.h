// A model of another program, read by the library for that.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/session/models/ModelFile.h"

struct aiScene;
namespace Assimp {
class Importer;
}

namespace orv::app {

class Monitor;

/// A model as its file has it. The library's own exceptions and locale stay within.
class ForeignModel {
 public:
  ForeignModel();
  ~ForeignModel();

  /// Endings that it reads, in small letters with their point.
  static const std::vector<std::string>& Endings();

  /// See ModelFile::read. Fills `facts`.
  Problem Read(const std::string& path, const Monitor& monitor, bool& cancelled, ModelFacts& facts);
  /// The model as a `.glb` in metres with Y up: what the numbers say in `unitMeters` and `up`.
  /// `warnings` get the textures that are missing.
  std::string ToGltf(double unitMeters, UpAxis up, std::vector<std::string>& warnings) const;

 private:
  Problem CheckScene(const std::string& path) const;
  void ReadUnits(const std::string& path, const std::string& ending, ModelFacts& facts);
  void count(ModelFacts& facts) const;

  std::unique_ptr<Assimp::Importer> m_importer;
  const aiScene* m_scene = nullptr;
  std::string m_folder;  ///< of the file, with its slash; where textures are looked for
  std::string m_stem;    ///< the file's name without its ending
};

}  // namespace orv::app

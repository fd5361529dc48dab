// Models of other programs, brought into the open scene.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/session/anyhost/Problem.h"
#include "util/Vector3.h"

namespace orv::app {

class Monitor;
class SceneSession;

enum class UpAxis { kY, kZ };

/// A value that an import needs, and where it comes from.
template <class T>
struct ToldOrGuessed {
  T value;
  bool told = false;  ///< by the file; else it is a guess
};

/// What there is to know about a model before it is imported: what a dialog shows.
struct ModelFacts {
  std::string format;                     ///< for people, such as "Wavefront OBJ"
  ToldOrGuessed<double> unitMeters{1.0};  ///< metres of one unit of the file
  ToldOrGuessed<UpAxis> up{UpAxis::kY};
  util::Vector3<double>
      size;  ///< edges of the box around all meshes, in units and axes of the file
  std::size_t nodes = 0;
  std::size_t meshes = 0;
  std::size_t triangles = 0;
  std::size_t cameras = 0;
  std::size_t keyedNodes = 0;  ///< whose movement comes along
  /// What an import leaves behind or takes otherwise, a sentence each.
  std::vector<std::string> odd;
};

struct ImportOptions {
  std::optional<double> unitMeters;  ///< m; without it what the facts say
  std::optional<UpAxis> up;          ///< without it what the facts say
  std::string under;                 ///< name of the node that the model comes below; "" the world
};

struct ImportResult {
  Problem problem;  ///< why nothing has changed
  bool cancelled = false;
  std::vector<std::string> nodes;     ///< names of the new nodes without a new one above them
  std::vector<std::string> warnings;  ///< such as names that were taken already
};

/// A file of a model, read once and imported any number of times.
class ModelFile {
 public:
  ModelFile();
  ~ModelFile();

  /// Endings of the files that can be imported, in small letters with their point.
  static const std::vector<std::string>& Endings();

  /// Reads the file and what it refers to beside it. A problem names the file, what is wrong and
  /// what to do; one without a text in `why` means success. `cancelled` is set when the monitor
  /// ended it.
  Problem Read(const std::string& path, const Monitor& monitor, bool& cancelled);
  const ModelFacts& GetFacts() const { return m_facts; }
  /// Adds the nodes to the open scene under names that are free there: meshes, materials, textures,
  /// cameras, the tree, and keys. One undo step, which leaves the scene as it was to the byte.
  ImportResult AddTo(SceneSession& session, const ImportOptions& options,
                     const Monitor& monitor) const;

 private:
  struct Content;

  std::string m_path;
  ModelFacts m_facts;
  std::unique_ptr<Content> m_content;
};

}  // namespace orv::app

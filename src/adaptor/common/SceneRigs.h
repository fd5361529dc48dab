// The rigs of a scene, between its file and the core.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "adaptor/common/RigRecord.h"

namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::rws::adaptor {

class HostAdaptor;

/// Rebuilds the rigs of a scene from their records and writes the records before a save. A record
/// that can't be opened is told of, its name and the tags of its nodes are reserved, and it is kept
/// as it is for the next save, at its place in the list of rigs. Reading and writing
/// the file, and dropping the rows of the scene before, is the host's part.
class SceneRigs {
 public:
  using Teller = std::function<void(const std::string& warning)>;
  SceneRigs(core::CoreImplementation& core, HostAdaptor& adaptor, Teller warn)
      : m_core(core), m_adaptor(adaptor), m_warn(std::move(warn)) {}

  /// After a scene was opened. `records` in list order; `rows` is the text of the groups and may be
  /// empty.
  void Load(const std::vector<RigRecord>& records, const std::string& rows);
  /// After another scene's nodes came in beside those that are there: as Load, behind the rigs of
  /// the scene. Names and tags must not be those of rigs that are there.
  void Add(const std::vector<RigRecord>& records, const std::string& rows);
  /// False, with `error` told and nothing changed, when a rig can't be stored.
  bool Store(std::vector<RigRecord>& records, std::string& rows, std::string& error);
  /// Forgets what is kept, for an empty scene.
  void Clear();

 private:
  /// A record that could not be opened, and its place in the list of rigs.
  struct KeptRecord {
    std::size_t place;
    RigRecord record;
  };

  void OpenAll(const std::vector<RigRecord>& records, std::size_t firstPlace);
  void LoadRows(const std::string& text);
  void Tidy();

  core::CoreImplementation& m_core;
  HostAdaptor& m_adaptor;
  Teller m_warn;
  std::vector<KeptRecord> m_kept;
};

}  // namespace orv::rws::adaptor

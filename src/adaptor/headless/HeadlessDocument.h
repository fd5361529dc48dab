// A scene file that is open in the headless host.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/common/RigRecord.h"
#include "adaptor/headless/GltfReader.h"

namespace orv::rws::adaptor::headless {

class HeadlessAdaptor;
class Scene;

/// One scene with the adaptor over it. The adaptor stays the same object over any number of opens;
/// what it handed out for the scene before dies with that. Rebuilding rigs from the records, and
/// writing the records before a save, is the core's part.
class HeadlessDocument {
 public:
  /// An empty scene.
  HeadlessDocument();
  ~HeadlessDocument();

  /// Opens a file in place of what is open. False, with `error` told and everything as it was, when
  /// it can't be read. Records that are damaged, and with them the tags of their nodes, are kept.
  /// `leave` is called when the file has been read, before the nodes of the old scene go.
  bool Open(const std::string& path, std::string& error, const ReadOptions& options = {},
            const std::function<void()>& leave = {});
  /// Writes the scene, the file put in place whole or not at all. False with `error` told.
  bool Save(const std::string& path, std::string& error);
  /// Empties the document.
  void Close();

  Scene& GetScene() { return *m_scene; }
  HeadlessAdaptor& GetAdaptor() { return *m_adaptor; }
  /// Storage records of the scene's rigs, in list order.
  std::vector<RigRecord>& GetRecords();
  /// Hands over, and forgets, what was odd in the last open or could not be kept by the last save.
  std::vector<std::string> TakeWarnings();

 private:
  void Show(std::unique_ptr<Scene> scene);

  std::unique_ptr<Scene> m_scene;
  std::unique_ptr<HeadlessAdaptor> m_adaptor;
  std::vector<std::string> m_warnings;
};

}  // namespace orv::rws::adaptor::headless

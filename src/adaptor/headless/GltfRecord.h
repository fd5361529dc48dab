/// What we keep in the extras of a glTF scene.
#pragma once

#include <string>

#include "adaptor/headless/GltfOpenFile.h"

namespace orv::rws::adaptor::headless {

/// Reads frame rate, range, rigs and exact keys from the scene's extras. Damage there costs no more
/// than what is damaged.
class GltfReader::Record {
 public:
  explicit Record(OpenFile& file) : m_file(file) {}

  void read();

 private:
  class Numbers;

  void readRecord();
  void guessRate();
  void readRange();
  void readRigs(const Json& record, const Place& place);
  void readRig(const Json& json, const Place& place);
  void addDamaged(const Json& json, const Place& place, const std::string& what);
  void readExact(const Json& exact, const Place& place);
  void readExactNode(const Json& json, const Numbers& numbers, const Place& place);
  void readExactKeys(const Json& json, const Numbers& numbers, SceneNode& node, ChannelPath path,
                     const Place& place);
  SceneNode* exactNode(const Json& json, const Place& place);
  void warnEdited(const SceneNode& node, const std::string& what);

  OpenFile& m_file;
  bool m_rateTold = false;  ///< the file has a frame rate of ours, be it damaged
};

}  // namespace orv::rws::adaptor::headless

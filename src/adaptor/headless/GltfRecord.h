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

  void Read();

 private:
  class Numbers;

  void ReadRecord();
  void GuessRate();
  void ReadRange();
  void ReadRigs(const Json& record, const Place& place);
  void ReadRig(const Json& json, const Place& place);
  void AddDamaged(const Json& json, const Place& place, const std::string& what);
  void ReadExact(const Json& exact, const Place& place);
  void ReadExactNode(const Json& json, const Numbers& numbers, const Place& place);
  void ReadExactKeys(const Json& json, const Numbers& numbers, SceneNode& node, ChannelPath path,
                     const Place& place);
  SceneNode* ExactNode(const Json& json, const Place& place);
  void WarnEdited(const SceneNode& node, const std::string& what);

  OpenFile& m_file;
  bool m_rateTold = false;  ///< the file has a frame rate of ours, be it damaged
};

}  // namespace orv::rws::adaptor::headless

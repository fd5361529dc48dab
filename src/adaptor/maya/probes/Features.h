// What of the plug-in this host may use.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "util/Singleton.h"

namespace orv::rws::adaptor::maya {

/// Parts of the plug-in that stand and fall with what the host does.
enum class Feature {
  kTakes,    ///< takes and resimulations: poses, keys, time, meshes, lenses
  kTools,    ///< rigs are made, cloned, deleted
  kUndo,     ///< the wrapper command's steps
  kStorage,  ///< rigs are written into scenes and read from them
  kImport,   ///< rigs of imported files come along
  kHotKeys,  ///< of takes, and the start key
  kShelf,
  kWindows,
  kNodeEvents,  ///< nodes that the host deletes and brings back are followed
};
inline constexpr std::size_t kFeatureCount = 9;

/// Features that a self-test of this version of the host refuted are off, with a text for who asks
/// for them. All are on at first.
class Features : public util::Singleton<Features> {
 public:
  bool IsOn(Feature feature) const { return Why(feature).empty(); }
  /// Why it is off, for the user; empty while it is on.
  const std::string& Why(Feature feature) const { return m_why[static_cast<std::size_t>(feature)]; }
  void SwitchOff(Feature feature, const std::string& why) {
    std::string& text = m_why[static_cast<std::size_t>(feature)];
    if (text.empty()) text = why;
  }
  void Reset() { m_why = {}; }

 private:
  std::array<std::string, kFeatureCount> m_why;
};

}  // namespace orv::rws::adaptor::maya

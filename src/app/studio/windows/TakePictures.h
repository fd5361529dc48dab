// Small pictures of where kept takes lead.
#pragma once

#include <QPixmap>
#include <QSize>
#include <map>
#include <string>
#include <vector>

#include "app/session/takes/TakePaths.h"

namespace orv::rws::adaptor::headless {
class Scene;
}
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app {

struct KeptTake;

/// The paths of a take's rigs from above, one line a rig. They are drawn from the scene's keys
/// while the scene shows the take, and kept by the hash of its poses, in memory and in the data
/// root: a take that the scene does not show has the picture of back then, or what `TakePainter`
/// has found.
class TakePictures {
 public:
  /// In pixels at 96 dpi.
  static constexpr int kWidth = 84, kHeight = 56;

  /// Draws it anew when there is none of this hash yet.
  void Note(const KeptTake& take, const rws::core::CoreImplementation& core,
            rws::adaptor::headless::Scene& scene);
  /// As above, of paths that somebody else has found.
  void Note(const KeptTake& take, const std::vector<TakePath>& paths);
  /// Null where none has been drawn.
  QPixmap Find(const KeptTake& take);

 private:
  static std::string FileOf(const std::string& hash);

  std::map<std::string, QPixmap> m_pictures;  ///< by hash; null: not on the disk either
};

}  // namespace orv::app

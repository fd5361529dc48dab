/// Sound and pictures that a scene refers to.
#pragma once

#include <string>

namespace orv::rws::adaptor::headless {

/// A sound that is heard with the scene. Like keys it keeps its time when the frame rate changes.
struct SceneSound {
  std::string file;    ///< path from the root on
  double start = 0.0;  ///< when it begins (s)

  friend bool operator==(const SceneSound& a, const SceneSound& b) {
    return a.file == b.file && a.start == b.start;
  }
};

/// What stands behind the picture of a camera: a picture, or a sequence of which each shows for one
/// frame.
struct Backdrop {
  std::string file;      ///< path from the root on; of a sequence, any of its pictures
  int frame = 0;         ///< frame of the scene that shows `file`
  double opacity = 1.0;  ///< [0, 1]

  friend bool operator==(const Backdrop& a, const Backdrop& b) {
    return a.file == b.file && a.frame == b.frame && a.opacity == b.opacity;
  }
};

}  // namespace orv::rws::adaptor::headless

// A scene's pictures, a file a frame.
#pragma once

#include <string>
#include <vector>

#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/Problem.h"
#include "app/studio/view/packet/ViewCamera.h"

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
class SceneNode;
}  // namespace orv::rws::adaptor::headless

namespace orv::app::view {
class Overlay;
}

namespace orv::app {

struct PreviewOptions {
  const rws::adaptor::headless::SceneNode* camera = nullptr;  ///< null: `eye`
  view::OrbitEye eye;
  int width = 1280, height = 720;    ///< pixels; the camera's field of view is that of the height
  int first = 0, last = 0;           ///< frames
  bool signs = false;                ///< with grid, cameras and curves
  view::Overlay* overlay = nullptr;  ///< what stands over the pictures; null for nothing
  bool isFixedQuality = false;       ///< the same on every machine, as far as drivers are alike
};

struct PreviewResult {
  Problem problem;
  bool isCancelled = false;
  std::vector<std::string> odd;  ///< what of files could not be shown
};

/// Writes `frame.0000.png` and so on into a folder, which must not be there yet or be empty; a
/// minus stands before the digits of frames before 0. The folder comes to be when all are written;
/// of one that is cancelled or fails nothing stays, so that nobody takes a part for the whole. The
/// host goes through the frames and back to where it was.
PreviewResult WritePreview(rws::adaptor::headless::HeadlessAdaptor& host,
                           const PreviewOptions& options, const std::string& folder,
                           const Monitor& monitor = Monitor());

}  // namespace orv::app

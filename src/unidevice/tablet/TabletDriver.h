// The pen of a drawing tablet.
#pragma once

#include "unidevice/Driver.h"

namespace orv::unidevice {

class TabletDevice;

/// What a pen tells at a time.
struct PenState {
  double x = 0.0, y = 0.0;          ///< -1 to 1, right and up
  double tiltX = 0.0, tiltY = 0.0;  ///< -1 to 1 (60 degrees), right and away from the user
  double twist = 0.0;               ///< -1 to 1 (half a turn), clockwise
  double pressure = 0.0;            ///< 0 to 1
  bool tip = false;                 ///< touches the tablet
  bool firstButton = false, secondButton = false;
  bool isNear = false;  ///< touches the tablet, or hovers over it
};

/// Driver of one device, "Tablet", which is there from the first time that a pen has been heard of.
/// The program tells what its windows hear. Main thread only.
class TabletDriver : public Driver {
 public:
  static constexpr const char* kName = "tablet";
  static constexpr const char* kDevice = "Tablet";

  TabletDriver() : Driver(kName) {}

  void setPen(const PenState& state);
  /// The pen is out of reach, or another program has it: it presses nothing. Position, tilt and
  /// twist stay as they were, so that a lifted pen moves nothing.
  void leave();

 private:
  TabletDevice* m_device = nullptr;
};

}  // namespace orv::unidevice

// What a control is called.
#pragma once

#include <string>

namespace orv::unidevice {

/// Names one control, present or away.
struct ControlName {
  std::string device;  ///< empty: the first device that has the control
  std::string type;    ///< see Control::type
  int index = 0;
};

inline bool operator==(const ControlName& a, const ControlName& b) {
  return a.device == b.device && a.type == b.type && a.index == b.index;
}

}  // namespace orv::unidevice

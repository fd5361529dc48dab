// Where the calibrations of devices are kept.
#pragma once

#include <string>

namespace orv::rws::core {

/// "core/calibrations.xml" of the data folder, which goes into and comes from the table of
/// unidevice::DriverManager. It is written whole or not at all. One that is damaged is left alone:
/// its calibrations don't act, and none can be saved until it is mended or removed.
class CalibrationFile {
 public:
  static std::string Path();
  /// Puts the file's calibrations in place of those in the table. Empty when that is well, or when
  /// there is no file; else what is wrong, which stands in the log as well, and the table is empty.
  static std::string Load();
  /// Writes the table. Empty, or why it can't be written; the file then is as it was.
  static std::string Save();
};

}  // namespace orv::rws::core

// Recorded inputs between rigs and files.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "unidevice/software/RecordedInput.h"

namespace orv::rws::core {
class Instance;
}
namespace orv::unidevice {
class Property;
}

namespace orv::app {

class SceneJob;

/// An input file read for the rigs of a scene.
class InputFile {
 public:
  /// What a column of the file drives.
  struct Target {
    rws::core::Instance* rig = nullptr;
    unidevice::Property* input = nullptr;
  };

  /// Reads the file; refused with line and column when anything in it is wrong.
  InputFile(SceneJob& job, const std::string& path);

  const unidevice::RecordedInput& input() const { return m_input; }
  /// In the order of the columns.
  const std::vector<Target>& targets() const { return m_targets; }
  const std::string& path() const { return m_path; }
  /// Replaces the tracks of the file's inputs by its columns; other tracks stay.
  void putIntoTracks() const;

 private:
  std::string m_path;
  unidevice::RecordedInput m_input;
  std::vector<Target> m_targets;
};

/// The recorded tracks of these rigs as a file's columns; inputs without a sample are left out.
unidevice::RecordedInput recordedInputs(const std::vector<rws::core::Instance*>& rigs);

}  // namespace orv::app

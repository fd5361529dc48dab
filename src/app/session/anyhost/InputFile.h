// Recorded inputs between rigs and files.
#pragma once

#include <string>
#include <vector>

#include "unidevice/software/RecordedInput.h"

namespace orv::rws::core {
class CoreImplementation;
class Instance;
}  // namespace orv::rws::core
namespace orv::unidevice {
class Property;
}

namespace orv::app {

/// An input of a rig, found by a user's text.
struct FoundInput {
  rws::core::Instance* rig = nullptr;
  unidevice::Property* input = nullptr;  ///< null when there is none
  std::string why;                       ///< and then why, with what there is instead

  /// "RIG:INPUT".
  std::string Name() const;
};

/// The input of "RIG:INPUT", or of "INPUT" when exactly one rig has it.
FoundInput FindInput(rws::core::CoreImplementation& core, const std::string& text);

/// Puts a track in the place of the input's; undoable in an open block.
void ReplaceTrack(const FoundInput& input, util::AVar_Linear<double> track);
/// The input's track; null when there is none.
const util::AVar_Linear<double>* TrackOf(const FoundInput& input);

/// An input file read for the rigs of a scene.
class InputFile {
 public:
  /// Reads the file. An empty text means success; any other names line and column of what is wrong.
  std::string Load(rws::core::CoreImplementation& core, const std::string& path);

  const unidevice::RecordedInput& GetInput() const { return m_input; }
  /// What the columns drive, in their order.
  const std::vector<FoundInput>& GetTargets() const { return m_targets; }
  /// What is odd in the file although it is taken as it stands.
  const std::vector<std::string>& GetWarnings() const { return m_warnings; }
  /// Replaces the tracks of the file's inputs by its columns; other tracks stay. Undoable in an
  /// open block.
  void PutIntoTracks() const;

 private:
  void WarnOfLargeValues(const std::string& path);

  unidevice::RecordedInput m_input;
  std::vector<FoundInput> m_targets;
  std::vector<std::string> m_warnings;
};

/// The recorded tracks of these rigs as a file's columns; inputs without a sample are left out.
unidevice::RecordedInput RecordedInputs(const std::vector<rws::core::Instance*>& rigs);

}  // namespace orv::app

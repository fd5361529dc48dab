// What the plug-in believes of its host, one probe a belief.
#pragma once

#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "adaptor/maya/probes/Features.h"

namespace orv::rws::adaptor::maya {

enum class ProbeState { kHeld, kRefuted, kSkipped };

/// Collects what one probe finds.
class ProbeRun {
 public:
  /// The first thing that is not so refutes the belief.
  bool Check(bool held, const std::string& what) {
    if (!held && m_state != ProbeState::kRefuted) {
      m_state = ProbeState::kRefuted;
      m_detail = what;
    }
    return held;
  }
  bool Near(double value, double expected, double tolerance, const std::string& what) {
    return Check(std::fabs(value - expected) <= tolerance,
                 what + " is " + std::to_string(value) + ", not " + std::to_string(expected));
  }
  /// This host can't be asked, such as one without windows.
  void Skip(const std::string& why) {
    if (m_state == ProbeState::kRefuted) return;
    m_state = ProbeState::kSkipped;
    m_detail = why;
  }
  /// Seen by the way, for the report.
  void Note(const std::string& line) { m_notes.push_back(line); }

  ProbeState GetState() const { return m_state; }
  const std::string& GetDetail() const { return m_detail; }
  const std::vector<std::string>& GetNotes() const { return m_notes; }

 private:
  ProbeState m_state = ProbeState::kHeld;
  std::string m_detail;
  std::vector<std::string> m_notes;
};

/// Where a belief comes from.
enum class ProbeSource { kDocumented, kBelief };

struct Probe {
  int id;           ///< never used again for another
  Feature feature;  ///< that is off when the belief is refuted
  ProbeSource source;
  const char* belief;  ///< a sentence without its full stop
  void (*run)(ProbeRun& run);
};

/// All, by rising ids. They use the host's interface alone and leave nodes behind: they are for a
/// scene that is thrown away.
const std::vector<Probe>& AllProbes();

struct ProbeOutcome {
  const Probe* probe;
  ProbeState state;
  std::string detail;
  std::vector<std::string> notes;
};

/// Runs all; those of `forced` count as refuted whatever they find.
std::vector<ProbeOutcome> RunProbes(const std::set<int>& forced = {});
/// What a user is told when this probe is refuted.
std::string RefutedText(const Probe& probe);
/// Switches off what the refuted ones carry.
void ApplyRefuted(const std::vector<int>& ids);

// The parts of the list.
void AddSceneProbes(std::vector<Probe>& list);
void AddGraphProbes(std::vector<Probe>& list);
void AddKeyProbes(std::vector<Probe>& list);
void AddShapeProbes(std::vector<Probe>& list);
void AddDetailProbes(std::vector<Probe>& list);

}  // namespace orv::rws::adaptor::maya

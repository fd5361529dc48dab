// What the user's licence allows.
#pragma once

#include <functional>
#include <string>

#include "core/licensing/Licence.h"

namespace orv::rws::core {

enum class LicenceState {
  kNotNeeded,  ///< the program was built without a key: everything is allowed
  kValid,
  kMissing,
  kUnreadable,
  kDamaged,   ///< it is no licence, or a part of it is gone
  kOtherKey,  ///< it was signed for another program or by somebody else
  kTampered,  ///< its text is not the one that was signed
  kExpired,
  kClockSetBack,  ///< the computer's day lies before one on which the licence was used already
};

/// Name of a state for programs, such as "clock-set-back".
const char* NameOf(LicenceState state);

/// Reads "licence.txt" of the data root at its first use and keeps what it found, so that a
/// question costs no file. Main thread only.
///
/// Beside the licence, "licence.seen" keeps the latest day of its use. It tells an honest user
/// whose clock has gone wrong, and is no lock: without it, or when it is damaged, it begins anew.
class Licensing {
 public:
  /// Today's day, such as "2026-11-22".
  using Clock = std::function<std::string()>;

  /// `publicKey`: 32 bytes of an Ed25519 key, or empty when no licence is needed.
  explicit Licensing(std::string publicKey = GetBuiltInKey(), Clock today = GetLocalDay);

  /// Reads the file again: the user has put another one there.
  void Reload();
  LicenceState GetState();
  /// What the file says; only its owner's word unless the state is kValid, kExpired or
  /// kClockSetBack.
  const Licence& GetLicence();
  /// One or more sentences that name the file, what is the matter with it and what to do.
  std::string GetText();

  /// A feature without a name is always allowed.
  bool Allows(const std::string& feature);
  /// Why a feature is not allowed and what to do; empty when it is.
  std::string WhyNot(const std::string& feature);
  /// A rig is created or performed today. Writes "licence.seen" when a day has begun.
  void NoteUse();

  static std::string GetPath();
  static std::string GetSeenPath();
  static std::string GetBuiltInKey();
  static std::string GetLocalDay();

 private:
  void Check();
  LicenceState Examine();
  std::string ReadSeen() const;

  std::string m_publicKey;
  Clock m_today;
  bool m_checked = false;
  LicenceState m_state = LicenceState::kNotNeeded;
  Licence m_licence;
  std::string m_day;     ///< of the check
  std::string m_seen;    ///< latest day of use, empty when there is none
  std::string m_reason;  ///< why the file is unreadable or damaged
};

}  // namespace orv::rws::core

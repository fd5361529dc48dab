// The subsystem that knows the version of the program, and asks for newer ones.
#pragma once

#include <QMutex>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/CoreSubSystem.h"
#include "core/update/UpdateReciever.h"

namespace orv::rws::core {

/// Asks the server that the program was built with for a newer version: only when the user has
/// agreed, and by itself once a week. What comes of it is told by UpdateChecked. A check that was
/// not asked for by hand tells of a newer version and of nothing else.
class UpdateManager : public CoreSubSystem {
 public:
  UpdateManager();
  ~UpdateManager() override;

  /// Whether there is a server to ask; without one nothing of the check is to be shown.
  bool IsOffered() const { return !m_query.address.empty(); }
  /// Whether the user has not been asked yet for his consent.
  bool MustAskConsent();
  bool HasConsent();
  /// Keeps the user's answer in the preferences; an empty text means success.
  std::string SetConsent(bool consent);
  /// Asks when the user has agreed and a week has gone by; to be called at the program's start.
  void CheckWhenDue();
  /// The user's own wish. An empty text means that the answer will be told, any other why not.
  std::string CheckNow();

  /// Another server in place of the one built in, for tests.
  void SetQuery(const UpdateQuery& query) { m_query = query; }
  void SetResolver(UpdateReciever::Resolver resolver) { m_resolver = std::move(resolver); }
  /// Days since 1970; may be replaced, so that a test scripts it.
  std::function<int()> currentDay;

 private:
  class Inbox;

  void Ask(bool byHand);
  void Take(const UpdateAnswer& answer);  ///< on the reciever's thread
  void TellAnswers();

  UpdateQuery m_query;
  UpdateReciever::Resolver m_resolver = UpdateReciever::ResolveBySystem;
  QMutex m_mutex;  ///< guards m_answers
  std::vector<UpdateAnswer> m_answers;
  bool m_byHand = false;
  std::unique_ptr<Inbox> m_inbox;
  std::unique_ptr<UpdateReciever> m_reciever;  ///< ends before what it delivers to
};

}  // namespace orv::rws::core

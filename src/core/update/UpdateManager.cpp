#include "core/update/UpdateManager.h"

#include <QCoreApplication>
#include <QDate>
#include <QEvent>
#include <QMutexLocker>
#include <QObject>
#include <QSysInfo>
#include <utility>

#include "core/CoreImplementation.h"
#include "core/services/Log.h"
#include "core/services/Product.h"
#include "core/services/Translation.h"
#include "core/update/UpdateAddress.h"

namespace orv::rws::core {

namespace {

constexpr int kDaysBetween = 7;

int Today() {
  return static_cast<int>(QDate(1970, 1, 1).daysTo(QDate::currentDate()));
}

}  // namespace

/// Brings the main thread to the answers.
class UpdateManager::Inbox : public QObject {
 public:
  explicit Inbox(UpdateManager& manager) : m_manager(manager) {}

 protected:
  void customEvent(QEvent*) override { m_manager.TellAnswers(); }

 private:
  UpdateManager& m_manager;
};

UpdateManager::UpdateManager() : currentDay(Today), m_inbox(std::make_unique<Inbox>(*this)) {
  const QString system = QSysInfo::kernelType() + "-" + QSysInfo::buildCpuArchitecture();
  m_query = {GetUpdateAddress(), system.toStdString(), kProductVersion, false};
}

UpdateManager::~UpdateManager() = default;

bool UpdateManager::MustAskConsent() {
  const Preferences& preferences = GetCore()->GetPreferences();
  return IsOffered() && !preferences.updateAsked && !preferences.updateCheck;
}

bool UpdateManager::HasConsent() {
  return IsOffered() && GetCore()->GetPreferences().updateCheck;
}

std::string UpdateManager::SetConsent(bool consent) {
  Preferences& preferences = GetCore()->GetPreferences();
  preferences.updateCheck = consent;
  preferences.updateAsked = true;
  if (!consent) m_reciever.reset();
  std::string error;
  preferences.Save(&error, {"updatecheck", "updateasked"});
  return error;
}

void UpdateManager::CheckWhenDue() {
  if (!HasConsent() || m_reciever) return;
  Preferences& preferences = GetCore()->GetPreferences();
  const int today = currentDay();
  // A day that lies ahead was kept by a clock that was wrong.
  if (preferences.updateDay <= today && today < preferences.updateDay + kDaysBetween) return;
  preferences.updateDay = today;
  std::string error;
  // Where the day can't be kept the server would be asked at each start.
  if (!preferences.Save(&error, {"updateday"})) {
    LogEntry(LogLevel::kInfo, "No check for updates: " + error);
    return;
  }
  Ask(false);
}

std::string UpdateManager::CheckNow() {
  if (!IsOffered()) return Translate("This program can't check for updates.");
  if (!HasConsent())
    return Translate("The check for updates is switched off. Switch it on in the preferences.");
  Ask(true);
  return {};
}

void UpdateManager::Ask(bool byHand) {
  m_reciever.reset();
  {
    const QMutexLocker lock(&m_mutex);
    m_answers.clear();  // of the question that has just ended
  }
  m_byHand = byHand;
  m_reciever = std::make_unique<UpdateReciever>(
      m_query, [this](const UpdateAnswer& answer) { Take(answer); }, m_resolver);
}

void UpdateManager::Take(const UpdateAnswer& answer) {
  const QMutexLocker lock(&m_mutex);
  m_answers.push_back(answer);
  QCoreApplication::postEvent(m_inbox.get(), new QEvent(QEvent::User));
}

void UpdateManager::TellAnswers() {
  std::vector<UpdateAnswer> answers;
  {
    const QMutexLocker lock(&m_mutex);
    answers.swap(m_answers);
  }
  if (answers.empty()) return;
  m_reciever.reset();
  for (const UpdateAnswer& answer : answers) {
    const bool isNewer = IsNewerVersion(answer.version, m_query.version);
    const std::string problem = Translate(answer.problem, answer.details);
    if (!problem.empty()) LogEntry(LogLevel::kInfo, "The check for updates failed: " + problem);
    if (isNewer || m_byHand)
      GetCore()->GetMessages().Tell(UpdateChecked{isNewer, answer.version, answer.link, problem});
  }
}

}  // namespace orv::rws::core

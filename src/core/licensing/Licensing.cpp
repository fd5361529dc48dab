#include "core/licensing/Licensing.h"

#include <QDate>
#include <filesystem>
#include <utility>

#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "core/services/Translation.h"
#include "util/AtomicFile.h"
#include "util/xml/Base64.h"

namespace orv::rws::core {

namespace {

/// Bytes of a file that may be a licence.
constexpr std::uintmax_t kMostBytes = 65536;

/// A day back is a journey over the date line.
bool IsClearlyBefore(const std::string& day, const std::string& other) {
  const QDate early = QDate::fromString(QString::fromStdString(day), Qt::ISODate);
  const QDate late = QDate::fromString(QString::fromStdString(other), Qt::ISODate);
  return early.isValid() && late.isValid() && early.daysTo(late) > 1;
}

std::string ListText(const std::vector<std::string>& features) {
  std::string text;
  for (const std::string& feature : features) text += (text.empty() ? "" : ", ") + feature;
  return text;
}

}  // namespace

const char* NameOf(LicenceState state) {
  switch (state) {
    case LicenceState::kNotNeeded:
      return "not-needed";
    case LicenceState::kValid:
      return "valid";
    case LicenceState::kMissing:
      return "missing";
    case LicenceState::kUnreadable:
      return "unreadable";
    case LicenceState::kDamaged:
      return "damaged";
    case LicenceState::kOtherKey:
      return "other-key";
    case LicenceState::kTampered:
      return "tampered";
    case LicenceState::kExpired:
      return "expired";
    case LicenceState::kClockSetBack:
      return "clock-set-back";
  }
  return "";
}

Licensing::Licensing(std::string publicKey, Clock today)
    : m_publicKey(std::move(publicKey)), m_today(std::move(today)) {}

std::string Licensing::GetPath() {
  return DataRoot::Get() + "/licence.txt";
}

std::string Licensing::GetSeenPath() {
  return DataRoot::Get() + "/licence.seen";
}

std::string Licensing::GetBuiltInKey() {
  const std::vector<unsigned char> bytes = util::xml::decodeBase64(ORV_LICENCE_KEY);
  return {bytes.begin(), bytes.end()};
}

std::string Licensing::GetLocalDay() {
  return QDate::currentDate().toString(Qt::ISODate).toStdString();
}

void Licensing::Reload() {
  m_checked = false;
}

void Licensing::Check() {
  if (std::exchange(m_checked, true)) return;
  m_licence = Licence();
  m_reason.clear();
  m_seen.clear();
  if (m_publicKey.empty()) return;
  m_day = m_today();
  m_state = Examine();
}

LicenceState Licensing::Examine() {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(GetPath(), error);
  if (status.type() == std::filesystem::file_type::not_found) return LicenceState::kMissing;
  if (status.type() == std::filesystem::file_type::none) {
    m_reason = error.message();
    return LicenceState::kUnreadable;
  }
  const bool isFile = std::filesystem::is_regular_file(status);
  if (isFile && std::filesystem::file_size(GetPath(), error) > kMostBytes) {
    m_reason = Translate("it is far too long");
    return LicenceState::kDamaged;
  }
  std::string text;
  if (!isFile || !util::readFile(GetPath(), text, &m_reason)) {
    if (m_reason.empty()) m_reason = Translate("it is no file");
    return LicenceState::kUnreadable;
  }
  if (!m_licence.Parse(text, m_reason)) return LicenceState::kDamaged;
  if (!m_licence.IsSignedBy(m_publicKey)) {
    const bool isOurs = m_licence.key.empty() || m_licence.key == FingerprintOf(m_publicKey);
    return isOurs ? LicenceState::kTampered : LicenceState::kOtherKey;
  }
  m_seen = ReadSeen();
  if (IsClearlyBefore(m_day, m_seen)) return LicenceState::kClockSetBack;
  // Text of the calendar's form is in the order of its days.
  return m_licence.validUntil < m_day ? LicenceState::kExpired : LicenceState::kValid;
}

std::string Licensing::ReadSeen() const {
  std::error_code ignored;
  std::string text;
  if (!std::filesystem::is_regular_file(GetSeenPath(), ignored)) return {};
  if (!util::readFile(GetSeenPath(), text)) return {};
  const std::string day = text.substr(0, 10);
  return IsDay(day) ? day : std::string();
}

LicenceState Licensing::GetState() {
  Check();
  return m_state;
}

const Licence& Licensing::GetLicence() {
  Check();
  return m_licence;
}

std::string Licensing::GetText() {
  const std::string path = GetPath();
  switch (GetState()) {
    case LicenceState::kNotNeeded:
      return Translate("This program needs no licence: everything is allowed.");
    case LicenceState::kValid:
      return Translate("%1: the licence %2 of %3 is valid until %4 and covers: %5.",
                       {path, m_licence.id, m_licence.licensee, m_licence.validUntil,
                        ListText(m_licence.features)});
    case LicenceState::kMissing:
      return Translate("%1: there is no licence. Put the licence file that you were sent there.",
                       {path});
    case LicenceState::kUnreadable:
      return Translate("The licence can't be read: %1. See to it that you may read the file.",
                       {m_reason.rfind(path, 0) == 0 ? m_reason : path + ": " + m_reason});
    case LicenceState::kDamaged:
      return Translate(
          "%1: the licence is damaged: %2. Put the file that you were sent there "
          "again.",
          {path, m_reason});
    case LicenceState::kOtherKey:
      return Translate(
          "%1: the licence was not made for this program. Ask for a licence for this "
          "version.",
          {path});
    case LicenceState::kTampered:
      return Translate(
          "%1: the licence was changed after it was made: its signature does not fit "
          "its text. Put the file that you were sent there again.",
          {path});
    case LicenceState::kExpired:
      return Translate("%1: the licence %2 of %3 ended on %4. Put a new licence there.",
                       {path, m_licence.id, m_licence.licensee, m_licence.validUntil});
    case LicenceState::kClockSetBack:
      return Translate(
          "%1: the computer's clock says %2, but the licence was used on %3 already "
          "(%4). Set the clock right. If it is right, delete %4.",
          {path, m_day, m_seen, GetSeenPath()});
  }
  return {};
}

bool Licensing::Allows(const std::string& feature) {
  if (feature.empty()) return true;
  const LicenceState state = GetState();
  return state == LicenceState::kNotNeeded ||
         (state == LicenceState::kValid && m_licence.Names(feature));
}

std::string Licensing::WhyNot(const std::string& feature) {
  if (Allows(feature)) return {};
  if (m_state != LicenceState::kValid) return GetText();
  return Translate(
      "%1: the licence %2 of %3 covers %4, and not \"%5\". Put a licence there that "
      "covers it.",
      {GetPath(), m_licence.id, m_licence.licensee, ListText(m_licence.features), feature});
}

void Licensing::NoteUse() {
  if (GetState() != LicenceState::kValid || m_day <= m_seen) return;
  m_seen = m_day;
  std::string error;
  // A data root that can't be written is no reason to stop work.
  if (!util::writeFile(GetSeenPath(), m_day + "\n", &error))
    LogEntry(LogLevel::kInfo, "The day of the licence's use can't be noted: " + error);
}

}  // namespace orv::rws::core

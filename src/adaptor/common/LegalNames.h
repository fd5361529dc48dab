// Names that hosts and their files take.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orv::rws::adaptor {

/// `name` with an underscore in place of each character that is no ASCII letter, digit or
/// underscore, and one ahead of a digit: "4WheelerExt_01 Body" becomes "_4WheelerExt_01_Body". An
/// empty name becomes "_".
std::string LegalName(const std::string& name);

/// The legal form of `wish`, with "_2", "_3", ... behind it where `isTaken`.
std::string FreeLegalName(const std::string& wish,
                          const std::function<bool(const std::string& name)>& isTaken);

/// Hands out legal names, none of them twice.
class LegalNames {
 public:
  /// `taken` are never handed out, such as the names of what every scene of a host holds.
  explicit LegalNames(std::set<std::string> taken = {}) : m_taken(std::move(taken)) {}

  /// The legal form of `wish`, with "_2", "_3", ... behind it where that is taken.
  std::string Add(const std::string& wish);
  /// One name for each wish. Those that are legal as they are come first, and so keep their names.
  std::vector<std::string> Add(const std::vector<std::string>& wishes);

 private:
  std::set<std::string> m_taken;
  std::map<std::string, int> m_latest;  ///< number handed out last behind each legal form
};

}  // namespace orv::rws::adaptor

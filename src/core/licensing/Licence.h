// The text of a licence.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::core {

/// What a licence file says. Its lines are "name: value" in any order, in UTF-8; blank lines, line
/// ends of any system and blanks at the end of a line don't count. The signature is that of all
/// other lines.
struct Licence {
  std::string licensee;
  std::vector<std::string> features;  ///< "all" stands for each
  std::string validUntil;             ///< last day, such as "2027-12-31"
  std::string id;
  std::string key;        ///< fingerprint of the key that signed it; may be absent
  std::string signature;  ///< 64 bytes
  std::string signedText;

  /// Reads a file's text. False, with `problem` naming the first thing that is not as it must be.
  bool Parse(const std::string& text, std::string& problem);
  bool Names(const std::string& feature) const;
  /// Whether the signature is one of the signed text by this Ed25519 key (32 bytes).
  bool IsSignedBy(const std::string& publicKey) const;
};

/// What a licence calls a key (32 bytes): the first eight bytes of its SHA-256 in hexadecimal.
std::string FingerprintOf(const std::string& publicKey);

/// Whether `text` is a day of the calendar, such as "2027-12-31".
bool IsDay(const std::string& text);

}  // namespace orv::rws::core

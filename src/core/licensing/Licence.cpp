#include "core/licensing/Licence.h"

#include <openssl/evp.h>

#include <QDate>
#include <QString>
#include <algorithm>
#include <memory>
#include <sstream>

#include "core/services/Translation.h"
#include "util/xml/Base64.h"

namespace orv::rws::core {

namespace {

constexpr std::size_t kKeySize = 32;
constexpr std::size_t kSignatureSize = 64;
constexpr char kSignature[] = "signature";
constexpr char kAllFeatures[] = "all";
constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr char kBlanks[] = " \t\r";

std::string Trimmed(const std::string& text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::vector<std::string> SplitList(const std::string& text) {
  std::vector<std::string> parts;
  std::istringstream rest(text);
  for (std::string part; std::getline(rest, part, ',');)
    if (part = Trimmed(part); !part.empty()) parts.push_back(part);
  return parts;
}

const unsigned char* Bytes(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

/// The field that a line is called after; null for an unknown name, which is signed all the same.
std::string* FieldOf(const std::string& name, Licence& licence, std::string& features) {
  if (name == "licensee") return &licence.licensee;
  if (name == "features") return &features;
  if (name == "valid until") return &licence.validUntil;
  if (name == "id") return &licence.id;
  if (name == "key") return &licence.key;
  return name == kSignature ? &licence.signature : nullptr;
}

}  // namespace

bool IsDay(const std::string& text) {
  return text.size() == 10 &&
         QDate::fromString(QString::fromStdString(text), Qt::ISODate).isValid();
}

bool Licence::Parse(const std::string& text, std::string& problem) {
  *this = Licence();
  std::string featureList;
  std::istringstream lines(text.rfind(kByteOrderMark, 0) == 0 ? text.substr(3) : text);
  for (std::string line; std::getline(lines, line);) {
    line = Trimmed(line);
    if (line.empty()) continue;
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) {
      problem = Translate("the line \"%1\" has no colon", {line.substr(0, 40)});
      return false;
    }
    const std::string name = Trimmed(line.substr(0, colon));
    if (name != kSignature) signedText += line + "\n";
    std::string* const field = FieldOf(name, *this, featureList);
    if (!field) continue;
    if (!field->empty()) {
      problem = Translate("it holds the line \"%1\" twice", {name});
      return false;
    }
    *field = Trimmed(line.substr(colon + 1));
  }
  features = SplitList(featureList);
  const std::pair<const char*, bool> lacking[] = {{"licensee", licensee.empty()},
                                                  {"features", features.empty()},
                                                  {"valid until", validUntil.empty()},
                                                  {"id", id.empty()},
                                                  {kSignature, signature.empty()}};
  for (const auto& [name, lacks] : lacking) {
    if (!lacks) continue;
    problem = Translate("it has no line \"%1\"", {name});
    return false;
  }
  if (!IsDay(validUntil)) {
    problem = Translate("\"%1\" is no day such as 2027-12-31", {validUntil});
    return false;
  }
  const std::vector<unsigned char> bytes = util::xml::decodeBase64(signature);
  signature.assign(bytes.begin(), bytes.end());
  if (signature.size() == kSignatureSize) return true;
  problem = Translate("its signature is cut or garbled");
  return false;
}

bool Licence::Names(const std::string& feature) const {
  return std::any_of(features.begin(), features.end(), [&feature](const std::string& own) {
    return own == feature || own == kAllFeatures;
  });
}

bool Licence::IsSignedBy(const std::string& publicKey) const {
  if (publicKey.size() != kKeySize) return false;
  const std::unique_ptr<EVP_PKEY, void (*)(EVP_PKEY*)> key(
      EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, Bytes(publicKey), kKeySize),
      EVP_PKEY_free);
  const std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)> context(EVP_MD_CTX_new(),
                                                                   EVP_MD_CTX_free);
  return key && context &&
         EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
         EVP_DigestVerify(context.get(), Bytes(signature), signature.size(), Bytes(signedText),
                          signedText.size()) == 1;
}

std::string FingerprintOf(const std::string& publicKey) {
  constexpr std::size_t kShown = 8;
  constexpr char kDigits[] = "0123456789abcdef";
  unsigned char hash[EVP_MAX_MD_SIZE] = {};
  if (EVP_Digest(publicKey.data(), publicKey.size(), hash, nullptr, EVP_sha256(), nullptr) != 1)
    return {};
  std::string text;
  for (std::size_t i = 0; i < kShown; ++i) {
    text += kDigits[hash[i] >> 4];
    text += kDigits[hash[i] & 15];
  }
  return text;
}

}  // namespace orv::rws::core

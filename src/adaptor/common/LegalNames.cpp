#include "adaptor/common/LegalNames.h"

#include <cstddef>

namespace orv::rws::adaptor {

namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsLegal(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || IsDigit(c) || c == '_';
}

}  // namespace

std::string LegalName(const std::string& name) {
  std::string legal;
  for (const char c : name) {
    const bool goesOn = (static_cast<unsigned char>(c) & 0xC0) == 0x80;  // of a UTF-8 character
    if (!goesOn) legal += IsLegal(c) ? c : '_';
  }
  return legal.empty() || IsDigit(legal.front()) ? "_" + legal : legal;
}

std::string FreeLegalName(const std::string& wish,
                          const std::function<bool(const std::string& name)>& isTaken) {
  const std::string legal = LegalName(wish);
  std::string name = legal;
  for (int i = 2; isTaken(name); ++i) name = legal + "_" + std::to_string(i);
  return name;
}

std::string LegalNames::Add(const std::string& wish) {
  const std::string legal = LegalName(wish);
  std::string name = legal;
  int& latest = m_latest.emplace(legal, 1).first->second;
  while (!m_taken.insert(name).second) name = legal + "_" + std::to_string(++latest);
  return name;
}

std::vector<std::string> LegalNames::Add(const std::vector<std::string>& wishes) {
  std::vector<std::string> names(wishes.size());
  for (const bool areLegal : {true, false})
    for (std::size_t i = 0; i < wishes.size(); ++i)
      if ((LegalName(wishes[i]) == wishes[i]) == areLegal) names[i] = Add(wishes[i]);
  return names;
}

}  // namespace orv::rws::adaptor

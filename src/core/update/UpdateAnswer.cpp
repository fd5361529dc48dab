#include "core/update/UpdateAnswer.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>
#include <vector>

#include "core/services/Translation.h"
#include "util/NumberText.h"

namespace orv::rws::core {

namespace {

/// The numbers of a version; empty when it is none.
std::vector<int> NumbersOf(const std::string& version) {
  constexpr std::size_t kMostDigits = 9;
  std::vector<int> numbers;
  std::istringstream parts(version + ".");
  for (std::string part; std::getline(parts, part, '.');) {
    int number = 0;
    const bool isNumber = !part.empty() && part.size() <= kMostDigits &&
                          part.find_first_not_of("0123456789") == std::string::npos &&
                          util::parseNumber(part, number);
    if (!isNumber) return {};
    numbers.push_back(number);
  }
  while (!numbers.empty() && numbers.back() == 0 && numbers.size() > 1) numbers.pop_back();
  return numbers;
}

/// Whether a browser may be sent there: https, a host, and nothing that looks like another text.
bool IsGoodLink(const std::string& link) {
  constexpr char kScheme[] = "https://";
  constexpr std::size_t kSchemeSize = sizeof kScheme - 1;
  constexpr std::size_t kMostBytes = 500;
  return link.rfind(kScheme, 0) == 0 && link.size() > kSchemeSize && link.size() <= kMostBytes &&
         link[kSchemeSize] != '/' && std::all_of(link.begin(), link.end(), [](unsigned char c) {
           return c > 32 && c < 127 && c != '"' && c != '<' && c != '>' && c != '\\' && c != '@';
         });
}

std::string TextIn(const nlohmann::json& object, const char* key) {
  const auto found = object.find(key);
  return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace

bool IsVersion(const std::string& text) {
  return !NumbersOf(text).empty();
}

bool IsNewerVersion(const std::string& version, const std::string& than) {
  return NumbersOf(than) < NumbersOf(version);
}

UpdateAnswer ReadUpdateAnswer(const std::string& json) {
  UpdateAnswer answer;
  const nlohmann::json object = nlohmann::json::parse(json, nullptr, false);
  if (object.is_object()) answer.version = TextIn(object, "version");
  if (!IsVersion(answer.version)) {
    answer.version.clear();
    answer.problem = Translatable("the server's answer names no version");
    return answer;
  }
  const std::string link = TextIn(object, "link");
  if (IsGoodLink(link)) answer.link = link;
  return answer;
}

}  // namespace orv::rws::core

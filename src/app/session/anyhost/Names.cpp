#include "app/session/anyhost/Names.h"

#include <algorithm>
#include <cctype>

namespace orv::app {

namespace {

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

/// Number of characters to insert, drop or exchange to make `b` of `a`.
std::size_t EditDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t exchange = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, exchange});
    }
  }
  return row[b.size()];
}

bool IsNear(const std::string& wanted, const std::string& name) {
  const std::string a = Lower(wanted);
  const std::string b = Lower(name);
  // Single letters are names of keys, and in every word.
  if (b.size() == 1) return a.size() == 1;
  if (a.size() >= 2 && b.find(a) != std::string::npos) return true;
  if (b.size() >= 3 && a.find(b) != std::string::npos) return true;
  return EditDistance(a, b) <= (std::min(a.size(), b.size()) + 2) / 3;
}

}  // namespace

std::string Joined(const std::vector<std::string>& values, const std::string& separator) {
  std::string text;
  for (std::size_t i = 0; i < values.size(); ++i) text += (i ? separator : "") + values[i];
  return text;
}

std::string HintFor(const std::string& wanted, const std::vector<std::string>& known,
                    const std::string& kind, std::size_t most) {
  if (known.empty()) return "there are no " + kind;
  std::vector<std::string> near;
  for (const std::string& name : known)
    if (!name.empty() && IsNear(wanted, name)) near.push_back(name);
  if (!near.empty() && near.size() <= most) return "did you mean " + Joined(near, " or ") + "?";
  std::vector<std::string> shown(
      known.begin(), known.begin() + static_cast<std::ptrdiff_t>(std::min(most, known.size())));
  const std::size_t more = known.size() - shown.size();
  return kind + ": " + Joined(shown) + (more ? " and " + std::to_string(more) + " more" : "");
}

std::string FileNameOf(const std::string& path) {
  const std::size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string EndingOf(const std::string& path) {
  const std::string name = FileNameOf(path);
  const std::size_t point = name.find_last_of('.');
  return point == std::string::npos || point == 0 ? std::string() : Lower(name.substr(point));
}

}  // namespace orv::app

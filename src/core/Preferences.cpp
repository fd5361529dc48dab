#include "core/Preferences.h"

#include <filesystem>

#include "core/DataRoot.h"
#include "core/Log.h"
#include "util/NumberText.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

namespace {

using util::xml::Element;
using util::xml::Tag;

constexpr char kRoot[] = "preferences";
constexpr char kPreference[] = "preference";
constexpr char kCountdown[] = "Start Countdown time";
constexpr char kUpdateViewport[] = "updateviewport";

/// Longest countdown (s) that a file may ask for.
constexpr int kMaxCountdown = 3600;

/// The number of a preference; false when the document has none or it is out of range.
bool ReadNumber(const Element& root, const char* name, int max, int& value) {
  for (const Element* child : root.children) {
    if (child->name != kPreference || child->attribute("name") != name) continue;
    int parsed = 0;
    if (!util::parseNumber(child->text(), parsed) || parsed < 0 || parsed > max) return false;
    value = parsed;
    return true;
  }
  return false;
}

void AddNumber(Tag& root, const char* name, int value) {
  Tag tag(kPreference);
  tag.setAttribute("name", name);
  tag.setText(std::to_string(value));
  root.emplaceChild(std::move(tag));
}

}  // namespace

std::string Preferences::path() {
  return DataRoot::GetDataFolder() + "/core/preferences.xml";
}

bool Preferences::load() {
  *this = Preferences();
  std::error_code ignored;
  if (!std::filesystem::exists(path(), ignored)) return false;
  Element root;
  std::string problem = path() + ": they have another root tag";
  if (root.load(path(), &problem) != 0 || root.name != kRoot) {
    LogEntry(LogLevel::kWarning, "The preferences can't be read, so the defaults hold: " + problem);
    return false;
  }
  int viewport = updateViewport;
  bool whole = ReadNumber(root, kCountdown, kMaxCountdown, countdownSeconds);
  whole = ReadNumber(root, kUpdateViewport, 1, viewport) && whole;
  updateViewport = viewport != 0;
  if (!whole)
    LogEntry(LogLevel::kWarning, path() + ": some preferences are damaged and have their defaults");
  return whole;
}

bool Preferences::save(std::string* error) const {
  Tag root(kRoot);
  AddNumber(root, kCountdown, countdownSeconds);
  AddNumber(root, kUpdateViewport, updateViewport);
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path()).parent_path(), ignored);
  return root.save(path(), error);
}

}  // namespace orv::rws::core

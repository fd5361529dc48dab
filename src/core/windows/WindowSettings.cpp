#include "core/windows/WindowSettings.h"

#include <filesystem>
#include <utility>

#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "util/xml/Tag.h"

namespace orv::rws::core::windows {

namespace {

constexpr char kRoot[] = "windows";
constexpr char kEntry[] = "entry";

std::string Path() {
  return DataRoot::GetDataFolder() + "/core/windows.xml";
}

}  // namespace

WindowSettings::WindowSettings() {
  std::error_code ignored;
  if (!std::filesystem::exists(Path(), ignored)) return;
  util::xml::Element root;
  std::string problem;
  if (root.load(Path(), &problem) != 0 || root.name != kRoot) {
    LogEntry(LogLevel::kWarning, "The places of windows can't be read: " + problem);
    return;
  }
  for (const util::xml::Element* entry : root.children)
    if (entry->name == kEntry)
      m_values[{entry->attribute("window"), entry->attribute("key")}] = entry->attribute("value");
}

WindowSettings::~WindowSettings() {
  Save();
}

const std::string& WindowSettings::Get(const std::string& window, const std::string& key) const {
  static const std::string kNothing;
  const auto found = m_values.find({window, key});
  return found == m_values.end() ? kNothing : found->second;
}

void WindowSettings::Set(const std::string& window, const std::string& key,
                         const std::string& value) {
  if (Get(window, key) == value) return;
  if (value.empty())
    m_values.erase({window, key});
  else
    m_values[{window, key}] = value;
  m_changed = true;
}

void WindowSettings::Save() {
  if (!m_changed) return;
  m_changed = false;
  util::xml::Tag root(kRoot);
  for (const auto& [where, value] : m_values) {
    util::xml::Tag entry(kEntry);
    entry.setAttribute("window", where.first);
    entry.setAttribute("key", where.second);
    entry.setAttribute("value", value);
    root.emplaceChild(std::move(entry));
  }
  std::string problem;
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(Path()).parent_path(), ignored);
  if (!root.save(Path(), &problem))
    LogEntry(LogLevel::kWarning, "The places of windows can't be kept: " + problem);
}

}  // namespace orv::rws::core::windows

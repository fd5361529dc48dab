#include "core/services/DataRoot.h"

#include <QFile>
#include <QStandardPaths>
#include <cstdlib>
#include <filesystem>

namespace orv::rws::core {

namespace {

std::string& Override() {
  static std::string path;
  return path;
}

std::string Absolute(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  std::string text = (error ? std::filesystem::path(path) : absolute.lexically_normal()).string();
  while (text.size() > 1 && text.back() == '/') text.pop_back();
  return text;
}

}  // namespace

std::string DataRoot::Get() {
  if (!Override().empty()) return Override();
  const char* variable = std::getenv("RIGWRIGHT_DATA_ROOT");
  if (variable && *variable) return Absolute(variable);
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return Absolute(QFile::encodeName(documents).toStdString() + "/Orvel Motion/rigwright");
}

void DataRoot::Set(const std::string& path) {
  Override() = path.empty() ? std::string() : Absolute(path);
}

std::string DataRoot::GetDataFolder() {
  return Get() + "/data";
}

}  // namespace orv::rws::core

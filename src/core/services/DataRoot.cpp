#include "core/services/DataRoot.h"

#include <QFile>
#include <QStandardPaths>
#include <cstdlib>

#include "util/AtomicFile.h"

namespace orv::rws::core {

namespace {

std::string& Override() {
  static std::string path;
  return path;
}

}  // namespace

std::string DataRoot::Get() {
  if (!Override().empty()) return Override();
  const char* variable = std::getenv("RIGWRIGHT_DATA_ROOT");
  if (variable && *variable) return util::absolutePath(variable);
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return util::absolutePath(QFile::encodeName(documents).toStdString() + "/Orvel Motion/rigwright");
}

void DataRoot::Set(const std::string& path) {
  Override() = path.empty() ? std::string() : util::absolutePath(path);
}

std::string DataRoot::GetDataFolder() {
  return Get() + "/data";
}

}  // namespace orv::rws::core

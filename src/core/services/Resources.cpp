#include "core/services/Resources.h"

#include <QDir>
#include <QFile>
#include <QtGlobal>
#include <algorithm>
#include <filesystem>

#include "util/AtomicFile.h"

// The macro declares a function, which must not happen in a namespace.
static void InitResourceTree() {
  Q_INIT_RESOURCE(data);
}

namespace orv::rws::core {

void InitResources() {
  InitResourceTree();
}

bool IsResource(const std::string& path) {
  return path.rfind(":/", 0) == 0;
}

bool ReadResource(const std::string& path, std::string& bytes, std::string* error) {
  if (!IsResource(path)) return util::readFile(path, bytes, error);
  QFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::ReadOnly)) {
    bytes.clear();
    if (error) *error = path + ": there is no such resource";
    return false;
  }
  bytes = file.readAll().toStdString();
  return true;
}

std::vector<std::string> ListResources(const std::string& folder, const std::string& extension) {
  std::vector<std::string> paths;
  if (IsResource(folder)) {
    const QDir dir(QString::fromStdString(folder));
    for (const QString& name :
         dir.entryList({QString::fromStdString("*." + extension)}, QDir::Files))
      paths.push_back(folder + "/" + name.toStdString());
  } else {
    // Through the file system's own bytes: names in any encoding must be found again.
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error), end;
    for (; !error && entry != end; entry.increment(error)) {
      std::error_code ignored;
      if (entry->path().extension() == "." + extension && entry->is_regular_file(ignored))
        paths.push_back(folder + "/" + entry->path().filename().string());
    }
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

}  // namespace orv::rws::core

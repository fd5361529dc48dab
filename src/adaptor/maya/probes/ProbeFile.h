// A scene file for the length of a probe.
#pragma once

#include <maya/MString.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace orv::rws::adaptor::maya {

/// Its name is that of the probe; the file goes with this.
class ProbeFile {
 public:
  explicit ProbeFile(const std::string& name) {
    std::error_code ignored;
    m_path = (std::filesystem::temp_directory_path(ignored) / ("rigwright-probe-" + name + ".ma"))
                 .generic_string();
  }
  ~ProbeFile() { std::remove(m_path.c_str()); }
  ProbeFile(const ProbeFile&) = delete;
  ProbeFile& operator=(const ProbeFile&) = delete;

  MString GetPath() const { return m_path.c_str(); }

 private:
  std::string m_path;
};

}  // namespace orv::rws::adaptor::maya

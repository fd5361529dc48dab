#include "adaptor/headless/GltfReader.h"

#include <new>
#include <set>
#include <utility>

#include "adaptor/headless/ForeignFile.h"
#include "adaptor/headless/GltfContent.h"
#include "adaptor/headless/GltfRecord.h"
#include "adaptor/headless/GltfTree.h"
#include "adaptor/headless/GltfUri.h"

namespace orv::rws::adaptor::headless {

namespace {

/// Extensions that change what the parts of a file that we read mean, and that we know.
const std::set<std::string> kKnownRequired = {
    "KHR_mesh_quantization", "KHR_node_visibility", "KHR_lights_punctual", "KHR_texture_transform",
    "KHR_texture_basisu",    "KHR_materials_unlit", "EXT_texture_webp"};

}  // namespace

/// Turns a loaded document into a scene.
void GltfReader::Fill(OpenFile& file, const ReadOptions& options) {
  file.scene->m_document = file.document;
  const Tree tree(file);
  Content content(file, tree, options);
  content.Read();
  Record(file).Read();
  WarnOfExtensions(file);
  content.KeepSources();
}

void GltfReader::WarnOfExtensions(OpenFile& file) {
  for (const Json& name : file.List("extensionsRequired")) {
    if (name.is_string() && kKnownRequired.count(name.get<std::string>()) == 0)
      file.warnings.push_back(
          "extensionsRequired: " + name.get<std::string>() +
          " is not known here; what it brings stays in the file but is not seen");
  }
}

ReadResult GltfReader::Read(const std::string& path, const ReadOptions& options) {
  ReadResult result;
  std::string bytes;
  if (!ReadWhole(path, bytes, result.error)) return result;
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
  return Build(std::move(bytes), path, &folder, options);
}

ReadResult GltfReader::ReadMemory(std::string bytes, const std::string& name,
                                  const ReadOptions& options) {
  const std::string* const folder = options.folder.empty() ? nullptr : &options.folder;
  return Build(std::move(bytes), name, folder, options);
}

ReadResult GltfReader::Build(std::string bytes, const std::string& name, const std::string* folder,
                             const ReadOptions& options) {
  ReadResult result;
  const std::string foreign = ForeignFile(bytes, name);
  if (!foreign.empty()) {
    result.error = name + ": " + foreign;
    return result;
  }
  try {
    auto document = std::make_shared<GltfDocument>();
    document->Load(std::move(bytes), folder);
    OpenFile file(std::move(document));
    Fill(file, options);
    result.scene = std::move(file.scene);
    for (const std::string& warning : file.warnings)
      result.warnings.push_back(name + ": " + warning);
  } catch (const GltfError& e) {
    result.error = name + ": " + e.what();
  } catch (const std::bad_alloc&) {
    result.error = name + ": is too large for this machine's memory";
  } catch (const std::exception& e) {
    result.error = name + ": " + e.what();
  }
  if (!result.error.empty()) result.scene.reset();
  return result;
}

}  // namespace orv::rws::adaptor::headless

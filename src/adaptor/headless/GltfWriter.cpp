#include "adaptor/headless/GltfWriter.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <new>
#include <set>
#include <system_error>
#include <utility>

#include "adaptor/headless/GltfAssembly.h"
#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/GltfUri.h"
#include "util/AtomicFile.h"

namespace orv::rws::adaptor::headless {

namespace fs = std::filesystem;

namespace {

/// Files beside the source that a save in another folder takes along.
class SideFiles {
 public:
  SideFiles(const std::string& sourceFolder, const std::string& output)
      : m_source(sourceFolder), m_folder(fs::path(output).parent_path()) {
    m_taken.insert(fs::path(output).lexically_normal().string());
  }

  /// Plans the copy and gives the URI to write; the old one where there is nothing to copy.
  std::string Plan(const std::string& uri, std::vector<std::string>& warnings) {
    std::string relative;
    if (IsDataUri(uri) || !DecodeRelativeUri(uri, relative)) return uri;
    auto bytes = std::make_shared<std::string>();
    std::string error;
    if (!ReadSideFile(m_source + relative, *bytes, error)) {
      warnings.push_back(error + ", so it was not copied");
      return uri;
    }
    return Place(relative, std::move(bytes));
  }

  /// The same for bytes in memory.
  std::string Place(const std::string& relative, std::shared_ptr<const std::string> bytes) {
    fs::path name = fs::path(relative).lexically_normal();
    if (std::find(name.begin(), name.end(), "..") != name.end()) name = name.filename();
    const fs::path stem = name.parent_path() / name.stem();
    for (int i = 2;; ++i) {
      const fs::path target = (m_folder / name).lexically_normal();
      const bool planned = m_taken.count(target.string()) > 0;
      if (!planned && (!Exists(target) || Holds(target, *bytes))) {
        m_taken.insert(target.string());
        m_copies.push_back({target, std::move(bytes)});
        return EncodeRelativeUri(name.generic_string());
      }
      name = stem;
      name += "_" + std::to_string(i) + fs::path(relative).extension().string();
    }
  }

  /// Writes the copies; "" or what failed, with nothing new left behind.
  std::string Write() {
    for (const Copy& copy : m_copies) {
      if (Exists(copy.target)) continue;
      std::error_code code;
      fs::create_directories(copy.target.parent_path(), code);
      std::string error;
      if (!util::writeFile(copy.target.string(), *copy.bytes, &error)) {
        TakeBack();
        return error;
      }
      m_written.push_back(copy.target);
    }
    return {};
  }

  void TakeBack() {
    std::error_code code;
    for (const fs::path& path : m_written) fs::remove(path, code);
    m_written.clear();
  }

 private:
  struct Copy {
    fs::path target;
    std::shared_ptr<const std::string> bytes;
  };

  static bool Exists(const fs::path& path) {
    std::error_code code;
    return fs::exists(fs::symlink_status(path, code));
  }

  static bool Holds(const fs::path& path, const std::string& bytes) {
    std::error_code code;
    if (fs::file_size(path, code) != bytes.size() || code) return false;
    std::string found;
    std::string error;
    return ReadSideFile(path.string(), found, error) && found == bytes;
  }

  std::string m_source;
  fs::path m_folder;
  std::set<std::string> m_taken;
  std::vector<Copy> m_copies;
  std::vector<fs::path> m_written;
};

bool SameFolder(const std::string& a, const std::string& b) {
  std::error_code code;
  return fs::equivalent(a.empty() ? "." : a, b.empty() ? "." : b, code) && !code;
}

void PlanSideFiles(const GltfDocument& document, const std::vector<int>& bufferSources, Json& json,
                   SideFiles& files, std::vector<std::string>& warnings) {
  for (std::size_t i = 0; i < bufferSources.size(); ++i) {
    if (bufferSources[i] < 0) continue;
    const auto& buffer = document.GetBuffers()[static_cast<std::size_t>(bufferSources[i])];
    Json& element = json["buffers"][i];
    std::string relative;
    if (buffer.origin == GltfDocument::Origin::kFile && Member(element, "uri") != nullptr &&
        DecodeRelativeUri(buffer.uri, relative))
      element["uri"] = files.Place(relative, buffer.storage);
  }
  if (!json.contains("images") || !json["images"].is_array()) return;
  for (Json& image : json["images"]) {
    const Json* uri = Member(image, "uri");
    if (uri != nullptr && uri->is_string())
      image["uri"] = files.Plan(uri->get<std::string>(), warnings);
  }
}

/// The form that a file's extension asks for.
GltfForm FormOf(const std::string& path) {
  std::string extension = fs::path(path).extension().string();
  for (char& c : extension)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  if (extension == ".glb") return GltfForm::kBinary;
  if (extension == ".gltf") return GltfForm::kText;
  throw GltfError("", "a scene is written as .glb or .gltf (give the file one of these endings)");
}

/// Runs a save and turns what it throws into a result.
template <class Work>
WriteResult Guarded(const std::string& name, Work work) {
  WriteResult result;
  try {
    work(result);
  } catch (const GltfError& e) {
    result.error = name + ": " + e.what();
  } catch (const Json::exception& e) {
    constexpr int kInvalidUtf8 = 316;
    result.error =
        name + ": " + (e.id == kInvalidUtf8 ? "a name or a text is not valid UTF-8" : e.what());
  } catch (const std::bad_alloc&) {
    result.error = name + ": not enough memory to write the scene";
  } catch (const std::exception& e) {
    result.error = name + ": " + e.what();
  }
  return result;
}

}  // namespace

WriteResult GltfWriter::Write(const Scene& scene, const std::string& path) {
  return Guarded(path, [&](WriteResult& result) {
    const GltfForm form = FormOf(path);
    const std::string folder = fs::path(path).parent_path().string();
    Assembly assembly(scene, form, &folder);
    assembly.Run();
    result.warnings = assembly.GetWarnings();
    const GltfDocument* document = scene.m_document.get();
    if (form == GltfForm::kText && document != nullptr && !document->GetFurtherChunks().empty())
      result.warnings.push_back(path + ": a .gltf has no place for the source's further chunks");
    SideFiles files(document == nullptr ? "" : document->GetFolder(), path);
    if (document != nullptr && !document->FromMemory() &&
        !SameFolder(document->GetFolder(), folder))
      PlanSideFiles(*document, assembly.GetBufferSources(), assembly.GetJson(), files,
                    result.warnings);

    util::AtomicFile file(path);
    const Assembly::Sink sink = [&file](std::string_view part) {
      return part.empty() || file.write(part);
    };
    // A place that can't be written to is told before anything is copied to it.
    result.error = file.error();
    if (!result.error.empty()) return;
    const bool sent = form == GltfForm::kBinary ? assembly.SendBinary(sink)
                                                : sink(assembly.GetJson().dump(2) + "\n");
    if (sent) result.error = files.Write();
    if (!result.error.empty()) return;
    if (sent && file.commit()) return;
    result.error = file.error();
    files.TakeBack();
  });
}

WriteResult GltfWriter::WriteMemory(const Scene& scene, GltfForm form, std::string& bytes) {
  bytes.clear();
  return Guarded("scene", [&](WriteResult& result) {
    Assembly assembly(scene, form, nullptr);
    assembly.Run();
    result.warnings = assembly.GetWarnings();
    if (form == GltfForm::kText) {
      bytes = assembly.GetJson().dump(2) + "\n";
      return;
    }
    assembly.SendBinary([&bytes](std::string_view part) {
      bytes.append(part);
      return true;
    });
  });
}

}  // namespace orv::rws::adaptor::headless

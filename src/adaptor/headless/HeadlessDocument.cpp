#include "adaptor/headless/HeadlessDocument.h"

#include <utility>

#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"

namespace orv::rws::adaptor::headless {

HeadlessDocument::HeadlessDocument()
    : m_scene(std::make_unique<Scene>()), m_adaptor(std::make_unique<HeadlessAdaptor>(*m_scene)) {}

HeadlessDocument::~HeadlessDocument() = default;

void HeadlessDocument::Show(std::unique_ptr<Scene> scene) {
  m_adaptor->SetScene(*scene);
  m_scene = std::move(scene);
}

bool HeadlessDocument::Open(const std::string& path, std::string& error, const ReadOptions& options,
                            const std::function<void()>& leave) {
  ReadResult read = GltfReader::Read(path, options);
  if (!read) {
    error = read.error;
    return false;
  }
  if (leave) leave();
  Show(std::move(read.scene));
  m_warnings = std::move(read.warnings);
  std::vector<std::string> kept;
  for (const RigRecord& record : m_scene->GetRigs())
    if (record.Damaged() && !record.name.empty()) kept.push_back(record.name);
  m_adaptor->KeepTagsOf(std::move(kept));
  return true;
}

bool HeadlessDocument::Save(const std::string& path, std::string& error) {
  WriteResult written = GltfWriter::Write(*m_scene, path);
  if (!written) {
    error = written.error;
    return false;
  }
  m_warnings = std::move(written.warnings);
  for (const std::string& name : m_adaptor->GetNodesWithLensKeys())
    m_warnings.push_back(
        "camera " + name +
        ": the keys of its lens were not saved, a glTF file has no place for them");
  return true;
}

void HeadlessDocument::Close() {
  Show(std::make_unique<Scene>());
}

std::vector<RigRecord>& HeadlessDocument::GetRecords() {
  return m_scene->GetRigs();
}

std::vector<std::string> HeadlessDocument::TakeWarnings() {
  std::vector<std::string> warnings = std::exchange(m_warnings, {});
  for (std::string& warning : m_adaptor->TakeWarnings()) warnings.push_back(std::move(warning));
  return warnings;
}

}  // namespace orv::rws::adaptor::headless

#include "adaptor/headless/HeadlessSession.h"

#include <utility>

#include "adaptor/common/SceneRigs.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessDocument.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"

namespace orv::rws::adaptor::headless {

HeadlessSession::HeadlessSession(const std::vector<CCameraPlugin*>& rigs, TemplateMaker maker)
    : m_document(std::make_unique<HeadlessDocument>()),
      m_core(std::make_unique<core::CoreImplementation>()),
      m_rigs(std::make_unique<SceneRigs>(*m_core, m_document->GetAdaptor(),
                                         [this](const std::string& text) { Warn(text); })) {
  HeadlessAdaptor& adaptor = m_document->GetAdaptor();
  m_core->SetAdaptor(&adaptor);
  m_core->LoadTools(rigs, maker);
  adaptor.SetTimeHandler([this](double time) { m_core->UpdateTime(time); });
  adaptor.SetMessageHandler(
      [this](const std::string& title, const std::string& text) { Warn(title + ": " + text); });
}

HeadlessSession::~HeadlessSession() {
  // The document's undo steps know rigs by their instances: both are there until the core is gone.
  m_document->GetAdaptor().SetTimeHandler(nullptr);
  m_core.reset();
}

HeadlessAdaptor& HeadlessSession::GetAdaptor() {
  return m_document->GetAdaptor();
}

Scene& HeadlessSession::GetScene() {
  return m_document->GetScene();
}

std::vector<std::string> HeadlessSession::TakeWarnings() {
  for (std::string& text : m_document->TakeWarnings()) Warn(text);
  for (std::string& text : m_document->GetAdaptor().TakeWarnings()) Warn(text);
  return std::exchange(m_warnings, {});
}

void HeadlessSession::New() {
  m_core->DropAllRows();
  m_document->Close();
  m_rigs->Clear();
}

bool HeadlessSession::Open(const std::string& path, std::string& error, const std::string& clip) {
  m_core->StopRecording();
  ReadOptions options;
  options.clip = clip;
  if (!m_document->Open(path, error, options)) return false;
  m_core->DropAllRows();  // the rigs of the scene before; none touches its nodes as it goes
  m_rigs->Load(std::exchange(m_document->GetRecords(), {}), GetScene().GetRows());
  return true;
}

bool HeadlessSession::Save(const std::string& path, std::string& error) {
  return Store(error) && m_document->Save(path, error);
}

bool HeadlessSession::Store(std::string& error) {
  return m_rigs->Store(m_document->GetRecords(), GetScene().GetRows(), error);
}

}  // namespace orv::rws::adaptor::headless

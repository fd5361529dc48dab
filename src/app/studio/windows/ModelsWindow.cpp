#include "app/studio/windows/ModelsWindow.h"

#include <QDir>
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/session/anyhost/Names.h"
#include "app/studio/windows/StudioWindowIds.h"
#include "core/services/DataRoot.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/ListBox.h"
#include "gui/componentinterface/TextBox.h"
#include "gui/componentinterface/View.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using namespace gui::componentinterface;
using gui::Translate;

std::string MetresText(double length) {
  return util::shortText(std::round(length * 10.0) / 10.0);
}

std::string FactsText(const RiggedModelInfo& info, const std::string& path) {
  std::vector<std::string> rigs;
  for (const RiggedModelInfo::Rig& rig : info.rigs)
    rigs.push_back(rig.name + " (" + rig.kind + ")");
  const util::Vector3<double> size = info.high - info.low;
  std::string text =
      Translate(info.nodes == 1 ? "Rigs: %1. One node, %3 x %4 x %5 m."
                                : "Rigs: %1. %2 nodes, %3 x %4 x %5 m.",
                {rigs.empty() ? Translate("none") : Joined(rigs), std::to_string(info.nodes),
                 MetresText(size.x), MetresText(size.y), MetresText(size.z)});
  if (info.hasTake) text += " " + Translate("A take comes along.");
  return path.rfind(":/", 0) == 0 ? text : text + "\n" + path;
}

}  // namespace

ModelsWindow::ModelsWindow(rws::core::windows::Windows& windows, std::vector<std::string> grounds)
    : ModalWindow(windows, "Models", "/core/layout/rws_models.xml", kModelAdd, kModelCancel,
                  Size::kAsKept),
      m_grounds(std::move(grounds)) {
  for (const std::string& path : ShippedModels()) AddModel(path);
  AddFolder(GetUserFolder());
}

ModelsWindow::~ModelsWindow() {
  With<View>(kModelPicture, [](View& view) { view.SetHandler(nullptr); });
}

std::string ModelsWindow::GetUserFolder() {
  return rws::core::DataRoot::Get() + "/models";
}

std::string ModelsWindow::GetFilter() {
  return Translate("Pre-rigged models (*.prm)");
}

void ModelsWindow::AddFolder(const std::string& folder) {
  const QString path = QFile::decodeName(folder.c_str());
  for (const QString& name : QDir(path).entryList({"*.prm"}, QDir::Files, QDir::Name))
    AddModel(folder + "/" + QFile::encodeName(name).toStdString());
}

int ModelsWindow::AddModel(const std::string& path) {
  const auto known = std::find(m_paths.begin(), m_paths.end(), path);
  if (known != m_paths.end()) return static_cast<int>(known - m_paths.begin()) + 1;
  m_paths.push_back(path);
  m_infos.push_back(ReadRiggedModel(path));
  return static_cast<int>(m_paths.size());
}

bool ModelsWindow::Run(ModelChoice& choice) {
  m_choice = choice;
  const int first = choice.path.empty() ? 1 : AddModel(choice.path);
  if (!Build()) return false;
  With<ListBox>(kModelList, [first](ListBox& list) { list.Select({first}); });
  ShowModel();
  if (!Ask()) return false;
  choice = m_choice;
  return true;
}

void ModelsWindow::OnBuilt() {
  With<View>(kModelPicture, [this](View& view) { view.SetHandler(&m_picture); });
  std::vector<Item> grounds(1);
  grounds[0].text = "none";
  grounds[0].english = true;
  for (const std::string& name : m_grounds) {
    Item item;
    item.id = static_cast<int>(grounds.size());
    item.text = name;
    grounds.push_back(std::move(item));
  }
  With<ComboBox>(kModelGround, [&](ComboBox& box) {
    box.SetItems(grounds);
    box.SelectIndex(m_grounds.empty() ? 0 : 1);
  });
  std::vector<Item> models;
  for (std::size_t i = 0; i < m_paths.size(); ++i) {
    Item item;
    item.id = static_cast<int>(i) + 1;
    item.text = m_infos[i].problem ? FileNameOf(m_paths[i]) : m_infos[i].card.title;
    item.dim = bool(m_infos[i].problem);
    item.tooltip = m_paths[i];
    models.push_back(std::move(item));
  }
  With<ListBox>(kModelList, [&](ListBox& list) { list.SetItems(models); });
}

const RiggedModelInfo* ModelsWindow::GetSelected() const {
  const auto* list = Get<ListBox>(kModelList);
  const std::vector<int> chosen = list ? list->GetSelected() : std::vector<int>();
  if (chosen.empty() || chosen.front() > static_cast<int>(m_infos.size())) return nullptr;
  return &m_infos[static_cast<std::size_t>(chosen.front() - 1)];
}

void ModelsWindow::ShowModel() {
  const RiggedModelInfo* info = GetSelected();
  const bool good = info && !info->problem;
  m_picture.SetPicture(good ? info->card.picture : std::string());
  With<View>(kModelPicture, [](View& view) { view.Repaint(); });
  const std::string path =
      info ? m_paths[static_cast<std::size_t>(info - m_infos.data())] : std::string();
  std::string problem;
  if (info && info->problem) {
    const Problem& p = info->problem;
    problem = p.what.empty() ? p.why : p.what + ": " + p.why;
    if (!p.hint.empty()) problem += " (" + p.hint + ")";
  }
  SetText(kModelTitle, good ? Translate(info->card.title) : FileNameOf(path));
  With<TextBox>(kModelText,
                [&](TextBox& box) { box.SetText(good ? Translate(info->card.text) : problem); });
  SetText(kModelFacts, good ? FactsText(*info, path) : std::string());
  SetEnabled(kModelAdd, good, info ? problem : Translate("Choose a model first."));
}

void ModelsWindow::AddFromFile() {
  const std::string path =
      GetWindows().ChooseFile(Translate("A pre-rigged model"), GetFilter(), "models");
  if (path.empty()) return;
  const int number = AddModel(path);
  OnBuilt();
  With<ListBox>(kModelList, [number](ListBox& list) { list.Select({number}); });
  ShowModel();
}

void ModelsWindow::Accept() {
  const RiggedModelInfo* info = GetSelected();
  if (!info || info->problem) return;
  m_choice.path = m_paths[static_cast<std::size_t>(info - m_infos.data())];
  const auto* box = Get<ComboBox>(kModelGround);
  const int ground = box ? box->GetIndex() : 0;
  m_choice.ground = ground > 0 ? m_grounds[static_cast<std::size_t>(ground - 1)] : std::string();
  End(true);
}

void ModelsWindow::OnComponent(gui::Component& source, util::Message& message) {
  const int id = source.GetId();
  if (id == kModelList && message.id == gui::kMsgSelectionChanged) return ShowModel();
  if (id == kModelList && message.id == gui::kMsgActivated) return Accept();
  if (id == kModelFromFile && message.id == gui::kMsgClicked) return AddFromFile();
  ModalWindow::OnComponent(source, message);
}

}  // namespace orv::app

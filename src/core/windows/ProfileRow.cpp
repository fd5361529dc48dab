#include "core/windows/ProfileRow.h"

#include <algorithm>
#include <utility>

#include "core/CoreImplementation.h"
#include "core/interface/CInterface.h"
#include "core/windows/Windows.h"
#include "gui/Component.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/ComboBox.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;
using gui::componentinterface::ComboBox;
using gui::componentinterface::Item;
using Requests = ProfileRequests;

}  // namespace

ProfileRow::ProfileRow(Windows& windows, int row, Kind kind,
                       std::function<void(const std::string&)> tell)
    : m_windows(windows), m_row(row), m_kind(kind), m_tell(std::move(tell)) {}

void ProfileRow::Build(gui::Component& into) {
  while (gui::Component* old = into.child(into.childCount() - 1)) old->Retire();
  m_root = m_windows.GetLayout().Instantiate("/core/layout/rows/profiles.xml", into);
  if (!m_root) return;
  gui::Component* more = m_root->Find(kProfileMore);
  if (more && more->GetPopup()) more->GetPopup()->SetVisible(kResetAll, m_kind == Kind::kConfig);
  Show();
}

// --- what is shown ---

const ProfileRow::Entry* ProfileRow::FindCurrent() const {
  const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                  [this](const Entry& entry) { return entry.name == m_current; });
  return found == m_entries.end() ? nullptr : &*found;
}

void ProfileRow::TakeCurrent(bool all) {
  m_entries = Requests(m_windows.GetCore(), m_row, m_kind).List();
  const Entry* current = FindCurrent();
  if (current && current->isCurrent) return;
  const auto other = std::find_if(m_entries.begin(), m_entries.end(),
                                  [](const Entry& entry) { return entry.isCurrent; });
  if (other != m_entries.end())
    m_current = other->name;
  else if (!current || all)
    m_current.clear();
}

void ProfileRow::Show(bool all) {
  if (!m_root) return;
  TakeCurrent(all);
  const Entry* current = FindCurrent();
  if (auto* box = m_root->Get<ComboBox>(kProfileChoice)) {
    std::vector<Item> items;
    for (const Entry& entry : m_entries) {
      Item item;
      item.id = static_cast<int>(items.size());
      // Those of input profiles that are shipped are called after the devices that they are for.
      const bool english =
          entry.isFixed && (m_kind == Kind::kConfig || entry.name == kStartProfile);
      item.text = english ? Translate(entry.name) : entry.name;
      if (&entry == current && !entry.isCurrent) item.text = Translate("%1 (changed)", {item.text});
      item.dim = entry.isReadOnly;
      items.push_back(std::move(item));
    }
    box->SetItems(std::move(items));
    box->SelectIndex(current ? static_cast<int>(current - m_entries.data()) : -1);
    box->GetComponent().SetEnabled(m_whyLocked.empty(), m_whyLocked);
  }
  if (gui::Component* save = m_root->Find(kProfileSave))
    save->SetEnabled(
        current && !current->isReadOnly,
        current ? Translate("This profile can't be saved over. Save it under another name.")
                : Translate("Choose a profile first, or save under another name."));
  ShowMenu();
}

void ProfileRow::ShowMenu() const {
  gui::Component* more = m_root->Find(kProfileMore);
  gui::Menu* menu = more ? more->GetPopup() : nullptr;
  if (!menu) return;
  const Entry* current = FindCurrent();
  const std::string none = Translate("Choose a profile first.");
  const bool own = current && !current->isFixed;
  const std::string whyNotOwn = current ? Translate("This profile comes with the program.") : none;
  menu->SetEnabled(kProfileRename, own, whyNotOwn);
  menu->SetEnabled(kProfileDelete, own, whyNotOwn);
  menu->SetEnabled(kProfileExport, current != nullptr, none);
  menu->SetEnabled(kProfileFactory, m_whyLocked.empty(), m_whyLocked);
}

void ProfileRow::SetLocked(const std::string& why) {
  if (why == m_whyLocked) return;
  m_whyLocked = why;
  Show(false);
}

// --- what the user does ---

bool ProfileRow::OnComponent(gui::Component& source, const util::Message& message) {
  if (!m_root || (source.parent() != m_root)) return false;
  if (message.id == gui::kMsgMenuItem) {
    if (message.param == kResetAll) return false;
    OnMenu(message.param);
  } else if (source.GetId() == kProfileChoice && message.id == gui::kMsgValueChanged) {
    Load(message.param);
  } else if (message.id == gui::kMsgClicked && source.GetId() == kProfileSave) {
    Ask([name = m_current](Requests& requests, bool yes) { return requests.SaveAs(name, yes); });
  } else if (message.id == gui::kMsgClicked && source.GetId() == kProfileMore) {
    source.OpenPopup();
  }
  return true;
}

void ProfileRow::OnMenu(int item) {
  Requests requests(m_windows.GetCore(), m_row, m_kind);
  switch (item) {
    case kProfileSaveAs:
      return SaveAs();
    case kProfileRename:
      return Rename();
    case kProfileDelete:
      return Ask([name = m_current](Requests& r, bool yes) { return r.Delete(name, yes); });
    case kProfileImport:
      return Import();
    case kProfileExport:
      return Export();
    case kProfileFactory:
      return Answer(requests.LoadFactorySettings());
    case kProfileStart:
      return Answer(requests.SaveStartProfile());
    default:
      return;
  }
}

template <class Request>
void ProfileRow::Ask(Request&& request) {
  CoreImplementation& core = m_windows.GetCore();
  Requests requests(core, m_row, m_kind);
  ProfileResult result = request(requests, false);
  if (result.answer == ProfileResult::Answer::kAsk) {
    if (core.MessageBox(Translate("Profiles"), result.message, kButtonsYesNo | kIconQuestion) !=
        kAnswerYes)
      return;
    result = request(requests, true);
  }
  Answer(result);
}

void ProfileRow::Answer(const ProfileResult& result) {
  m_tell(result.message);
  // A refused choice must not stay in the box.
  Show(!result.Done());
}

void ProfileRow::Load(int index) {
  if (index < 0 || index >= static_cast<int>(m_entries.size())) return;
  const std::string before = std::exchange(m_current, m_entries[index].name);
  const ProfileResult result = Requests(m_windows.GetCore(), m_row, m_kind).Load(m_current);
  if (!result.Done()) m_current = before;
  Answer(result);
}

void ProfileRow::SaveAs() {
  std::string name;
  if (!m_windows.AskText(Translate("Save profile"), Translate("Name:"), name)) return;
  Ask([&](Requests& requests, bool yes) {
    ProfileResult result = requests.SaveAs(name, yes);
    if (result.Done()) m_current = name;
    return result;
  });
}

void ProfileRow::Rename() {
  std::string name = m_current;
  if (!m_windows.AskText(Translate("Rename profile"), Translate("Name:"), name)) return;
  Ask([&](Requests& requests, bool) {
    ProfileResult result = requests.Rename(m_current, name);
    if (result.Done()) m_current = name;
    return result;
  });
}

std::string ProfileRow::Filter(bool all) const {
  const std::string own = m_kind == Kind::kConfig ? "*.ocp" : "*.oip";
  return Translate("Profiles (%1)", {all ? own + " *.xml" : own});
}

void ProfileRow::Import() {
  const std::string path =
      m_windows.ChooseFile(Translate("Import profiles"), Filter(true), "profiles");
  if (!path.empty())
    Ask([&path](Requests& requests, bool yes) { return requests.Import(path, yes); });
}

void ProfileRow::Export() {
  const std::string suffix = m_kind == Kind::kConfig ? ".ocp" : ".oip";
  const std::string path = m_windows.ChooseFileToSave(Translate("Export profile"), Filter(false),
                                                      "profiles", m_current, suffix);
  if (!path.empty())
    Ask([&](Requests& requests, bool) { return requests.Export(m_current, path); });
}

}  // namespace orv::rws::core::windows

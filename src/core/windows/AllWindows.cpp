#include "core/windows/AllWindows.h"

#include "core/windows/AboutWindow.h"
#include "core/windows/CountdownWindow.h"
#include "core/windows/DevicesWindow.h"
#include "core/windows/HotKeysWindow.h"
#include "core/windows/InputConfigWindow.h"
#include "core/windows/LicenceWindow.h"
#include "core/windows/LogWindow.h"
#include "core/windows/MainWindow.h"
#include "core/windows/MessageBoxWindow.h"
#include "core/windows/PreferencesWindow.h"
#include "core/windows/ResimulationWindow.h"
#include "core/windows/ToolConfigPanel.h"
#include "core/windows/WhyWindow.h"
#include "core/windows/Windows.h"

namespace orv::rws::core::windows {

namespace {

template <class Class>
std::unique_ptr<Window> MakePlain(Windows& windows, int) {
  return std::make_unique<Class>(windows);
}

template <class Class>
std::unique_ptr<Window> MakeOfRig(Windows& windows, int row) {
  return std::make_unique<Class>(windows, row);
}

}  // namespace

void AddAllWindows(Windows& windows) {
  windows.AddMaker(WindowKind::kMain, MakePlain<MainWindow>);
  windows.AddMaker(WindowKind::kToolConfig, MakeOfRig<ToolConfigPanel>);
  windows.AddMaker(WindowKind::kInputConfig, MakeOfRig<InputConfigWindow>);
  windows.AddMaker(WindowKind::kDevices, MakePlain<DevicesWindow>);
  windows.AddMaker(WindowKind::kPreferences, MakePlain<PreferencesWindow>);
  windows.AddMaker(WindowKind::kHotKeys, MakePlain<HotKeysWindow>);
  windows.AddMaker(WindowKind::kWhy, MakePlain<WhyWindow>);
  windows.AddMaker(WindowKind::kAbout, MakePlain<AboutWindow>);
  windows.AddMaker(WindowKind::kLicence, MakePlain<LicenceWindow>);
  windows.AddMaker(WindowKind::kLog,
                   [history = std::make_shared<LogHistory>(windows.GetCore())](Windows& all, int) {
                     return std::make_unique<LogWindow>(all, history);
                   });
  Windows::Views& views = windows.GetViews();
  views.main = [](Window& main) { return dynamic_cast<MainWindowView*>(&main); };
  views.countdown = [](Windows& all) { return new CountdownWindow(all); };
  views.resimulation = [](Windows& all) { return new ResimulationWindow(all); };
  views.messageBox = [](Windows& all, const std::string& title, const std::string& text,
                        unsigned flags) { return MessageBoxWindow(all, title, text, flags).Run(); };
}

}  // namespace orv::rws::core::windows

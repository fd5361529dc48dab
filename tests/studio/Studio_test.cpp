// The desktop program by its windows, as a user has it.
#include <filesystem>

#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "app/session/models/RiggedModel.h"
#include "core/CoreImplementation.h"
#include "studio/DrivenStudio.h"
#include "support/TempFolder.h"
#include "support/WidgetApplication.h"

namespace orv::tests {

namespace {

constexpr const char* kOk = "click win=MessageBox id=10";
constexpr const char* kCancel = "click win=MessageBox id=11";
constexpr const char* kYes = "click win=MessageBox id=12";
constexpr const char* kNo = "click win=MessageBox id=13";

class Studio : public testing::Test {
 protected:
  /// A scene with a rig, that differs from its file.
  void Edit(DrivenStudio& studio) { studio.Do("click double id=321 row=\"Camera/Steady Cam\""); }
  std::string Choose(const std::string& menu, const std::string& entry) {
    return "click menu=" + menu + "\nclick action=\"" + entry + "\"";
  }
  void DoChoose(DrivenStudio& studio, const std::string& menu, const std::string& entry) {
    studio.Do({"click menu=" + menu, "click action=\"" + entry + "\""});
  }

  TempFolder folder;
  const std::string root = folder.path + "/root";
};

}  // namespace

}  // namespace orv::tests

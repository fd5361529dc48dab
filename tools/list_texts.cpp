// Prints the texts of all rigs that a window shows, one JSON object a line: {"text", "where"}.
#include <QCoreApplication>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/interface/CCamera.h"
#include "core/tools/Tool.h"
#include "plugins/release/all/AllRigs.h"
#include "plugins/release/templatetool/templatetool_CTemplateObject.h"
#include "unidevice/Property.h"

namespace {

using namespace orv::rws;

void Print(const std::string& text, const std::string& where) {
  if (!text.empty()) std::cout << nlohmann::json({{"text", text}, {"where", where}}).dump() << "\n";
}

void PrintTool(core::Tool& tool) {
  const std::string id = tool.GetDisplayId();
  Print(tool.GetDisplayName(), id);
  Print(tool.GetDescription(), id);
  std::vector<std::string> categories;
  tool.GetCategories(categories);
  for (const std::string& category : categories) Print(category, "category");
  const std::unique_ptr<core::Instance> rig(tool.MakeInstance(id));
  if (!rig || rig->GetRig()->Define() != 0) {
    std::cerr << "list_texts: " << id << " can't be defined\n";
    std::exit(1);
  }
  for (const core::ConfigElement* element : rig->GetConfig().GetElements()) {
    Print(element->GetLabel(), id);
    Print(element->GetTooltip(), id + ": " + element->GetLabel());
    for (const std::string& item : element->GetItems())
      Print(item, id + ": " + element->GetLabel());
  }
  for (int i = 0; i < rig->GetProperties().count(); ++i) {
    Print(rig->GetProperties().property(i)->name, id + " input");
    Print(rig->GetProperties().property(i)->displayName, id + " input");
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  core::CoreImplementation core;
  core.LoadTools(addon::AllRigs(), addon::MakeTemplatePlugin);
  for (core::Tool* tool : core.GetLibrary().GetTools()) PrintTool(*tool);
}

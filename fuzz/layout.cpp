// Whatever a user's layout document holds, it becomes a tree within the limits, or none with a line
// in the log; a row of it can be built in it, found, retired and destroyed.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "gui/Layout.h"
#include "gui/Style.h"

using namespace orv::gui;

/// Nodes of the tree; ends the program when it is deeper than a document may be.
static int Count(const Component& component, int depth) {
  if (depth > kMaxLayoutDepth) std::abort();
  int count = 1;
  ReadStyle(component.GetAttributes().style);
  component.GetShownTooltip();
  for (const Component* child : component.children()) count += Count(*child, depth + 1);
  return count;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string document(reinterpret_cast<const char*>(data), size);
  int lines = 0;
  LayoutServices services;
  services.readUser = [&](const std::string&, std::string& bytes) {
    bytes = document;
    return true;
  };
  services.readFactory = [](const std::string&, std::string& bytes) {
    bytes = "<dialog id=\"1\"/>";
    return true;
  };
  services.log = [&](const std::string&) { ++lines; };
  Layout layout(services);
  // The carried document stands in for one that can't be used.
  const ComponentPtr root = layout.Load("/window.xml");
  if (!root || Count(*root, 1) > kMaxLayoutElements) std::abort();
  if (!layout.LoadText(document, "text") && lines == 0) std::abort();
  if (Component* row = layout.Instantiate("/window.xml", *root)) row->Retire();
  for (int id = -2; id < 20; ++id)
    if (const Component* found = root->Find(id); found && found->GetId() != id) std::abort();
  return 0;
}

// Whatever document is taken for a template must make a rig whose outputs can be computed for some
// frames, saved and loaded again.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "plugins/release/templatetool/templatetool_TemplateReader.h"
#include "util/MathScriptRoot.h"

using namespace orv::rws;

static void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  addon::TemplateReader reader;
  addon::TemplateDefinition definition;
  const std::string document(reinterpret_cast<const char*>(data), size);
  if (!reader.Read(document, definition)) {
    require(!reader.GetElement().empty() && !reader.GetReason().empty(), "a reason is told");
    return 0;
  }
  require(!definition.nodes.empty(), "there are nodes");
  for (const addon::TemplateNode& node : definition.nodes)
    require(node.mesh.isConsistent(), "the mesh is whole");
  require(definition.order.size() == definition.outputs.size(), "every output is computed");
  std::vector<double> values(static_cast<std::size_t>(definition.SlotCount()), 0.5);
  double sum = 0.0;
  for (const addon::TemplateOutput& output : definition.outputs) {
    for (const auto* tree : {&output.expression, &output.start}) {
      if (tree->name.empty()) continue;
      core::MathScriptRoot root;
      root.SetValues(values.data(), static_cast<int>(values.size()));
      root.addChild(core::MathScript::Create(*tree));
      require(root.childCount() == 1, "an expression stands for a tree");
      sum += root.Evaluate();
    }
  }
  if (sum == 0.1234567) std::puts("");
  return 0;
}

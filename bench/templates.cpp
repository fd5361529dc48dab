// Reading a template of N check boxes, inputs, motions, nodes, each on the one before, and outputs.
// The fitted order must be linear: its figure is seconds over N, its RMS the part that does not
// fit.
#include <benchmark/benchmark.h>

#include <string>

#include "plugins/release/templatetool/templatetool_CTemplateObject.h"

namespace {

std::string Document(int count) {
  std::string parameters, inputs, nodes, outputs;
  for (int i = 0; i < count; ++i) {
    const std::string n = std::to_string(i) + "\"";
    parameters += "<checkbox name=\"p" + n + " label=\"P" + n + "/>";
    inputs += "<input name=\"i" + n + " label=\"I" + n + "/><motion name=\"m" + n + " node=\"n" +
              n + " channel=\"scale x\"/>";
    nodes += "<box name=\"n" + n + (i ? " parent=\"n" + std::to_string(i - 1) + "\"/>" : "/>");
    outputs += "<output name=\"o" + n + "><parameter>i7</parameter></output>";
  }
  return "<template version=\"1\" id=\"T\" name=\"T\"><parameters>" + parameters +
         "</parameters><inputs>" + inputs + "</inputs><nodes>" + nodes + "</nodes><outputs>" +
         outputs + "</outputs></template>";
}

void ReadTemplate(benchmark::State& state) {
  const std::string document = Document(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::string element, reason;
    orv::rws::CCameraPlugin* const kind =
        orv::rws::addon::MakeTemplatePlugin(document, element, reason);
    if (!kind) {
      state.SkipWithError((element + ": " + reason).c_str());
      break;
    }
    kind->Destroy();
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(ReadTemplate)
    ->RangeMultiplier(4)
    ->Range(2500, 40000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace

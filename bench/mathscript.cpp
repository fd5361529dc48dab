// Expressions of a template tool: 100 arithmetic nodes over eight parameters, as a bushy tree and
// as a chain, beside the same arithmetic compiled. The label shows the result.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "util/MathScriptRoot.h"
#include "util/NumberText.h"
#include "util/xml/Tag.h"

namespace {

using orv::rws::core::MathScript;
using orv::rws::core::MathScriptRoot;
using orv::util::xml::Tag;

const char* const kKeywords[] = {"add", "sub", "mul", "div"};
const std::vector<double> kValues = {1.5, -0.25, 3.0, 0.125, 2.0, -1.75, 0.5, 1.25};

Tag Leaf(int i) {
  Tag tag("parameter");
  tag.setText(std::to_string(i % 8));
  return tag;
}

/// `count` binary nodes, half of the rest on each side.
Tag Bushy(int count, int& leaf) {
  if (count == 0) return Leaf(leaf++);
  Tag tag(kKeywords[count % 4]);
  tag.emplaceChild(Bushy((count - 1) / 2, leaf));
  tag.emplaceChild(Bushy(count - 1 - (count - 1) / 2, leaf));
  return tag;
}

Tag Chain(int count) {
  Tag below = Leaf(0);
  for (int i = 1; i <= count; ++i) {
    Tag tag(kKeywords[i % 4]);
    tag.emplaceChild(std::move(below));
    tag.emplaceChild(Leaf(i));
    below = std::move(tag);
  }
  return below;
}

void Evaluate(benchmark::State& state, const Tag& document) {
  MathScriptRoot root;
  root.SetValues(kValues.data(), static_cast<int>(kValues.size()));
  root.addChild(MathScript::Create(document));
  double value = 0.0;
  for (auto _ : state) benchmark::DoNotOptimize(value = root.Evaluate());
  state.SetLabel(orv::util::shortText(value));
}

void MathScriptBushy100(benchmark::State& state) {
  int leaf = 0;
  Evaluate(state, Bushy(100, leaf));
}

void MathScriptChain100(benchmark::State& state) {
  Evaluate(state, Chain(100));
}

void CompiledChain100(benchmark::State& state) {
  double value = 0.0;
  for (auto _ : state) {
    value = kValues[0];
    for (std::size_t i = 1; i <= 100; ++i) {
      const double operand = kValues[i % 8];
      value = i % 4 == 0   ? value + operand
              : i % 4 == 1 ? value - operand
              : i % 4 == 2 ? value * operand
                           : value / operand;
      benchmark::DoNotOptimize(value);
    }
  }
  state.SetLabel(orv::util::shortText(value));
}

BENCHMARK(MathScriptBushy100);
BENCHMARK(MathScriptChain100);
BENCHMARK(CompiledChain100);

}  // namespace

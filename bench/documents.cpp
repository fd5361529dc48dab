// Documents, base64 and save chunks, beside pugixml and OpenSSL on the same bytes. Each figure is
// megabytes (1e6) per second of work alone: inputs are made and results freed off the clock.
#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "util/DataChunk.h"
#include "util/xml/Base64.h"
#include "util/xml/Element.h"

namespace {

using orv::util::DataChunk;
using orv::util::xml::decodeBase64;
using orv::util::xml::Element;
using orv::util::xml::encodeBase64;

/// A small generator of our own, so that every machine times the same bytes.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_state(seed * 2 + 1) {}
  std::uint32_t next() {
    m_state = m_state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<std::uint32_t>(m_state >> 32);
  }
  double uniform(double low, double high) { return low + (high - low) * (next() / 4294967296.0); }

 private:
  std::uint64_t m_state;
};

/// Groups seven levels deep with three leaves on each level, two attributes everywhere, as a
/// profile has them.
std::string makeDocument(std::size_t bytes) {
  std::string text = "<?xml version=\"1.0\"?>\n<root>\n";
  Random random(7);
  char line[256];
  int id = 0;
  while (text.size() < bytes) {
    for (int depth = 1; depth <= 7; ++depth) {
      const std::string pad(2 * static_cast<std::size_t>(depth), ' ');
      std::snprintf(line, sizeof line, "%s<node name=\"item_%d\" weight=\"%.6f\">\n", pad.c_str(),
                    id++, random.uniform(-1000, 1000));
      text += line;
      for (int k = 0; k < 3; ++k) {
        std::snprintf(line, sizeof line, "%s  <value key=\"channel_%d\" amount=\"%.6f\"/>\n",
                      pad.c_str(), k, random.uniform(-1000, 1000));
        text += line;
      }
    }
    for (int depth = 7; depth >= 1; --depth) {
      text += std::string(2 * static_cast<std::size_t>(depth), ' ') + "</node>\n";
    }
  }
  return text += "</root>\n";
}

const std::string& document() {
  static const std::string text = makeDocument(5000000);
  return text;
}

std::vector<unsigned char> randomBytes(std::size_t size) {
  std::vector<unsigned char> bytes(size);
  Random random(99);
  for (unsigned char& b : bytes) b = static_cast<unsigned char>(random.next());
  return bytes;
}

/// Runs `work` once per iteration on the clock; what it returns dies off it.
template <typename Work>
void measure(benchmark::State& state, double bytes, Work work) {
  using Clock = std::chrono::steady_clock;
  double seconds = 0.0;
  for (auto _ : state) {
    const auto start = Clock::now();
    const auto result = work();
    const double once = std::chrono::duration<double>(Clock::now() - start).count();
    if (!result) state.SkipWithError("the work failed");
    state.SetIterationTime(once);
    seconds += once;
  }
  state.counters["MB/s"] = bytes * static_cast<double>(state.iterations()) / seconds / 1e6;
}

void XmlReadOurs(benchmark::State& state) {
  measure(state, double(document().size()), [] {
    auto tree = std::make_unique<Element>();
    if (tree->loadText(document()) != 0) tree.reset();
    return tree;
  });
}

void XmlReadPugixml(benchmark::State& state) {
  measure(state, double(document().size()), [] {
    auto tree = std::make_unique<pugi::xml_document>();
    if (!tree->load_buffer(document().data(), document().size())) tree.reset();
    return tree;
  });
}

void XmlWriteOurs(benchmark::State& state) {
  Element tree;
  if (tree.loadText(document()) != 0) state.SkipWithError("the document does not read");
  measure(state, double(tree.toText().size()),
          [&] { return std::make_unique<std::string>(tree.toText("  ", "\n")); });
}

constexpr std::size_t kBlobBytes = 9999999;  // whole groups: nothing to trim for either side

void Base64DecodeOurs(benchmark::State& state) {
  const std::vector<unsigned char> raw = randomBytes(kBlobBytes);
  const std::string text = encodeBase64(raw.data(), raw.size());
  if (decodeBase64(text) != raw) state.SkipWithError("the bytes do not come back");
  measure(state, double(raw.size()), [&] {
    auto bytes = std::make_unique<std::vector<unsigned char>>(decodeBase64(text));
    if (bytes->size() != raw.size()) bytes.reset();
    return bytes;
  });
}

void Base64DecodeOpenSsl(benchmark::State& state) {
  const std::vector<unsigned char> raw = randomBytes(kBlobBytes);
  const std::string text = encodeBase64(raw.data(), raw.size());
  std::vector<unsigned char> back(raw.size() + 4);
  const auto* in = reinterpret_cast<const unsigned char*>(text.data());
  measure(state, double(raw.size()),
          [&] { return EVP_DecodeBlock(back.data(), in, int(text.size())) == int(raw.size()); });
}

/// 100 MB of payload in `range` byte fields.
void DataChunkRead(benchmark::State& state) {
  constexpr std::size_t kPayload = 100000000;
  const auto field = static_cast<std::size_t>(state.range(0));
  std::vector<unsigned char> flat;
  {
    DataChunk chunk("rig");
    const std::vector<unsigned char> bytes = randomBytes(field);
    for (std::size_t i = 0; i < kPayload / field; ++i) {
      chunk.addBytes("field", bytes.data(), bytes.size());
    }
    flat = chunk.flatten();
  }
  measure(state, double(kPayload / field * field), [&] {
    auto chunk = std::make_unique<DataChunk>();
    if (!chunk->read(flat.data(), flat.size())) chunk.reset();
    return chunk;
  });
}

BENCHMARK(XmlReadPugixml)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(XmlReadOurs)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(XmlWriteOurs)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Base64DecodeOpenSsl)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Base64DecodeOurs)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(DataChunkRead)
    ->Arg(100000000)
    ->Arg(1000000)
    ->Arg(64000)
    ->Arg(1000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

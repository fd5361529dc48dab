// Loads damaged flat forms into several kinds of animated variable, then uses what came out of it.
// The first byte picks the kind, the rest is the flat form.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "util/AVar_Latest.h"
#include "util/AVar_Linear.h"
#include "util/AVar_Matrix.h"
#include "util/AVar_Nearest.h"

using namespace orv::util;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

template <class Variable>
void loadAndUse(const std::uint8_t* data, std::size_t size) {
  Variable variable;
  variable.set(1.0, {});
  variable.load(data, size);
  // Nothing may cost more memory than the input could fill, or 65,536 placeholders.
  require(variable.flatSize() <= 16 + variable.samples.size() * 136);
  require(variable.samples.size() <= (size < 65536 * 9 ? 65536 : size / 9));

  for (const double time : {-1.0, 0.0, 0.5, 1e300}) variable.value(time);
  for (std::size_t i = 0; i < variable.samples.size() && i < 64; ++i)
    variable.value(variable.samples[i].time + 0.01);

  std::vector<unsigned char> bytes(variable.flatSize());
  variable.save(bytes.data(), bytes.size());
  Variable again;
  again.load(bytes.data(), bytes.size());
  require(again.samples.size() == variable.samples.size());
  std::vector<unsigned char> rewritten(again.flatSize());
  again.save(rewritten.data(), rewritten.size());
  require(bytes == rewritten);

  variable.set(0.25, {});
  variable.cutFrom(0.5);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t kind = data[0] % 10;
  ++data;
  --size;
  switch (kind) {
    case 0:
      loadAndUse<AVar_Linear<double>>(data, size);
      break;
    case 1:
      loadAndUse<AVar_Linear<int>>(data, size);
      break;
    case 2:
      loadAndUse<AVar_Linear<bool>>(data, size);
      break;
    case 3:
      loadAndUse<AVar_Linear<Vector3<double>>>(data, size);
      break;
    case 4:
      loadAndUse<AVar_Nearest<Quat<double>>>(data, size);
      break;
    case 5:
      loadAndUse<AVar_Nearest<QTransform<double>>>(data, size);
      break;
    case 6:
      loadAndUse<AVar_Latest<int>>(data, size);
      break;
    case 7:
      loadAndUse<AVar_Latest<unsigned char>>(data, size);
      break;
    case 8:
      loadAndUse<AVar_Matrix<double>>(data, size);
      break;
    default:
      loadAndUse<AVar_Nearest<bool>>(data, size);
      break;
  }
  return 0;
}

// What reads as a chunk flattens to a form that reads as the same chunk and flattens to itself; no
// input is read past its end. Meshes stored in a chunk are tried as well.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "util/CMesh.h"
#include "util/DataChunk.h"

using orv::util::CMesh;
using orv::util::DataChunk;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  DataChunk chunk;
  const auto* behind = static_cast<const std::uint8_t*>(chunk.read(data, size));
  if (!behind) {
    if (chunk != DataChunk()) std::abort();
    return 0;
  }
  const auto used = static_cast<std::size_t>(behind - data);
  if (used > size) std::abort();
  const std::vector<unsigned char> flat = chunk.flatten();
  if (flat.size() > used) std::abort();  // less where a negative name length became 0
  DataChunk back;
  if (back.read(flat.data(), flat.size()) != flat.data() + flat.size()) std::abort();
  if (back != chunk || back.flatten() != flat) std::abort();
  if (DataChunk(flat.data()) != chunk) std::abort();

  CMesh mesh;
  if (mesh.fromChunk(chunk)) {
    if (!mesh.isConsistent()) std::abort();
    if (mesh.toChunk().getBytes("vertex") != chunk.getBytes("vertex")) std::abort();
  } else if (mesh != CMesh()) {
    std::abort();
  }
  return 0;
}

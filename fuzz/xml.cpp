// Whatever document reads must come back equal from what the writer makes of it, in every layout.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "util/xml/Element.h"

using orv::util::xml::Element;

static void requireSame(const Element& tree, std::string_view indent, std::string_view lineEnd) {
  Element back;
  const int error = back.loadText(tree.toText(indent, lineEnd));
  if (error == 0 && back == tree) return;
  std::fprintf(stderr, "read error %d from:\n%s\n", error, tree.toText(indent, lineEnd).c_str());
  std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Element tree;
  if (tree.loadText({reinterpret_cast<const char*>(data), size}) != 0) {
    if (!tree.isEmpty()) std::abort();
    return 0;
  }
  requireSame(tree, "\t", "\n");
  requireSame(tree, "  ", "\r\n");
  requireSame(tree, "", "");
  const Element copy(tree);
  if (copy != tree) std::abort();
  return 0;
}

#include "core/interface/CExtendable.h"

#include <algorithm>

namespace orv::rws {

std::intptr_t CExtendable::Extension(int, void*, void*) {
  return 0;
}

void CExtendable::GetExtensions(std::vector<int>&) {}

bool CExtendable::HasExtension(int code) {
  std::vector<int> codes;
  GetExtensions(codes);
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

}  // namespace orv::rws

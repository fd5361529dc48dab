/// Curves out of single lines.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/SceneNode.h"

namespace orv::rws::adaptor::headless {

/// The longest chain of lines: each two of `corners` are the ends of one, as places in `numbers`,
/// three coordinates a point (m). Lines meet where they share a point or its place, in any order.
/// An open chain begins at the end from which more lines point away, a loop at its first line; of
/// two as long the first counts. Null when there is none: where more than two lines meet there is
/// no telling how a curve goes on. `left` says what was not taken, and is empty when all was.
std::shared_ptr<const Curve> LongestChain(const std::vector<double>& numbers,
                                          const std::vector<std::uint32_t>& corners,
                                          std::string& left);

}  // namespace orv::rws::adaptor::headless

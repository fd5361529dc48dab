// Whether a user's model has the scene's units and its up.
#pragma once

#include <string>
#include <vector>

#include "app/session/anyhost/Problem.h"

namespace orv::rws::addon {
struct CarFrame;
}
namespace orv::rws::core {
class CoreNode;
}

namespace orv::app {

/// A length (m) as people read it.
std::string MetresText(double length);

/// Says `told` of a length (m) that is none of a thing of its kind and, when it would be between
/// `least` and `most` in another unit, by which factor of the node `top` it gets usual.
Problem OddLength(const std::string& told, double length, double least, double most,
                  const std::string& top);

/// What is odd about a car's wheelbase and up, and what to do: sizes that no vehicle has but one in
/// centimetres or millimetres, and a car that lies on its side as models with Z up do. `body` is
/// the node that it is named by.
std::vector<Problem> OddCar(const rws::addon::CarFrame& frame, rws::core::CoreNode& body);

}  // namespace orv::app

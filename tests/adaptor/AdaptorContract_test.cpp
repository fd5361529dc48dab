#include "ContractSuite.h"
#include "HeadlessFixture.h"
#include "StageFixture.h"

namespace orv::tests {
namespace {

template <class Fixture>
std::unique_ptr<AdaptorFixture> Make() {
  return std::make_unique<Fixture>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Headless, AdaptorContract, testing::Values(&Make<HeadlessFixture>));
INSTANTIATE_TEST_SUITE_P(Stage, AdaptorContract, testing::Values(&Make<StageFixture>));

}  // namespace orv::tests

#include "MayaFixture.h"
#include "adaptor/ContractSuite.h"
#include "support/QtApplication.h"

namespace orv::tests {
namespace {

template <bool kZUp, int kUnit>
std::unique_ptr<AdaptorFixture> Make() {
  return std::make_unique<MayaFixture>(MayaSettings{kZUp, static_cast<MDistance::Unit>(kUnit)});
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(MayaContract, AdaptorContract,
                         testing::Values(&Make<false, MDistance::kCentimeters>,
                                         &Make<true, MDistance::kCentimeters>,
                                         &Make<false, MDistance::kMeters>,
                                         &Make<true, MDistance::kMeters>));

}  // namespace orv::tests

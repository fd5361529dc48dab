#include "app/session/TakeSize.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/services/Translation.h"

namespace orv::app {

namespace {

double FrameBytes(rws::core::CoreImplementation& core, const RowsToStep& only) {
  std::size_t nodes = 0;
  if (only.empty())
    for (const rws::core::Instance* rig : core.List(true)) nodes += rig->GetNodes().size();
  for (const rws::core::InstanceReference* row : only)
    if (const rws::core::Instance* rig = row->GetInstance()) nodes += rig->GetNodes().size();
  return static_cast<double>(nodes) * kBytesPerKeyedFrame;
}

}  // namespace

double SizeOf(const std::string& path) {
  std::error_code none;
  const auto size = std::filesystem::file_size(path, none);
  return none ? 0.0 : static_cast<double>(size);
}

util::Sentence WhyTakeTooLong(rws::core::CoreImplementation& core, double held,
                              const TimeSpan& span, const RowsToStep& only) {
  const double second = core.GetFrameRate() * FrameBytes(core, only);
  if (held + (span.to - span.from) * second <= kMostGlbBytes) return {};
  const double most = std::max(0.0, (kMostGlbBytes - held) / second);
  return {rws::core::Translatable(
              "after about %1 s of it the scene would pass the 4 GB that a .glb can hold"),
          {std::to_string(std::lround(most))}};
}

}  // namespace orv::app

// A document with a car on its ground and a hand, and a take of them by a software device.
#pragma once

#include <cmath>
#include <memory>
#include <string>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/PlayedInputs.h"
#include "app/session/document/SceneDocument.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "support/TempFolder.h"

namespace orv::tests {

/// The value that the device has at `time` (s).
inline double PerformedGas(double time) {
  return std::round(64.0 * (0.5 + 0.5 * std::sin(3.0 * time))) / 64.0;
}

inline void AddRigs(app::SceneDocument& document) {
  document.GetCore().CreateToolFromFactory("4WheelerExt", "Car");
  document.GetCore().CreateToolFromFactory("DirectInputLink", "Hand");
  auto& adaptor = document.GetAdaptor();
  adaptor.BeginUndoBlock("Use as ground");
  adaptor.FindSceneNode("Car_GravityDirectionMesh")->SetParent(adaptor.FindSceneNode("ground"));
  adaptor.EndUndoBlock();
}

/// One step of undo.
inline void SetRangeEnd(app::SceneDocument& document, double end) {
  document.GetAdaptor().BeginUndoBlock("Range");
  document.GetAdaptor().SetTimeRange(0.0, end);
  document.GetAdaptor().EndUndoBlock();
}

inline std::unique_ptr<app::PlayedInputs> PlayInputs(app::SceneDocument& document,
                                                     const TempFolder& folder) {
  const std::string hand =
      document.GetCore().FindInstance("Hand")->GetProperties().entries[0].first;
  std::string csv = "time,Car:Gas Pedal (Forw/Backw),\"Hand:" + hand + "\"\n";
  for (int i = 0; i <= 1000; ++i) {
    const double time = i * 0.04;
    csv += std::to_string(time) + "," + std::to_string(PerformedGas(time)) + "," +
           std::to_string(-PerformedGas(time)) + "\n";
  }
  app::InputFile file;
  file.Load(document.GetCore(), folder.Write("in.csv", csv));
  return std::make_unique<app::PlayedInputs>(document.GetCore(), std::move(file));
}

/// The samples of the car's gas pedal.
inline const auto& GasSamples(app::SceneDocument& document) {
  rws::core::Instance& car = *document.GetCore().FindInstance("Car");
  const auto& entries = car.GetProperties().entries;
  std::size_t input = 0;
  while (entries[input].first != "Gas Pedal (Forw/Backw)") ++input;
  static const std::vector<util::AVar_Linear<double>::Sample> kNone;
  return input < car.GetTracks().size() ? car.GetTracks()[input].samples : kNone;
}

}  // namespace orv::tests

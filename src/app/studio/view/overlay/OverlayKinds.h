// What may be shown over a picture.
#pragma once

#include <array>
#include <bitset>

namespace orv::app::view {

enum OverlayKind {
  kOverlayPaths,
  kOverlayGhost,
  kOverlayContacts,
  kOverlayRays,
  kOverlaySpeeds,
  kOverlayShots,
  kOverlayTargets,
  kOverlayTracks,
  kOverlayInputs,
  kOverlayNames,
  kOverlayRate,
  kOverlayKindCount
};

/// By OverlayKind.
using OverlayChoice = std::bitset<kOverlayKindCount>;

struct OverlayKindText {
  const char* key;   ///< in settings
  const char* text;  ///< of the menu, English
  bool isShown;      ///< until a user has chosen
};

const std::array<OverlayKindText, kOverlayKindCount>& GetOverlayKinds();

}  // namespace orv::app::view

// The card of a pre-rigged model in its file.
#pragma once

#include <string>

#include "app/session/models/RiggedModel.h"

namespace orv::app {

/// Puts the card into the bytes of a `.glb`. False when they are none.
bool PutCard(const ModelCard& card, std::string& bytes);
/// False when `bytes` are no `.glb` with a card.
bool ReadCard(const std::string& bytes, ModelCard& card);

}  // namespace orv::app

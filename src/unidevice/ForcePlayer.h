// Lets hands feel what rigs say of their inputs.
#pragma once

#include <vector>

namespace orv::unidevice {

class Control;
class FFEffect;
enum class FFKind : int;
class Property;

/// How much of what a rig says reaches the hand, each in [0, 1].
struct ForceGains {
  double push = 0.0, road = 0.0, kick = 0.0;

  bool any() const { return push > 0.0 || road > 0.0 || kick > 0.0; }
};

/// Plays `Property::feel` on the devices that the inputs are mapped to; a control that feeds
/// several of them has the first one's. Effects last for a moment and are begun anew while they are
/// asked for, so that a device falls silent when nobody asks any more, as when the program hangs or
/// dies. The properties own the effects.
class ForcePlayer {
 public:
  /// Brings what `inputs` say now to their devices. `now` are seconds of a clock that runs on.
  void play(const std::vector<Property*>& inputs, const ForceGains& gains, double now);
  /// Silence, and the devices are let go. `inputs` as played last, those of them that still are.
  void stop(const std::vector<Property*>& inputs);

 private:
  /// An input whose control has forces, or has been found to have none.
  struct Hand {
    const Property* input = nullptr;
    const Control* control = nullptr;
    bool canPush = false, canShake = false;
    double push = 0.0;        ///< as brought to the device
    double shake = 0.0;       ///< likewise
    double shakeUntil = 0.0;  ///< a kick is held so long (s)
    double begun = 0.0;       ///< when the effects were begun last (s)
  };

  static bool isFelt(const Property& input);
  Hand* handOf(Property& input);
  void playHand(Hand& hand, Property& input, const ForceGains& gains, double now);

  std::vector<Hand> m_hands;
};

}  // namespace orv::unidevice

#include "adaptor/maya/TakeChannels.h"

#include "adaptor/maya/Channels.h"

namespace orv::rws::adaptor::maya {

TakeChannels::TakeChannels(const MObject& transform, Place place) : m_place(place) {
  const std::array<MPlug, 9> plugs = PosePlugs(transform);
  for (std::size_t i = 0; i < plugs.size(); ++i) {
    m_channels[i] = {plugs[i], CurveOf(plugs[i]), plugs[i].asDouble()};
    m_shown = m_shown && !IsLockedPlug(plugs[i]) &&
              (!IsDriven(plugs[i]) || !m_channels[i].curve.isNull());
  }
  if (!m_shown) return;
  for (const Channel& channel : m_channels)
    if (!channel.curve.isNull()) m_off.disconnect(channel.plug.source(), channel.plug);
  m_off.doIt();
}

double TakeChannels::Read(int channel, double time) const {
  const Channel& own = m_channels[static_cast<std::size_t>(channel)];
  if (!m_shown) return ValueAt(own.plug, time);
  return own.curve.isNull() ? own.value : CurveValueAt(own.curve, time);
}

void TakeChannels::Show(const HostChannels& channels) {
  if (!m_shown) return;
  const util::Vector3<double>* const rows[] = {&channels.translation, &channels.angles,
                                               &channels.scale};
  for (std::size_t i = 0; i < m_channels.size(); ++i)
    m_channels[i].plug.setValue((*rows[i / 3])[static_cast<int>(i % 3)]);
}

void TakeChannels::Restore() {
  if (!m_shown) return;
  m_off.undoIt();
  for (Channel& channel : m_channels)
    if (channel.curve.isNull()) channel.plug.setValue(channel.value);
}

}  // namespace orv::rws::adaptor::maya

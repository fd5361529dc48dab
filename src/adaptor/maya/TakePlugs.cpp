#include "adaptor/maya/TakePlugs.h"

#include "adaptor/maya/Channels.h"

namespace orv::rws::adaptor::maya {

TakePlugs::TakePlugs(const std::vector<MPlug>& plugs) : m_node(plugs.front().node()) {
  for (const MPlug& plug : plugs) {
    m_channels.push_back({plug, CurveOf(plug), plug.asDouble()});
    m_shown = m_shown && !IsLockedPlug(plug) && (!IsDriven(plug) || !CurveOf(plug).isNull());
  }
  if (!m_shown) return;
  for (const Channel& channel : m_channels)
    if (!channel.curve.isNull()) m_off.disconnect(channel.plug.source(), channel.plug);
  m_off.doIt();
}

double TakePlugs::Read(std::size_t plug, double time) const {
  const Channel& own = m_channels[plug];
  if (!m_shown) return ValueAt(own.plug, time);
  return own.curve.isNull() ? own.value : CurveValueAt(own.curve, time);
}

void TakePlugs::Show(const std::vector<double>& values) {
  for (std::size_t i = 0; m_shown && i < values.size(); ++i) m_channels[i].plug.setValue(values[i]);
}

void TakePlugs::Restore() {
  if (!m_shown || !m_node.isAlive()) return;
  m_off.undoIt();
  for (Channel& channel : m_channels)
    if (channel.curve.isNull()) channel.plug.setValue(channel.value);
}

}  // namespace orv::rws::adaptor::maya

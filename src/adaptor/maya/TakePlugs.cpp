#include "adaptor/maya/TakePlugs.h"

#include <maya/MFnDependencyNode.h>

#include "adaptor/maya/Channels.h"
#include "adaptor/maya/LoggedModifier.h"

namespace orv::rws::adaptor::maya {

TakePlugs::TakePlugs(const std::vector<MPlug>& plugs)
    : m_node(plugs.front().node()),
      m_name(MFnDependencyNode(plugs.front().node()).name().asUTF8()) {
  for (const MPlug& plug : plugs) {
    m_channels.push_back({plug, CurveOf(plug), plug.asDouble()});
    m_shown = m_shown && !IsLockedPlug(plug) && (!IsDriven(plug) || !CurveOf(plug).isNull());
  }
  if (!m_shown) return;
  for (const Channel& channel : m_channels)
    if (!channel.curve.isNull()) m_off.disconnect(channel.plug.source(), channel.plug);
  m_shown = DoLogged(m_off, "show the take on " + m_name);
  if (!m_shown) m_off.undoIt();
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
  if (!m_off.undoIt())
    core::LogEntry(core::LogLevel::kError,
                   "The host refused to give " + m_name +
                       " its animation back: undo the take, or open the scene again");
  for (Channel& channel : m_channels)
    if (channel.curve.isNull()) channel.plug.setValue(channel.value);
}

}  // namespace orv::rws::adaptor::maya

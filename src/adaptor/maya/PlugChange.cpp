#include "adaptor/maya/PlugChange.h"

#include "adaptor/maya/Channels.h"
#include "adaptor/maya/LoggedModifier.h"

namespace orv::rws::adaptor::maya {

PlugChange::PlugChange(const MPlug* plugs, std::size_t count, int block) : m_block(block) {
  for (std::size_t i = 0; i < count; ++i) m_values.push_back({plugs[i], plugs[i].asDouble()});
}

MDGModifier& PlugChange::AddCurves() {
  m_curves.push_back(std::make_unique<MDGModifier>());
  return *m_curves.back();
}

/// Plugs that curves drive have no value of their own.
void PlugChange::PutValues() {
  for (Value& saved : m_values) {
    if (IsDriven(saved.plug)) continue;
    const double now = saved.plug.asDouble();
    if (now != saved.value) PutValue(saved.plug, saved.value);
    saved.value = now;
  }
}

void PlugChange::Exchange() {
  if (!m_undone) {
    m_keys.undoIt();
    for (auto curves = m_curves.rbegin(); curves != m_curves.rend(); ++curves)
      UndoLogged(**curves, m_block);
    PutValues();
  } else {
    PutValues();
    for (const auto& curves : m_curves) RedoLogged(*curves, m_block);
    m_keys.redoIt();
  }
  m_undone = !m_undone;
}

}  // namespace orv::rws::adaptor::maya

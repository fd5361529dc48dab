#include "adaptor/maya/TakeSwitches.h"

#include <maya/MAnimControl.h>
#include <maya/MGlobal.h>

namespace orv::rws::adaptor::maya {

void TakeSwitches::TurnOff() {
  if (m_off) return;
  m_off = true;
  m_autoKey = MAnimControl::autoKeyMode();
  if (m_autoKey) MAnimControl::setAutoKeyMode(false);
  int cached = 0;
  MGlobal::executeCommand("evaluator -q -name \"cache\" -enable", cached);
  m_cachedPlayback = cached != 0;
  if (m_cachedPlayback) MGlobal::executeCommand("evaluator -name \"cache\" -enable 0");
}

void TakeSwitches::Restore() {
  if (!m_off) return;
  m_off = false;
  if (m_autoKey) MAnimControl::setAutoKeyMode(true);
  if (m_cachedPlayback) MGlobal::executeCommand("evaluator -name \"cache\" -enable 1");
}

}  // namespace orv::rws::adaptor::maya

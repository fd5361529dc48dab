#include "adaptor/maya/TakeRead.h"

#include <maya/MFnAnimCurve.h>
#include <maya/MItDependencyGraph.h>

namespace orv::rws::adaptor::maya {

Drive DriveOf(const MObject& node) {
  Drive drive = Drive::kNothing;
  MObject root = node;
  MItDependencyGraph each(root, MFn::kInvalid, MItDependencyGraph::kUpstream,
                          MItDependencyGraph::kDepthFirst, MItDependencyGraph::kNodeLevel);
  for (; !each.isDone(); each.next()) {
    const MObject above = each.currentItem();
    if (above == node) continue;
    if (above.hasFn(MFn::kDagNode)) return Drive::kNodes;
    // A curve over time needs no connection to the time.
    const bool isTimed = above.hasFn(MFn::kAnimCurve) && MFnAnimCurve(above).isTimeInput();
    if (isTimed || above.hasFn(MFn::kTime)) drive = Drive::kTime;
  }
  return drive;
}

void TakeRead::Begin(int take, const MObject& node) {
  if (take != 0 && take == m_take) return;
  m_take = take;
  m_has = false;
  m_drive = take != 0 ? DriveOf(node) : Drive::kNodes;
}

}  // namespace orv::rws::adaptor::maya

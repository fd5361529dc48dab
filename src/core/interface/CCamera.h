// A rig object as the core drives it.
#pragma once

#include <string>

#include "core/interface/CExtendable.h"
#include "core/interface/CreationRecord.h"

namespace orv::rws {

class CInterface;

/// Extension codes that a rig may answer.
enum RigExtension : int {
  kIsComputed = 1,  ///< 1 when the variable of the configuration that `a` points to is a gauge,
                    ///< which the rig computes and the user only reads
  kTellGround = 2,  ///< fills the GroundReport in `a` with what the rig would meet in a take that
                    ///< began now: 1
  kStandingHeight = 3,  ///< a rig that stands on its ground: `a`, a double*, gets the height of
                        ///< its first node over its foot as they are now (m): 1
  kTellMarks = 5,       ///< appends to the RigMarks in `a` what the rig shows of its work at their
                        ///< time: 1. Asked between frames, in takes too; changes nothing
  kFollowLine = 6,      ///< a rig that drives after a target by itself: completes the LineToFollow
                        ///< in `a`: 1. Not asked in takes
};

/// One rig. The core calls it on the host's main thread; no operation may block or pump events.
/// A rig is deterministic: what Step does follows from its inputs, its parameters, the poses that
/// it reads and the state that Start settled on. Times are seconds on the host's time line.
///
/// Order of the calls: construction, Define, then Create (new) or Restore (from a scene); any
/// number of Update; per take Start, Step once a frame with rising times, Stop; Store before a
/// save; Destroy at the end.
class CCamera : public CExtendable {
 public:
  explicit CCamera(const CreationRecord& record);

  /// A take or a resimulation begins at `time`: settle the state at `time` in the histories and
  /// drop what they hold later than that.
  virtual void Start(double time) = 0;
  /// The take has ended, however it ended.
  virtual void Stop() = 0;
  /// One simulated frame: read the inputs, advance the state, write the poses for `time`.
  virtual void Step(double time) = 0;
  /// The host's current time changed. Must be cheap.
  virtual void Update(double time) = 0;
  /// Declares configuration and inputs through m_pInterface. Non-zero aborts the creation.
  virtual int Define() = 0;
  /// Creates the scene nodes of a new rig. Non-zero aborts the creation.
  virtual int Create() = 0;
  /// Finds the nodes of a rig that came with a scene and reads its blob. Returns 1 when a needed
  /// node is missing or the blob is damaged; the core then leaves the rig out.
  virtual int Restore() = 0;
  /// A save is about to happen: hand the blob to SetUserData. 0 is success.
  virtual int Store() = 0;
  /// Deletes the object; the core deletes a rig in no other way.
  virtual void Destroy();
  ~CCamera() override;

  int GetObjectId() const { return m_id; }
  const std::string& GetTypeName() const { return m_typeName; }

  /// All that the rig may ask of the core. Null until the instance fills it in, which is before
  /// Define; not owned.
  CInterface* m_pInterface = nullptr;

 private:
  int m_id;
  std::string m_typeName;
};

}  // namespace orv::rws

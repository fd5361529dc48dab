// Paths of kept takes that this machine has never shown.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "app/session/takes/TakePaths.h"

namespace orv::app {

struct KeptTake;
class SceneDocument;

/// Has a take performed once more without the scene: another process reads the scene's file and
/// tells the paths. So it works on a scene that is as its file, and that nothing goes on in; an
/// edit, a take or another scene ends the process. One take at a time.
class TakePainter : public QObject {
 public:
  using Done = std::function<void(const KeptTake& take, const std::vector<TakePath>& paths)>;

  /// `document` outlives it. `done` is told of each take that came to the poses it was kept with.
  TakePainter(SceneDocument& document, Done done);
  ~TakePainter() override;

  /// Called time and again while the list is seen; `missing` has no picture, or is null.
  void GoOn(const KeptTake* missing);
  /// Whether it was tried in vain.
  bool HasFailed(const KeptTake& take) const;
  /// Why there is no picture, for the user.
  std::string WhyNone(const KeptTake& take) const;

 private:
  bool MayWork() const;
  void Begin(const KeptTake& take);
  void Stop();
  void Read(int status);

  SceneDocument& m_document;
  const Done m_done;
  QPointer<QProcess> m_process;
  std::string m_hash;              ///< of the take that it is about
  QElapsedTimer m_calm;            ///< since something went on last
  std::set<std::string> m_failed;  ///< hashes
};

}  // namespace orv::app

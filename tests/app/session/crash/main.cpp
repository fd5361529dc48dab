// Edits, saves, autosaves and performs in turn until it is killed: crash SCENE LOG, with the data
// root in the environment. Each line of the log is written before anything else is done.
#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>

#include "app/session/DocumentScene.h"

namespace {

using namespace orv;

int g_log = -1;

void note(const std::string& line) {
  const std::string text = line + "\n";
  if (::write(g_log, text.data(), text.size()) < 0) _exit(2);
}

/// Notes the frames of a take as they are stepped.
class FrameLog : public util::MessageNode {
 public:
  explicit FrameLog(app::SceneDocument& document) : MessageNode("FrameLog"), m_document(document) {
    connect(&document.GetCore());
  }
  void onMessage(util::Message& message, bool) override {
    if (!rws::core::NewsIn<rws::core::TimeChanged>(message) || !m_document.IsRunning()) return;
    const auto& samples = tests::GasSamples(m_document);
    if (samples.empty() || samples.back().time == m_frame) return;
    m_frame = samples.back().time;
    note("frame " + std::to_string(m_frame));
  }

 private:
  double m_frame = -1.0;  ///< s
  app::SceneDocument& m_document;
};

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  g_log = ::open(argv[2], O_WRONLY | O_CREAT | O_APPEND, 0600);
  const tests::TempFolder folder;
  app::SceneDocument document;
  document.NewScene();
  tests::AddRigs(document);
  const auto played = tests::PlayInputs(document, folder);
  const FrameLog frames(document);
  for (int round = 1;; ++round) {
    tests::SetRangeEnd(document, 10.0 + round);
    note("saving " + std::to_string(10 + round));
    if (!document.SaveAs(argv[1])) return 1;
    note("saved " + std::to_string(10 + round));
    tests::SetRangeEnd(document, 10.5 + round);
    if (document.Autosave()) return 1;
    note("autosaved");
    document.GetAdaptor().SetCurrentTime(0.0);
    document.GetCore().SetTakeLength(1.5);
    if (document.GetCore().StartRecording() != 0) return 1;
    note("take");
    while (document.IsRunning()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    note("taken");
  }
}

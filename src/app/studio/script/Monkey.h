// Random hands, which try to break the program.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <functional>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <random>
#include <set>
#include <string>
#include <vector>

class QFileDialog;
class QWidget;

namespace orv::app {

class ScriptDevice;
class ScriptHost;

struct MonkeyTask {
  int events = 0;
  unsigned seed = 1;
  std::string folder;  ///< its scenes and whatever else it saves; made when missing
  std::string log;     ///< file for a line an event; empty for none
};

/// Clicks, keys, drags, wheel, menus, takes, pads, other scenes, as events through the widgets that
/// are there; boxes and file dialogs are answered. The choices follow from the seed and from what
/// is shown, so takes, which go by the clock, make two runs differ.
///
/// Each event comes from the event loop, whichever runs: one that opens a loop of its own, such as
/// a menu, is followed within that loop.
class Monkey : public QObject {
 public:
  /// What it came to; with "error" when it left the program stuck.
  using Done = std::function<void(nlohmann::json report)>;

  /// `host` outlives it.
  Monkey(ScriptHost& host, MonkeyTask task, Done done);
  ~Monkey() override;

  void Begin();

 private:
  struct Deed {
    int weight;
    void (Monkey::*act)();
  };
  static const std::vector<Deed>& Deeds();

  void Next();
  void Act();
  void Watch();

  // Deeds.
  void ClickSomething();
  void UseRow();
  void PressKeys();
  void TypeText();
  void DragSomething();
  void TurnWheel();
  void OpenMenu();
  void UseTake();
  void AddRig();
  void UsePad();
  void ChangeScene();
  void CloseWindow();

  void ChooseFile(QFileDialog& dialog);
  void AnswerBox(QWidget& box);
  void PickAction(QWidget& popup);

  // The end.
  void Settle();
  bool ComeToRest();
  void ProveTake();
  void Report(const std::string& problem);

  int Random(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
  bool Chance(int percent) { return Random(100) < percent; }
  /// One that takes events now; null when none is shown.
  QWidget* PickWindow();
  QWidget* PickWidget();
  std::string SceneFile();
  void Note(const std::string& what);

  ScriptHost& m_host;
  const MonkeyTask m_task;
  const Done m_done;
  std::mt19937 m_random;
  int m_left;
  std::map<std::string, ScriptDevice*> m_pads;  ///< their driver's

  // The report.
  bool m_ran = false;
  int m_takes = 0, m_boxes = 0, m_scenes = 0;
  std::set<std::string> m_windows;  ///< object names of those that were seen
  std::string m_last, m_slowest;    ///< what was done
  qint64 m_slowestMs = 0;
  QElapsedTimer m_since;

  QElapsedTimer m_settling;
  double m_proofTime = 0.0;  ///< of the host's clock when the last take began
  enum class Proof { kNone, kRuns, kDone } m_proof = Proof::kNone;
};

}  // namespace orv::app

// The program driven from outside, a command a line.
#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

class QSocketNotifier;

namespace orv::app {

class Monkey;
class ScriptDevice;
class ScriptHost;
struct ScriptLine;

/// Reads commands from a file or from standard input, does each as a user would, by events through
/// real widgets, and answers each with one line of JSON on standard output: "ok", and "error" where
/// it is false. The commands are listed in docs/studio.md.
///
/// A command is done when the event loop has come round, in whatever loop it then is: a click that
/// opens a modal box is answered while the box stands, so that the next command can answer the box.
/// The end of a file quits; the status is 0, or 1 when a command failed.
class ScriptDriver : public QObject {
 public:
  /// `host` outlives it. `seed` is that of random events.
  ScriptDriver(ScriptHost& host, unsigned seed);
  ~ScriptDriver() override;

  /// "-" is standard input. False, with `problem` filled, when the file can't be read.
  bool Start(const std::string& file, std::string& problem);

 private:
  using Json = nlohmann::json;
  using Action = std::function<void()>;

  void ReadInput();
  void Next();
  void Run(const std::string& text);
  void Perform(const ScriptLine& line);
  /// Does it from the event loop and answers behind it.
  void Act(Action action);
  void Record();
  void Takes(const ScriptLine& line);
  void Answer(Json reply);
  void Fail(const std::string& why);
  void AnswerOr(const std::string& why);
  void Finish();

  void Pointer(const ScriptLine& line);
  void Drag(const ScriptLine& line);
  void Drop(const ScriptLine& line);
  void Type(const ScriptLine& line);
  void Device(const ScriptLine& line);
  void Feed(const ScriptLine& line);
  void Move(const ScriptLine& line);
  void Dump(const ScriptLine& line);
  void Shot(const ScriptLine& line);
  void Preview(const ScriptLine& line);
  void View(const ScriptLine& line);
  void WaitIdle(const ScriptLine& line);
  void LetLoose(const ScriptLine& line);

  ScriptHost& m_host;
  const unsigned m_seed;
  std::deque<std::string> m_lines;
  std::string m_rest;  ///< of standard input behind the last whole line
  std::unique_ptr<QSocketNotifier> m_notifier;
  bool m_ended = false;  ///< no more lines will come
  bool m_busy = false;   ///< a command is not answered yet
  bool m_failed = false;
  std::unique_ptr<Monkey> m_monkey;
  std::map<std::string, ScriptDevice*> m_devices;  ///< their driver's
};

}  // namespace orv::app

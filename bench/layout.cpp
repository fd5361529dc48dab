// What windows cost. Opening one of 81 parameters, as a tool configuration is: from the call to
// painted. The first opening parses the documents and fills the font and style caches; the later
// ones are what a user sees. The check is the number of rows that stand in the window and are
// painted.
#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <ctime>
#include <functional>
#include <numeric>

#include "Figures.h"
#include "gui/Layout.h"
#include "gui/component/qt/Realise.h"
#include "gui/component/qt/Theme.h"
#include "gui/componentinterface/Dialog.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/Slider.h"
#include "gui/componentinterface/Spinner.h"
#include "gui/componentinterface/Tree.h"

namespace {

using namespace orv;
using namespace orv::gui;

constexpr int kGroups = 9;
constexpr int kRows = 9;  ///< in each group

constexpr char kWindow[] = R"(<dialog id="1" label="Settings" width="520" height="700">
<textbox id="2" hint="Search" name="Search"/><scroll id="3" stretch="1" padding="0 0 8 0"/></dialog>)";
constexpr char kGroup[] = R"(<list><group id="4" fold="open" padding="8 4 0 8"/></list>)";
constexpr char kRow[] = R"(<list type="horizontal"><label id="5" column="names"/>
<spinner id="6" decimals="2" step="0.01"/><slider id="7"/>
<button id="8" label="Reset" flat="yes"/></list>)";

bool ReadDocument(const std::string& path, std::string& bytes) {
  bytes = path == "/window" ? kWindow : path == "/group" ? kGroup : kRow;
  return true;
}

/// Seconds of this process's own work: on a busy machine the wall's say little.
double CpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Counts the rows that are painted.
class PaintCounter : public QObject {
 public:
  int count = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Paint;
    return false;
  }
};

void FillRow(Component& row, int number) {
  row.SetRow(number);
  row.Get<componentinterface::Label>(5)->SetText("Parameter number " + std::to_string(number));
  row.Find(5)->SetTooltip("What the parameter does, in a sentence that takes a line or two.");
  row.Get<componentinterface::Spinner>(6)->SetValue(number * 0.37);
  row.Get<componentinterface::Slider>(7)->SetRange(0.0, 100.0);
  row.Get<componentinterface::Slider>(7)->SetValue(number * 0.37);
  row.Find(8)->SetVisible(number % 5 == 0);
}

ComponentPtr Open(Layout& layout, PaintCounter& painted) {
  ComponentPtr root = layout.Load("/window");
  Component& scroll = *root->Find(3);
  for (int g = 0; g < kGroups; ++g) {
    Component& group = *layout.Instantiate("/group", scroll)->Find(4);
    group.SetLabel("Group " + std::to_string(g));
    for (int r = 0; r < kRows; ++r) FillRow(*layout.Instantiate("/row", group), g * kRows + r + 1);
  }
  component::qt::Realise(*root);
  for (const Component* group : scroll.children())
    for (const Component* row : group->child(0)->children())
      component::qt::WidgetOf(*row)->installEventFilter(&painted);
  dynamic_cast<componentinterface::Dialog&>(*root).Show();
  for (int i = 0; i < 3; ++i) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
  return root;
}

/// The application that widgets need, without a screen.
QApplication& Application() {
  static int argc = 1;
  static char name[] = "bench";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static QApplication application(argc, argv);
  component::qt::ApplyTheme(application, component::qt::Theme::kDark);
  return application;
}

void OpenEightyOneParameters(benchmark::State& state) {
  Application();
  LayoutServices services;
  services.readFactory = ReadDocument;
  Layout layout(services);
  bench::Runs runs, work, closing;
  double first = 0.0;
  int rows = 0;
  for (auto _ : state) {
    for (int turn = 0; turn <= bench::Turns(20); ++turn) {
      PaintCounter painted;
      ComponentPtr root;
      const double before = CpuSeconds();
      const double ms = 1e3 * bench::Seconds([&] { root = Open(layout, painted); });
      if (turn == 0) first = ms;
      if (turn > 0) runs.Add(ms);
      if (turn > 0) work.Add(1e3 * (CpuSeconds() - before));
      rows = painted.count;
      closing.Add(1e3 * bench::Seconds([&] { root.reset(); }));
    }
  }
  if (rows < 10) state.SkipWithError("the rows were not painted");
  state.counters["first_ms"] = first;
  state.counters["again_ms"] = runs.Median();
  state.counters["again_cpu_ms"] = work.Median();
  state.counters["close_ms"] = closing.Median();
  state.counters["rows_painted"] = rows;
}
BENCHMARK(OpenEightyOneParameters)->Iterations(1)->Unit(benchmark::kMillisecond);

/// A tree of ten thousand rows, a hundred in each group: coming one by one while it is shown, being
/// sought through, all selected, and going.
void TenThousandRows(benchmark::State& state) {
  Application();
  Layout layout({});
  const ComponentPtr root = layout.LoadText(
      "<dialog width=\"500\" height=\"700\"><tree id=\"1\" name=\"Rigs\"><column label=\"Name\"/>"
      "<column label=\"Kind\"/></tree></dialog>",
      "tree");
  auto& tree = *root->Get<componentinterface::Tree>(1);
  component::qt::Realise(*root);
  dynamic_cast<componentinterface::Dialog&>(*root).Show();
  const auto time = [](const std::function<void()>& work) {
    return 1e3 * bench::Seconds([&] {
             work();
             QCoreApplication::sendPostedEvents();
             QCoreApplication::processEvents();
           });
  };
  const auto fill = [&] {
    const Frozen frozen(*root->Find(1));
    for (int key = 1; key <= 10000; ++key) {
      componentinterface::Tree::Row row;
      row.cells = {{"Row " + std::to_string(key), "", "", false}, {"Kind", "", "", true}};
      const int group = (key - 1) / 100 * 100 + 1;
      tree.AddRow(key, key == group ? 0 : group, -1, row);
      if (key == group) tree.SetExpanded(key, true);
    }
  };
  int rows = 0;
  for (auto _ : state) {
    for (int turn = 0; turn < bench::Turns(3); ++turn) {
      state.counters["fill_ms"] = time(fill);
      rows = tree.GetRowCount();
      state.counters["filter_ms"] = time([&] { tree.SetFilter("77"); });
      state.counters["unfilter_ms"] = time([&] { tree.SetFilter(""); });
      std::vector<int> all(10000);
      std::iota(all.begin(), all.end(), 1);
      state.counters["select_ms"] = time([&] { tree.Select(all); });
      state.counters["clear_ms"] = time([&] { tree.Clear(); });
    }
  }
  if (rows != 10000) state.SkipWithError("rows are missing");
}
BENCHMARK(TenThousandRows)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

// Components as widgets, driven by keys and mouse.
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWheelEvent>
#include <cmath>
#include <cstring>
#include <random>

#include "gui/Texts.h"
#include "gui/Window.h"
#include "gui/component/qt/Images.h"
#include "gui/component/qt/Theme.h"
#include "gui/componentinterface/Button.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/Dialog.h"
#include "gui/componentinterface/Graph.h"
#include "gui/componentinterface/Group.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/ListBox.h"
#include "gui/componentinterface/Menubar.h"
#include "gui/componentinterface/Progressbar.h"
#include "gui/componentinterface/Scroll.h"
#include "gui/componentinterface/Slider.h"
#include "gui/componentinterface/Spinner.h"
#include "gui/componentinterface/TextBox.h"
#include "gui/componentinterface/Tree.h"
#include "support/GermanLocale.h"
#include "support/TempFolder.h"
#include "support/WidgetApplication.h"

namespace orv::tests {

using namespace gui;
namespace ci = gui::componentinterface;
namespace qt = gui::component::qt;

namespace {

/// The test's document with something in each component.
struct FullWindow : Window {
  FullWindow() {
    QPixmap dot(16, 16);
    dot.fill(QColor(200, 80, 60));
    dot.save(QString::fromStdString(folder.path + "/dot.png"));
    dot.save(QString::fromStdString(folder.path + "/dot-symbolic.png"));
    root->SetPathAlias("[images]", {"/nowhere", folder.path});
    auto& tree = Get<ci::Tree>(51);
    for (int i = 1; i <= 4; ++i) {
      ci::Tree::Row row;
      row.cells = {{"Car_00" + std::to_string(i), "", "", false},
                   {"4-Wheeler", "", "", true},
                   {"12.5", "", "", false}};
      row.hasCheck = row.editable = true;
      row.takesRows = i == 1;
      tree.AddRow(i, i == 3 ? 1 : ci::Tree::kTop, -1, row);
    }
    tree.SetExpanded(1, true);
    tree.Select({2});
    Get<ci::ListBox>(53).SetItems({Line(1, "Opened the scene"), Line(2, "Recorded 250 frames")});
    auto& graph = Get<ci::Graph>(54);
    ci::Graph::Curve curve;
    for (int i = -20; i <= 20; ++i) curve.points.push_back({i / 20.0, std::pow(i / 20.0, 3.0)});
    graph.SetAxes({-1, 1, "Input", true}, {-1, 1, "Output", true});
    graph.SetCurves({curve});
    graph.SetLivePoint({0.5, 0.125});
    graph.SetHandles({{{0.8, 0.512}, "Exponent", true, true}});
    Get<ci::Progressbar>(37).SetProgress(0.4);
  }
  static ci::Item Line(int id, const std::string& text) {
    ci::Item item;
    item.id = id;
    item.text = text;
    return item;
  }
  TempFolder folder;
};

void Type(QWidget* widget, const char* text) {
  QTest::keyClicks(widget, text);
}

void Turn(QWidget* widget, int angle) {
  QWheelEvent event(QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5).toPoint()), QPoint(),
                    QPoint(0, angle), angle, Qt::Vertical, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(widget, &event);
}

/// Drags over a view and lets go there; whether it was taken.
bool Drop(QAbstractItemView& view, const QMimeData& data, const QPoint& at) {
  QDragEnterEvent enter(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(view.viewport(), &enter);
  QDragMoveEvent over(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(view.viewport(), &over);
  const bool taken = over.isAccepted();
  QDropEvent let(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(view.viewport(), &let);
  return taken;
}

std::uint64_t Bits(double value) {
  std::uint64_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

}  // namespace

TEST(Widgets, AreNamedReachedInOrderAndNotClipped) {
  FullWindow window;
  QWidget* dialog = window.Show(900, 760);
  const char* pictures = std::getenv("ORV_PICTURES");
  for (const qt::Theme theme : {qt::Theme::kLight, qt::Theme::kDark}) {
    qt::ApplyTheme(*qApp, theme);
    Window::Settle();
    const char* name = theme == qt::Theme::kDark ? "/dark.png" : "/light.png";
    if (pictures) {
      EXPECT_TRUE(dialog->grab().save(QString(pictures) + name));
    }
  }
  for (const QWidget* widget : dialog->findChildren<QWidget*>()) {
    if (!widget->isVisible() || !qt::ComponentOf(widget)) continue;
    const Component& component = *qt::ComponentOf(widget);
    if (qt::WidgetOf(component) != widget) continue;
    if (widget->focusPolicy() & Qt::TabFocus) {
      EXPECT_FALSE(widget->accessibleName().isEmpty())
          << component.GetElement() << component.GetId();
    }
    const QSize least = widget->minimumSizeHint();
    EXPECT_GE(widget->width(), least.width()) << component.GetElement() << component.GetId();
    EXPECT_GE(widget->height(), least.height()) << component.GetElement() << component.GetId();
  }
  EXPECT_EQ(window.Widget(12)->accessibleName(), "Mass");
  EXPECT_EQ(window.Widget(13)->accessibleName(), "Mass");
  EXPECT_EQ(window.Widget(12)->objectName(), "12");
  EXPECT_EQ(window.Widget(63)->size(), QSize(qt::Scaled(80), qt::Scaled(20)));

  // Tab goes through the window in the order of the document.
  std::vector<int> order;
  window.root->Find(10)->TakeFocus();
  for (int i = 0; i < 60; ++i) {
    const Component* at = qt::ComponentOf(QApplication::focusWidget());
    ASSERT_TRUE(at);
    if (!order.empty() && at->GetId() == order.front()) break;
    // A label's links are gone through one by one.
    if (order.empty() || order.back() != at->GetId()) order.push_back(at->GetId());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(order, (std::vector<int>{10, 12, 13, 15, 16, 17, 20, 22, 23, 24, 25, 26, 27,
                                     28, 29, 31, 32, 33, 34, 35, 36, 38, 51, 53, 54, 64}));
}

TEST(Widgets, KeepANumberToTheBitUnlessAnotherIsTyped) {
  const GermanLocale german;
  Window window(
      "<dialog><spinner id=\"1\" decimals=\"2\" min=\"-1e18\" max=\"1e18\"/><button "
      "id=\"2\"/></dialog>");
  auto& spinner = window.Get<ci::Spinner>(1);
  window.Show();
  QWidget* field = window.Widget(1);
  std::mt19937_64 random(1);
  for (int i = 0; i < 200; ++i) {
    const double value =
        std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 100) - 90);
    spinner.SetValue(value);
    field->setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), i % 2 ? Qt::Key_Tab : Qt::Key_Return);
    window.root->Find(2)->TakeFocus();
    ASSERT_EQ(Bits(spinner.GetValue()), Bits(value));
  }
  EXPECT_TRUE(window.listener.Take().empty());
  const auto enter = [&](const char* text, Qt::Key key) {
    field->setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    Type(QApplication::focusWidget(), text);
    QTest::keyClick(QApplication::focusWidget(), key);
    return spinner.GetValue();
  };
  EXPECT_EQ(enter("1,5", Qt::Key_Return), 1.5);
  EXPECT_EQ(enter("2.5", Qt::Key_Tab), 2.5);
  EXPECT_EQ(enter("0.00005", Qt::Key_Return), 0.00005);
  EXPECT_EQ(spinner.GetShownText(), "0.00005");
  EXPECT_EQ(enter("1e19", Qt::Key_Return), 1e18) << "cut to the range";
  EXPECT_EQ(window.listener.Take(), std::vector<int>(4, kMsgValueChanged));
  EXPECT_EQ(enter("7", Qt::Key_Escape), 1e18);
  EXPECT_EQ(enter("a7", Qt::Key_Return), 1e18) << "stays, marked";
  spinner.SetValue(3.0);
  EXPECT_TRUE(spinner.IsBeingEdited());
  window.root->Find(2)->TakeFocus();
  EXPECT_EQ(spinner.GetValue(), 3.0);
  EXPECT_FALSE(spinner.IsBeingEdited());
  EXPECT_TRUE(window.listener.Take().empty());
}

TEST(Widgets, MakeOneEditOfADragAndOfAHeldKey) {
  Window window(
      "<dialog><spinner id=\"1\" step=\"0.1\" defaultvalue=\"1\"/><slider id=\"2\" min=\"0\" "
      "max=\"100\" step=\"1\"/><spinner id=\"3\"/></dialog>");
  auto& spinner = window.Get<ci::Spinner>(1);
  window.Show();
  QWidget* field = window.Widget(1);
  const QPoint from(20, field->height() / 2);
  const auto drag = [&](QWidget* widget, int steps, int pixels) {
    QTest::mousePress(widget, Qt::LeftButton, Qt::NoModifier, from);
    for (int i = 1; i <= steps; ++i) {
      QMouseEvent move(QEvent::MouseMove, from + QPoint(i * pixels, 0), Qt::NoButton,
                       Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(widget, &move);
    }
  };
  const auto expectOneEdit = [&](std::size_t most) {
    const std::vector<int> ids = window.listener.Take();
    ASSERT_GE(ids.size(), 3u);
    EXPECT_LE(ids.size(), most + 2);
    EXPECT_EQ(ids.front(), kMsgEditBegin);
    EXPECT_EQ(ids.back(), kMsgEditEnd);
    EXPECT_EQ(std::count(ids.begin(), ids.end(), kMsgValueChanged),
              static_cast<long>(ids.size()) - 2);
  };
  drag(field, 100, qt::Scaled(4));
  QTest::mouseRelease(field, Qt::LeftButton, Qt::NoModifier, from);
  EXPECT_EQ(spinner.GetValue(), 11.0) << "100 steps of 0.1, without noise";
  expectOneEdit(100);
  drag(field, 20, qt::Scaled(4));
  QTest::keyClick(field, Qt::Key_Escape);
  QTest::mouseRelease(field, Qt::LeftButton, Qt::NoModifier, from);
  EXPECT_EQ(spinner.GetValue(), 11.0);
  EXPECT_EQ(window.listener.params.back(), 1) << "cancelled";
  expectOneEdit(21);

  field->setFocus(Qt::TabFocusReason);
  QTest::keyPress(QApplication::focusWidget(), Qt::Key_Up);
  QTest::keyPress(QApplication::focusWidget(), Qt::Key_Up);
  QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Up);
  EXPECT_EQ(spinner.GetValue(), 11.2);
  expectOneEdit(2);
  QWidget* line = window.Widget(2);
  drag(line, 10, 10);
  QTest::mouseRelease(line, Qt::LeftButton, Qt::NoModifier, from);
  EXPECT_GT(window.Get<ci::Slider>(2).GetValue(), 10.0);
  expectOneEdit(11);
  // Without the focus the wheel is for what it lies in.
  Turn(window.Widget(3), 120);
  EXPECT_EQ(window.Get<ci::Spinner>(3).GetValue(), 0.0);
  EXPECT_TRUE(window.listener.Take().empty());
}

TEST(Widgets, PostWhatAUserDoes) {
  FullWindow window;
  window.Show(900, 760);
  const auto take = [&] { return window.listener.Take(); };
  using Ids = std::vector<int>;

  QTest::mouseClick(window.Widget(22), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
  EXPECT_EQ(take(), (Ids{kMsgChecked, kMsgValueChanged}));
  EXPECT_FALSE(window.Get<ci::CheckBox>(22).IsOn());
  QTest::keyClick(window.Widget(24), Qt::Key_Space);
  EXPECT_TRUE(window.Get<ci::CheckBox>(24).IsOn()) << "from undetermined to on";
  // Pressed on one box and dragged over the next of its group.
  take();
  QTest::mousePress(window.Widget(22), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
  QMouseEvent over(QEvent::MouseMove, QPointF(), window.Widget(23)->mapToGlobal(QPoint(8, 8)),
                   Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.Widget(22), &over);
  QTest::mouseRelease(window.Widget(22), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
  EXPECT_TRUE(window.Get<ci::CheckBox>(22).IsOn() && window.Get<ci::CheckBox>(23).IsOn());
  EXPECT_EQ(take().size(), 4u);

  QTest::keyClick(window.Widget(26), Qt::Key_Down);
  EXPECT_EQ(window.listener.params, std::vector<int>{6});
  EXPECT_EQ(take(), Ids{kMsgValueChanged});
  window.Widget(28)->setFocus();
  Type(window.Widget(28), "ab");
  QTest::keyClick(window.Widget(28), Qt::Key_Return);
  EXPECT_EQ(take(), (Ids{kMsgTyped, kMsgTyped, kMsgValueChanged, kMsgEntered, kMsgPressed,
                         kMsgReleased, kMsgClicked}))
      << "and Enter presses the default button";
  Type(window.Widget(28), "c");
  QTest::keyClick(window.Widget(28), Qt::Key_Escape);
  EXPECT_EQ(window.Get<ci::TextBox>(28).GetText(), "ab");
  take();
  QTest::mouseClick(window.Widget(33), Qt::LeftButton);
  EXPECT_EQ(take(), (Ids{kMsgPressed, kMsgReleased, kMsgClicked, kMsgValueChanged}));
  EXPECT_TRUE(window.Get<ci::Button>(33).IsDown());
  QTest::keyClick(window.Widget(35), Qt::Key_Return);
  EXPECT_EQ(take(), (Ids{kMsgPressed, kMsgReleased, kMsgClicked}));
  std::string link;
  window.listener.then = [&](util::Message& message) {
    if (const auto* clicked = DataOf<LinkClicked>(message); clicked && message.data)
      link = clicked->link;
  };
  emit static_cast<QLabel*>(window.Widget(38))->linkActivated("help:cars");
  EXPECT_EQ(link, "help:cars");
  take();
  QTest::keyClick(window.Widget(20), Qt::Key_Space);
  EXPECT_EQ(take(), Ids{kMsgFolded});
  EXPECT_FALSE(window.Get<ci::Group>(20).IsFolded());
  QTest::keyClick(window.Widget(53), Qt::Key_Down);
  EXPECT_EQ(take(), Ids{kMsgSelectionChanged});
  QTest::keyClick(window.Widget(54), Qt::Key_Right);
  EXPECT_EQ(take(), (Ids{kMsgEditBegin, kMsgHandleMoved, kMsgEditEnd}));
  EXPECT_NEAR(window.Get<ci::Graph>(54).GetDragged().x, 0.82, 1e-12);

  // What code sets is told to nobody.
  window.Get<ci::CheckBox>(22).SetState(ci::CheckState::kUndetermined);
  window.Get<ci::ComboBox>(26).SelectId(5);
  window.Get<ci::TextBox>(28).SetText("z");
  window.Get<ci::Slider>(13).SetValue(7.0);
  window.Get<ci::Tree>(51).Select({1, 2});
  window.Get<ci::ListBox>(53).Select({2});
  window.Get<ci::Scroll>(4).SetOffset(0, 10);
  EXPECT_TRUE(take().empty());
  EXPECT_EQ(static_cast<QComboBox*>(window.Widget(26))->currentText(), "Gravel");
}

TEST(Widgets, ShowMenusAndServeTheirKeys) {
  FullWindow window;
  window.Show(900, 760);
  auto* bar = static_cast<QMenuBar*>(window.Widget(2));
  QMenu* file = bar->actions()[0]->menu();
  // The window refills a menu while it opens, as it does with recent files.
  Menu& menu = window.Get<ci::Menubar>(2).GetMenu();
  window.listener.then = [&](util::Message& message) {
    if (message.id != kMsgPopupOpening) return;
    MenuItem item;
    item.id = 300;
    item.label = EscapeMnemonics("A&B.glb");
    menu.SetItems(203, {item});
    menu.SetEnabled(201, false, "A take is running.");
  };
  file->popup(QPoint(10, 10));
  QMenu* recent = file->actions()[3]->menu();
  ASSERT_EQ(recent->actions().size(), 1);
  EXPECT_EQ(recent->actions()[0]->text(), "A&&B.glb");
  EXPECT_FALSE(file->actions()[0]->isEnabled());
  EXPECT_EQ(file->actions()[0]->toolTip(), "A take is running.");
  window.listener.Take();
  file->actions()[2]->trigger();
  EXPECT_EQ(window.listener.params, std::vector<int>{202});
  EXPECT_FALSE(menu.Find(202)->checked);
  file->close();
  window.listener.then = nullptr;
  window.listener.Take();
  // A right click selects the row under it before the window is asked.
  auto* view = static_cast<QTreeView*>(window.Widget(51));
  const QPoint place = view->visualRect(view->model()->index(2, 0)).center();
  QContextMenuEvent click(QContextMenuEvent::Mouse, place, view->viewport()->mapToGlobal(place));
  QApplication::sendEvent(view->viewport(), &click);
  EXPECT_EQ(window.listener.Take(), (std::vector<int>{kMsgSelectionChanged, kMsgPopupOpening}));
  EXPECT_EQ(window.Get<ci::Tree>(51).GetSelected(), std::vector<int>{4});
  ASSERT_TRUE(QApplication::activePopupWidget());
  EXPECT_EQ(QApplication::activePopupWidget()->actions().size(), 3);
  QApplication::activePopupWidget()->close();
  view->activateWindow();
  Window::Settle();
  window.listener.Take();
  view->setFocus();
  QTest::keyClick(view, Qt::Key_Delete);
  EXPECT_EQ(window.listener.params, std::vector<int>{511})
      << "the popup's key works while it is shut";
  EXPECT_EQ(window.listener.Take(), std::vector<int>{kMsgMenuItem});
}

TEST(Widgets, AddAndEndRowsAtAnyTime) {
  Window window("<dialog><list id=\"1\"/><button id=\"2\" label=\"last\"/></dialog>");
  LayoutServices services;
  services.readFactory = [](const std::string&, std::string& bytes) {
    bytes =
        "<list type=\"horizontal\"><label id=\"5\" column=\"a\"/><checkbox id=\"6\"/><button "
        "id=\"7\" label=\"x\"/></list>";
    return true;
  };
  Layout rows(services);
  window.Show();
  Component& list = *window.root->Find(1);
  const auto addRow = [&](int number, const std::string& label) {
    Component& row = *rows.Instantiate("/row.xml", list);
    row.SetRow(number);
    row.Get<ci::Label>(5)->SetText(label);
    return &row;
  };
  Component* first = addRow(1, "a");
  {
    const Frozen frozen(list);
    addRow(2, "a much longer label");
  }
  Window::Settle();
  const auto widget = [](Component* row, int id) { return qt::WidgetOf(*row->Find(id)); };
  EXPECT_TRUE(widget(first, 6)->isVisible());
  EXPECT_EQ(widget(first, 6)->accessibleName(), "a");
  EXPECT_EQ(widget(first, 6)->x(), widget(list.child(1), 6)->x()) << "columns of one width";
  widget(first, 6)->setFocus();
  QTest::keyClick(widget(first, 6), Qt::Key_Tab);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), widget(list.child(1), 6))
      << "rows come before the last button";

  // A row ends itself, and the window, while its widget handles the click.
  const QPointer<QWidget> gone = qt::WidgetOf(*first);
  window.listener.then = [&](util::Message& message) {
    if (message.id == kMsgClicked) SourceOf(message)->GetRowRoot()->Retire();
  };
  QTest::mouseClick(widget(first, 7), Qt::LeftButton);
  Window::Settle();
  EXPECT_FALSE(gone);
  EXPECT_EQ(list.childCount(), 1);
  window.listener.then = [&](util::Message& message) {
    if (message.id == kMsgClicked) window.root.reset();
  };
  const QPointer<QWidget> dialog = window.Widget(2)->window();
  QTest::mouseClick(window.Widget(2), Qt::LeftButton);
  Window::Settle();
  EXPECT_FALSE(dialog);
  EXPECT_FALSE(HasRetired());

  // A parent widget that dies first takes the widgets along and leaves the tree.
  Window docked("<list><spinner id=\"1\"/></list>");
  auto parent = std::make_unique<QWidget>();
  qt::Realise(*docked.root, parent.get());
  parent.reset();
  docked.Get<ci::Spinner>(1).SetValue(4.0);
  docked.root->Unrealise();
  EXPECT_TRUE(qt::Realise(*docked.root));
}

TEST(Widgets, CloseADialogOnlyWhenTheWindowAgrees) {
  Window window("<dialog label=\"x\"><textbox id=\"1\"/></dialog>");
  auto& dialog = *dynamic_cast<ci::Dialog*>(window.root.get());
  QWidget* widget = qt::Realise(*window.root);
  dialog.Show();
  Window::Settle();
  EXPECT_TRUE(dialog.IsShown() && widget->isVisible());
  bool refuse = true;
  window.listener.then = [&](util::Message& message) {
    if (auto* request = DataOf<CloseRequest>(message)) request->refused = refuse;
  };
  QTest::keyClick(widget, Qt::Key_Escape);
  EXPECT_FALSE(widget->close());
  EXPECT_TRUE(dialog.IsShown());
  refuse = false;
  window.listener.Take();
  EXPECT_TRUE(widget->close());
  EXPECT_FALSE(dialog.IsShown());
  EXPECT_EQ(window.listener.Take(), (std::vector<int>{kMsgCloseRequest, kMsgHidden, kMsgClosed}));

  widget->setGeometry(40, 50, 320, 210);
  const std::string geometry = dialog.GetGeometry();
  window.root->Unrealise();
  EXPECT_EQ(dialog.GetGeometry(), geometry);
  widget = qt::Realise(*window.root);
  EXPECT_EQ(widget->size(), QSize(320, 210));
  EXPECT_FALSE(dialog.SetGeometry("no geometry"));
  QTimer::singleShot(0, [&] { dialog.EndModal(7); });
  EXPECT_EQ(dialog.RunModal(), 7);
}

TEST(Widgets, KeepTheScrollOffsetWhileTheContentChanges) {
  Window window(
      "<dialog><scroll id=\"1\"><view id=\"2\" minheight=\"2000\"/><button "
      "id=\"3\"/></scroll></dialog>");
  auto& scroll = window.Get<ci::Scroll>(1);
  scroll.SetOffset(0, 500);
  window.Show();
  QScrollBar* bar = static_cast<QScrollArea*>(window.Widget(1))->verticalScrollBar();
  EXPECT_EQ(bar->value(), qt::Scaled(500)) << "told before there were widgets";
  window.root->Find(2)->SetMinSize(0, 100);
  Window::Settle();
  EXPECT_LT(bar->value(), qt::Scaled(500));
  window.root->Find(2)->SetMinSize(0, 2000);
  Window::Settle();
  EXPECT_EQ(bar->value(), qt::Scaled(500));
  bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
  EXPECT_GT(scroll.GetOffsetY(), 500);
  scroll.Reveal(*window.root->Find(3));
  EXPECT_EQ(bar->value(), bar->maximum());
}

TEST(Widgets, FollowATreeThroughAnyChange) {
  FullWindow window;
  auto& tree = window.Get<ci::Tree>(51);
  tree.Clear();
  window.Show(900, 760);
  auto* view = static_cast<QTreeView*>(window.Widget(51));
  QAbstractItemModelTester tester(view->model(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal);
  std::mt19937 random(3);
  const auto any = [&](int most) { return static_cast<int>(random() % most); };
  for (int i = 0; i < 600; ++i) {
    const int key = 1 + any(40), other = any(41);
    ci::Tree::Row row;
    row.cells = {{"Row " + std::to_string(key), "", "", false}};
    row.hasCheck = row.editable = row.takesRows = true;
    switch (any(8)) {
      case 0:
      case 1:
      case 2:
        tree.AddRow(key, other, any(5) - 1, row);
        break;
      case 3:
        tree.RemoveRow(key);
        break;
      case 4:
        tree.MoveRow(key, other, any(5) - 1);
        break;
      case 5:
        tree.Select({key, other});
        break;
      case 6:
        tree.SetExpanded(key, any(2));
        break;
      case 7:
        tree.SetFilter(any(4) ? "" : std::to_string(any(9)));
        break;
    }
    ASSERT_TRUE(window.listener.Take().empty()) << "what code does is told to nobody";
  }
  tree.SetFilter("");
  // The view shows the component's rows, in their order, selected and open as they are.
  int rows = 0;
  const std::function<void(const ci::Tree::Node&, const QModelIndex&)> compare =
      [&](const ci::Tree::Node& node, const QModelIndex& at) {
        ASSERT_EQ(view->model()->rowCount(at), node.childCount());
        for (int i = 0; i < node.childCount(); ++i, ++rows) {
          const QModelIndex child = view->model()->index(i, 0, at);
          EXPECT_EQ(child.data().toString().toStdString(), node.child(i)->row.cells[0].text);
          EXPECT_EQ(view->selectionModel()->isSelected(child), node.child(i)->selected);
          if (node.child(i)->childCount() > 0) {
            EXPECT_EQ(view->isExpanded(child), node.child(i)->expanded);
          }
          compare(*node.child(i), child);
        }
      };
  compare(*tree.FindRow(ci::Tree::kTop), {});
  EXPECT_EQ(rows, tree.GetRowCount());
}

TEST(Widgets, RenameCheckAndMoveRowsOfATree) {
  FullWindow window;
  auto& tree = window.Get<ci::Tree>(51);
  window.Show(900, 760);
  auto* view = static_cast<QTreeView*>(window.Widget(51));
  QAbstractItemModel& model = *view->model();
  std::string text;
  MoveRequest move{};
  window.listener.then = [&](util::Message& message) {
    if (const auto* renamed = DataOf<Renamed>(message)) text = renamed->text;
    if (const auto* request = DataOf<MoveRequest>(message)) move = *request;
  };
  tree.EditRow(2);
  auto* editor = view->findChild<QLineEdit*>();
  ASSERT_TRUE(editor);
  editor->selectAll();
  Type(editor, "Bus");
  QTest::keyClick(editor, Qt::Key_Return);
  Window::Settle();
  EXPECT_EQ(text, "Bus");
  EXPECT_EQ(tree.FindRow(2)->row.cells[0].text, "Car_002") << "until the window says so";
  view->setFocus();
  QTest::keyClick(view, Qt::Key_Space);
  EXPECT_EQ(tree.FindRow(2)->row.check, ci::CheckState::kOn);

  tree.Select({2, 4});
  const std::unique_ptr<QMimeData> data(model.mimeData(view->selectionModel()->selectedIndexes()));
  // On a row that takes none it is put beside it; then in front of the row in the group.
  EXPECT_TRUE(Drop(*view, *data, view->visualRect(model.index(2, 0)).center()));
  EXPECT_EQ(move.parent, 0);
  const QRect inGroup = view->visualRect(model.index(0, 0, model.index(0, 0)));
  EXPECT_TRUE(Drop(*view, *data, inGroup.topLeft() + QPoint(4, 0)));
  EXPECT_EQ(move.keys, (std::vector<int>{2, 4}));
  EXPECT_EQ(move.parent, 1);
  EXPECT_EQ(move.index, 0);
  EXPECT_EQ(tree.FindRow(1)->childCount(), 1) << "the view moves nothing";
}

TEST(Widgets, ReadWellInBothThemes) {
  for (const qt::Theme theme : {qt::Theme::kDark, qt::Theme::kLight}) {
    const QPalette palette = qt::PaletteOf(theme);
    EXPECT_EQ(qt::IsDark(palette), theme == qt::Theme::kDark);
    const auto luminance = [](const QColor& color) {
      const auto part = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
      };
      return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) +
             0.0722 * part(color.blueF());
    };
    const auto contrast = [&](const QColor& a, const QColor& b) {
      const double x = luminance(a) + 0.05, y = luminance(b) + 0.05;
      return std::max(x, y) / std::min(x, y);
    };
    for (const QPalette::ColorRole behind : {QPalette::Window, QPalette::Base, QPalette::Button}) {
      EXPECT_GE(contrast(palette.color(QPalette::Text), palette.color(behind)), 7.0);
      for (const qt::Tone tone : {qt::Tone::kWeakText, qt::Tone::kAccent, qt::Tone::kError,
                                  qt::Tone::kWarning, qt::Tone::kGood})
        EXPECT_GE(contrast(qt::ToneOf(palette, tone), palette.color(behind)), 4.5)
            << int(tone) << int(behind);
    }
    for (const int grey : {0, 64, 0x87, 200, 255})
      EXPECT_GE(contrast(qt::TextColor(palette, QColor(grey, grey, grey)),
                         palette.color(QPalette::Window)),
                4.5);
  }
}

TEST(Widgets, DrawMasksInTheTextsColourAndTheUsersImageFirst) {
  FullWindow window;
  window.Show(900, 760);
  QWidget* label = window.Widget(40);
  const auto at = [](const QPixmap& pixmap) { return pixmap.toImage().pixelColor(8, 8); };
  const QColor text = label->palette().color(QPalette::WindowText);
  EXPECT_EQ(at(qt::LoadPixmap(*window.root, "[images]/dot-symbolic.png", *label)).rgb(),
            text.rgb());
  EXPECT_EQ(at(qt::LoadPixmap(*window.root, "[images]/dot.png", *label)), QColor(200, 80, 60));
  EXPECT_TRUE(qt::LoadPixmap(*window.root, "[images]/absent.png", *label).isNull());
}

}  // namespace orv::tests

#include "gui/component/qt/Accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <limits>

#include "gui/component/Slider.h"
#include "gui/component/Spinner.h"
#include "gui/component/qt/GraphView.h"
#include "gui/component/qt/GroupBox.h"
#include "gui/component/qt/SliderLine.h"
#include "gui/component/qt/SpinField.h"
#include "gui/component/qt/ViewArea.h"
#include "gui/component/qt/ViewHandler.h"

namespace orv::gui::component::qt {

namespace {

/// A number with a range. `Held` gives the component, or null once it has gone.
template <class Held>
class NumberInterface : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  NumberInterface(QWidget* widget, QAccessible::Role role, Held held)
      : QAccessibleWidget(widget, role), m_held(held) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) return currentValue().toString();
    return QAccessibleWidget::text(kind);
  }
  QVariant currentValue() const override {
    return Ask([](auto& c) { return c.GetValue(); });
  }
  QVariant minimumValue() const override {
    return Ask([](auto& c) { return c.GetMin(); });
  }
  QVariant maximumValue() const override {
    return Ask([](auto& c) { return c.GetMax(); });
  }
  QVariant minimumStepSize() const override {
    return Ask([](auto& c) { return c.GetStep(); });
  }
  void setCurrentValue(const QVariant& value) override {
    if (auto* component = m_held()) component->EnterByUser(value.toDouble());
  }

 private:
  template <class Question>
  QVariant Ask(Question&& question) const {
    auto* component = m_held();
    return component ? QVariant(question(*component)) : QVariant();
  }

  Held m_held;
};

template <class Held>
QAccessibleInterface* MakeNumber(QWidget* widget, QAccessible::Role role, Held held) {
  return new NumberInterface<Held>(widget, role, held);
}

class GroupInterface : public QAccessibleWidget {
 public:
  explicit GroupInterface(GroupBox* box) : QAccessibleWidget(box, QAccessible::Grouping) {}
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? Box().GetTitle() : QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = Box().IsFoldable();
    state.expanded = Box().IsFoldable() && !Box().IsFolded();
    state.collapsed = Box().IsFolded();
    return state;
  }

 private:
  const GroupBox& Box() const { return *static_cast<GroupBox*>(widget()); }
};

class ViewInterface : public QAccessibleWidget {
 public:
  explicit ViewInterface(ViewArea* area) : QAccessibleWidget(area, QAccessible::Canvas) {}
  QString text(QAccessible::Text kind) const override {
    const ViewHandler* handler = static_cast<ViewArea*>(widget())->GetHandler();
    if (kind == QAccessible::Value && handler) return handler->GetAccessibleValue();
    return QAccessibleWidget::text(kind);
  }
};

QAccessibleInterface* Make(const QString&, QObject* object) {
  // Ours are told by their type: none of them has a name of its own in Qt's system.
  if (auto* field = dynamic_cast<SpinField*>(object))
    return MakeNumber(field, QAccessible::SpinBox, [field] { return field->GetSpinner(); });
  if (auto* line = dynamic_cast<SliderLine*>(object))
    return MakeNumber(line, QAccessible::Slider, [line] { return line->GetSlider(); });
  if (auto* box = dynamic_cast<GroupBox*>(object)) return new GroupInterface(box);
  if (auto* area = dynamic_cast<ViewArea*>(object)) return new ViewInterface(area);
  if (auto* graph = dynamic_cast<GraphView*>(object))
    return new QAccessibleWidget(graph, QAccessible::Chart);
  return nullptr;
}

}  // namespace

void InstallAccessibility() {
  static const bool installed = (QAccessible::installFactory(Make), true);
  static_cast<void>(installed);
}

}  // namespace orv::gui::component::qt

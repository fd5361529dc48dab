#include "gui/component/qt/Realise.h"

#include <QTimer>
#include <map>
#include <string>
#include <utility>

#include "gui/component/qt/Accessible.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/Watcher.h"

namespace orv::gui::component::qt {

namespace {

std::map<std::string, PeerMaker>& Makers() {
  static std::map<std::string, PeerMaker> makers{{"border", MakeBorder},
                                                 {"button", MakeButton},
                                                 {"checkbox", MakeCheckBox},
                                                 {"combobox", MakeComboBox},
                                                 {"dialog", MakeDialog},
                                                 {"flmbutton", MakeFlmButton},
                                                 {"graph", MakeGraph},
                                                 {"group", MakeGroup},
                                                 {"label", MakeLabel},
                                                 {"list", MakeList},
                                                 {"listbox", MakeListBox},
                                                 {"menubar", MakeMenubar},
                                                 {"progressbar", MakeProgressbar},
                                                 {"scroll", MakeScroll},
                                                 {"slider", MakeSlider},
                                                 {"spinner", MakeSpinner},
                                                 {"splitter", MakeSplitter},
                                                 {"textbox", MakeTextBox},
                                                 {"tree", MakeTree},
                                                 {"view", MakeView}};
  return makers;
}

class QtToolkit : public Toolkit {
 public:
  static QtToolkit& Instance() {
    static QtToolkit toolkit;
    return toolkit;
  }

  std::unique_ptr<Peer> Create(Component& component, Peer* parent) override {
    QWidget* around = parent ? static_cast<QtPeer*>(parent)->GetContent() : rootParent;
    const auto maker = Makers().find(component.GetElement());
    std::unique_ptr<Peer> peer =
        maker != Makers().end() ? maker->second(component, around) : MakeView(component, around);
    Watcher::Instance().Watch(*static_cast<QtPeer*>(peer.get())->GetWidget());
    return peer;
  }

  void ScheduleRetired() override {
    if (std::exchange(m_scheduled, true)) return;
    QTimer::singleShot(0, &Watcher::Instance(), [this] {
      m_scheduled = false;
      DestroyRetired();
      if (HasRetired()) QTimer::singleShot(10, &Watcher::Instance(), [this] { ScheduleRetired(); });
    });
  }

  QWidget* rootParent = nullptr;

 private:
  bool m_scheduled = false;
};

}  // namespace

QWidget* Realise(Component& root, QWidget* parent) {
  InstallAccessibility();
  QtToolkit& toolkit = QtToolkit::Instance();
  toolkit.rootParent = parent;
  root.Realise(toolkit);
  toolkit.rootParent = nullptr;
  if (QtPeer* peer = QtPeer::Of(root)) peer->UpdateName();
  return WidgetOf(root);
}

QWidget* WidgetOf(const Component& component) {
  const QtPeer* peer = QtPeer::Of(component);
  return peer ? peer->GetWidget() : nullptr;
}

Component* ComponentOf(const QWidget* widget) {
  for (; widget; widget = widget->parentWidget())
    if (const QtPeer* peer = QtPeer::At(widget)) return peer->GetComponent();
  return nullptr;
}

void RegisterPeer(const char* element, PeerMaker maker) {
  Makers()[element] = std::move(maker);
}

}  // namespace orv::gui::component::qt

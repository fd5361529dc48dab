// The elements of the language by their names.
#include "gui/Component.h"
#include "gui/component/Border.h"
#include "gui/component/Button.h"
#include "gui/component/CheckBox.h"
#include "gui/component/ComboBox.h"
#include "gui/component/Dialog.h"
#include "gui/component/FlmButton.h"
#include "gui/component/Graph.h"
#include "gui/component/Group.h"
#include "gui/component/Label.h"
#include "gui/component/List.h"
#include "gui/component/ListBox.h"
#include "gui/component/Menubar.h"
#include "gui/component/Progressbar.h"
#include "gui/component/Scroll.h"
#include "gui/component/Slider.h"
#include "gui/component/Spinner.h"
#include "gui/component/Splitter.h"
#include "gui/component/TextBox.h"
#include "gui/component/Tree.h"
#include "gui/component/View.h"

namespace orv::gui {

void RegisterElements() {
  auto& factories = util::AbstractFactory<Component>::instance();
  static bool registered = false;
  if (std::exchange(registered, true)) return;
  factories.add(new ElementFactory<component::Dialog>("dialog"));
  factories.add(new ElementFactory<component::List>("list"));
  factories.add(new ElementFactory<component::Border>("border"));
  factories.add(new ElementFactory<component::Group>("group"));
  factories.add(new ElementFactory<component::Label>("label"));
  factories.add(new ElementFactory<component::Button>("button"));
  factories.add(new ElementFactory<component::FlmButton>("flmbutton"));
  factories.add(new ElementFactory<component::CheckBox>("checkbox"));
  factories.add(new ElementFactory<component::Spinner>("spinner"));
  factories.add(new ElementFactory<component::ComboBox>("combobox"));
  factories.add(new ElementFactory<component::TextBox>("textbox"));
  factories.add(new ElementFactory<component::ListBox>("listbox"));
  factories.add(new ElementFactory<component::Tree>("tree"));
  factories.add(new ElementFactory<component::Graph>("graph"));
  factories.add(new ElementFactory<component::Scroll>("scroll"));
  factories.add(new ElementFactory<component::Menubar>("menubar"));
  factories.add(new ElementFactory<component::Progressbar>("progressbar"));
  // What the language lacks for our windows.
  factories.add(new ElementFactory<component::Slider>("slider"));
  factories.add(new ElementFactory<component::Splitter>("splitter"));
  factories.add(new ElementFactory<component::View>("view"));
}

}  // namespace orv::gui

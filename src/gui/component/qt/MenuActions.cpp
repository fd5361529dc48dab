#include "gui/component/qt/MenuActions.h"

#include <QAction>
#include <QMenu>
#include <algorithm>

#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/component/Menubar.h"
#include "gui/component/qt/Images.h"

namespace orv::gui::component::qt {

namespace {

std::string Shown(const MenuItem& item, const std::string& text) {
  return item.english ? Translate(text) : text;
}

}  // namespace

void MenuActions::Fill(QWidget& holder, const std::vector<MenuItem>& items, bool sameImages) {
  m_sameImages = sameImages;
  FillAt(holder, items, "");
}

void MenuActions::FillAt(QWidget& holder, const std::vector<MenuItem>& items,
                         const std::string& path) {
  QList<QAction*> wanted;  // null for a separator
  for (std::size_t i = 0; i < items.size(); ++i) {
    const MenuItem& item = items[i];
    if (item.separator) {
      wanted.append(nullptr);
    } else if (item.isMenu) {
      QMenu* menu = MenuOf(item, path + "/" + std::to_string(i), holder);
      Describe(*menu->menuAction(), item);
      wanted.append(menu->menuAction());
      FillAt(*menu, item.items, path + "/" + std::to_string(i));
    } else {
      wanted.append(ActionOf(item, m_owner));
    }
  }
  Arrange(holder, wanted);
}

// To take entries out and put them in again lays out the whole bar, and what is told of an entry,
// such as that it can't be chosen now, is told many times a second.
void MenuActions::Arrange(QWidget& holder, const QList<QAction*>& wanted) {
  const QList<QAction*> present = holder.actions();
  const auto isSame = [](QAction* is, QAction* want) {
    return want ? is == want : is->isSeparator();
  };
  if (std::equal(present.begin(), present.end(), wanted.begin(), wanted.end(), isSame)) return;
  for (QAction* action : present) {
    holder.removeAction(action);
    if (action->isSeparator()) delete action;
  }
  for (QAction* action : wanted) {
    if (!action) {
      action = new QAction(&holder);
      action->setSeparator(true);
    }
    holder.addAction(action);
  }
}

QMenu* MenuActions::MenuOf(const MenuItem& item, const std::string& path, QWidget& holder) {
  QMenu*& menu = m_menus[item.id == kNoId ? path : std::to_string(item.id)];
  if (menu) return menu;
  menu = new QMenu(&holder);
  menu->setToolTipsVisible(true);
  if (item.id != kNoId) menu->setObjectName(QString::number(item.id));
  QObject::connect(menu, &QMenu::aboutToShow, [this, id = item.id] {
    if (Component* component = m_component()) component->Post(kMsgPopupOpening, id);
  });
  return menu;
}

QAction* MenuActions::ActionOf(const MenuItem& item, QWidget& owner) {
  QAction*& action = m_actions[item.id];
  if (!action) {
    action = new QAction(&owner);
    action->setObjectName(QString::number(item.id));
    QObject::connect(action, &QAction::triggered,
                     [this, id = item.id](bool checked) { Chosen(id, checked); });
  }
  Describe(*action, item);
  return action;
}

void MenuActions::Describe(QAction& action, const MenuItem& item) {
  const QString text = QString::fromStdString(Shown(item, item.label));
  if (action.text() != text) action.setText(text);
  const bool why = !item.enabled && !item.whyDisabled.empty();
  action.setToolTip(QString::fromStdString(why ? item.whyDisabled : Shown(item, item.tooltip)));
  if (!item.shortcut.empty())
    action.setShortcut(QKeySequence::fromString(QString::fromStdString(item.shortcut),
                                                QKeySequence::PortableText));
  const QString icon = QString::fromStdString(item.icon);
  if (!item.icon.empty() && (!m_sameImages || action.data() != icon)) {
    action.setIcon(LoadIcon(*m_component(), item.icon, m_owner));
    action.setData(icon);
  }
  action.setCheckable(item.checkable);
  action.setChecked(item.checked);
  action.setEnabled(item.enabled);
  action.setVisible(item.visible);
}

void MenuActions::Chosen(int id, bool checked) {
  Component* component = m_component();
  if (!component) return;
  auto* bar = dynamic_cast<Menubar*>(component);
  Menu* menu = bar ? &bar->GetMenu() : component->GetPopup();
  const MenuItem* item = menu ? menu->Find(id) : nullptr;
  if (!item) return;
  if (item->checkable) menu->SetChecked(id, checked);
  component->Post(kMsgMenuItem, id);
}

void MenuActions::ServeShortcuts(QWidget& widget, const std::vector<MenuItem>& items) {
  for (const MenuItem& item : items) {
    ServeShortcuts(widget, item.items);
    if (item.shortcut.empty() || item.isMenu || item.separator) continue;
    QAction* action = ActionOf(item, widget);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    if (!widget.actions().contains(action)) widget.addAction(action);
  }
}

}  // namespace orv::gui::component::qt

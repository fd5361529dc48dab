// combobox, textbox and progressbar.
#include <QComboBox>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStandardItemModel>
#include <QWheelEvent>

#include "gui/component/ComboBox.h"
#include "gui/component/Items.h"
#include "gui/component/Progressbar.h"
#include "gui/component/TextBox.h"
#include "gui/component/qt/Images.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/Scale.h"

namespace orv::gui::component::qt {

namespace {

/// Turns with the wheel only when it has the focus: else what it lies in scrolls.
class ChoiceBox : public QComboBox {
 public:
  explicit ChoiceBox(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
  }

 protected:
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus())
      QComboBox::wheelEvent(event);
    else
      event->ignore();
  }
};

/// Calls back on Escape in a text that has been changed, and when the focus leaves.
class EditWatcher : public QObject {
 public:
  using QObject::QObject;
  std::function<bool()> onEscape;
  std::function<void()> onLeave;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && onEscape &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && onEscape())
      return true;
    if (event->type() == QEvent::FocusOut && onLeave &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
      onLeave();
    return QObject::eventFilter(object, event);
  }
};

class ComboBoxPeer : public PeerOf<ComboBox, ChoiceBox> {
 public:
  ComboBoxPeer(Component& component, ChoiceBox* box) : PeerOf(component, box) {
    QObject::connect(box, static_cast<void (QComboBox::*)(int)>(&QComboBox::activated),
                     [this](int index) {
                       if (Held()) Held()->ChooseByUser(index);
                     });
    if (!Held()->IsEditable()) return;
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->completer()->setCaseSensitivity(Qt::CaseInsensitive);
    QLineEdit* edit = box->lineEdit();
    QObject::connect(edit, &QLineEdit::textEdited, [this](const QString& text) {
      if (Held()) Held()->TypeByUser(text.toStdString());
    });
    QObject::connect(edit, &QLineEdit::returnPressed, [this] { Enter(true); });
    auto* watcher = new EditWatcher(box);
    watcher->onLeave = [this] { Enter(false); };
    edit->installEventFilter(watcher);
  }

 protected:
  void UpdateContent(unsigned changes) override {
    if (changes & (kItemsChange | kImageChange)) UpdateItems();
    if (changes & (kValueChange | kItemsChange)) {
      View()->setCurrentIndex(Held()->GetIndex());
      if (Held()->IsEditable() && View()->currentText() != ToQt(Held()->GetText()))
        View()->setEditText(ToQt(Held()->GetText()));
    }
    if (changes & (kMarkChange | kStyleChange))
      ApplyTextStyle(*View(), Held()->GetAttributes().style, Held()->IsMarked());
  }

 private:
  void Enter(bool byEnter) {
    if (Held()) Held()->EnterByUser(View()->currentText().toStdString(), byEnter);
  }

  void UpdateItems() {
    View()->clear();
    const auto& items = Held()->GetItems();
    for (std::size_t i = 0; i < items.size(); ++i) {
      const componentinterface::Item& item = items[i];
      const int row = static_cast<int>(i);
      View()->addItem(ToQt(ShownText(item)), item.id);
      if (!item.icon.empty())
        View()->setItemIcon(row, LoadIcon(*GetComponent(), item.icon, *View()));
      if (!item.tooltip.empty()) View()->setItemData(row, ToQt(item.tooltip), Qt::ToolTipRole);
      if (!item.enabled)
        if (auto* model = qobject_cast<QStandardItemModel*>(View()->model()))
          model->item(row)->setEnabled(false);
    }
  }
};

class LinePeer : public PeerOf<TextBox, QLineEdit> {
 public:
  LinePeer(Component& component, QLineEdit* edit) : PeerOf(component, edit) {
    QObject::connect(edit, &QLineEdit::textEdited, [this](const QString& text) {
      if (Held()) Held()->TypeByUser(text.toStdString());
    });
    QObject::connect(edit, &QLineEdit::returnPressed, [this] {
      if (Held()) Held()->EnterByUser();
    });
    auto* watcher = new EditWatcher(edit);
    watcher->onLeave = [this] {
      if (Held()) Held()->LeaveByUser();
    };
    watcher->onEscape = [this] {
      if (!Held() || Held()->GetText() == Held()->GetEntered()) return false;
      Held()->RevertByUser();
      return true;
    };
    edit->installEventFilter(watcher);
  }

 protected:
  void UpdateContent(unsigned changes) override {
    if (changes & kValueChange) {
      if (View()->text() != ToQt(Held()->GetText())) View()->setText(ToQt(Held()->GetText()));
      if (Held()->TakeSelectAll()) View()->selectAll();
    }
    if (changes & kRangeChange) View()->setReadOnly(!Held()->IsEditable());
    if (changes & kLabelChange) {
      const QString hint = ToQt(Held()->GetShownHint());
      View()->setPlaceholderText(hint);
      View()->setClearButtonEnabled(!hint.isEmpty() && Held()->IsEditable());
    }
    if (changes & (kMarkChange | kStyleChange))
      ApplyTextStyle(*View(), Held()->GetAttributes().style, Held()->IsMarked());
  }
};

/// Tab leaves it: no text of ours holds a tabulator.
class SheetPeer : public PeerOf<TextBox, QPlainTextEdit> {
 public:
  SheetPeer(Component& component, QPlainTextEdit* edit) : PeerOf(component, edit) {
    edit->setTabChangesFocus(true);
    QObject::connect(edit, &QPlainTextEdit::textChanged, [this] {
      if (Held() && !m_setting) Held()->TypeByUser(View()->toPlainText().toStdString());
    });
    auto* watcher = new EditWatcher(edit);
    watcher->onLeave = [this] {
      if (Held()) Held()->LeaveByUser();
    };
    edit->installEventFilter(watcher);
  }

 protected:
  void UpdateContent(unsigned changes) override {
    m_setting = true;
    if (changes & kValueChange) {
      const QString text = ToQt(Held()->GetText());
      if (View()->toPlainText() != text) View()->setPlainText(text);
      if (Held()->TakeSelectAll()) View()->selectAll();
    }
    m_setting = false;
    if (changes & kRangeChange) View()->setReadOnly(!Held()->IsEditable());
    if (changes & kLabelChange) View()->setPlaceholderText(ToQt(Held()->GetShownHint()));
    if (changes & (kMarkChange | kStyleChange))
      ApplyTextStyle(*View(), Held()->GetAttributes().style, Held()->IsMarked());
  }

 private:
  bool m_setting = false;
};

class ProgressbarPeer : public PeerOf<Progressbar, QProgressBar> {
 public:
  ProgressbarPeer(Component& component, QProgressBar* bar) : PeerOf(component, bar) {}

  QWidget* GetFocusWidget() const override { return nullptr; }

 protected:
  void UpdateContent(unsigned changes) override {
    if (changes & kLabelChange) {
      const std::string label = Held()->GetShownLabel();
      View()->setFormat(label.empty() ? QStringLiteral("%p%") : ToQt(label));
    }
    if (changes & kValueChange) {
      // A thousandth is the finest that shows; the busy state has no range.
      const double progress = Held()->GetProgress();
      View()->setRange(0, progress < 0.0 ? 0 : 1000);
      View()->setValue(progress < 0.0 ? 0 : qRound(progress * 1000.0));
    }
    if (changes == kAllChanges) View()->setAccessibleName(GetSpokenName());
  }
};

}  // namespace

std::unique_ptr<Peer> MakeComboBox(Component& component, QWidget* parent) {
  return std::make_unique<ComboBoxPeer>(component, new ChoiceBox(parent));
}

std::unique_ptr<Peer> MakeTextBox(Component& component, QWidget* parent) {
  if (static_cast<const TextBox&>(component).IsMultiLine())
    return std::make_unique<SheetPeer>(component, new QPlainTextEdit(parent));
  return std::make_unique<LinePeer>(component, new QLineEdit(parent));
}

std::unique_ptr<Peer> MakeProgressbar(Component& component, QWidget* parent) {
  return std::make_unique<ProgressbarPeer>(component, new QProgressBar(parent));
}

}  // namespace orv::gui::component::qt

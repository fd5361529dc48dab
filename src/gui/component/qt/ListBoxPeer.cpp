// listbox.
#include <QAbstractListModel>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QListView>
#include <QScrollBar>
#include <algorithm>

#include "gui/GuiMessages.h"
#include "gui/TextSearch.h"
#include "gui/component/Items.h"
#include "gui/component/ListBox.h"
#include "gui/component/qt/Elided.h"
#include "gui/component/qt/Images.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/RowRanges.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::gui::component::qt {

using componentinterface::Item;

namespace {

/// The items that pass the filter, by their places in the component.
class ItemModel : public QAbstractListModel {
 public:
  explicit ItemModel(QtPeer& peer) : m_peer(peer) {}

  void Release() { m_list = nullptr; }
  void Hold(ListBox& list) { m_list = &list; }

  int rowCount(const QModelIndex& parent = {}) const override {
    if (!m_list || parent.isValid()) return 0;
    return IsFiltered() ? static_cast<int>(m_shown.size())
                        : static_cast<int>(m_list->GetItems().size());
  }

  const Item* ItemAt(int row) const {
    if (!m_list || row < 0 || row >= rowCount()) return nullptr;
    return &m_list->GetItems()[IsFiltered() ? m_shown[row] : row];
  }

  int RowOf(int index) const {
    if (!IsFiltered()) return index;
    const auto found = std::lower_bound(m_shown.begin(), m_shown.end(), index);
    return found != m_shown.end() && *found == index ? static_cast<int>(found - m_shown.begin())
                                                     : -1;
  }

  QVariant data(const QModelIndex& index, int role) const override {
    const Item* item = ItemAt(index.row());
    if (!item) return {};
    switch (role) {
      case Qt::DisplayRole:
      case Qt::EditRole:
        return ToQt(ShownText(*item));
      case Qt::ToolTipRole:
        return item->tooltip.empty()
                   ? ElidedText(*static_cast<QAbstractItemView*>(m_peer.GetWidget()), index)
                   : ToQt(item->tooltip);
      case Qt::DecorationRole:
        return item->icon.empty() ? QVariant() : LoadIcon(*m_list, item->icon, *m_peer.GetWidget());
      case Qt::FontRole: {
        QFont font = m_peer.GetWidget()->font();
        font.setBold(true);
        return item->strong ? QVariant(font) : QVariant();
      }
      case Qt::ForegroundRole:
        return item->dim ? QVariant(ToneOf(m_peer.GetWidget()->palette(), Tone::kWeakText))
                         : QVariant();
      default:
        return {};
    }
  }

  Qt::ItemFlags flags(const QModelIndex& index) const override {
    const Item* item = ItemAt(index.row());
    if (!item || !item->enabled) return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return m_list->IsEditable() ? flags | Qt::ItemIsEditable : flags;
  }

  bool setData(const QModelIndex& index, const QVariant& value, int role) override {
    const Item* item = ItemAt(index.row());
    if (role != Qt::EditRole || !item || ToQt(ShownText(*item)) == value.toString()) return false;
    Renamed renamed{item->id, value.toString().toStdString()};
    m_list->Post(kMsgRenamed, renamed.key, &renamed);
    return true;
  }

  void BeginReset() { beginResetModel(); }
  void EndReset() {
    Filter();
    endResetModel();
  }

  // While there is a filter the rows are made anew; else what comes and goes is told as it is.
  void BeginInsert(int first, int last) {
    if (IsFiltered())
      beginResetModel();
    else
      beginInsertRows({}, first, last);
  }
  void EndInsert() {
    if (IsFiltered())
      EndReset();
    else
      endInsertRows();
  }
  void BeginRemove(int first, int last) {
    if (IsFiltered())
      beginResetModel();
    else
      beginRemoveRows({}, first, last);
  }
  void EndRemove() {
    if (IsFiltered())
      EndReset();
    else
      endRemoveRows();
  }
  void Changed(int row) { emit dataChanged(index(row), index(row)); }

 private:
  bool IsFiltered() const { return m_list && !m_list->GetFilter().empty(); }

  void Filter() {
    m_shown.clear();
    if (!IsFiltered()) return;
    const auto& items = m_list->GetItems();
    for (std::size_t i = 0; i < items.size(); ++i)
      if (HoldsText(ShownText(items[i]), m_list->GetFilter()))
        m_shown.push_back(static_cast<int>(i));
  }

  QtPeer& m_peer;
  ListBox* m_list = nullptr;
  std::vector<int> m_shown;
};

class ItemView : public QListView {
 public:
  using QListView::QListView;
  std::function<void(int id)> onActivate;
  std::function<void()> onSelect;
  std::function<void()> onCopied;

 protected:
  void selectionChanged(const QItemSelection& selected, const QItemSelection& gone) override {
    QListView::selectionChanged(selected, gone);
    if (onSelect) onSelect();
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Copy)) return Copy();
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && state() != EditingState && currentIndex().isValid())
      return emit activated(currentIndex());
    QListView::keyPressEvent(event);
  }

 private:
  void Copy() {
    QModelIndexList rows = selectedIndexes();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex& row : rows) lines.append(row.data().toString());
    if (lines.isEmpty()) return;
    QApplication::clipboard()->setText(lines.join('\n'));
    if (onCopied) onCopied();
  }
};

class ListBoxPeer : public PeerOf<ListBox, ItemView>, public ListBox::Observer {
 public:
  ListBoxPeer(Component& component, ItemView* view)
      : PeerOf(component, view), m_model(new ItemModel(*this)) {
    m_model->setParent(view);
    m_model->Hold(*Held());
    view->setModel(m_model);
    view->setUniformItemSizes(true);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setEditTriggers(Held()->IsEditable() ? QAbstractItemView::EditKeyPressed |
                                                     QAbstractItemView::SelectedClicked
                                               : QAbstractItemView::NoEditTriggers);
    view->onSelect = [this] { Selected(); };
    view->onCopied = [this] {
      if (Held()) Held()->Post(kMsgCopied);
    };
    QObject::connect(view, &QAbstractItemView::activated, [this](const QModelIndex& index) {
      const Item* item = m_model->ItemAt(index.row());
      if (Held() && item) Held()->Post(kMsgActivated, item->id);
    });
    QScrollBar* bar = view->verticalScrollBar();
    QObject::connect(bar, &QScrollBar::actionTriggered, [this, bar](int) {
      if (Held())
        Held()->FollowByUser(Held()->IsFollowing() && bar->sliderPosition() >= bar->maximum());
    });
    Held()->SetObserver(this);
  }

  void BeginReset() override {
    Telling([this] { m_model->BeginReset(); });
  }
  void EndReset() override {
    Done([this] { m_model->EndReset(); });
  }
  void BeginInsert(int first, int last) override {
    Telling([=] { m_model->BeginInsert(first, last); });
  }
  void EndInsert() override {
    Done([this] { m_model->EndInsert(); });
  }
  void BeginRemove(int first, int last) override {
    Telling([=] { m_model->BeginRemove(first, last); });
  }
  void EndRemove() override {
    Done([this] { m_model->EndRemove(); });
  }
  void ItemChanged(int index) override {
    if (const int row = m_model ? m_model->RowOf(index) : -1; row >= 0) m_model->Changed(row);
  }
  void SelectionSet() override { ShowSelection(); }
  void Reveal(int index) override {
    const int row = m_model ? m_model->RowOf(index) : -1;
    if (row >= 0) View()->scrollTo(m_model->index(row));
  }

 protected:
  void UpdateContent(unsigned changes) override {
    if (changes & kRangeChange)
      View()->setSelectionMode(Held()->IsMultiSelect() ? QAbstractItemView::ExtendedSelection
                                                       : QAbstractItemView::SingleSelection);
    if (changes & kItemsChange) {
      BeginReset();
      EndReset();
    }
    if ((changes & kValueChange) && Held()->IsFollowing()) View()->scrollToBottom();
  }

  void Detached() override {
    if (m_model) m_model->Release();
  }

 private:
  template <class Call>
  void Telling(Call&& call) {
    m_telling = true;
    if (m_model) call();
  }
  template <class Call>
  void Done(Call&& call) {
    if (m_model) call();
    m_telling = false;
    if (!m_model) return;
    ShowSelection();
    if (Held()->IsFollowing()) View()->scrollToBottom();
  }

  void ShowSelection() {
    if (!View()) return;
    m_telling = true;
    RowRanges ranges;
    QModelIndex current;
    for (const int id : Held()->GetSelected()) {
      const int row = m_model->RowOf(Held()->IndexOf(id));
      if (row < 0) continue;
      ranges.Add(m_model->index(row));
      if (!current.isValid()) current = m_model->index(row);
    }
    View()->selectionModel()->select(ranges.Take(), QItemSelectionModel::ClearAndSelect);
    if (current.isValid())
      View()->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    m_telling = false;
  }

  void Selected() {
    if (m_telling || !Held()) return;
    std::vector<int> ids;
    for (const QModelIndex& row : View()->selectionModel()->selectedIndexes())
      if (const Item* item = m_model->ItemAt(row.row())) ids.push_back(item->id);
    const Item* current = m_model->ItemAt(View()->currentIndex().row());
    Held()->SelectByUser(ids, current ? current->id : kNoId);
  }

  QPointer<ItemModel> m_model;
  bool m_telling = false;
};

}  // namespace

std::unique_ptr<Peer> MakeListBox(Component& component, QWidget* parent) {
  return std::make_unique<ListBoxPeer>(component, new ItemView(parent));
}

}  // namespace orv::gui::component::qt

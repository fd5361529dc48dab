// tree.
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QTreeView>
#include <algorithm>
#include <utility>

#include "gui/GuiMessages.h"
#include "gui/component/Tree.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/RowRanges.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"
#include "gui/component/qt/TreeModel.h"

namespace orv::gui::component::qt {

namespace {

class RowView : public QTreeView {
 public:
  using QTreeView::QTreeView;
  std::function<void()> onSelect;
  std::function<void()> onCopied;
  std::function<void(const QPoint& place)> onMenu;
  std::function<void()> onLeft;
  QString emptyText;

  using QTreeView::edit;

 protected:
  void selectionChanged(const QItemSelection& selected, const QItemSelection& gone) override {
    QTreeView::selectionChanged(selected, gone);
    if (onSelect) onSelect();
  }

  void currentChanged(const QModelIndex& current, const QModelIndex& before) override {
    QTreeView::currentChanged(current, before);
    if (onSelect) onSelect();
  }

  void startDrag(Qt::DropActions actions) override {
    // The drag runs an event loop of its own while this widget's event is being handled.
    const HoldRetired hold;
    QTreeView::startDrag(actions);
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Copy)) return Copy();
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && state() != EditingState && currentIndex().isValid())
      return emit activated(currentIndex());
    QTreeView::keyPressEvent(event);
  }

  void contextMenuEvent(QContextMenuEvent* event) override {
    const QModelIndex under = indexAt(event->pos());
    QPoint place = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard)
      place = viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft());
    else if (under.isValid() && !selectionModel()->isSelected(under))
      setCurrentIndex(under);
    else if (!under.isValid())
      clearSelection();
    if (onMenu) onMenu(place);
  }

  bool viewportEvent(QEvent* event) override {
    if (event->type() == QEvent::Leave && onLeft) onLeft();
    return QTreeView::viewportEvent(event);
  }

  void paintEvent(QPaintEvent* event) override {
    QTreeView::paintEvent(event);
    if (emptyText.isEmpty() || (model() && model()->rowCount() > 0)) return;
    QPainter painter(viewport());
    painter.setPen(ToneOf(palette(), Tone::kWeakText));
    const int margin = Scaled(16);
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap, emptyText);
  }

 private:
  void Copy() {
    QStringList lines;
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [this](const QModelIndex& a, const QModelIndex& b) {
      return visualRect(a).top() < visualRect(b).top();
    });
    for (const QModelIndex& row : rows) {
      QStringList cells;
      for (int column = 0; column < model()->columnCount(); ++column)
        cells.append(row.sibling(row.row(), column).data().toString());
      lines.append(cells.join('\t'));
    }
    if (lines.isEmpty()) return;
    QApplication::clipboard()->setText(lines.join('\n'));
    if (onCopied) onCopied();
  }
};

class TreePeer : public PeerOf<Tree, RowView>, public Tree::Observer {
 public:
  TreePeer(Component& component, RowView* view)
      : PeerOf(component, view), m_model(new TreeModel(*Held(), *this)) {
    m_model->setParent(view);
    view->setModel(m_model);
    SetUp(*view);
    Connect(*view);
    Held()->SetObserver(this);
  }

  void BeginReset() override {
    Telling([this] { m_model->BeginReset(); });
  }
  void EndReset() override {
    Done([this] { m_model->EndReset(); }, nullptr);
  }
  void BeginInsert(const Tree::Node& parent, int index) override {
    Telling([&] { m_model->BeginInsert(parent, index); });
  }
  void EndInsert(const Tree::Node& row) override {
    Done([this] { m_model->EndInsert(); }, &row);
  }
  void BeginRemove(const Tree::Node& row) override {
    Telling([&] { m_model->BeginRemove(row); });
  }
  void EndRemove() override {
    Done([this] { m_model->EndRemove(); }, nullptr);
  }
  void BeginMove(const Tree::Node& row, const Tree::Node& parent, int to) override {
    Telling([&] { m_model->BeginMove(row, parent, to); });
  }
  void EndMove(const Tree::Node& row) override {
    Done([this] { m_model->EndMove(); }, &row);
  }
  void RowChanged(const Tree::Node& row) override {
    if (m_model) m_model->RowChanged(row);
  }
  void ExpandedSet(const Tree::Node& row) override {
    if (!m_model) return;
    m_telling = true;
    View()->setExpanded(m_model->IndexOf(row), row.expanded);
    m_telling = false;
  }
  void SelectionSet() override { ShowSelection(); }
  void FilterSet() override {
    BeginReset();
    EndReset();
  }
  void Reveal(const Tree::Node& row) override {
    if (m_model) View()->scrollTo(m_model->IndexOf(row));
  }
  void Edit(const Tree::Node& row) override {
    if (!m_model) return;
    View()->setCurrentIndex(m_model->IndexOf(row));
    View()->setFocus(Qt::OtherFocusReason);
    View()->edit(m_model->IndexOf(row));
  }

 protected:
  void UpdateContent(unsigned changes) override {
    RowView* view = View();
    if (changes & kRangeChange)
      view->setSelectionMode(Held()->IsMultiSelect() ? QAbstractItemView::ExtendedSelection
                                                     : QAbstractItemView::SingleSelection);
    if (changes & kItemsChange) {
      BeginReset();
      EndReset();
      UpdateColumns();
    }
    if (changes & kValueChange) {
      view->emptyText = ToQt(Held()->GetEmptyText());
      view->viewport()->update();
    }
  }

  void Detached() override {
    if (m_model) m_model->Release();
  }

 private:
  void SetUp(RowView& view) {
    view.setUniformRowHeights(true);
    view.setAllColumnsShowFocus(true);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::SelectedClicked);
    view.setExpandsOnDoubleClick(false);
    view.setIndentation(Scaled(16));
    view.setTextElideMode(Qt::ElideRight);
    if (!Held()->CanDrag()) return;
    view.setDragEnabled(true);
    view.setDropIndicatorShown(true);
    view.setDragDropMode(QAbstractItemView::DragDrop);
    view.setDefaultDropAction(Qt::MoveAction);
    view.setAutoExpandDelay(600);
  }

  void Connect(RowView& view) {
    view.onSelect = [this] { Selected(); };
    view.onCopied = [this] {
      if (Held()) Held()->Post(kMsgCopied);
    };
    view.onMenu = [this](const QPoint& place) {
      if (Held() && Held()->GetPopup()) OpenPopupAt(place);
    };
    QObject::connect(&view, &QAbstractItemView::activated, [this](const QModelIndex& index) {
      const Tree::Node* row = m_model->NodeOf(index);
      if (Held() && row && !m_telling) Held()->Post(kMsgActivated, row->key);
    });
    view.setMouseTracking(true);
    view.onLeft = [this] { Hovered(QModelIndex()); };
    QObject::connect(&view, &QAbstractItemView::entered,
                     [this](const QModelIndex& index) { Hovered(index); });
    QObject::connect(&view, &QAbstractItemView::viewportEntered,
                     [this] { Hovered(QModelIndex()); });
    QObject::connect(&view, &QTreeView::expanded,
                     [this](const QModelIndex& i) { Expanded(i, true); });
    QObject::connect(&view, &QTreeView::collapsed,
                     [this](const QModelIndex& i) { Expanded(i, false); });
    QObject::connect(view.header(), &QHeaderView::sectionClicked, [this](int column) {
      if (Held()) Held()->Post(kMsgColumnClicked, column);
    });
  }

  void Hovered(const QModelIndex& index) {
    const Tree::Node* row = index.isValid() && m_model ? m_model->NodeOf(index) : nullptr;
    const int key = row ? row->key : int(Tree::kTop);
    if (Held() && std::exchange(m_hovered, key) != key) Held()->Post(kMsgHovered, key);
  }

  void Expanded(const QModelIndex& index, bool expanded) {
    const Tree::Node* row = m_model->NodeOf(index);
    if (Held() && row && !m_telling) Held()->ExpandByUser(row->key, expanded);
  }

  void UpdateColumns() {
    const auto& columns = Held()->GetColumns();
    QHeaderView* header = View()->header();
    header->setSectionsClickable(true);
    header->setHighlightSections(false);
    header->setStretchLastSection(false);
    header->setHidden(std::all_of(columns.begin(), columns.end(),
                                  [](const Tree::Column& column) { return column.title.empty(); }));
    const bool anyStretch = std::any_of(columns.begin(), columns.end(),
                                        [](const Tree::Column& column) { return column.stretch; });
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
      const bool stretch = columns[i].stretch || (!anyStretch && i == 0);
      header->setSectionResizeMode(i, stretch                ? QHeaderView::Stretch
                                      : columns[i].width > 0 ? QHeaderView::Interactive
                                                             : QHeaderView::ResizeToContents);
      if (columns[i].width > 0 && !stretch)
        header->resizeSection(i, std::max(Scaled(columns[i].width), header->sectionSizeHint(i)));
    }
  }

  template <class Call>
  void Telling(Call&& call) {
    m_telling = true;
    if (m_model) call();
  }

  /// `row` is the one that came or moved; null: any of them may be another.
  template <class Call>
  void Done(Call&& call, const Tree::Node* row) {
    if (m_model) call();
    if (m_model) ShowExpanded(row && !m_model->IsFiltered() ? *row : Held()->GetTop());
    m_telling = false;
    // A row that has come was not selected; all else may have changed what is.
    if (m_model && !(row && !row->selected)) ShowSelection();
  }

  void ShowExpanded(const Tree::Node& row) {
    const bool top = &row == &Held()->GetTop();
    const QModelIndex index = top ? QModelIndex() : m_model->IndexOf(row);
    if (!top && index.isValid()) {
      const bool open = row.expanded || m_model->IsFiltered();
      if (View()->isExpanded(index) != open) View()->setExpanded(index, open);
    }
    // Its first child opens a row that was to be open all the time.
    if (!top && row.parent() != &Held()->GetTop() && row.parent()->childCount() == 1 &&
        row.parent()->expanded)
      View()->setExpanded(m_model->IndexOf(*row.parent()), true);
    for (const Tree::Node* child : row.children())
      if (child->childCount() > 0 || child->expanded) ShowExpanded(*child);
  }

  void ShowSelection() {
    if (!m_model || m_telling) return;
    m_telling = true;
    RowRanges ranges;
    for (const int key : Held()->GetSelected()) ranges.Add(m_model->IndexOf(*Held()->FindRow(key)));
    QItemSelectionModel* model = View()->selectionModel();
    model->select(ranges.Take(), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    const Tree::Node* current = Held()->FindRow(Held()->GetCurrent());
    model->setCurrentIndex(current ? m_model->IndexOf(*current) : QModelIndex(),
                           QItemSelectionModel::NoUpdate);
    m_telling = false;
  }

  void Selected() {
    if (m_telling || !Held()) return;
    std::vector<int> keys;
    for (const QModelIndex& index : View()->selectionModel()->selectedRows())
      if (const Tree::Node* row = m_model->NodeOf(index)) keys.push_back(row->key);
    const QModelIndex at = View()->currentIndex();
    const Tree::Node* row = at.isValid() ? m_model->NodeOf(at) : nullptr;
    // Qt tells of the selection before the current row follows it.
    const int current = keys.size() == 1 ? keys.front() : row ? row->key : int(Tree::kTop);
    if (current != Held()->GetCurrent() || !Held()->IsSelection(keys))
      Held()->SelectByUser(keys, current);
  }

  QPointer<TreeModel> m_model;
  bool m_telling = false;
  int m_hovered = Tree::kTop;  ///< row that was told last
};

}  // namespace

std::unique_ptr<Peer> MakeTree(Component& component, QWidget* parent) {
  return std::make_unique<TreePeer>(component, new RowView(parent));
}

}  // namespace orv::gui::component::qt

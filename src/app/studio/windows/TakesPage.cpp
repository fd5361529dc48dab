#include "app/studio/windows/TakesPage.h"

#include <QDateTime>
#include <QListWidget>
#include <QLocale>
#include <algorithm>
#include <utility>

#include "adaptor/headless/Scene.h"
#include "app/session/document/SceneDocument.h"
#include "app/session/takes/KeptTakes.h"
#include "core/CoreImplementation.h"
#include "core/windows/MainWindowIds.h"
#include "gui/Component.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/component/qt/Scale.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/TextBox.h"
#include "gui/componentinterface/View.h"

namespace orv::app {

using namespace rws::core::windows;
using namespace gui::componentinterface;
using gui::Translate;
using gui::component::qt::Scaled;

namespace {

constexpr int kNumberRole = Qt::UserRole;
constexpr int kMostStars = 5;

std::string StarsOf(int stars) {
  std::string text;
  for (int i = 0; i < stars; ++i) text += "\u2605";
  return text;
}

std::string WhenOf(const std::string& when) {
  const QDateTime time = QDateTime::fromString(QString::fromStdString(when), Qt::ISODate);
  if (!time.isValid()) return when;
  return QLocale().toString(time.toLocalTime(), QLocale::ShortFormat).toStdString();
}

std::string MarksOf(const KeptTakes& takes, const KeptTake& take) {
  std::string text;
  const auto add = [&text](bool counts, const std::string& word) {
    if (counts) text += (text.empty() ? "" : ", ") + word;
  };
  add(takes.GetCurrent() == take.number, Translate("in the scene"));
  add(take.retried, Translate("retried"));
  add(take.undone, Translate("undone"));
  return text;
}

/// Number, name and stars; when and how long; marks and note.
std::string LinesOf(const KeptTakes& takes, const KeptTake& take) {
  const auto seconds = [](double value) { return QLocale().toString(value, 'f', 2).toStdString(); };
  std::string text = std::to_string(take.number) + "  " + take.name;
  if (take.stars > 0) text += "  " + StarsOf(take.stars);
  text += "\n" + Translate("%1 s from %2 s",
                           {seconds(take.range.to - take.range.from), seconds(take.range.from)});
  if (!take.when.empty()) text += "  " + WhenOf(take.when);
  std::string last = MarksOf(takes, take);
  if (!take.note.empty()) last += (last.empty() ? "" : ": ") + take.note;
  return text + "\n" + last;
}

}  // namespace

TakesPage::TakesPage(MainWindowFrame& window, SceneDocument& document, Actions actions)
    : MainWindowPage(window),
      m_document(document),
      m_actions(std::move(actions)),
      m_painter(document, [this](const KeptTake& take, const std::vector<TakePath>& paths) {
        m_pictures.Note(take, paths);
      }) {}

TakesPage::~TakesPage() = default;

KeptTakes& TakesPage::GetTakes() const {
  return m_document.GetSession().GetTakes();
}

QWidget* TakesPage::MakeContent(QWidget* parent) {
  m_list = new QListWidget(parent);
  m_list->setObjectName("takes");
  m_list->setAccessibleName(QString::fromStdString(Translate("Kept takes")));
  m_list->setIconSize(QSize(Scaled(TakePictures::kWidth), Scaled(TakePictures::kHeight)));
  m_list->setWordWrap(false);
  m_list->setTextElideMode(Qt::ElideRight);
  m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  QObject::connect(m_list.data(), &QListWidget::currentItemChanged, [this] {
    if (!m_isFilling) ShowChosen();
  });
  QObject::connect(m_list.data(), &QListWidget::itemActivated, [this](QListWidgetItem* item) {
    if (m_actions.use) m_actions.use(item->data(kNumberRole).toInt());
  });
  return m_list;
}

void TakesPage::OnBuilt() {
  if (gui::Component* button = GetWindow().Find(kPageTakes)) button->SetVisible(true);
  With<View>(kKeptList, [this](View& view) { view.SetHandler(this); });
  OnSettingsChanged();
}

void TakesPage::OnSettingsChanged() {
  With<ComboBox>(kKeptStars, [](ComboBox& box) {
    std::vector<Item> items;
    for (int stars = 0; stars <= kMostStars; ++stars) {
      Item item;
      item.id = stars;
      item.text = stars == 0 ? Translate("no stars") : StarsOf(stars);
      items.push_back(std::move(item));
    }
    box.SetItems(std::move(items));
  });
  if (m_list) m_list->setAccessibleName(QString::fromStdString(Translate("Kept takes")));
  m_shown = {{}};
  Show();
}

void TakesPage::PaintMissing() {
  const KeptTake* missing = nullptr;
  for (const KeptTake& take : GetTakes().GetTakes())
    if (take.number > 0 && !take.hash.empty() && !m_painter.HasFailed(take) &&
        m_pictures.Find(take).isNull())
      missing = &take;
  m_painter.GoOn(m_list && m_list->isVisible() ? missing : nullptr);
}

std::vector<std::string> TakesPage::Describe() {
  std::vector<std::string> all;
  for (const KeptTake& take : GetTakes().GetTakes())
    if (take.number > 0)
      all.push_back(LinesOf(GetTakes(), take) + "\n" + take.hash + "\n" +
                    (m_pictures.Find(take).isNull() ? m_painter.WhyNone(take) : ""));
  return all;
}

void TakesPage::Show() {
  PaintMissing();
  if (GetCore().GetRunState() != rws::core::RunState::kIdle) return;
  // Of the take that the scene shows, while it does so.
  if (const KeptTake* current = GetTakes().Find(GetTakes().GetCurrent()))
    m_pictures.Note(*current, GetCore(), m_document.GetScene());
  std::vector<std::string> now = Describe();
  if (std::exchange(m_shown, now) == now) return;
  Fill();
  ShowChosen();
}

void TakesPage::Fill() {
  if (!m_list) return;
  const int chosen = GetChosen();
  m_isFilling = true;
  m_list->clear();
  const auto& takes = GetTakes().GetTakes();
  for (auto take = takes.rbegin(); take != takes.rend(); ++take) {
    if (take->number <= 0) continue;
    auto* item = new QListWidgetItem(m_list);
    item->setText(QString::fromStdString(LinesOf(GetTakes(), *take)));
    item->setData(kNumberRole, take->number);
    QPixmap picture = m_pictures.Find(*take);
    std::string tip = take->note;
    if (picture.isNull()) {
      tip += (tip.empty() ? "" : "\n") + m_painter.WhyNone(*take);
      picture = QPixmap(TakePictures::kWidth, TakePictures::kHeight);
      picture.fill(Qt::transparent);
    }
    item->setToolTip(QString::fromStdString(tip));
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected);
    item->setIcon(icon);
    if (take->number == chosen || (chosen == 0 && take->number == GetTakes().GetCurrent()))
      m_list->setCurrentItem(item);
  }
  m_isFilling = false;
}

int TakesPage::GetChosen() const {
  const QListWidgetItem* item = m_list ? m_list->currentItem() : nullptr;
  return item ? item->data(kNumberRole).toInt() : 0;
}

void TakesPage::ShowChosen() {
  const KeptTake* take = GetTakes().Find(GetChosen());
  const std::string none = Translate("Choose a take first.");
  for (const int id : {kKeptName, kKeptStars, kKeptNote, kKeptUse, kKeptDelete, kKeptExport})
    GetWindow().SetEnabled(id, take, none);
  With<TextBox>(kKeptName, [&](TextBox& box) { box.SetText(take ? take->name : ""); });
  With<TextBox>(kKeptNote, [&](TextBox& box) { box.SetText(take ? take->note : ""); });
  With<ComboBox>(kKeptStars, [&](ComboBox& box) { box.SelectId(take ? take->stars : 0); });
  GetWindow().SetText(kKeptHint,
                      GetCore().GetPreferences().keepTakes
                          ? Translate("A double click, or Enter, puts a take back into the scene.")
                          : Translate("New takes are not kept: the preferences say so."));
}

void TakesPage::OnCore(const util::Message& message) {
  if (rws::core::NewsIn<rws::core::RunStateChanged>(message)) Show();
}

void TakesPage::OnComponent(gui::Component& source, util::Message& message) {
  const int id = source.GetId(), number = GetChosen();
  if (message.id == gui::kMsgClicked) {
    if (id == kKeptUse && m_actions.use) m_actions.use(number);
    if (id == kKeptDelete && m_actions.remove) m_actions.remove(number);
    if (id == kKeptExport && m_actions.exportOne) m_actions.exportOne(number);
    if (id == kKeptImport && m_actions.import) m_actions.import();
  }
  if (message.id != gui::kMsgValueChanged) return;
  const auto* text = dynamic_cast<TextBox*>(&source);
  bool hasChanged = false;
  if (id == kKeptName && text) hasChanged = GetTakes().SetName(number, text->GetText());
  if (id == kKeptNote && text) hasChanged = GetTakes().SetNote(number, text->GetText());
  if (id == kKeptStars) hasChanged = GetTakes().SetStars(number, message.param);
  if (!hasChanged) return;
  m_document.NoteEdit();
  Show();
}

}  // namespace orv::app

#include "gui/component/qt/QtPeer.h"

#include <QApplication>
#include <QLabel>
#include <QLinearGradient>
#include <unordered_map>
#include <utility>

#include "gui/GuiMessages.h"
#include "gui/Style.h"
#include "gui/Texts.h"
#include "gui/background/Color.h"
#include "gui/background/Gradient_Linear.h"
#include "gui/component/Label.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::gui::component::qt {

namespace {

std::unordered_map<const QObject*, QtPeer*>& Peers() {
  static std::unordered_map<const QObject*, QtPeer*> peers;
  return peers;
}

QColor ColorOf(const Rgba& color) {
  return QColor(color.r, color.g, color.b, color.a);
}

/// Tooltips are plain text, however they begin; long ones wrap.
QString TooltipOf(const std::string& text) {
  return text.empty() ? QString()
                      : QLatin1String("<span>") +
                            ToQt(text).toHtmlEscaped().replace('\n', QLatin1String("<br>")) +
                            QLatin1String("</span>");
}

/// What a component's neighbours may have to know of.
constexpr unsigned kOutside =
    kLabelChange | kTooltipChange | kNameChange | kSizeChange | kStyleChange | kVisibleChange;

QString WithoutMnemonic(QString text) {
  for (int i = 0; i < text.size(); ++i)
    if (text[i] == '&') text.remove(i, 1);  // what follows stays, be it another one
  return text;
}

/// The text of the nearest label in front of the component in its list.
QString LabelBefore(const Component& component) {
  const auto* parent = component.parent();
  for (int i = parent ? parent->childIndex(&component) : 0; i-- > 0;)
    if (const auto* label = dynamic_cast<const Label*>(parent->child(i)))
      if (label->GetImage().empty()) return WithoutMnemonic(ToQt(label->GetShownText()));
  return {};
}

}  // namespace

QBrush BrushOf(const Background& background) {
  if (const auto* color = dynamic_cast<const background::Color*>(&background))
    return ColorOf(color->GetColor());
  const auto* gradient = dynamic_cast<const background::Gradient_Linear*>(&background);
  if (!gradient) return {};
  const bool object = gradient->coordinates == background::Gradient_Linear::Coordinates::kObject;
  const double unit = object ? 1.0 : Scaled(1000) / 1000.0;
  QLinearGradient line(gradient->startX * unit, gradient->startY * unit, gradient->endX * unit,
                       gradient->endY * unit);
  if (object) line.setCoordinateMode(QGradient::ObjectBoundingMode);
  using Spread = background::Gradient_Linear::Spread;
  if (gradient->spread == Spread::kRepeat) line.setSpread(QGradient::RepeatSpread);
  if (gradient->spread == Spread::kReflect) line.setSpread(QGradient::ReflectSpread);
  for (const auto& stop : gradient->stops) line.setColorAt(stop.position, ColorOf(stop.color));
  return line;
}

void ApplyTextStyle(QWidget& widget, const std::string& text, bool marked) {
  const Style style = ReadStyle(text);
  QFont font;
  if (!style.fontFamily.empty()) font.setFamily(ToQt(style.fontFamily));
  if (style.fontPixels > 0.0) {
    font.setPixelSize(std::max(1, Scaled(static_cast<int>(style.fontPixels + 0.5))));
  } else if (style.fontEm != 1.0) {
    const QFont system = QApplication::font(&widget);
    if (system.pixelSize() > 0)
      font.setPixelSize(std::max(1, qRound(system.pixelSize() * style.fontEm)));
    else
      font.setPointSizeF(system.pointSizeF() * style.fontEm);
  }
  if (style.bold) font.setBold(*style.bold);
  if (style.italic) font.setItalic(*style.italic);
  if (style.underline) font.setUnderline(*style.underline);
  if (font.resolve() != widget.font().resolve() || font != widget.font()) widget.setFont(font);
  QPalette palette;
  // That of what it stands in: a host's own where it has one.
  const QPalette system =
      widget.parentWidget() ? widget.parentWidget()->palette() : QApplication::palette(&widget);
  if (marked)
    palette.setColor(widget.foregroundRole(), ToneOf(system, Tone::kAccent));
  else if (style.color)
    palette.setColor(widget.foregroundRole(), TextColor(system, ColorOf(*style.color)));
  if (palette.resolve() != 0 || widget.palette().resolve() != 0) widget.setPalette(palette);
}

QtPeer::QtPeer(Component& component, QWidget* widget) : m_component(&component), m_widget(widget) {
  Peers()[widget] = this;
  if (component.GetId() != kNoId) widget->setObjectName(QString::number(component.GetId()));
}

QtPeer::~QtPeer() {
  if (!m_widget) return;
  Peers().erase(m_widget);
  delete m_widget;
}

QtPeer* QtPeer::Of(const Component& component) {
  return static_cast<QtPeer*>(component.GetPeer());
}

QtPeer* QtPeer::At(const QObject* widget) {
  const auto found = Peers().find(widget);
  return found == Peers().end() || !found->second->m_component ? nullptr : found->second;
}

void QtPeer::Forget(const QObject* widget) {
  Peers().erase(widget);
}

void QtPeer::Detach(bool top) {
  m_component = nullptr;
  Detached();
  if (!m_widget) return;
  m_widget->blockSignals(true);
  if (top) m_widget->hide();
}

Columns& QtPeer::GetColumns() {
  QtPeer& root = *Of(m_component->GetRoot());
  if (!root.m_columns) root.m_columns = std::make_unique<Columns>();
  return *root.m_columns;
}

void QtPeer::Restyle() {
  if (!m_updating) Update(kStyleChange | kImageChange | kMarkChange);
}

void QtPeer::Update(unsigned changes) {
  if (!m_widget || !m_component) return;
  const bool outer = std::exchange(m_updating, true);
  if (changes & kEnabledChange) {
    if (m_widget->isEnabledTo(m_widget->parentWidget()) != m_component->IsEnabled() ||
        changes != kAllChanges)
      m_widget->setEnabled(m_component->IsEnabled());
  }
  if (changes & kStyleChange) UpdateBackground();
  if (changes & kSizeChange) UpdateSize();
  UpdateContent(changes);
  if (!m_component->GetAttributes().tabStop && m_widget->focusPolicy() & Qt::TabFocus)
    m_widget->setFocusPolicy(Qt::FocusPolicy(m_widget->focusPolicy() & ~Qt::TabFocus));
  if (changes & (kTooltipChange | kEnabledChange)) {
    const std::string tooltip = m_component->GetShownTooltip();
    if (!tooltip.empty() || changes != kAllChanges) m_widget->setToolTip(TooltipOf(tooltip));
  }
  if ((changes & kOutside) && changes != kAllChanges) {
    UpdateName();
    if (Component* parent = m_component->parent()) Of(*parent)->ChildChanged(*m_component);
  }
  // A new widget is shown by what it stands in.
  const bool shown = m_component->IsVisible();
  if ((changes & kVisibleChange) && !m_widget->isWindow() && !(shown && changes == kAllChanges))
    m_widget->setVisible(shown);
  if ((changes & kMenuChange) && m_component->GetPopup()) UpdatePopup();
  if ((changes & kValueChange) && m_component->TakesFiles()) m_widget->setAcceptDrops(true);
  m_updating = outer;
}

void QtPeer::UpdateSize() {
  const Attributes& a = m_component->GetAttributes();
  const auto limit = [](int pixels) {
    return pixels >= kNoLimit ? QWIDGETSIZE_MAX : Scaled(pixels);
  };
  SetLeast(QSize(Scaled(a.minWidth), Scaled(a.minHeight)));
  if (LimitsWidth() && (a.maxWidth < kNoLimit || m_widget->maximumWidth() < QWIDGETSIZE_MAX))
    m_widget->setMaximumWidth(limit(a.maxWidth));
  if (a.maxHeight < kNoLimit || m_widget->maximumHeight() < QWIDGETSIZE_MAX)
    m_widget->setMaximumHeight(limit(a.maxHeight));
  m_widget->updateGeometry();
}

void QtPeer::SetLeast(const QSize& size) {
  if (size != m_widget->minimumSize()) m_widget->setMinimumSize(size);
}

QBrush QtPeer::GetBrush() const {
  if (!m_component) return {};
  const Background* background = m_component->GetBackground();
  if (m_active && m_component->GetActiveBackground())
    background = m_component->GetActiveBackground();
  return background ? BrushOf(*background) : QBrush();
}

void QtPeer::SetActive(bool active) {
  if (m_active == active) return;
  m_active = active;
  if (m_component && m_widget && m_component->GetActiveBackground()) UpdateBackground();
}

void QtPeer::UpdateBackground() {
  if (DrawsBackground()) {
    m_widget->update();
    return;
  }
  const QBrush brush = GetBrush();
  if (brush.style() == Qt::NoBrush && !m_widget->autoFillBackground()) return;
  m_widget->setAutoFillBackground(brush.style() != Qt::NoBrush);
  QPalette palette = m_widget->palette();
  palette.setBrush(m_widget->backgroundRole(), brush);
  m_widget->setPalette(palette);
}

void QtPeer::AddChild(Component&, int) {}

void QtPeer::RemoveChild(Component&) {}

void QtPeer::Freeze(bool frozen) {
  if (m_widget) m_widget->setUpdatesEnabled(!frozen);
}

QWidget* QtPeer::GetFocusWidget() const {
  return m_widget && m_widget->focusPolicy() != Qt::NoFocus ? m_widget.data() : nullptr;
}

Qt::Alignment QtPeer::GetAlignment() const {
  static constexpr Qt::AlignmentFlag kHorizontal[] = {Qt::AlignmentFlag(0), Qt::AlignLeft,
                                                      Qt::AlignHCenter, Qt::AlignRight};
  static constexpr Qt::AlignmentFlag kVertical[] = {Qt::AlignmentFlag(0), Qt::AlignTop,
                                                    Qt::AlignVCenter, Qt::AlignBottom};
  const Attributes& a = m_component->GetAttributes();
  return kHorizontal[static_cast<int>(a.halign)] | kVertical[static_cast<int>(a.valign)];
}

void QtPeer::TakeFocus() {
  if (QWidget* widget = GetFocusWidget()) widget->setFocus(Qt::OtherFocusReason);
}

void QtPeer::UpdatePopup() {
  if (!m_popupActions)
    m_popupActions = std::make_unique<MenuActions>(*m_widget, [this] { return m_component; });
  const auto& items = m_component->GetPopup()->GetItems();
  m_popupActions->ServeShortcuts(*m_widget, items);
  if (m_popupMenu) m_popupActions->Fill(*m_popupMenu, items);
}

void QtPeer::OpenPopup(int x, int y) {
  if (!m_widget || !m_component) return;
  const QPoint at = x == kUnset ? QPoint(0, m_widget->height()) : QPoint(Scaled(x), Scaled(y));
  OpenPopupAt(m_widget->mapToGlobal(at));
}

void QtPeer::OpenPopupAt(const QPoint& place) {
  // The window may change the entries now, or do away with them.
  if (!m_component->Post(kMsgPopupOpening, kNoId) || !m_component || !m_component->GetPopup())
    return;
  if (!m_popupMenu) {
    m_popupMenu = new QMenu(m_widget);
    m_popupMenu->setToolTipsVisible(true);
  }
  UpdatePopup();
  m_popupMenu->popup(place);
}

QString QtPeer::GetSpokenName() const {
  if (!m_component) return {};
  const QString own = ToQt(m_component->GetShownName());
  if (!own.isEmpty()) return own;
  const QString label = WithoutMnemonic(ToQt(m_component->GetShownLabel()));
  if (!label.isEmpty()) return label;
  const QString before = LabelBefore(*m_component);
  // A reason why it is disabled names nothing, unless there is nothing else.
  const bool byTooltip = !HoldsValue() && m_component->IsEnabled();
  const QString tooltip = ToQt(m_component->GetShownTooltip());
  if (before.isEmpty() || (byTooltip && !tooltip.isEmpty())) return tooltip;
  return before;
}

void QtPeer::UpdateName() {
  QWidget* widget = GetFocusWidget();
  if (!widget) return;
  const QString name = GetSpokenName();
  if (widget->accessibleName() != name) widget->setAccessibleName(name);
}

}  // namespace orv::gui::component::qt

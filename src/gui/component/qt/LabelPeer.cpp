// label.
#include <QEvent>
#include <QLabel>
#include <algorithm>

#include "gui/Style.h"
#include "gui/component/Label.h"
#include "gui/component/qt/Images.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/Scale.h"

namespace orv::gui::component::qt {

namespace {

constexpr int kImageSize = 24;  ///< of an image that comes in several

/// One that wraps can be told how wide it is to be: wider only where a word is.
class TextLabel : public QLabel {
 public:
  explicit TextLabel(QWidget* parent) : QLabel(parent) {}

  void SetUsualWidth(int pixels) { m_usualWidth = pixels; }

  QSize sizeHint() const override { return m_usualWidth > 0 ? Wish() : QLabel::sizeHint(); }
  QSize minimumSizeHint() const override {
    return m_usualWidth > 0 ? Wish() : QLabel::minimumSizeHint();
  }

 private:
  QSize Wish() const {
    const int word = QLabel::minimumSizeHint().width();
    const int whole = fontMetrics().size(0, text()).width() + 2 * margin();
    const int width = std::max(word, std::min(m_usualWidth, whole));
    return QSize(width, heightForWidth(width));
  }

  int m_usualWidth = 0;
};

class LabelPeer : public PeerOf<Label, TextLabel> {
 public:
  LabelPeer(Component& component, TextLabel* label) : PeerOf(component, label) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    if (Held()->Wraps()) {
      if (LimitsWidth())
        policy.setHorizontalPolicy(QSizePolicy::Expanding);
      else
        label->SetUsualWidth(Scaled(Held()->GetAttributes().maxWidth));
      policy.setHeightForWidth(true);
      label->setWordWrap(true);
    }
    label->setSizePolicy(policy);
    label->setTextFormat(Held()->HasLinks() ? Qt::RichText : Qt::PlainText);
    if (!Held()->HasLinks()) return;
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    QObject::connect(label, &QLabel::linkActivated, [this](const QString& link) {
      if (Held()) Held()->ClickLink(link.toStdString());
    });
  }

  /// The text is aligned within the label, which is as large as its place.
  Qt::Alignment GetAlignment() const override { return Qt::Alignment(); }

 protected:
  bool HoldsValue() const override { return false; }
  /// In a column the widest word of all says how wide each is.
  bool LimitsWidth() const override {
    const Attributes& a = Held()->GetAttributes();
    return !Held()->Wraps() || a.column.empty() || a.maxWidth >= kNoLimit;
  }

  void UpdateContent(unsigned changes) override {
    if (changes & (kStyleChange | kMarkChange)) UpdateStyle();
    // The colour of links is taken from the palette with the text.
    if (Held()->HasLinks() && (changes & kStyleChange)) View()->clear();
    if (changes & (kLabelChange | kImageChange)) UpdateText();
  }

 private:
  void UpdateStyle() {
    const std::string& text = Held()->GetAttributes().style;
    ApplyTextStyle(*View(), text, Held()->IsMarked());
    const Style style = ReadStyle(text);
    Qt::Alignment alignment = QtPeer::GetAlignment();
    if (style.textAlign == Align::kStart) alignment |= Qt::AlignLeft;
    if (style.textAlign == Align::kCenter) alignment |= Qt::AlignHCenter;
    if (style.textAlign == Align::kEnd) alignment |= Qt::AlignRight;
    if (!(alignment & Qt::AlignHorizontal_Mask)) alignment |= Qt::AlignLeft;
    if (!(alignment & Qt::AlignVertical_Mask))
      alignment |= Held()->Wraps() ? Qt::AlignTop : Qt::AlignVCenter;
    if (View()->alignment() != alignment) View()->setAlignment(alignment);
    const Padding& p = style.padding;
    const Padding& m = style.margin;
    if (p.left || p.right || p.top || p.bottom || m.left || m.right || m.top || m.bottom)
      View()->setContentsMargins(Scaled(p.left + m.left), Scaled(p.top + m.top),
                                 Scaled(p.right + m.right), Scaled(p.bottom + m.bottom));
    if (style.background) {
      QPalette palette = View()->palette();
      const Rgba& c = *style.background;
      palette.setColor(View()->backgroundRole(), QColor(c.r, c.g, c.b, c.a));
      View()->setPalette(palette);
      View()->setAutoFillBackground(true);
    }
  }

  void UpdateText() {
    if (!Held()->GetImage().empty()) {
      const int wished = Held()->GetAttributes().desiredWidth;
      View()->setPixmap(LoadPixmap(*GetComponent(), Held()->GetImage(), *View(),
                                   wished != kUnset ? wished : kImageSize));
      return;
    }
    // What code sets has no mnemonics.
    if (!Held()->IsDocumentLabel() && View()->buddy()) View()->setBuddy(nullptr);
    const QString text = ToQt(Held()->GetShownText());
    if (View()->text() != text) View()->setText(text);
  }
};

}  // namespace

std::unique_ptr<Peer> MakeLabel(Component& component, QWidget* parent) {
  return std::make_unique<LabelPeer>(component, new TextLabel(parent));
}

}  // namespace orv::gui::component::qt

#include "app/studio/windows/PictureView.h"

#include <QPainter>
#include <QWidget>

#include "gui/Texts.h"

namespace orv::app {

void PictureView::SetPicture(const std::string& bytes) {
  m_image = QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()),
                             static_cast<int>(bytes.size()));
}

void PictureView::Paint(QPainter& painter, QWidget& widget) {
  if (m_image.isNull()) {
    painter.setPen(widget.palette().color(QPalette::Disabled, QPalette::WindowText));
    painter.drawText(widget.rect(), Qt::AlignCenter | Qt::TextWordWrap,
                     QString::fromStdString(gui::Translate("No picture")));
    return;
  }
  const qreal ratio = widget.devicePixelRatioF();
  const QSize size = m_image.size().scaled(widget.size() * ratio, Qt::KeepAspectRatio);
  QImage shown = m_image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  shown.setDevicePixelRatio(ratio);
  const QSizeF shownSize = QSizeF(size) / ratio;
  painter.drawImage(QPointF((widget.width() - shownSize.width()) / 2.0,
                            (widget.height() - shownSize.height()) / 2.0),
                    shown);
}

}  // namespace orv::app

#include "host/desktop/ElidedLabel.h"

#include <QPaintEvent>
#include <QPainter>

namespace kv::desktop {

ElidedLabel::ElidedLabel(Qt::TextElideMode Mode, const QString& Text) : Mode_(Mode) {
    setTextFormat(Qt::PlainText);
    SetText(Text);
}

void ElidedLabel::SetText(const QString& Text) {
    setText(Text);
    setToolTip(Text);
}

QSize ElidedLabel::minimumSizeHint() const { return {0, QLabel::minimumSizeHint().height()}; }

void ElidedLabel::paintEvent(QPaintEvent* Event) {
    QPainter Painter(this);
    Painter.setClipRect(Event->rect());
    Painter.setPen(palette().color(foregroundRole()));
    const QRect Room = contentsRect();
    Painter.drawText(Room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Mode_, Room.width()));
}

}  // namespace kv::desktop

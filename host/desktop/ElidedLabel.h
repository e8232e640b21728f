// A text on one line that gives way where there is no room.
#pragma once

#include <QLabel>

namespace kv::desktop {

/// Its text is shortened as it is drawn, and stands whole in the tool tip and for screen readers; its length
/// asks for no room.
class ElidedLabel final : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(Qt::TextElideMode Mode, const QString& Text = {});

    void SetText(const QString& Text);

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* Event) override;

  private:
    Qt::TextElideMode Mode_;
};

}  // namespace kv::desktop

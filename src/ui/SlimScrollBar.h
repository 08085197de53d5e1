#pragma once

#include <QScrollBar>

class QAbstractScrollArea;

namespace tirlo {

/// A scroll bar for cards: a slim handle on no track.
class SlimScrollBar final : public QScrollBar
{
    Q_OBJECT

public:
    explicit SlimScrollBar(Qt::Orientation orientation, QWidget *parent = nullptr);

    /// Gives the area a vertical bar of this kind, there while there is something to scroll, and
    /// none to scroll sideways.
    static void dress(QAbstractScrollArea &area);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
};

} // namespace tirlo

#pragma once

#include <QLabel>

namespace tirlo {

/// A label of one line of plain text that elides what does not fit.
///
/// The whole text is its accessible name, and its tool tip while some of it is hidden.
class TextLabel : public QLabel
{
    Q_OBJECT

public:
    TextLabel(const QFont &font, const QColor &color, QWidget *parent = nullptr);

    /// Shows the text; markup in it is not interpreted.
    void setLine(const QString &text);

    void setElideMode(Qt::TextElideMode mode);

    /// Keeps the label at the width of its text, so that its neighbours give way first.
    void setNeverElided();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

    /// Where the text stands.
    [[nodiscard]] virtual QRect textRect() const { return rect(); }

    /// Shows the tool tip even while nothing is hidden.
    void setAlwaysHasToolTip() { m_alwaysHasToolTip = true; }

private:
    QColor m_color;
    QString m_line;
    bool m_alwaysHasToolTip = false;
    Qt::TextElideMode m_elideMode = Qt::ElideRight;
};

} // namespace tirlo

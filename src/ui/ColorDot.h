#pragma once

#include <QColor>
#include <QWidget>

namespace tirlo {

/// A small round spot of colour in front of a name.
class ColorDot final : public QWidget
{
    Q_OBJECT

public:
    explicit ColorDot(QWidget *parent = nullptr);

    void setColor(const QColor &color);

    [[nodiscard]] QColor color() const { return m_color; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
};

} // namespace tirlo

#pragma once

#include <QColor>
#include <QPushButton>

#include <functional>

namespace tirlo {

/// The colours of a card's button.
struct CardButtonStyle
{
    QColor text;
    QColor fill;
    QColor hoveredFill;
    QColor pressedFill;
    /// Transparent for none.
    QColor stroke;
};

/// A card's button: a title on a rounded fill, and a hint of its key where it has one.
///
/// Its accessible name is the title. A click never moves the keyboard focus to it.
class CardButton : public QPushButton
{
    Q_OBJECT

public:
    /// An empty `kbd` means no hint; `action` runs on each click.
    CardButton(const CardButtonStyle &style, const QString &title, const QString &kbd,
               std::function<void()> action, QWidget *parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] double titleWidth() const;
    [[nodiscard]] double hintWidth() const;
    void paintHint(QPainter &painter, double left) const;

    CardButtonStyle m_style;
    QString m_title;
    QString m_kbd;
};

} // namespace tirlo

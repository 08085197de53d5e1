#pragma once

#include <QPixmap>
#include <QWidget>

#include <optional>

namespace tirlo {

/// The rounded surface of a card, with a glow that rises from below its lower edge.
class CardBackground : public QWidget
{
    Q_OBJECT

public:
    /// The glow's colour.
    enum class Wash { red, green, pink, amber, cyan, indigo, soft };

    explicit CardBackground(std::optional<Wash> wash = std::nullopt, QWidget *parent = nullptr);

    void setWash(std::optional<Wash> wash);

protected:
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void paintPicture();

    std::optional<Wash> m_wash;
    /// The surface as it is drawn; null while the card is not on show.
    QPixmap m_picture;
};

} // namespace tirlo

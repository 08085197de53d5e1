#pragma once

#include <QLineEdit>

namespace tirlo {

/// A card's field for one line of text; Escape empties it and leaves it.
class CardField final : public QLineEdit
{
    Q_OBJECT

public:
    /// `name` is for a screen reader, and the placeholder while the field is empty.
    explicit CardField(const QString &name, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The field got or lost the keyboard.
    void focusChanged(bool hasFocus);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
};

} // namespace tirlo

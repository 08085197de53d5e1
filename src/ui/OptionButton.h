#pragma once

#include <QAbstractButton>

namespace tirlo {

/// One of several answers: a mark, a label and below it what it means. Both wrap.
class OptionButton final : public QAbstractButton
{
    Q_OBJECT

public:
    /// With `severalMayBeChosen` a click chooses or drops it, and the mark is a box instead of a
    /// circle.
    OptionButton(const QString &label, const QString &description, bool severalMayBeChosen,
                 QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QRect labelRect(int width) const;
    [[nodiscard]] QRect descriptionRect(int width) const;
    void paintMark(QPainter &painter) const;

    const QString m_label;
    const QString m_description;
};

} // namespace tirlo

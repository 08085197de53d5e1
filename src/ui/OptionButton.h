#pragma once

#include "WrappedText.h"

#include <QAbstractButton>

namespace tirlo {

/// One of several answers: a mark, a label and below it what it means. Both wrap.
class OptionButton final : public QAbstractButton
{
    Q_OBJECT

public:
    /// A click chooses or drops it; with `severalMayBeChosen` the mark is a box instead of a
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
    void paintMark(QPainter &painter) const;

    const bool m_severalMayBeChosen;
    mutable WrappedText m_label;
    mutable WrappedText m_description;
};

} // namespace tirlo

#pragma once

#include "CardButton.h"

namespace tirlo {

/// The button of any other answer: light on a faint fill.
class SecondaryButton final : public CardButton
{
    Q_OBJECT

public:
    SecondaryButton(const QString &title, const QString &kbd, std::function<void()> action,
                    QWidget *parent = nullptr);
};

} // namespace tirlo

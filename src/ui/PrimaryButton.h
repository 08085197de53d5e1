#pragma once

#include "CardButton.h"

namespace tirlo {

/// The button of a card's main answer: dark on a light fill.
class PrimaryButton final : public CardButton
{
    Q_OBJECT

public:
    PrimaryButton(const QString &title, const QString &kbd, std::function<void()> action,
                  QWidget *parent = nullptr);
};

} // namespace tirlo

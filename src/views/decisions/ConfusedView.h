#pragma once

#include "ui/CardBackground.h"

namespace tirlo {

/// The card while the mascot is dizzy; it goes by itself.
class ConfusedView final : public CardBackground
{
    Q_OBJECT

public:
    explicit ConfusedView(QWidget *parent = nullptr);
};

} // namespace tirlo

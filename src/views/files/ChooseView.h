#pragma once

#include "ui/CardBackground.h"

namespace tirlo {

/// What to do with a file that has come in.
class ChooseView final : public CardBackground
{
    Q_OBJECT

public:
    explicit ChooseView(QWidget *parent = nullptr);
};

} // namespace tirlo

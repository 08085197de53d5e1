#pragma once

#include "ui/CardBackground.h"

namespace tirlo {

/// An answer that was found.
class ResultView final : public CardBackground
{
    Q_OBJECT

public:
    explicit ResultView(QWidget *parent = nullptr);
};

} // namespace tirlo

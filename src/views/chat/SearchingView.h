#pragma once

#include "ui/CardBackground.h"

namespace tirlo {

/// The wait for an answer.
class SearchingView final : public CardBackground
{
    Q_OBJECT

public:
    explicit SearchingView(QWidget *parent = nullptr);
};

} // namespace tirlo

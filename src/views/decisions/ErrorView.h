#pragma once

#include "ui/CardBackground.h"
#include "views/ViewContext.h"

namespace tirlo {

/// What went wrong, and what can be done about it.
class ErrorView final : public CardBackground
{
    Q_OBJECT

public:
    explicit ErrorView(const ViewContext &context, QWidget *parent = nullptr);
};

} // namespace tirlo

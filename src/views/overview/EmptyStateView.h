#pragma once

#include "ui/CardBackground.h"
#include "views/ViewContext.h"

namespace tirlo {

/// The card that stands in for the overview while nothing runs.
class EmptyStateView final : public CardBackground
{
    Q_OBJECT

public:
    explicit EmptyStateView(const ViewContext &context, QWidget *parent = nullptr);
};

} // namespace tirlo

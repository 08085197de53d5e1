#pragma once

#include "ViewContext.h"
#include "ui/CardBackground.h"

namespace tirlo {

/// The card that stands in for the overview while nothing runs.
class EmptyStateView final : public CardBackground
{
    Q_OBJECT

public:
    explicit EmptyStateView(const ViewContext &context, QWidget *parent = nullptr);
};

} // namespace tirlo

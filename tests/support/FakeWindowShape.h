#pragma once

#include "platform/WindowShape.h"

#include <vector>

namespace tirlo {

/// Keeps every region that a window was given, in order.
class FakeWindowShape final : public WindowShape
{
public:
    void setInputRegion(QWindow &, const QRegion &region) override { regions.push_back(region); }

    std::vector<QRegion> regions;
};

} // namespace tirlo

#pragma once

#include "ui/CardBackground.h"

namespace tirlo {

/// The few settings that are at hand on the island.
class SettingsIslandView final : public CardBackground
{
    Q_OBJECT

public:
    explicit SettingsIslandView(QWidget *parent = nullptr);
};

} // namespace tirlo

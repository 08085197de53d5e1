#pragma once

#include "ui/CardBackground.h"

namespace tirlo {

class Notifications;

/// The few settings that are at hand on the island, and the ways to all of them and out.
///
/// A desktop without a tray has no other place for these two.
class SettingsIslandView final : public CardBackground
{
    Q_OBJECT

public:
    /// The notifications outlive the view.
    explicit SettingsIslandView(Notifications &notifications, QWidget *parent = nullptr);
};

} // namespace tirlo

#pragma once

#include "core/model/IslandView.h"
#include "ui/IconButton.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

#include <functional>

namespace tirlo {

/// A tab of the island's header: leads to its view, and is lit while that is shown.
class TabButton final : public IconButton
{
    Q_OBJECT

public:
    static constexpr QSize frame{30, 22};

    /// `preAction` runs on a click before the view changes; it may be empty.
    TabButton(QLatin1String icon, const QString &name, IslandView view, const ViewContext &context,
              std::function<void()> preAction = {}, QWidget *parent = nullptr);

    /// The home tab is also lit on the card that stands in for it.
    [[nodiscard]] bool isOn() const;

protected:
    /// The view decides whether the tab is lit, not the click.
    void nextCheckState() override { }

private:
    void updateOn();
    void choose();

    IslandView m_view;
    AppState &m_state;
    IslandIntents &m_island;
    FrameClock &m_clock;
    std::function<void()> m_preAction;
    Observers m_observers;
};

} // namespace tirlo

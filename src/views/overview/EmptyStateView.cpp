#include "EmptyStateView.h"

#include "core/IslandIntents.h"
#include "ui/SecondaryButton.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"

namespace tirlo {

namespace {

constexpr int lineSpacing = 3;
constexpr int buttonSpacing = 9;

} // namespace

EmptyStateView::EmptyStateView(const ViewContext &context, QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    auto *line = new TextLabel(Style::font(Style::bodySize), Style::explanationText);
    line->setLine(QStringLiteral("Drop a file or window, or ask me anything."));
    auto *ask = new SecondaryButton(QStringLiteral("Ask Claude"), {}, [&island = context.island] {
        island.show(IslandView::prompt);
    });

    CardColumn::fill(this, CardMetrics::emptyContentLeft,
                     {{0, CardColumn::title(QStringLiteral("Nothing running right now."))},
                      {lineSpacing, line},
                      {buttonSpacing, ask}});
}

} // namespace tirlo

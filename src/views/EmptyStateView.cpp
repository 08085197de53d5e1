#include "EmptyStateView.h"

#include "CardMetrics.h"
#include "core/AppState.h"
#include "ui/SecondaryButton.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"

#include <QVBoxLayout>

namespace tirlo {

namespace {

constexpr int lineSpacing = 3;
constexpr int buttonSpacing = 9;

} // namespace

EmptyStateView::EmptyStateView(const ViewContext &context, QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    auto *title = new TextLabel(Style::font(Style::titleSize, QFont::DemiBold), Style::primaryText);
    title->setLine(QStringLiteral("Nothing running right now."));
    auto *line = new TextLabel(Style::font(Style::bodySize), Style::explanationText);
    line->setLine(QStringLiteral("Drop a file or window, or ask me anything."));
    auto *ask = new SecondaryButton(QStringLiteral("Ask Claude"), {},
                                    [&state = context.state] { state.view = IslandView::prompt; });

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(CardMetrics::emptyContentLeft, 0, CardMetrics::contentRight, 0);
    column->setSpacing(0);
    column->addStretch();
    column->addWidget(title);
    column->addSpacing(lineSpacing);
    column->addWidget(line);
    column->addSpacing(buttonSpacing);
    column->addWidget(ask);
    column->addStretch();
}

} // namespace tirlo

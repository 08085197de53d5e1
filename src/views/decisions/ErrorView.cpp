#include "ErrorView.h"

#include "ui/SecondaryButton.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"
#include "views/overview/AgentWho.h"

#include <QHBoxLayout>

namespace tirlo {

namespace {

constexpr int titleSpacing = 5;
constexpr int lineSpacing = 3;

} // namespace

ErrorView::ErrorView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::red, parent)
{
    auto *line = new TextLabel(Style::font(Style::headSize), Style::failureText);
    line->setLine(QStringLiteral("Gmail node timed out after 30s. Retry or open n8n."));

    // Beside the text, since four lines would be too many for the card's height.
    auto *row = new QHBoxLayout;
    row->setSpacing(Style::controlSpacing);
    row->addWidget(line);
    row->addStretch();
    row->addWidget(new SecondaryButton(QStringLiteral("Retry"), {}, {}));
    row->addWidget(new SecondaryButton(QStringLiteral("Open in n8n"), {}, {}));

    CardColumn::fill(this, CardMetrics::contentLeft,
                     {{0, new AgentWho(context.state, QStringLiteral("n8n"))},
                      {titleSpacing, CardColumn::title(QStringLiteral("Workflow stopped."))},
                      {lineSpacing, row}});
}

} // namespace tirlo

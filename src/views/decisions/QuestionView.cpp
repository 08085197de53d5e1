#include "QuestionView.h"

#include "ui/SecondaryButton.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"
#include "views/overview/AgentWho.h"

namespace tirlo {

namespace {

constexpr int titleSpacing = 5;
constexpr int buttonSpacing = 9;

} // namespace

QuestionView::QuestionView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::cyan, parent)
{
    CardColumn::fill(
        this, CardMetrics::contentLeft,
        {{0, new AgentWho(context.state, QStringLiteral("Claude Code is asking a question"))},
         {titleSpacing, CardColumn::title(QStringLiteral("Which search engine to use?"))},
         {buttonSpacing,
          CardColumn::controls({new SecondaryButton(QStringLiteral("Postgres full-text"), {}, {}),
                                new SecondaryButton(QStringLiteral("Meilisearch"), {}, {}),
                                new SecondaryButton(QStringLiteral("Algolia"), {}, {})})}});
}

} // namespace tirlo

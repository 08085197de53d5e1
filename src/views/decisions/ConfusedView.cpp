#include "ConfusedView.h"

#include "ui/Style.h"
#include "ui/TextLabel.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"

namespace tirlo {

namespace {

constexpr int lineSpacing = 4;

} // namespace

ConfusedView::ConfusedView(QWidget *parent)
    : CardBackground(Wash::pink, parent)
{
    auto *line = new TextLabel(Style::font(Style::bodySize), Style::explanationText);
    line->setLine(QStringLiteral("Give me a sec — back to work in three seconds."));

    CardColumn::fill(
        this, CardMetrics::emptyContentLeft,
        {{0, CardColumn::title(QStringLiteral("Too many hits at once."))}, {lineSpacing, line}});
}

} // namespace tirlo

#include "DecisionCard.h"

#include "core/AppState.h"
#include "core/TaskWords.h"
#include "views/CardMetrics.h"
#include "views/overview/AgentWho.h"

#include <QLayout>

#include <algorithm>

namespace tirlo::DecisionCard {

void dropFocus(const QWidget &card)
{
    if (QWidget *focused = card.focusWidget())
        focused->clearFocus();
}

QString whoAsks(const AppState &state, const ApprovalInfo &request, BotState mood)
{
    // The task may not have been told of its mood yet.
    AgentTask task = sessionOf(state, request.pillId, request.folder).value_or(AgentTask{});
    task.state = mood;
    return inWords(task) + u':';
}

QString whatIsKept(const QList<StandingGrant> &grants)
{
    QStringList words;
    for (const StandingGrant &grant : grants)
        words.append(grant.words);
    return QStringLiteral("Always keeps: ") + words.join(QStringLiteral("; "));
}

bool fitsAsNote(const QString &text)
{
    constexpr int mostCharacters = 240;
    return text.size() <= mostCharacters && !text.contains(u'\n');
}

int heightOf(const QWidget &card)
{
    QLayout &column = *card.layout();
    column.invalidate();
    column.activate();
    return column.hasHeightForWidth() ? column.totalHeightForWidth(CardMetrics::width)
                                      : column.totalMinimumSize().height();
}

void askForHeight(AppState &state, int columnHeight)
{
    const int height = columnHeight + 2 * CardMetrics::padding;
    state.cardGrowth
        = std::clamp(height, CardMetrics::height, CardMetrics::largestHeight) - CardMetrics::height;
}

} // namespace tirlo::DecisionCard

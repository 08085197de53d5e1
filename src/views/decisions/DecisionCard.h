#pragma once

#include "core/model/ApprovalInfo.h"
#include "core/model/BotState.h"
#include "views/CardMetrics.h"

class QWidget;

namespace tirlo {

class AppState;

/// What the cards that ask the user have in common; lengths in points.
namespace DecisionCard {

/// Width of a decision card's column.
inline constexpr int columnWidth
    = CardMetrics::width - CardMetrics::contentLeft - CardMetrics::contentRight;

/// Takes the focus from whatever has it on the card: what comes next has not been chosen.
void dropFocus(const QWidget &card);

/// Who asks and what for, in words, such as "Claude Code, shop, needs permission:".
[[nodiscard]] QString whoAsks(const AppState &state, const ApprovalInfo &request, BotState mood);

/// What "Always" would keep, in words.
[[nodiscard]] QString whatIsKept(const QList<StandingGrant> &grants);

/// Whether the text can stand on a card as a few lines of which all is seen.
[[nodiscard]] bool fitsAsNote(const QString &text);

/// The height that the card's column needs, at the cards' width.
[[nodiscard]] int heightOf(const QWidget &card);

/// Has the island grow for a card whose column is so high; the usual height is the least.
void askForHeight(AppState &state, int columnHeight);

} // namespace DecisionCard

} // namespace tirlo

#include "ApprovalView.h"

#include "RequestBody.h"
#include "core/AppState.h"
#include "core/IslandConst.h"
#include "core/model/ApprovalAnswer.h"
#include "ui/Announcement.h"
#include "ui/CardField.h"
#include "ui/PrimaryButton.h"
#include "ui/SecondaryButton.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"
#include "ui/WrappedLabel.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"
#include "views/CardSight.h"
#include "views/decisions/DecisionCard.h"
#include "views/overview/AgentWho.h"

#include <QHBoxLayout>

#include <algorithm>
#include <utility>

namespace tirlo {

namespace {

constexpr int reasonSpacing = 3;
constexpr int bodySpacing = 5;
constexpr int noteSpacing = 5;
constexpr int buttonSpacing = 8;
const QString whyName = QStringLiteral("Say why…");
/// What a refused plan is told without a reason.
const QString keepPlanning = QStringLiteral("Keep planning.");
/// The least room for the name of who asks, in points, and more characters than any head line has.
constexpr int leastName = 60;
/// The room for a count of lines.
constexpr int countWidth = 70;
constexpr qsizetype longestHead = 200;
const QString tooLong = QStringLiteral(
    "Too long to be shown whole, and so to be allowed here: look in the terminal.");
const QString whyHint = QStringLiteral("Tell it what to do instead");

/// The two, each on lines of its own.
QString joined(const QString &first, const QString &second)
{
    return first.isEmpty() || second.isEmpty() ? first + second : first + u'\n' + second;
}

} // namespace

ApprovalView::ApprovalView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::amber, parent)
    , m_context(context)
    , m_announcement(new Announcement(this))
    , m_who(new AgentWho(context.state, QStringLiteral("needs permission")))
    , m_tool(new TextLabel(Style::font(Style::headSize), Style::secondaryText))
    , m_lineCount(new TextLabel(Style::font(Style::captionSize), Style::secondaryText))
    , m_reason(new WrappedLabel(Style::font(Style::headSize), Style::explanationText))
    , m_body(new RequestBody)
    , m_note(new WrappedLabel(Style::font(Style::captionSize), Style::secondaryText))
    , m_why(new CardField(whyName))
{
    const auto answer = [this](Decision decision) { return [=, this] { decide(decision); }; };
    m_deny = new SecondaryButton(QStringLiteral("Deny"), {}, answer(Decision::deny));
    m_always = new SecondaryButton(QStringLiteral("Always"), {}, answer(Decision::always));
    m_terminal = new SecondaryButton(QStringLiteral("In the terminal"), {}, answer(Decision::ask));
    m_allow = new PrimaryButton(QStringLiteral("Allow"), {}, answer(Decision::allow));
    m_keepPlanning
        = new SecondaryButton(QStringLiteral("Keep planning"), {}, answer(Decision::deny));
    m_approvePlan = new PrimaryButton(QStringLiteral("Approve plan"), {}, answer(Decision::allow));
    for (QWidget *widget : {m_deny, m_always, m_terminal, m_allow, m_keepPlanning, m_approvePlan})
        connect(static_cast<QAbstractButton *>(widget), &QAbstractButton::pressed, this,
                [this] { m_pressCounts = m_context.sight.hasBeenSeen(); });
    m_why->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(m_why, &CardField::returnPressed, this, &ApprovalView::denyWithReason);
    connect(m_why, &CardField::focusChanged, this, &ApprovalView::showWhy);

    auto *head = new QHBoxLayout;
    head->setSpacing(Style::headSpacing);
    // What it is about is told whole; the name of who asks gives way.
    m_who->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    m_tool->setNeverElided();
    m_lineCount->setNeverElided();
    head->addWidget(m_who);
    head->addWidget(m_tool);
    head->addStretch();
    head->addWidget(m_lineCount);

    m_buttons = new QHBoxLayout;
    m_buttons->setSpacing(Style::controlSpacing);
    for (QWidget *button : {m_terminal, m_deny, m_keepPlanning, static_cast<QWidget *>(m_why),
                            m_always, m_allow, m_approvePlan})
        m_buttons->addWidget(button);
    m_buttons->addStretch();

    CardColumn::fill(this, CardMetrics::contentLeft,
                     {{0, head},
                      {reasonSpacing, m_reason},
                      {bodySpacing, m_body},
                      {noteSpacing, m_note},
                      {buttonSpacing, m_buttons}});
    QWidget *previous = m_body;
    for (QWidget *next : {m_terminal, m_deny, m_keepPlanning, static_cast<QWidget *>(m_why),
                          m_always, m_allow, m_approvePlan})
        setTabOrder(std::exchange(previous, next), next);
    showRequest({});
    followRequest();
    m_observers.follow(m_context.state.pendingApproval, [this] { followRequest(); });
}

void ApprovalView::followRequest()
{
    const std::optional<ApprovalInfo> request = m_context.state.pendingApproval;
    if (!request || !request->questions.isEmpty() || request->id == m_shownRequest)
        return;
    m_shownRequest = request->id;
    DecisionCard::dropFocus(*this);
    showRequest(*request);
    m_context.sight.showsAnother();
    announce(*request);
}

void ApprovalView::announce(const ApprovalInfo &request)
{
    const RequestContent &content = request.content;
    m_announcement->tell({DecisionCard::whoAsks(m_context.state, request, BotState::approval),
                          content.title, content.reason, content.subject, content.text});
}

void ApprovalView::showRequest(const ApprovalInfo &request)
{
    RequestContent content = request.content;
    const bool isPlan = content.kind == RequestContent::Kind::plan;
    // What is asked in a way that has no card can only be answered where it was asked.
    const bool isQuestion = request.tool == QLatin1String("AskUserQuestion");
    const bool canKeep = !request.grants.isEmpty() && !isPlan && !isQuestion;
    m_who->nameSession(request.pillId, request.folder);
    showReason(content);
    const QString kept = canKeep ? DecisionCard::whatIsKept(request.grants) : QString();
    const bool keepsFit = DecisionCard::fitsAsNote(kept);
    if (!keepsFit)
        content.more = joined(content.more, kept);
    // What can't be read here can't be allowed here.
    const bool isWhole = m_body->showContent(content, DecisionCard::columnWidth);
    const qsizetype lines = m_body->lineCount();
    m_lineCount->setLine(lines > 1 ? QStringLiteral("%1 lines").arg(lines) : QString());
    m_why->clear();

    m_terminal->setVisible(isQuestion || !isWhole);
    m_why->setVisible(!isQuestion);
    m_deny->setVisible(!isPlan && !isQuestion);
    m_allow->setVisible(!isPlan && !isQuestion && isWhole);
    m_note->showText(isWhole ? kept : tooLong);
    m_note->setVisible(!isWhole || (canKeep && keepsFit));
    m_always->setVisible(canKeep && isWhole);
    m_keepPlanning->setVisible(isPlan);
    m_approvePlan->setVisible(isPlan && isWhole);
    fitHeight();
}

/// A short reason stands behind the tool, a longer one has lines of its own. What would not fit
/// even there is in the body, where it can be scrolled to: a tool of a long name above the content,
/// and a reason below it, so that it pushes nothing out of sight.
void ApprovalView::showReason(RequestContent &content)
{
    const QFontMetrics metrics(m_tool->font());
    const bool hasCount
        = content.kind == RequestContent::Kind::diff || content.text.contains(u'\n');
    const int room
        = DecisionCard::columnWidth - (hasCount ? countWidth : 0) - 3 * Style::headSpacing;
    const auto fits = [&](const QString &words, int ofWho) {
        return words.size() <= longestHead && metrics.horizontalAdvance(words) <= room - ofWho;
    };
    QString head = QStringLiteral("· ") + content.title;
    QString below = content.reason;
    if (!below.isEmpty() && fits(head + QStringLiteral(" — ") + below, m_who->sizeHint().width()))
        head += QStringLiteral(" — ") + std::exchange(below, {});
    if (!DecisionCard::fitsAsNote(below)) {
        const QString line = QStringLiteral("description: ") + std::exchange(below, {});
        content.more = joined(line, content.more);
    }
    m_reason->showText(below);
    m_reason->setVisible(!below.isEmpty());
    if (!fits(head, m_who->minimumSizeHint().width() + leastName)) {
        content.subject = joined(content.title, content.subject);
        head.clear();
    }
    m_tool->setLine(content.title.isEmpty() ? QString() : head);
}

/// Takes what room the request needs, up to the largest card, and scrolls in it from there on.
void ApprovalView::fitHeight()
{
    m_body->setFixedHeight(Style::codeHeight);
    const int others = DecisionCard::heightOf(*this) - Style::codeHeight;
    const int room = std::max(CardMetrics::largestHeight - 2 * CardMetrics::padding - others,
                              Style::codeHeight);
    const int needed = m_body->heightFor(DecisionCard::columnWidth, room);
    m_body->setFixedHeight(std::max(needed, Style::codeHeight));
    m_body->scrollToStart();

    DecisionCard::askForHeight(m_context.state, others + m_body->height());
}

void ApprovalView::decide(Decision decision)
{
    if (!m_pressCounts || !m_context.sight.hasBeenSeen())
        return;
    ApprovalAnswer answer{.decision = decision};
    const std::optional<ApprovalInfo> request = m_context.state.pendingApproval;
    if (decision == Decision::deny)
        answer.message = m_why->text().trimmed();
    if (answer.message.isEmpty() && decision == Decision::deny && request
        && request->content.kind == RequestContent::Kind::plan)
        answer.message = keepPlanning;
    if (request && decision == Decision::always) {
        for (const StandingGrant &grant : request->grants)
            answer.updatedPermissions.append(grant.suggestion);
    }
    m_context.actions.sendApprovalDecision(answer);
}

void ApprovalView::denyWithReason()
{
    if (m_context.sight.hasBeenSeen() && !m_why->text().trimmed().isEmpty())
        m_context.actions.sendApprovalDecision(
            {.decision = Decision::deny, .message = m_why->text().trimmed()});
}

/// While the reason is typed it has the whole row.
void ApprovalView::showWhy(bool isTyping)
{
    m_why->setPlaceholderText(isTyping ? whyHint : whyName);
    m_why->setSizePolicy(isTyping ? QSizePolicy::Expanding : QSizePolicy::Preferred,
                         QSizePolicy::Fixed);
    m_buttons->setStretchFactor(m_why, isTyping ? 1 : 0);
}

} // namespace tirlo

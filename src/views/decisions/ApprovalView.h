#pragma once

#include "core/model/ApprovalInfo.h"
#include "ui/CardBackground.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

class QBoxLayout;

namespace tirlo {

class AgentWho;
class Announcement;
class CardField;
class RequestBody;
class TextLabel;
class WrappedLabel;

/// The permission request on show: what an agent is about to do, whole, and the answers.
///
/// No answer is taken before the card has been seen. A short request fits the usual height; for a
/// longer one the card asks the island to grow, and scrolls what does not fit even then.
class ApprovalView final : public CardBackground
{
    Q_OBJECT

public:
    explicit ApprovalView(const ViewContext &context, QWidget *parent = nullptr);

private:
    void followRequest();
    void showRequest(const ApprovalInfo &request);
    void announce(const ApprovalInfo &request);
    void showReason(RequestContent &content);
    void fitHeight();
    void decide(Decision decision);
    void denyWithReason();
    void showWhy(bool isTyping);

    ViewContext m_context;
    quint64 m_shownRequest = 0;
    /// The button was pressed once the card had been seen.
    bool m_pressCounts = false;
    Announcement *m_announcement;
    AgentWho *m_who;
    TextLabel *m_tool;
    TextLabel *m_lineCount;
    WrappedLabel *m_reason;
    RequestBody *m_body;
    WrappedLabel *m_note;
    QBoxLayout *m_buttons;
    QWidget *m_terminal;
    QWidget *m_deny;
    QWidget *m_always;
    QWidget *m_allow;
    QWidget *m_keepPlanning;
    QWidget *m_approvePlan;
    CardField *m_why;
    Observers m_observers;
};

} // namespace tirlo

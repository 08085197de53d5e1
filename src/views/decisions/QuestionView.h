#pragma once

#include "core/model/ApprovalInfo.h"
#include "ui/CardBackground.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

#include <QHash>

class QAbstractButton;
class QScrollArea;
class QVBoxLayout;

namespace tirlo {

class AgentWho;
class Announcement;
class CardField;
class TextLabel;
class WrappedLabel;

/// What an agent asks its user: one question after the other, each with its options and a field for
/// an answer of one's own.
///
/// An option of a question that takes one answer leads on at once; where several may be chosen the
/// button does. No answer is taken before the card has been seen. Without a question to answer the
/// card shows the agent's own words and leads to where it waits.
class QuestionView final : public CardBackground
{
    Q_OBJECT

public:
    explicit QuestionView(const ViewContext &context, QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void followRequest();
    void followTask();
    void showQuestion();
    void nameAgent(const QString &pillId);
    void showParts(bool isAnswered);
    void showOptions(const AgentQuestion &question);
    void showKept(const AgentQuestion &question);
    void onPress(QWidget *button);
    void fitHeight();
    void choose(const QStringList &labels);
    void goOn();
    void goBack();
    void giveBack();
    void updateButtons();
    [[nodiscard]] QStringList chosen() const;

    ViewContext m_context;
    std::optional<ApprovalInfo> m_request;
    qsizetype m_index = 0;
    /// The button was pressed once the question had been seen.
    bool m_pressCounts = true;
    /// By the question's text, as it goes back.
    QHash<QString, QStringList> m_answers;

    AgentWho *m_who;
    Announcement *m_announcement;
    TextLabel *m_progress;
    WrappedLabel *m_question;
    QVBoxLayout *m_options;
    QScrollArea *m_area;
    QList<QAbstractButton *> m_optionButtons;
    CardField *m_own;
    QWidget *m_terminal;
    QWidget *m_back;
    QWidget *m_next;
    QWidget *m_answer;
    QWidget *m_open;
    Observers m_observers;
};

} // namespace tirlo

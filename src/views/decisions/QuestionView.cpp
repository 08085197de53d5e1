#include "QuestionView.h"

#include "DecisionCard.h"
#include "core/AgentCatalog.h"
#include "core/AppState.h"
#include "core/HiddenMarks.h"
#include "core/model/ApprovalAnswer.h"
#include "core/TaskWords.h"
#include "hooks/AgentQuestions.h"
#include "ui/Announcement.h"
#include "ui/CardField.h"
#include "ui/OptionButton.h"
#include "ui/PrimaryButton.h"
#include "ui/SecondaryButton.h"
#include "ui/SlimScrollBar.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"
#include "ui/TextLine.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"
#include "views/CardSight.h"
#include "views/overview/AgentTargets.h"
#include "views/overview/AgentWho.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace tirlo {

namespace {

constexpr int questionSpacing = 5;
constexpr int optionsSpacing = 7;
constexpr int optionSpacing = 5;
constexpr int fieldSpacing = 6;
constexpr int buttonSpacing = 8;
/// Less than this of the options would be a slit.
constexpr int leastOptionsHeight = 34;

/// The text with places to break the longest of its words at.
QString breakable(const QString &text)
{
    constexpr int longestRun = 20;
    QString broken;
    int run = 0;
    for (const QChar character : text) {
        run = character.isSpace() ? 0 : run + 1;
        broken += character;
        if (run % longestRun == 0 && run > 0 && !character.isHighSurrogate())
            broken += QChar(0x200B);
    }
    return broken;
}

} // namespace

QuestionView::QuestionView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::cyan, parent)
    , m_context(context)
    , m_who(new AgentWho(context.state, QStringLiteral("is asking a question")))
    , m_announcement(new Announcement(this))
    , m_progress(new TextLabel(Style::font(Style::captionSize), Style::secondaryText))
    , m_question(DecisionCard::wrappedText(Style::bodySize, Style::primaryText))
    , m_options(new QScrollArea)
    , m_own(new CardField(QStringLiteral("Another answer…")))
    , m_terminal(new SecondaryButton(QStringLiteral("In the terminal"), {}, [this] { giveBack(); }))
    , m_back(new SecondaryButton(QStringLiteral("Back"), {}, [this] { goBack(); }))
    , m_next(new PrimaryButton(QStringLiteral("Next"), {}, [this] { goOn(); }))
    , m_answer(new PrimaryButton(QStringLiteral("Answer"), {}, [this] { goOn(); }))
    , m_open(new SecondaryButton(QStringLiteral("Open"), {}, [this] {
        if (const auto task = m_context.state.focusTask())
            AgentTargets::lookInto(*task, m_context);
    }))
{
    m_question->setFont(Style::font(Style::bodySize, QFont::DemiBold));
    m_options->setFocusPolicy(Qt::NoFocus);
    m_options->setFrameStyle(QFrame::NoFrame);
    m_options->setWidgetResizable(true);
    SlimScrollBar::dress(*m_options);
    m_options->viewport()->setAutoFillBackground(false);
    m_options->setAccessibleName(QStringLiteral("Options"));
    for (QWidget *button : {m_terminal, m_back, m_next, m_answer})
        onPress(button);
    connect(m_own, &CardField::returnPressed, this, [this] {
        m_pressCounts = true;
        goOn();
    });
    connect(m_own, &CardField::textChanged, this, &QuestionView::updateButtons);

    auto *head = new QHBoxLayout;
    head->setSpacing(Style::headSpacing);
    head->addWidget(m_who);
    head->addStretch();
    head->addWidget(m_progress);

    CardColumn::fill(
        this, CardMetrics::contentLeft,
        {{0, head},
         {questionSpacing, m_question},
         {optionsSpacing, m_options},
         {fieldSpacing, m_own},
         {buttonSpacing, CardColumn::controls({m_terminal, m_back, m_open, m_next, m_answer})}});
    showParts(false);
    followRequest();
    m_observers.follow(m_context.state.pendingApproval, [this] { followRequest(); });
    m_observers.follow(m_context.state.tasks, [this] { followTask(); });
    m_observers.follow(m_context.state.focusId, [this] { followTask(); });
}

void QuestionView::followRequest()
{
    const std::optional<ApprovalInfo> request = m_context.state.pendingApproval;
    if (!request || request->questions.isEmpty()) {
        // The card keeps what it shows while it goes.
        if (std::exchange(m_request, std::nullopt) == std::nullopt)
            followTask();
        return;
    }
    if (m_request && m_request->id == request->id)
        return;
    m_request = request;
    m_index = 0;
    m_answers.clear();
    showQuestion();
}

/// Without a question to answer here: what the agent itself said.
void QuestionView::followTask()
{
    if (m_request)
        return;
    const std::optional<AgentTask> task = m_context.state.focusTask();
    const bool asks = task && task->state == BotState::question && !task->steps.isEmpty();
    if (!asks)
        return;
    m_who->followFocus();
    const QString words = withoutHiddenMarks(task->steps.last());
    if (words != m_question->text())
        m_announcement->tell({inWords(*task) + u':', words});
    m_question->setText(words);
    m_progress->setLine({});
    showParts(false);
    DecisionCard::askForHeight(m_context.state, DecisionCard::heightOf(*this));
}

void QuestionView::showQuestion()
{
    const AgentQuestion &question = m_request->questions.at(m_index);
    m_who->nameSession(m_request->pillId, m_request->folder);
    const AgentDefinition *agent = AgentCatalog::ofPill(m_request->pillId);
    m_who->setLabel((agent ? agent->name + u' ' : QString())
                    + QStringLiteral("is asking a question"));
    DecisionCard::dropFocus(*this);
    const qsizetype count = m_request->questions.size();
    const QString place
        = count > 1 ? QStringLiteral("%1 of %2").arg(m_index + 1).arg(count) : QString();
    const QString header = TextLine::displayable(question.header);
    m_progress->setLine(header.isEmpty() || place.isEmpty()
                            ? header + place
                            : header + QStringLiteral(" · ") + place);
    // One of many lines scrolls with its options.
    const bool isShort = DecisionCard::fitsAsNote(question.text);
    m_question->setText(isShort ? withoutHiddenMarks(question.text) : QString());
    m_own->clear();

    showParts(true);
    m_question->setVisible(isShort);
    m_back->setVisible(m_index > 0);
    const bool isLast = m_index + 1 == count;
    m_next->setVisible(!isLast);
    m_answer->setVisible(isLast);
    showOptions(question);
    showKept(question);
    updateButtons();
    fitHeight();
    m_context.sight.showsAnother();
    QStringList words{DecisionCard::whoAsks(m_context.state, *m_request, BotState::question),
                      question.text};
    for (const AgentQuestion::Option &option : question.options)
        words.append(option.label);
    m_announcement->tell(words);
}

/// The controls of a question that is answered here, or the one that leads to the agent.
void QuestionView::showParts(bool isAnswered)
{
    for (QWidget *part : {static_cast<QWidget *>(m_options), static_cast<QWidget *>(m_own),
                          m_terminal, m_back, m_next, m_answer})
        part->setVisible(isAnswered);
    m_open->setVisible(!isAnswered);
}

void QuestionView::showOptions(const AgentQuestion &question)
{
    auto *list = new QWidget;
    auto *column = new QVBoxLayout(list);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(optionSpacing);
    m_optionButtons.clear();
    const bool isLong = !DecisionCard::fitsAsNote(question.text);
    if (isLong) {
        auto *text = DecisionCard::wrappedText(Style::bodySize, Style::primaryText);
        text->setText(breakable(withoutHiddenMarks(question.text)));
        column->addWidget(text);
    }
    for (const AgentQuestion::Option &option : question.options) {
        auto *button
            = new OptionButton(option.label, option.description, question.multiSelect, list);
        connect(button, &QAbstractButton::clicked, this, [this, button, label = option.label] {
            if (!m_request)
                return;
            if (!m_request->questions.at(m_index).multiSelect)
                choose({label});
            else if (m_pressCounts && m_context.sight.hasBeenSeen())
                updateButtons();
            else
                button->toggle();
        });
        onPress(button);
        column->addWidget(button);
        m_optionButtons.append(button);
    }
    column->addStretch();
    m_options->setWidget(list);
    list->setAutoFillBackground(false);
    m_options->setVisible(isLong || !question.options.isEmpty());

    QWidget *previous = m_options;
    const auto follow
        = [&previous](QWidget *next) { setTabOrder(std::exchange(previous, next), next); };
    for (QAbstractButton *button : m_optionButtons)
        follow(button);
    for (QWidget *next : {static_cast<QWidget *>(m_own), m_terminal, m_back, m_next, m_answer})
        follow(next);
}

/// Ticks and fills in what was answered before, when the user has gone back to it.
void QuestionView::showKept(const AgentQuestion &question)
{
    QStringList kept = m_answers.value(question.text);
    for (qsizetype i = 0; question.multiSelect && i < m_optionButtons.size(); ++i) {
        if (kept.removeOne(question.options.at(i).label))
            m_optionButtons.at(i)->setChecked(true);
    }
    for (const AgentQuestion::Option &option : question.options)
        kept.removeOne(option.label);
    m_own->setText(kept.join(u' '));
}

/// A press counts by what had been seen when it began.
void QuestionView::onPress(QWidget *button)
{
    connect(static_cast<QAbstractButton *>(button), &QAbstractButton::pressed, this,
            [this] { m_pressCounts = m_context.sight.hasBeenSeen(); });
}

void QuestionView::fitHeight()
{
    const bool scrolls = !m_options->isHidden();
    int needed = 0;
    if (scrolls) {
        needed = m_options->widget()->layout()->totalHeightForWidth(DecisionCard::columnWidth);
        m_options->setFixedHeight(leastOptionsHeight);
    }
    const int others = DecisionCard::heightOf(*this) - (scrolls ? leastOptionsHeight : 0);
    const int room = std::max(CardMetrics::largestHeight - 2 * CardMetrics::padding - others,
                              leastOptionsHeight);
    const int height = std::min(needed, room);
    if (scrolls)
        m_options->setFixedHeight(height);
    m_options->verticalScrollBar()->setValue(0);
    DecisionCard::askForHeight(m_context.state, others + height);
}

void QuestionView::choose(const QStringList &labels)
{
    if (!m_request || !m_pressCounts || !m_context.sight.hasBeenSeen())
        return;
    const QList<AgentQuestion> &questions = m_request->questions;
    m_answers.insert(questions.at(m_index).text, labels);
    if (++m_index < questions.size()) {
        showQuestion();
        return;
    }
    m_index = questions.size() - 1;
    m_context.actions.sendApprovalDecision(
        {.decision = Decision::allow, .updatedInput = answeredInput(m_request->input, m_answers)});
}

void QuestionView::goOn()
{
    const QStringList labels = chosen();
    if (!labels.isEmpty())
        choose(labels);
}

void QuestionView::goBack()
{
    if (m_index == 0 || !m_request || !m_pressCounts || !m_context.sight.hasBeenSeen())
        return;
    m_answers.insert(m_request->questions.at(m_index).text, chosen());
    --m_index;
    showQuestion();
}

void QuestionView::giveBack()
{
    if (m_pressCounts && m_context.sight.hasBeenSeen())
        m_context.actions.sendApprovalDecision({.decision = Decision::ask});
}

void QuestionView::updateButtons()
{
    const bool hasAnswer = !chosen().isEmpty();
    m_next->setEnabled(hasAnswer);
    m_answer->setEnabled(hasAnswer);
}

/// What is ticked, and what was typed.
QStringList QuestionView::chosen() const
{
    QStringList labels;
    if (!m_request)
        return labels;
    const AgentQuestion &question = m_request->questions.at(m_index);
    for (qsizetype i = 0; i < m_optionButtons.size(); ++i) {
        if (m_optionButtons.at(i)->isChecked())
            labels.append(question.options.at(i).label);
    }
    if (const QString own = m_own->text().trimmed(); !own.isEmpty())
        labels.append(own);
    return labels;
}

} // namespace tirlo

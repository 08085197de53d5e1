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
#include "ui/FocusRing.h"
#include "ui/OptionButton.h"
#include "ui/PrimaryButton.h"
#include "ui/SecondaryButton.h"
#include "ui/SlimScrollBar.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"
#include "ui/WrappedLabel.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"
#include "views/CardSight.h"
#include "views/overview/AgentTargets.h"
#include "views/overview/AgentWho.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace tirlo {

namespace {

constexpr int questionSpacing = 5;
constexpr int optionSpacing = 5;
constexpr int buttonSpacing = 8;
constexpr int ringSpacing = 3;
/// Less than this of the question would be a slit.
constexpr int leastRoom = 34;

/// Laying out more at once would be felt.
constexpr qsizetype mostCharacters = 50'000;
constexpr qsizetype mostOptions = 100;
constexpr qsizetype longestBeginning = 1000;
/// In the head line.
constexpr qsizetype longestHeader = 30;

bool isTooLong(const AgentQuestion &question)
{
    qsizetype characters = question.header.size() + question.text.size();
    for (const AgentQuestion::Option &option : question.options)
        characters += option.label.size() + option.description.size();
    return characters > mostCharacters || question.options.size() > mostOptions;
}

/// The beginning of a question that is too long, and what is left out.
AgentQuestion beginningOf(const AgentQuestion &question)
{
    const QString beginning = question.text.left(longestBeginning);
    return {.text = QStringLiteral("%1\n… %2 more characters and %3 options; look in the terminal")
                        .arg(beginning)
                        .arg(question.text.size() - beginning.size())
                        .arg(question.options.size()),
            .header = question.header.left(longestBeginning)};
}

} // namespace

QuestionView::QuestionView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::cyan, parent)
    , m_context(context)
    , m_who(new AgentWho(context.state, QStringLiteral("is asking a question")))
    , m_announcement(new Announcement(this))
    , m_progress(new TextLabel(Style::font(Style::captionSize), Style::secondaryText))
    , m_question(
          new WrappedLabel(Style::font(Style::bodySize, QFont::DemiBold), Style::primaryText))
    , m_options(new QVBoxLayout)
    , m_area(new QScrollArea)
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
    auto *list = new QWidget;
    m_options->setContentsMargins(0, 0, 0, 0);
    m_options->setSpacing(optionSpacing);
    m_options->addWidget(m_question);
    list->setLayout(m_options);
    m_area->setFrameStyle(QFrame::NoFrame);
    m_area->setWidgetResizable(true);
    m_area->setWidget(list);
    SlimScrollBar::dress(*m_area);
    list->setAutoFillBackground(false);
    m_area->viewport()->setAutoFillBackground(false);
    m_area->setAccessibleName(QStringLiteral("Question and options"));
    m_area->installEventFilter(this);
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

    auto *controls = new QHBoxLayout;
    controls->setSpacing(Style::controlSpacing);
    for (QWidget *control :
         {m_terminal, m_back, m_open, static_cast<QWidget *>(m_own), m_next, m_answer})
        controls->addWidget(control);
    controls->addStretch();
    controls->setStretchFactor(m_own, 1);
    CardColumn::fill(this, CardMetrics::contentLeft,
                     {{0, head}, {questionSpacing, m_area}, {buttonSpacing, controls}});
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
    nameAgent(task->id);
    const QString words = withoutHiddenMarks(task->steps.last());
    if (words != m_question->text())
        m_announcement->tell({inWords(*task) + u':', words});
    m_progress->setLine({});
    showParts(false);
    showOptions({.text = words});
    fitHeight();
}

void QuestionView::nameAgent(const QString &pillId)
{
    const AgentDefinition *agent = AgentCatalog::ofPill(pillId);
    m_who->setLabel((agent ? agent->name + u' ' : QString())
                    + QStringLiteral("is asking a question"));
}

void QuestionView::showQuestion()
{
    const AgentQuestion &question = m_request->questions.at(m_index);
    m_who->nameSession(m_request->pillId, m_request->folder);
    nameAgent(m_request->pillId);
    DecisionCard::dropFocus(*this);
    const qsizetype count = m_request->questions.size();
    const QString place
        = count > 1 ? QStringLiteral("%1 of %2").arg(m_index + 1).arg(count) : QString();
    // A long header is read with the question.
    const bool isShort = question.header.size() <= longestHeader;
    const QString header = isShort ? question.header : QString();
    m_progress->setLine(header.isEmpty() || place.isEmpty()
                            ? header + place
                            : header + QStringLiteral(" · ") + place);
    const bool isAnswered = !isTooLong(question);
    showParts(true);
    m_own->setVisible(isAnswered);
    m_back->setVisible(m_index > 0);
    const bool isLast = m_index + 1 == count;
    m_next->setVisible(isAnswered && !isLast);
    m_answer->setVisible(isAnswered && isLast);
    AgentQuestion shown = isAnswered ? question : beginningOf(question);
    if (!isShort)
        shown.text.prepend(shown.header + u'\n');
    showOptions(shown);
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
    for (QWidget *part : {static_cast<QWidget *>(m_own), m_terminal, m_back, m_next, m_answer})
        part->setVisible(isAnswered);
    m_open->setVisible(!isAnswered);
}

void QuestionView::showOptions(const AgentQuestion &question)
{
    m_question->showText(question.text);
    // One of them may be what was just clicked.
    for (QAbstractButton *button : std::exchange(m_optionButtons, {})) {
        m_options->removeWidget(button);
        button->hide();
        button->deleteLater();
    }
    for (const AgentQuestion::Option &option : question.options) {
        auto *button = new OptionButton(option.label, option.description, question.multiSelect);
        connect(button, &QAbstractButton::clicked, this, [this, button, label = option.label] {
            if (!m_request || !m_pressCounts || !m_context.sight.hasBeenSeen())
                button->toggle();
            else if (m_request->questions.at(m_index).multiSelect)
                updateButtons();
            else
                choose({label});
        });
        onPress(button);
        m_options->addWidget(button);
        button->show();
        m_optionButtons.append(button);
    }

    QWidget *previous = m_area;
    const auto follow
        = [&previous](QWidget *next) { setTabOrder(std::exchange(previous, next), next); };
    for (QAbstractButton *button : m_optionButtons)
        follow(button);
    for (QWidget *next : {m_terminal, m_back, static_cast<QWidget *>(m_own), m_next, m_answer})
        follow(next);
}

/// Ticks and fills in what was answered before, when the user has gone back to it.
void QuestionView::showKept(const AgentQuestion &question)
{
    QStringList kept = m_answers.value(question.text);
    for (qsizetype i = 0; i < m_optionButtons.size(); ++i) {
        if (kept.removeOne(question.options.at(i).label))
            m_optionButtons.at(i)->setChecked(true);
    }
    m_own->setText(kept.value(0));
}

/// A press counts by what had been seen when it began.
void QuestionView::onPress(QWidget *button)
{
    connect(static_cast<QAbstractButton *>(button), &QAbstractButton::pressed, this,
            [this] { m_pressCounts = m_context.sight.hasBeenSeen(); });
}

/// Takes what room the question needs, up to the largest card, and scrolls in it from there on.
void QuestionView::fitHeight()
{
    m_area->setFixedHeight(leastRoom);
    const int others = DecisionCard::heightOf(*this) - leastRoom;
    const int room = CardMetrics::largestHeight - 2 * CardMetrics::padding - others;
    const int needed = m_options->totalHeightForWidth(DecisionCard::columnWidth);
    const int height = std::min(needed, std::max(room, leastRoom));
    m_area->setFixedHeight(height);
    m_area->verticalScrollBar()->setValue(0);
    // Who has no mouse scrolls with the keys.
    m_area->setFocusPolicy(needed > height ? Qt::TabFocus : Qt::NoFocus);
    DecisionCard::askForHeight(m_context.state, others + height);
}

bool QuestionView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return CardBackground::eventFilter(watched, event);
}

void QuestionView::paintEvent(QPaintEvent *event)
{
    CardBackground::paintEvent(event);
    if (!FocusRing::isShown(*m_area))
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr int out = ringSpacing;
    FocusRing::draw(painter, m_area->geometry().adjusted(-out, -out, out, out), Style::codeRadius);
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

/// What is ticked, and what was typed; for a question that takes one answer, rather what was typed.
QStringList QuestionView::chosen() const
{
    QStringList labels;
    if (!m_request)
        return labels;
    const AgentQuestion &question = m_request->questions.at(m_index);
    const QString own = m_own->text().trimmed();
    for (qsizetype i = 0; i < m_optionButtons.size(); ++i) {
        if (m_optionButtons.at(i)->isChecked() && (question.multiSelect || own.isEmpty()))
            labels.append(question.options.at(i).label);
    }
    if (!own.isEmpty())
        labels.append(own);
    return labels;
}

} // namespace tirlo

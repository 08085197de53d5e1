#pragma once

#include "core/IslandConst.h"
#include "core/KeychainStore.h"
#include "support/FakeApplications.h"
#include "support/MemorySecretStore.h"
#include "support/MotionParts.h"
#include "support/StandInIsland.h"
#include "views/CardSight.h"
#include "views/frame/IslandContainer.h"
#include "views/frame/IslandHeader.h"
#include "views/frame/IslandRootView.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace tirlo {

/// The whole tree of views in a window of the panel's size, over a store of its own.
class ViewFixture : public testing::Test, protected MotionParts
{
protected:
    ViewFixture()
    {
        root->setAttribute(Qt::WA_TranslucentBackground);
        root->resize(IslandConst::panelWidth, IslandConst::panelHeight);
        root->show();
        QCoreApplication::processEvents();
    }

    /// Opens the island on the view and lets its motion come to rest.
    void open(IslandView view)
    {
        island.setView(view);
        island.setMode(IslandMode::expanded);
        queue.advance(2);
        QCoreApplication::processEvents();
    }

    /// A task that is named like its id unless told otherwise.
    [[nodiscard]] static AgentTask task(const QString &id, const QString &name = {},
                                        const QStringList &steps = {})
    {
        AgentTask made;
        made.id = id;
        made.name = name.isEmpty() ? id : name;
        made.color = "#2DD4BF";
        made.steps = steps;
        made.stepIndex = std::max<qsizetype>(steps.size() - 1, 0);
        return made;
    }

    /// Replaces all tasks; the first one gets the focus.
    void setTasks(const QList<AgentTask> &tasks)
    {
        state.tasks = tasks;
        state.focusId = tasks.isEmpty() ? std::nullopt : std::optional(tasks.first().id);
        QCoreApplication::processEvents();
    }

    /// Replaces all tasks by t0, t1, … and lets the motion come to rest.
    void setTaskCount(int count)
    {
        QList<AgentTask> tasks;
        for (int i = 0; i < count; ++i)
            tasks.append(task(QStringLiteral("t%1").arg(i)));
        setTasks(tasks);
        queue.advance(2);
    }

    /// Puts a request on show that is not the one before; a command unless told otherwise.
    void setApproval(const QString &text, const QString &pillId, ApprovalInfo request = {})
    {
        request.id = ++lastRequest;
        request.pillId = pillId;
        if (request.content == RequestContent())
            request.content
                = {.title = "Run a command", .kind = RequestContent::Kind::command, .text = text};
        state.pendingApproval = request;
        QCoreApplication::processEvents();
    }

    /// The decisions so far, in words.
    [[nodiscard]] QStringList decisions() const
    {
        QStringList words;
        for (const ApprovalAnswer &answer : answers)
            words.append(rawText(answer.decision));
        return words;
    }

    /// The accessible names of the card's visible buttons, left to right.
    [[nodiscard]] QStringList visibleButtons() const
    {
        QMultiMap<int, QString> names;
        for (const auto *found : root->findChildren<QAbstractButton *>()) {
            if (found->isVisible() && !root->findChild<IslandHeader *>()->isAncestorOf(found))
                names.insert(placeOf(found).x(), found->accessibleName());
        }
        return names.values();
    }

    /// The visible button of that name, or null.
    [[nodiscard]] QAbstractButton *button(const QString &name) const
    {
        for (QAbstractButton *found : root->findChildren<QAbstractButton *>()) {
            if (found->isVisible() && found->accessibleName() == name)
                return found;
        }
        return nullptr;
    }

    /// The texts of all visible labels.
    [[nodiscard]] QStringList visibleTexts() const
    {
        QStringList texts;
        for (const QLabel *label : root->findChildren<QLabel *>()) {
            if (label->isVisible())
                texts.append(label->text().isEmpty() ? label->accessibleName() : label->text());
        }
        return texts;
    }

    /// Where the widget stands in the panel.
    [[nodiscard]] QRect placeOf(const QWidget *widget) const
    {
        return {widget->mapTo(root.get(), QPoint()), widget->size()};
    }

    /// Clicks through the window, so that whatever lies on top gets it.
    void clickAt(const QPoint &place) const
    {
        QTest::mouseClick(root->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    }

    /// Clicks in the middle of the button of that name.
    void click(const QString &name) const
    {
        const QAbstractButton *target = button(name);
        ASSERT_TRUE(target) << name.toStdString();
        clickAt(placeOf(target).center());
    }

    [[nodiscard]] const IslandContainer &container() const
    {
        return *root->findChild<IslandContainer *>();
    }

    /// The widget, or else the island, as it looks, at one pixel a point.
    [[nodiscard]] QImage picture(QWidget *widget = nullptr)
    {
        QWidget *shown = widget ? widget : root.get();
        QImage image(shown->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        shown->render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    }

    StandInIsland island{state};
    FakeApplications applications;
    MemorySecretStore secrets;
    KeychainStore keychain{secrets};
    QList<ApprovalAnswer> answers;
    quint64 lastRequest = 0;
    CardSight sight{queue};
    QList<ChatProvider> providers;
    std::function<void()> onCapture = [] {};
    IslandActions actions{
        .sendApprovalDecision = [this](const ApprovalAnswer &answer) { answers.append(answer); },
        .capturePromptContext = [this] { onCapture(); },
        .switchChatProvider = [this](ChatProvider provider) { providers.append(provider); }};
    std::unique_ptr<IslandRootView> root = std::make_unique<IslandRootView>(
        ViewContext{state, notifications, island, sounds, queue, frames, screens, applications,
                    keychain, actions, sight});
};

} // namespace tirlo

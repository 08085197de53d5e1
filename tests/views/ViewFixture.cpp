#include "ViewFixture.h"

#include "core/IslandConst.h"
#include "views/IslandHeader.h"

#include <QLabel>
#include <QTest>

#include <algorithm>

namespace tirlo {

ViewFixture::ViewFixture()
    : root(std::make_unique<IslandRootView>(ViewContext{state, notifications, sounds, queue, frames,
                                                        screens, applications, keychain, actions}))
{
    root->setAttribute(Qt::WA_TranslucentBackground);
    root->resize(IslandConst::panelWidth, IslandConst::panelHeight);
    root->show();
    QCoreApplication::processEvents();
}

void ViewFixture::open(IslandView view)
{
    state.view = view;
    state.mode = IslandMode::expanded;
    queue.advance(2);
    QCoreApplication::processEvents();
}

void ViewFixture::setTasks(const QList<AgentTask> &tasks)
{
    state.tasks = tasks;
    state.focusId = tasks.isEmpty() ? std::nullopt : std::optional(tasks.first().id);
    QCoreApplication::processEvents();
}

void ViewFixture::setApproval(const QString &command, const QString &pillId)
{
    ApprovalInfo request;
    request.command = command;
    request.pillId = pillId;
    state.pendingApproval = request;
    QCoreApplication::processEvents();
}

AgentTask ViewFixture::task(const QString &id, const QString &name, const QStringList &steps)
{
    AgentTask made;
    made.id = id;
    made.name = name;
    made.color = QStringLiteral("#2DD4BF");
    made.steps = steps;
    made.stepIndex = std::max<qsizetype>(steps.size() - 1, 0);
    return made;
}

QStringList ViewFixture::visibleButtons() const
{
    QList<QAbstractButton *> buttons = root->findChildren<QAbstractButton *>();
    const auto *header = root->findChild<IslandHeader *>();
    buttons.removeIf(
        [header](const QAbstractButton *b) { return !b->isVisible() || header->isAncestorOf(b); });
    std::ranges::stable_sort(buttons, {}, [this](const QAbstractButton *b) {
        return b->mapTo(root.get(), QPoint()).x();
    });
    QStringList names;
    for (const QAbstractButton *found : buttons)
        names.append(found->accessibleName());
    return names;
}

QAbstractButton *ViewFixture::button(const QString &name) const
{
    for (QAbstractButton *found : root->findChildren<QAbstractButton *>()) {
        if (found->isVisible() && found->accessibleName() == name)
            return found;
    }
    return nullptr;
}

QStringList ViewFixture::visibleTexts() const
{
    QStringList texts;
    for (const QLabel *label : root->findChildren<QLabel *>()) {
        if (label->isVisible())
            texts.append(label->text().isEmpty() ? label->accessibleName() : label->text());
    }
    return texts;
}

void ViewFixture::click(const QString &name)
{
    QAbstractButton *target = button(name);
    ASSERT_TRUE(target) << name.toStdString();
    // Through the window, so that whatever lies on top would get the click instead.
    const QPoint position = target->mapTo(root.get(), target->rect().center());
    QTest::mouseClick(root->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier, position);
}

const IslandContainer &ViewFixture::island() const
{
    return *root->findChild<IslandContainer *>();
}

QImage ViewFixture::picture()
{
    QImage image(root->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    root->render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

} // namespace tirlo

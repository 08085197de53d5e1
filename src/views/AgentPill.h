#pragma once

#include "ViewContext.h"
#include "core/model/AgentTask.h"

#include <QAbstractButton>

namespace tirlo {

class MiniBotCanvasView;

/// One task that is not in focus, as a capsule with its name; a click asks for the focus.
class AgentPill final : public QAbstractButton
{
    Q_OBJECT

public:
    static constexpr int capsuleHeight = 28;

    explicit AgentPill(const ViewContext &context, QWidget *parent = nullptr);

    /// The pill's geometry for a capsule there: badge, shadow and growth need room around it.
    [[nodiscard]] static QRect frameAround(const QRect &capsule);

    void setTask(const AgentTask &task);
    [[nodiscard]] const AgentTask &task() const { return m_task; }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    [[nodiscard]] bool hitButton(const QPoint &position) const override;

private:
    void makeBot();
    void placeBot();
    [[nodiscard]] QRectF capsule() const;

    ViewContext m_context;
    AgentTask m_task;
    MiniBotCanvasView *m_bot = nullptr;
    QString m_name;
};

} // namespace tirlo

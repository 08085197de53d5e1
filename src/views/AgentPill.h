#pragma once

#include "core/model/AgentTask.h"

#include <QAbstractButton>

namespace tirlo {

/// One task that is not in focus, as a capsule with its name; a click asks for the focus.
class AgentPill final : public QAbstractButton
{
    Q_OBJECT

public:
    static constexpr int capsuleHeight = 28;

    explicit AgentPill(QWidget *parent = nullptr);

    /// The pill's geometry for a capsule there: badge, shadow and growth need room around it.
    [[nodiscard]] static QRect frameAround(const QRect &capsule);

    void setTask(const AgentTask &task);
    [[nodiscard]] const AgentTask &task() const { return m_task; }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    [[nodiscard]] bool hitButton(const QPoint &position) const override;

private:
    [[nodiscard]] QRectF capsule() const;

    AgentTask m_task;
    QString m_name;
};

} // namespace tirlo

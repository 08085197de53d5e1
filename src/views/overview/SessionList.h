#pragma once

#include "core/model/AgentSession.h"

#include <QList>
#include <QScrollArea>

#include <vector>

class QVBoxLayout;

namespace tirlo {

/// The sessions of one pill, a row each: what it is doing, in which folder, and since when.
class SessionList final : public QScrollArea
{
    Q_OBJECT

public:
    explicit SessionList(QWidget *parent = nullptr);

    /// Shows the sessions in their order.
    void setSessions(const QList<AgentSession> &sessions);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    class Row;

    QVBoxLayout *m_column;
    std::vector<Row *> m_rows;
};

} // namespace tirlo

#pragma once

#include "ViewContext.h"
#include "island/IslandShape.h"
#include "ui/Observers.h"

#include <QWidget>

namespace tirlo {

class IslandContentView;

/// The black island itself, as big as it is drawn, with its content while it is expanded.
class IslandContainer final : public QWidget
{
    Q_OBJECT

public:
    explicit IslandContainer(const ViewContext &context, QWidget *parent = nullptr);

    /// The outline as drawn now.
    [[nodiscard]] const IslandShape &shape() const { return m_shape; }

Q_SIGNALS:
    void sizeChanged();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void updateShape();

    AppState &m_state;
    IslandContentView *m_content;
    IslandShape m_shape;
    Observers m_observers;
};

} // namespace tirlo

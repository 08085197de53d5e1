#include "IslandContainer.h"

#include "IslandContentView.h"
#include "core/AppState.h"
#include "island/IslandGeometry.h"
#include "ui/Style.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tirlo {

IslandContainer::IslandContainer(const ViewContext &context, QWidget *parent)
    : QWidget(parent)
    , m_state(context.state)
    , m_content(new IslandContentView(context, this))
{
    updateShape();
    const auto update = [this] { updateShape(); };
    m_observers.follow(m_state.mode, update);
    m_observers.follow(m_state.view, update);
    m_observers.follow(m_state.chatHistory, update);
}

void IslandContainer::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(m_shape.path(), Style::island);
}

void IslandContainer::updateShape()
{
    const bool showsContent
        = m_state.mode == IslandMode::expanded && m_state.view != IslandView::greeting;
    const IslandShape shape = IslandGeometry::islandShape(m_state);
    if (shape != m_shape) {
        m_shape = shape;
        resize(int(std::ceil(shape.width)), int(std::ceil(shape.height)));
        // Shoulders at the top edge push the content down.
        const int lift = int(std::ceil(std::max(-shape.topRadius, 0.0)));
        m_content->setGeometry(0, lift, width(), height() - lift);
        update();
        Q_EMIT sizeChanged();
    }
    m_content->setVisible(showsContent);
}

} // namespace tirlo

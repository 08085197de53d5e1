#include "IslandRootView.h"

#include "IslandContainer.h"

namespace tirlo {

IslandRootView::IslandRootView(const ViewContext &context, QWidget *parent)
    : QWidget(parent)
    , m_island(new IslandContainer(context, this))
{
    connect(m_island, &IslandContainer::sizeChanged, this, &IslandRootView::placeIsland);
    placeIsland();
}

void IslandRootView::comesIntoSight()
{
    m_island->comesIntoSight();
}

void IslandRootView::showEvent(QShowEvent *)
{
    comesIntoSight();
}

void IslandRootView::resizeEvent(QResizeEvent *)
{
    placeIsland();
}

void IslandRootView::placeIsland()
{
    m_island->move((width() - m_island->width()) / 2, 0);
    Q_EMIT drawn(m_island->shape());
}

} // namespace tirlo

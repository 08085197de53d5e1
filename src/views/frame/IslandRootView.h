#pragma once

#include "views/ViewContext.h"

#include <QWidget>

namespace tirlo {

class IslandContainer;
struct IslandShape;

/// The see-through layer that fills the panel, with the island pinned to its top centre.
class IslandRootView final : public QWidget
{
    Q_OBJECT

public:
    explicit IslandRootView(const ViewContext &context, QWidget *parent = nullptr);

    /// What it shows has been out of sight until now.
    void comesIntoSight();

Q_SIGNALS:
    /// The island is drawn with that outline from now on, in the middle of the upper edge.
    void drawn(const tirlo::IslandShape &outline);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeIsland();

    IslandContainer *m_island;
};

} // namespace tirlo

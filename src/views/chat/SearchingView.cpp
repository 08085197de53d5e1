#include "SearchingView.h"

namespace tirlo {

SearchingView::SearchingView(QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    setAccessibleName(QStringLiteral("Searching"));
}

} // namespace tirlo

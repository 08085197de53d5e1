#include "ResultView.h"

namespace tirlo {

ResultView::ResultView(QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    setAccessibleName(QStringLiteral("Answer"));
}

} // namespace tirlo

#include "ChooseView.h"

namespace tirlo {

ChooseView::ChooseView(QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    setAccessibleName(QStringLiteral("What to do with the file"));
}

} // namespace tirlo

#include "PromptView.h"

namespace tirlo {

PromptView::PromptView(QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    setAccessibleName(QStringLiteral("Chat"));
}

} // namespace tirlo

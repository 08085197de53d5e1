#include "MailView.h"

namespace tirlo {

MailView::MailView(QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    setAccessibleName(QStringLiteral("Send by email"));
}

} // namespace tirlo

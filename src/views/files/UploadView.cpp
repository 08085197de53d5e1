#include "UploadView.h"

namespace tirlo {

UploadView::UploadView(QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    setAccessibleName(QStringLiteral("Drop a file"));
}

} // namespace tirlo

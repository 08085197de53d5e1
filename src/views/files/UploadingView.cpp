#include "UploadingView.h"

namespace tirlo {

UploadingView::UploadingView(QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    setAccessibleName(QStringLiteral("Uploading"));
}

} // namespace tirlo

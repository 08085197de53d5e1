#include "SettingsIslandView.h"

namespace tirlo {

SettingsIslandView::SettingsIslandView(QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    setAccessibleName(QStringLiteral("Settings"));
}

} // namespace tirlo

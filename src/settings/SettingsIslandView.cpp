#include "SettingsIslandView.h"

#include "core/Notifications.h"
#include "ui/SecondaryButton.h"
#include "ui/Style.h"

#include <QCoreApplication>
#include <QHBoxLayout>

namespace tirlo {

namespace {

/// Left edge of the controls, in points, at the mascot's right.
constexpr int contentLeft = 90;
constexpr int contentRight = 18;

} // namespace

SettingsIslandView::SettingsIslandView(Notifications &notifications, QWidget *parent)
    : CardBackground(std::nullopt, parent)
{
    setAccessibleName(tr("Settings"));
    Notifications *centre = &notifications;
    auto *settings
        = new SecondaryButton(tr("Settings"), {}, [centre] { Q_EMIT centre->openFullSettings(); });
    auto *quit = new SecondaryButton(tr("Quit"), {}, [] { QCoreApplication::quit(); });

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(contentLeft, 0, contentRight, 0);
    row->setSpacing(Style::controlSpacing);
    row->addWidget(settings);
    row->addWidget(quit);
    row->addStretch();
}

} // namespace tirlo

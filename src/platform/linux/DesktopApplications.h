#pragma once

#include "EwmhWindows.h"

#include "platform/Applications.h"

namespace tirlo {

/// Applications by their windows and by their desktop entries.
///
/// Without X no application is seen to run, but they can still be started.
class DesktopApplications final : public Applications
{
public:
    [[nodiscard]] std::vector<RunningApplication> running() const override;
    bool activate(const RunningApplication &application) override;
    bool open(const QString &bundleIdentifier) override;
    bool openUrl(const QUrl &url) override;

private:
    EwmhWindows m_windows;
};

} // namespace tirlo

#pragma once

#include "platform/Screens.h"

#include <QString>

class QScreen;

namespace tirlo {

/// The screens that Qt reports, with the notch that the kernel reports for the built-in one.
class QtScreens final : public Screens
{
public:
    /// `systemRoot` is the folder that /sys and /proc lie in.
    explicit QtScreens(const QString &systemRoot = QString());

    [[nodiscard]] std::vector<ScreenInfo> all() const override;
    [[nodiscard]] std::optional<ScreenInfo> main() const override;
    [[nodiscard]] double statusBarThickness() const override;

private:
    [[nodiscard]] ScreenInfo info(const QScreen &screen) const;

    /// In device pixels; 0 without a notch.
    int m_notchHeight;
};

} // namespace tirlo

#pragma once

#include "platform/Applications.h"

#include <QStringList>

#include <algorithm>

namespace tirlo {

/// Applications that a test lets run and have installed; it keeps what was asked of them.
class FakeApplications final : public Applications
{
public:
    [[nodiscard]] std::vector<RunningApplication> running() const override { return alive; }

    bool activate(const RunningApplication &application) override
    {
        if (std::ranges::find(alive, application) == alive.end())
            return false;
        activated.push_back(application);
        return true;
    }

    bool open(const QString &bundleIdentifier) override
    {
        if (!installed.contains(bundleIdentifier))
            return false;
        opened.append(bundleIdentifier);
        return true;
    }

    bool openUrl(const QUrl &url) override
    {
        pages.append(url.toString());
        return true;
    }

    std::vector<RunningApplication> alive;
    /// Bundle identifiers.
    QStringList installed;

    std::vector<RunningApplication> activated;
    QStringList opened;
    /// Web pages that were opened.
    QStringList pages;
};

} // namespace tirlo

#pragma once

#include "Poller.h"

namespace tirlo {

/// Counts the user's GitHub repositories and the stars of those that were pushed to last.
class GithubPoller final : public Poller
{
public:
    explicit GithubPoller(const PollerContext &context);

private:
    /// Asks for the number of repositories and then for their stars.
    void runCycle() override;
    void fetchUser(const QString &token);
    void fetchStars(const QString &token, qint64 totalRepos);
    [[nodiscard]] HttpRequest request(const QString &path, const QString &token) const;
};

} // namespace tirlo

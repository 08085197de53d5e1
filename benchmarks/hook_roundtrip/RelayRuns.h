#pragma once

#include <QString>

#include <vector>

namespace tirlo {

/// Wall times of whole processes in milliseconds, one an interleaved run.
struct RelayTimes
{
    std::vector<double> interpreter;
    std::vector<double> relay;
};

/// Runs a bare interpreter and the relay by turns, as an agent would, with `home` as their home.
///
/// Blocks its thread; the server belongs to another one.
[[nodiscard]] RelayTimes timeRelayRuns(const QString &home, const QString &relay, int runs);

} // namespace tirlo

#pragma once

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

/// Begins a table of Markdown in the output.
inline void printHeading(const char *title)
{
    std::printf("\n### %s\n\n"
                "| %-44s | %9s | %9s | %6s | %4s |\n|:---|---:|---:|---:|---:|\n",
                title, "", "Tirlo", "floor", "ratio", "goal");
    // Before a child process prints its rows.
    std::fflush(stdout);
}

/// Adds a row to it: what was measured beside the floor of the same run, in the same unit, and the
/// most that their ratio should be, 0 for no goal. False when the goal is missed.
inline bool printRow(const char *what, double value, double floor, double goal = 0)
{
    const double ratio = value / floor;
    std::printf("| %-44s | %9.2f | %9.2f | %6.2f | ", what, value, floor, ratio);
    std::printf(goal > 0 ? "%4.1f |\n" : "   – |\n", goal);
    std::fflush(stdout);
    return goal <= 0 || ratio <= goal;
}

/// The value that a share of all values, 0...1, does not exceed.
inline double percentile(std::vector<double> values, double share)
{
    const auto at = values.begin() + std::ptrdiff_t(double(values.size() - 1) * share);
    std::ranges::nth_element(values, at);
    return *at;
}

inline double median(std::vector<double> values)
{
    return percentile(std::move(values), 0.5);
}

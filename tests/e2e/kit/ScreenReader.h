#pragma once

#include <string>
#include <vector>

namespace tirlo::e2e {

/// What a screen reader says of a program by itself, from what the accessibility bus tells:
/// notifications that come into sight, and whatever gets the focus, with their roles.
class ScreenReader
{
public:
    /// Listens to the program with this process id from now on.
    explicit ScreenReader(long processId);
    ~ScreenReader();

    /// Whether it comes to say this within five seconds, after what was asked for last.
    [[nodiscard]] bool says(const std::string &words);

private:
    struct Ear;

    Ear *m_ear;
    std::size_t m_heard = 0;
};

} // namespace tirlo::e2e

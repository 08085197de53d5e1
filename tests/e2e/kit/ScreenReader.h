#pragma once

#include <memory>
#include <string>

namespace tirlo::e2e {

/// What a screen reader would say of a program by itself, from what the accessibility bus tells:
/// notifications that come into sight, and whatever gets the focus.
class ScreenReader
{
public:
    /// Listens to the program with this process id from now on.
    explicit ScreenReader(long processId);
    ~ScreenReader();

    /// Whether it comes to say this within five seconds, after what it has said when asked last.
    [[nodiscard]] bool waitFor(const std::string &words);

private:
    struct Ear;

    std::unique_ptr<Ear> m_ear;
    std::size_t m_heard = 0;
};

} // namespace tirlo::e2e

#pragma once

#include "platform/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tirlo {

/// Watches a descriptor that it owns and says on the main thread when that turns readable.
///
/// Everything but descriptor() belongs to the main thread.
class ReadSource
{
public:
    /// Watches at once; `onReadable` may cancel the source or let it go.
    ReadSource(FileDescriptor descriptor, std::function<void()> onReadable);

    [[nodiscard]] int descriptor() const { return m_descriptor.get(); }

    /// Stops watching and leaves the descriptor open.
    void suspend();

    /// Stops watching and closes the descriptor.
    void cancel();

private:
    FileDescriptor m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tirlo

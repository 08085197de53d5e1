#include "ReadSource.h"

#include <utility>

namespace tirlo {

ReadSource::ReadSource(FileDescriptor descriptor, std::function<void()> onReadable)
    : m_descriptor(std::move(descriptor))
    , m_notifier(std::make_unique<QSocketNotifier>(m_descriptor.get(), QSocketNotifier::Read))
{
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     std::move(onReadable));
}

void ReadSource::suspend()
{
    m_notifier.reset();
}

void ReadSource::cancel()
{
    // The watch ends first: a closed descriptor's number may stand for something else at once.
    suspend();
    m_descriptor.close();
}

} // namespace tirlo

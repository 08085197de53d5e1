#pragma once

#include "platform/FileDescriptor.h"

#include <QString>

#include <thread>

namespace tirlo {

/// The floor: accepts, and gives each connection a thread that reads a line and writes one back.
class EchoServer
{
public:
    /// Listens at the path until destroyed; the last threads need a moment more.
    explicit EchoServer(const QString &path);
    ~EchoServer();

private:
    FileDescriptor m_listener;
    std::thread m_acceptThread;
};

} // namespace tirlo

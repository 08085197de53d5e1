#pragma once

#include <unistd.h>

#include <utility>

namespace tirlo {

/// A file descriptor with one owner, closed together with it.
class FileDescriptor
{
public:
    FileDescriptor() = default;
    /// Takes the descriptor over; a negative one stands for none.
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        other.close();
        return *this;
    }
    ~FileDescriptor() { close(); }

    /// The descriptor, negative for none.
    [[nodiscard]] int get() const { return m_descriptor; }
    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

    /// Closes the descriptor; from then on there is none.
    void close()
    {
        if (isOpen())
            ::close(std::exchange(m_descriptor, -1));
    }

    /// Gives the descriptor up, which stays open: for good, if nobody takes it over.
    int release() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor = -1;
};

} // namespace tirlo

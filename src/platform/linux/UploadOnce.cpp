#include "UploadOnce.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tirlo {

UploadOnce::UploadOnce(QByteArray bytes, QObject *parent)
    : QIODevice(parent)
    , m_bytes(std::move(bytes))
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 UploadOnce::readData(char *data, qint64 maxSize)
{
    const qint64 count = std::min(maxSize, size() - pos());
    if (count <= 0)
        return -1;
    std::memcpy(data, m_bytes.constData() + pos(), std::size_t(count));
    return count;
}

} // namespace tirlo

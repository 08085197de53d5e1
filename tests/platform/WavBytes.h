#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

#include <cstdint>
#include <vector>

namespace tirlo {

/// The bytes of a wave file of 16 bits with these samples, those of all channels in turn.
inline QByteArray wavBytes(const std::vector<std::int16_t> &samples, int channels = 1,
                           int rate = 48000)
{
    const auto dataSize = quint32(samples.size() * 2);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + dataSize);
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(channels) << quint32(rate)
        << quint32(rate * channels * 2) << quint16(channels * 2) << quint16(16);
    out.writeRawData("data", 4);
    out << dataSize;
    for (const std::int16_t sample : samples)
        out << sample;
    return bytes;
}

} // namespace tirlo

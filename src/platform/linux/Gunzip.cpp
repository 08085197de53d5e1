#include "Gunzip.h"

#include <zlib.h>

#include <array>

namespace tirlo {

std::optional<QByteArray> gunzip(const QByteArray &packed, qsizetype limit)
{
    constexpr int largestWindow = 15;
    constexpr int gzipOnly = 16;

    z_stream stream = {};
    if (inflateInit2(&stream, largestWindow + gzipOnly) != Z_OK)
        return std::nullopt;
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(packed.constData()));
    stream.avail_in = uInt(packed.size());

    QByteArray bytes;
    std::array<char, 64 * 1024> piece;
    int result = Z_OK;
    while (result == Z_OK && bytes.size() <= limit) {
        stream.next_out = reinterpret_cast<Bytef *>(piece.data());
        stream.avail_out = uInt(piece.size());
        result = inflate(&stream, Z_NO_FLUSH);
        bytes.append(piece.data(), qsizetype(piece.size() - stream.avail_out));
    }
    inflateEnd(&stream);
    if (result != Z_STREAM_END || bytes.size() > limit)
        return std::nullopt;
    return bytes;
}

} // namespace tirlo

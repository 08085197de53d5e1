#pragma once

#include <QByteArray>

namespace tirlo {

/// Reads from a stream socket up to the first line feed, which is dropped with all that follows it.
///
/// The end of the stream, an error and the socket's own receive time-out end the line as well, and
/// so does the chunk that takes it past 1,048,576 bytes. What was gathered is returned as it
/// stands.
[[nodiscard]] QByteArray receiveLine(int socket);

/// Writes the text and a line feed to a stream socket; gives up in silence when the peer is gone.
void sendLine(int socket, const QByteArray &text);

} // namespace tirlo

#pragma once

#include <QByteArray>
#include <QIODevice>

namespace tirlo {

/// The body of a request that must not be sent a second time when the connection is lost.
///
/// The network sends such a request anew on its own, which would post a message or a mail twice. A
/// body that can't be rewound makes it fail instead.
class UploadOnce final : public QIODevice
{
public:
    UploadOnce(QByteArray bytes, QObject *parent);

    [[nodiscard]] qint64 size() const override { return m_bytes.size(); }
    bool reset() override { return false; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QByteArray m_bytes;
};

} // namespace tirlo

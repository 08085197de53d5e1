#include "Fuzz.h"
#include "core/model/Decision.h"
#include "hooks/RelayScripts.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace tirlo {

namespace {

/// The relay as agents run it, but in one process for all inputs.
class Relay
{
public:
    struct Result
    {
        QByteArray line;
        QByteArray output;
    };

    Relay()
    {
        const QString script = scratchHome() + "/qv-hook.py";
        put(script, RelayScripts::relay());
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start("/usr/bin/python3", {"-B", TIRLO_RELAY_LOOP, script});
    }

    ~Relay()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }

    Result run(const QByteArray &agent, const QByteArray &payload, const QByteArray &reply)
    {
        for (const QByteArray &part : {agent, payload, reply}) {
            const auto size = quint32(part.size());
            m_process.write(reinterpret_cast<const char *>(&size), sizeof size);
            m_process.write(part);
        }
        const QByteArray line = take();
        return {line, take()};
    }

private:
    QByteArray take()
    {
        quint32 size = 0;
        std::memcpy(&size, read(sizeof size).constData(), sizeof size);
        return read(size);
    }

    QByteArray read(qint64 size)
    {
        while (m_process.bytesAvailable() < size)
            REQUIRE(m_process.waitForReadyRead());
        return m_process.read(size);
    }

    QProcess m_process;
};

/// The decision that the relay printed: "allow", "deny", or "" for none.
QByteArray printed(const QByteArray &agent, const QByteArray &output)
{
    if (output.isEmpty() || output == "{}\n") {
        REQUIRE(output.isEmpty() || agent == "gemini");
        return {};
    }
    REQUIRE(output.endsWith('\n') && output.count('\n') == 1);
    const QJsonObject outer = QJsonDocument::fromJson(output)[u"hookSpecificOutput"].toObject();
    const QJsonObject decision = outer.value(u"decision").toObject();
    REQUIRE(outer.value(u"hookEventName").toString() == QLatin1String("PermissionRequest"));
    REQUIRE(agent != "codex" || !decision.contains(u"updatedPermissions"));
    const QByteArray behavior = decision.value(u"behavior").toString().toLatin1();
    REQUIRE(behavior == "allow" || behavior == "deny");
    return behavior;
}

} // namespace

/// The agent by the first byte, a payload, a zero, and the bytes that come back on the socket.
void fuzz(const QByteArray &input)
{
    static Relay relay;
    if (input.isEmpty())
        return;
    const QByteArray agent
        = QList<QByteArray>{"", "codex", "gemini"}[std::uint8_t(input.front()) % 3];
    const qsizetype split = std::max(input.indexOf('\0', 1), qsizetype(1));
    const QByteArray told = input.mid(split + 1);
    const auto [line, output] = relay.run(agent, input.first(split).mid(1), told);
    REQUIRE(line.isEmpty() || (line.endsWith('\n') && line.count('\n') == 1));
    const QByteArray behavior = printed(agent, output);
    const QJsonDocument reply = QJsonDocument::fromJson(told);
    if (behavior.isEmpty() || !reply.isObject())
        return;
    const auto decision = fromRawText<Decision>(reply[u"permissionDecision"].toString());
    REQUIRE(decision && decision != Decision::ask);
    REQUIRE((behavior == "deny") == (decision == Decision::deny));
}

} // namespace tirlo

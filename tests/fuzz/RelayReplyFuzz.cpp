#include "Fuzz.h"
#include "HookRig.h"
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

QByteArray meaningOf(const QByteArray &decision)
{
    return decision == "always" ? "allow" : decision == "ask" ? "" : decision;
}

} // namespace

/// The agent by the first byte, a payload, a zero, and what answers it: the bytes on the socket, or
/// if the first byte is odd the decision that the program is told.
void fuzz(const QByteArray &input)
{
    static Relay relay;
    if (input.isEmpty())
        return;
    const auto selector = std::uint8_t(input.front());
    const QByteArray agent = QList<QByteArray>{"codex", "gemini", ""}[selector / 2 % 3];
    const qsizetype split = std::max(input.indexOf('\0', 1), qsizetype(1));
    const QByteArray payload = input.first(split).mid(1);
    const QByteArray told = input.mid(split + 1);

    if (selector % 2 == 0) {
        const auto [line, output] = relay.run(agent, payload, told);
        REQUIRE(line.isEmpty() || (line.endsWith('\n') && line.count('\n') == 1));
        const QByteArray decision = printed(agent, output);
        if (const QJsonDocument reply = QJsonDocument::fromJson(told);
            reply.isObject() && !decision.isEmpty())
            REQUIRE(decision == meaningOf(reply[u"permissionDecision"].toString().toUtf8()));
        return;
    }

    // The whole road: the line as the relay sends it, the program's reply, and the relay's reading.
    const auto [line, nothing] = relay.run(agent, payload, {});
    REQUIRE(printed(agent, nothing).isEmpty());
    if (line.isEmpty())
        return;
    HookRig rig;
    Peer peer = rig.tell(line.chopped(1));
    if (!rig.wasRequest)
        return;
    const bool isShown = rig.state.pendingApproval.value().has_value();
    const QString word = QString::fromUtf8(told);
    rig.desk.sendApprovalDecision(word);
    rig.settleWriters();
    const QByteArray reply = peer.receiveAll();
    REQUIRE(isReply(reply));
    const QByteArray known
        = QList<QByteArray>{"allow", "always", "ask"}.contains(told) ? told : "deny";
    const QByteArray meant = isShown ? meaningOf(known) : QByteArray();
    REQUIRE(printed(agent, relay.run(agent, payload, reply).output) == meant);
}

} // namespace tirlo

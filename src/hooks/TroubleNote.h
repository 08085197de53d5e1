#pragma once

#include "HookContext.h"

#include <QObject>
#include <QProperty>

#include <optional>

namespace tirlo {

/// Says on the island what keeps agents from reaching it: once, and not in place of the greeting or
/// of a request.
class TroubleNote : public QObject
{
    Q_OBJECT

public:
    explicit TroubleNote(const HookContext &context, QObject *parent = nullptr);

    /// Takes what is the matter, in words that continue "Agents can't reach Tirlo:"; "" ends it.
    void set(const QString &trouble);

private:
    void follow();
    void sayWhenFree();

    const HookContext m_context;
    QString m_note;
    bool m_isSaid = false;
    std::optional<QPropertyNotifier> m_view;
    std::optional<QPropertyNotifier> m_request;
};

} // namespace tirlo

#pragma once

#include <QString>

#include <exception>
#include <utility>

namespace tirlo {

/// Why an agent's settings file was left as it is, in words for the user.
class HookError final : public std::exception
{
public:
    /// A fault, or merely that there was nothing to do.
    enum class Domain { tirlo, tirloNoop };

    explicit HookError(QString message, Domain domain = Domain::tirlo)
        : m_message(std::move(message))
        , m_domain(domain)
    {
    }

    [[nodiscard]] QString message() const { return m_message; }
    [[nodiscard]] Domain domain() const { return m_domain; }
    [[nodiscard]] const char *what() const noexcept override { return "hooks not written"; }

private:
    QString m_message;
    Domain m_domain;
};

} // namespace tirlo

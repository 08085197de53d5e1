#pragma once

#include "Poller.h"
#include "ServicePill.h"
#include "core/model/Services.h"
#include "ui/motion/Animated.h"

namespace tirlo {

/// Keeps the balance and the latest charges of the user's Stripe account, and celebrates new ones.
class StripePoller final : public Poller
{
public:
    explicit StripePoller(const PollerContext &context);

    /// The balance on its way to what the store says is shown, in the currency's smallest unit.
    ///
    /// It counts up after a new charge and changes in the same instant as the store's value, before
    /// the store's observers hear of it; in between it is at rest.
    [[nodiscard]] const Animated<double> &displayBalance() const { return m_displayBalance; }

private:
    /// What the account holds, all of it taken for one currency.
    struct Balance
    {
        QString currency;
        qint64 amount = 0;
    };

    static std::optional<Balance> parseBalance(const QByteArray &body);

    /// Asks for the balance and for the charges, at the same time.
    void runCycle() override;
    void fetchBalance(const QString &key);
    void fetchCharges(const QString &key);
    void handleBalance(const Balance &balance);
    /// Reacts to the charges that a cycle brought, newest first.
    void handleCharges(const QList<StripePayment> &list);
    void showBalance(const Animation &animation);
    [[nodiscard]] HttpRequest request(const QString &path, const QString &key) const;

    ServicePill m_pill;
    QString m_lastChargeId;
    Animated<double> m_displayBalance;
};

} // namespace tirlo

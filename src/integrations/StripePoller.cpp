#include "StripePoller.h"

#include "core/AppState.h"
#include "core/ServiceData.h"

namespace tirlo {

namespace {

constexpr qsizetype shownCharges = 3;
/// Seconds from the pill's news to the start of the count.
constexpr double countDelay = 0.5;
/// Seconds of the count.
constexpr double countDuration = 1.2;

std::optional<StripePayment> parseCharge(const QJsonObject &object)
{
    const auto id = Json::text(object, QLatin1String("id"));
    const auto amount = Json::integer(object, QLatin1String("amount"));
    const auto currency = Json::text(object, QLatin1String("currency"));
    const auto status = Json::text(object, QLatin1String("status"));
    if (!id || !amount || !currency || !status)
        return std::nullopt;

    auto description = Json::text(object, QLatin1String("description"));
    if (!description) {
        if (const auto billing = Json::object(object, QLatin1String("billing_details")))
            description = Json::text(*billing, QLatin1String("name"));
    }
    return StripePayment{
        .id = *id,
        .amount = *amount,
        .currency = *currency,
        .description = description,
        .createdAt = dateSinceEpoch(Json::number(object, QLatin1String("created")).value_or(0)),
        .status = *status,
    };
}

/// Every charge, also the failed ones, in the service's order.
std::optional<QList<StripePayment>> parseCharges(const QByteArray &body)
{
    return parsedList(answeredObject(body), QLatin1String("data"), parseCharge);
}

} // namespace

StripePoller::StripePoller(const PollerContext &context)
    : Poller(context, {.firstAfterStart = 6, .interval = 30})
    , m_pill(m_context, QStringLiteral("integration_stripe"), {BotState::finished})
    , m_displayBalance(double(m_context.state.services().stripeDisplayBalance.value()))
{
}

void StripePoller::runCycle()
{
    const auto key = this->key(QLatin1String("stripe-api-key"));
    if (!key)
        return;
    fetchBalance(*key);
    fetchCharges(*key);
}

HttpRequest StripePoller::request(const QString &path, const QString &key) const
{
    // The key is the user's name, and the password is empty.
    return {
        .url = QUrl(m_context.hosts.stripe + path),
        .headers = {{"Authorization", "Basic " + (key.toUtf8() + ':').toBase64()}},
    };
}

void StripePoller::fetchBalance(const QString &key)
{
    const auto accept = [this](const Balance &balance) { handleBalance(balance); };
    const auto fail = [this](const HttpReply &reply) {
        m_context.state.services().stripeError = reply.status == 403
            ? QStringLiteral("Use secret key (sk_live_… not pk_live_…)")
            : failureText(reply);
    };
    fetch(request(QStringLiteral("/v1/balance"), key), parseBalance, accept, fail);
}

std::optional<StripePoller::Balance> StripePoller::parseBalance(const QByteArray &body)
{
    const QJsonObject answer = answeredObject(body);
    const QList<QJsonObject> none;
    const QList<QJsonObject> funds
        = Json::objects(answer, QLatin1String("available")).value_or(none)
        + Json::objects(answer, QLatin1String("pending")).value_or(none);
    if (funds.isEmpty())
        return std::nullopt;
    const auto currency = Json::text(funds.first(), QLatin1String("currency"));
    if (!currency)
        return std::nullopt;

    Balance balance{.currency = *currency};
    for (const QJsonObject &fund : funds) {
        const qint64 amount = Json::integer(fund, QLatin1String("amount")).value_or(0);
        balance.amount = boundedSum(balance.amount, amount);
    }
    return balance;
}

void StripePoller::handleBalance(const Balance &balance)
{
    AppState &state = m_context.state;
    state.services().stripeError = std::nullopt;
    state.services().stripeCurrency = balance.currency;
    state.services().stripeBalance = balance.amount;
    // A number that is on show waits for the charge that it will count up for.
    if (state.services().stripeDisplayBalance == 0)
        showBalance(Animation::none());
    state.services().stripeLoaded = true;
}

void StripePoller::fetchCharges(const QString &key)
{
    const auto accept = [this](const QList<StripePayment> &list) { handleCharges(list); };
    fetch(request(QStringLiteral("/v1/charges?limit=3"), key), parseCharges, accept);
}

void StripePoller::handleCharges(const QList<StripePayment> &list)
{
    AppState &state = m_context.state;
    if (state.services().stripePayments.value().isEmpty()) {
        // What was sold before the start is no news.
        state.services().stripePayments = list;
        m_lastChargeId = list.isEmpty() ? QString() : list.first().id;
        showBalance(Animation::none());
        state.services().stripeLoaded = true;
        return;
    }
    if (list.isEmpty() || list.first().id == m_lastChargeId)
        return;
    const StripePayment &charge = list.first();
    m_lastChargeId = charge.id;

    if (!m_pill.exists())
        return;
    state.services().stripePayments
        = (QList{charge} + state.services().stripePayments.value()).mid(0, shownCharges);
    m_pill.show(
        BotState::finished,
        {charge.description.value_or(QString::asprintf("%.2f", double(charge.amount) / 100))});
    m_context.queue.after(countDelay, &m_life,
                          [this] { showBalance(TimingCurve::easeOut(countDuration)); });
}

void StripePoller::showBalance(const Animation &animation)
{
    const qint64 balance = m_context.state.services().stripeBalance;
    m_displayBalance.animateTo(double(balance), animation, m_context.queue.mediaTime());
    m_context.state.services().stripeDisplayBalance = balance;
}

} // namespace tirlo

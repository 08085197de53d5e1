#include "Keyring.h"

#include "platform/Utf8.h"

#include <QFile>

#include <algorithm>

namespace tirlo {

namespace {

constexpr char serviceName[] = "org.skerryapp.Skerry";

const SecretSchema *schema()
{
    static const SecretSchema *value = secret_schema_new(serviceName, SECRET_SCHEMA_NONE, "service",
                                                         SECRET_SCHEMA_ATTRIBUTE_STRING, "account",
                                                         SECRET_SCHEMA_ATTRIBUTE_STRING, nullptr);
    return value;
}

struct UnrefTable
{
    void operator()(GHashTable *table) const { g_hash_table_unref(table); }
};
using Attributes = std::unique_ptr<GHashTable, UnrefTable>;

Attributes attributesOf(const QByteArray &account)
{
    return Attributes(secret_attributes_build(schema(), "service", serviceName, "account",
                                              account.constData(), nullptr));
}

/// True where a session bus can be reached; asking for one elsewhere would start one.
bool hasSessionBus()
{
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")
        || QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

/// The secret's text; nothing when it is locked or no UTF-8.
std::optional<QString> textOf(SecretItem *item)
{
    SecretValue *secret = secret_item_get_secret(item);
    if (!secret)
        return std::nullopt;
    gsize length = 0;
    const char *bytes = secret_value_get(secret, &length);
    auto text = textFromUtf8(QByteArrayView(bytes, qsizetype(length)));
    secret_value_unref(secret);
    return text;
}

QString accountOf(SecretItem *item)
{
    const Attributes attributes(secret_item_get_attributes(item));
    return QString::fromUtf8(
        static_cast<const char *>(g_hash_table_lookup(attributes.get(), "account")));
}

bool isLocked(GList *item)
{
    return secret_item_get_locked(SECRET_ITEM(item->data));
}

} // namespace

Keyring::Keyring(double answerLimit)
    : m_answerLimit(answerLimit)
    , m_deadline(qint64(answerLimit * 1000))
{
    if (!hasSessionBus())
        return;
    const auto bus = await([](GCancellable *cancellable, GAsyncReadyCallback done, void *data) {
        g_bus_get(G_BUS_TYPE_SESSION, cancellable, done, data);
    });
    m_bus.reset(g_bus_get_finish(bus.get(), nullptr));
    if (!m_bus)
        return;
    // The end of the bus would otherwise be the end of the program.
    g_dbus_connection_set_exit_on_close(m_bus.get(), FALSE);

    const auto service = await([](GCancellable *cancellable, GAsyncReadyCallback done, void *data) {
        secret_service_open(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION, cancellable,
                            done, data);
    });
    m_service.reset(secret_service_open_finish(service.get(), nullptr));
}

Keyring::~Keyring()
{
    m_service.reset();
    m_bus.reset();
    // What listened on the bus is only given back from the context.
    while (g_main_context_iteration(m_context.get(), FALSE)) { }
}

std::optional<QHash<QString, QString>> Keyring::items(GCancellable *asking)
{
    auto found = search();
    if (!found)
        return std::nullopt;

    GList *locked = nullptr;
    for (GList *item = found->get(); item; item = item->next) {
        if (isLocked(item))
            locked = g_list_prepend(locked, item->data);
    }
    if (locked) {
        const auto start = [&](GCancellable *cancellable, GAsyncReadyCallback done, void *data) {
            secret_service_unlock(m_service.get(), locked, cancellable, done, data);
        };
        const auto result = await(start, asking);
        m_deadline.setRemainingTime(qint64(m_answerLimit * 1000));
        const int unlocked
            = secret_service_unlock_finish(m_service.get(), result.get(), nullptr, nullptr);
        g_list_free(locked);
        if (unlocked > 0)
            found = search();
        if (!found)
            return std::nullopt;
    }

    QHash<QString, QString> texts;
    for (GList *item = found->get(); item; item = item->next) {
        auto *secret = SECRET_ITEM(item->data);
        const QString account = accountOf(secret);
        if (const auto text = textOf(secret); text && !texts.contains(account))
            texts.insert(account, *text);
    }
    return texts;
}

bool Keyring::save(const QString &account, const QString &text)
{
    if (!isWritable() || !clear(account))
        return false;

    const QByteArray accountBytes = account.toUtf8();
    const QByteArray bytes = text.toUtf8();
    const QByteArray label = "Tirlo: " + accountBytes;
    const Attributes attributes = attributesOf(accountBytes);
    SecretValue *value = secret_value_new(bytes.constData(), bytes.size(), "text/plain");
    const auto result = await([&](GCancellable *cancellable, GAsyncReadyCallback done, void *data) {
        secret_service_store(m_service.get(), schema(), attributes.get(), SECRET_COLLECTION_DEFAULT,
                             label.constData(), value, cancellable, done, data);
    });
    secret_value_unref(value);
    return secret_service_store_finish(m_service.get(), result.get(), nullptr);
}

bool Keyring::remove(const QString &account)
{
    return isWritable() && clear(account);
}

std::optional<Keyring::Items> Keyring::search()
{
    const Attributes attributes(secret_attributes_build(schema(), "service", serviceName, nullptr));
    const auto flags = SecretSearchFlags(SECRET_SEARCH_ALL | SECRET_SEARCH_LOAD_SECRETS);
    const auto result = await([&](GCancellable *cancellable, GAsyncReadyCallback done, void *data) {
        secret_service_search(m_service.get(), schema(), attributes.get(), flags, cancellable, done,
                              data);
    });
    GError *error = nullptr;
    Items items(secret_service_search_finish(m_service.get(), result.get(), &error));
    if (!error)
        return items;
    g_error_free(error);
    return std::nullopt;
}

bool Keyring::isWritable()
{
    const auto result = await([&](GCancellable *cancellable, GAsyncReadyCallback done, void *data) {
        secret_collection_for_alias(m_service.get(), SECRET_COLLECTION_DEFAULT,
                                    SECRET_COLLECTION_NONE, cancellable, done, data);
    });
    const Reference<SecretCollection> collection(
        secret_collection_for_alias_finish(result.get(), nullptr));
    return collection && !secret_collection_get_locked(collection.get());
}

bool Keyring::clear(const QString &account)
{
    const Attributes attributes = attributesOf(account.toUtf8());
    const auto result = await([&](GCancellable *cancellable, GAsyncReadyCallback done, void *data) {
        secret_service_clear(m_service.get(), schema(), attributes.get(), cancellable, done, data);
    });
    GError *error = nullptr;
    secret_service_clear_finish(m_service.get(), result.get(), &error);
    if (!error)
        return true;
    g_error_free(error);
    return false;
}

Keyring::Reference<GAsyncResult> Keyring::await(const Start &start)
{
    const Reference<GCancellable> cancellable(g_cancellable_new());
    GSource *limit = g_timeout_source_new(guint(m_deadline.remainingTime()));
    g_source_set_callback(
        limit,
        [](void *data) -> gboolean {
            g_cancellable_cancel(static_cast<GCancellable *>(data));
            return G_SOURCE_REMOVE;
        },
        cancellable.get(), nullptr);
    g_source_attach(limit, m_context.get());
    auto result = await(start, cancellable.get());
    g_source_destroy(limit);
    g_source_unref(limit);
    return result;
}

Keyring::Reference<GAsyncResult> Keyring::await(const Start &start, GCancellable *cancellable)
{
    g_main_context_push_thread_default(m_context.get());
    GAsyncResult *result = nullptr;
    start(
        cancellable,
        [](GObject *, GAsyncResult *outcome, void *data) {
            *static_cast<GAsyncResult **>(data) = G_ASYNC_RESULT(g_object_ref(outcome));
        },
        &result);
    while (!result)
        g_main_context_iteration(m_context.get(), TRUE);
    g_main_context_pop_thread_default(m_context.get());
    return Reference<GAsyncResult>(result);
}

} // namespace tirlo

#pragma once

#include <libsecret/secret.h>

#include <QDeadlineTimer>
#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace tirlo {

/// This program's items in the desktop's Secret Service, each found by service and account.
///
/// All calls block, together at most for the time that answers may take. They belong to the thread
/// that opened it.
class Keyring
{
public:
    /// Connects to the service; see isOpen(). All answers may take `answerLimit` seconds, which
    /// begin anew when the user has been asked.
    explicit Keyring(double answerLimit);
    ~Keyring();
    Keyring(const Keyring &) = delete;
    Keyring &operator=(const Keyring &) = delete;

    [[nodiscard]] bool isOpen() const { return m_service != nullptr; }

    /// The texts of all items by account.
    ///
    /// Where items are locked the user is asked to unlock them, for as long as it takes or until
    /// `asking` is cancelled; the items that stay locked are missing. Nothing without an answer.
    [[nodiscard]] std::optional<QHash<QString, QString>> items(GCancellable *asking);

    /// Deletes what stands under the account and adds the text; false, without asking the user,
    /// when the keyring is locked or the service fails.
    bool save(const QString &account, const QString &text);

    /// Deletes what stands under the account; false as for save().
    bool remove(const QString &account);

private:
    template<typename T>
    struct Unref
    {
        void operator()(T *object) const { g_object_unref(object); }
    };
    template<typename T>
    using Reference = std::unique_ptr<T, Unref<T>>;
    struct FreeItems
    {
        void operator()(GList *items) const { g_list_free_full(items, g_object_unref); }
    };
    using Items = std::unique_ptr<GList, FreeItems>;
    struct UnrefContext
    {
        void operator()(GMainContext *context) const { g_main_context_unref(context); }
    };

    using Start = std::function<void(GCancellable *, GAsyncReadyCallback, void *)>;

    /// Runs an asynchronous call to its end, however that is; gives it up at the deadline.
    [[nodiscard]] Reference<GAsyncResult> await(const Start &start);
    [[nodiscard]] Reference<GAsyncResult> await(const Start &start, GCancellable *cancellable);
    [[nodiscard]] std::optional<Items> search();
    [[nodiscard]] bool isWritable();
    bool clear(const QString &account);

    const double m_answerLimit;
    QDeadlineTimer m_deadline;
    // Answers arrive here and nowhere else in the program.
    std::unique_ptr<GMainContext, UnrefContext> m_context{g_main_context_new()};
    Reference<GDBusConnection> m_bus;
    Reference<SecretService> m_service;
};

} // namespace tirlo

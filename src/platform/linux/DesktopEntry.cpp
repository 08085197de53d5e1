#include "DesktopEntry.h"

#include <QUrl>

#include <csignal>
#include <memory>
#include <unistd.h>

#include <gio/gdesktopappinfo.h>

namespace tirlo {

namespace {

struct Unref
{
    void operator()(GDesktopAppInfo *entry) const { g_object_unref(entry); }
};

using Entry = std::unique_ptr<GDesktopAppInfo, Unref>;

Entry find(const QString &id)
{
    return Entry(g_desktop_app_info_new((id + QStringLiteral(".desktop")).toUtf8().constData()));
}

/// Runs in the new process, between fork and exec.
void standAlone(void *)
{
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int number : {SIGPIPE, SIGCHLD, SIGHUP, SIGINT, SIGQUIT, SIGTERM})
        std::signal(number, SIG_DFL);
    setsid();
}

bool start(GDesktopAppInfo *entry, GList *uris)
{
    constexpr auto flags = GSpawnFlags(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL
                                       | G_SPAWN_STDERR_TO_DEV_NULL);
    return g_desktop_app_info_launch_uris_as_manager(entry, uris, nullptr, flags, standAlone,
                                                     nullptr, nullptr, nullptr, nullptr);
}

} // namespace

std::optional<QString> DesktopEntry::name(const QString &id)
{
    const Entry entry = find(id);
    if (!entry)
        return std::nullopt;
    return QString::fromUtf8(g_app_info_get_display_name(G_APP_INFO(entry.get())));
}

bool DesktopEntry::launch(const QString &id)
{
    const Entry entry = find(id);
    return entry && start(entry.get(), nullptr);
}

bool DesktopEntry::launchHandlerOf(const QUrl &url)
{
    GAppInfo *handler = g_app_info_get_default_for_uri_scheme(url.scheme().toUtf8().constData());
    if (!handler)
        return false;
    const Entry entry(G_DESKTOP_APP_INFO(handler));
    QByteArray address = url.toEncoded();
    GList uris{address.data(), nullptr, nullptr};
    return start(entry.get(), &uris);
}

} // namespace tirlo

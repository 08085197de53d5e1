#include "EntryWatch.h"

#include <QFile>
#include <QFileInfo>

#include <sys/inotify.h>

#include <array>
#include <cstring>
#include <utility>

namespace tirlo {

namespace {

// One folder may be on the way twice, through a link.
constexpr std::uint32_t itself = IN_MOVE_SELF | IN_DELETE_SELF | IN_ONLYDIR | IN_MASK_ADD;
constexpr std::uint32_t entries
    = itself | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB;

} // namespace

EntryWatch::EntryWatch(QString path)
    : m_path(std::move(path))
{
}

void EntryWatch::renew()
{
    m_events = FileDescriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    m_entries = -1;
    QString entry = m_path;
    for (;;) {
        const QString folder = QFileInfo(entry).path();
        if (folder == entry || folder == QLatin1String("/") || folder == QLatin1String("."))
            break;
        const bool isNearest = m_entries < 0;
        const int watch = inotify_add_watch(m_events.get(), QFile::encodeName(folder).constData(),
                                            isNearest ? entries : itself);
        if (isNearest && watch >= 0) {
            m_entries = watch;
            m_name = QFile::encodeName(QFileInfo(entry).fileName());
        }
        entry = folder;
    }
    if (m_entries < 0)
        m_events.close();
}

bool EntryWatch::takeChange()
{
    bool isAboutTheFile = false;
    alignas(inotify_event) std::array<char, 4096> buffer;
    for (;;) {
        const ssize_t count = read(m_events.get(), buffer.data(), buffer.size());
        if (count <= 0)
            return isAboutTheFile;
        for (ssize_t at = 0; at < count;) {
            inotify_event event{};
            std::memcpy(&event, &buffer[std::size_t(at)], sizeof event);
            const char *name = buffer.data() + at + sizeof event;
            isAboutTheFile |= event.wd != m_entries || event.len == 0 || m_name == name;
            at += ssize_t(sizeof event + event.len);
        }
    }
}

} // namespace tirlo

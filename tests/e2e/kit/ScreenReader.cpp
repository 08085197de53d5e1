#include "ScreenReader.h"

#include "Desktop.h"

#include <atspi/atspi.h>

#include <algorithm>

namespace tirlo::e2e {

namespace {

constexpr const char *events[]{"object:state-changed:showing", "object:state-changed:focused"};

} // namespace

struct ScreenReader::Ear
{
    static void hear(AtspiEvent *event, void *data)
    {
        auto *ear = static_cast<Ear *>(data);
        AtspiAccessible *source = event->source;
        const bool isFocus = std::string(event->type) == events[1];
        if (event->detail1 != 0
            && long(atspi_accessible_get_process_id(source, nullptr)) == ear->processId
            && (isFocus || atspi_accessible_get_role(source, nullptr) == ATSPI_ROLE_NOTIFICATION)) {
            atspi_accessible_clear_cache(source);
            char *name = atspi_accessible_get_name(source, nullptr);
            char *role = atspi_accessible_get_role_name(source, nullptr);
            ear->spoken.push_back(std::string(name ? name : "") + ", " + (role ? role : ""));
            g_free(name);
            g_free(role);
        }
        g_boxed_free(ATSPI_TYPE_EVENT, event);
    }

    long processId;
    AtspiEventListener *listener = atspi_event_listener_new(&Ear::hear, this, nullptr);
    std::vector<std::string> spoken = {};
};

ScreenReader::ScreenReader(long processId)
{
    static_cast<void>(atspi_init());
    m_ear = new Ear{processId};
    for (const char *event : events)
        atspi_event_listener_register(m_ear->listener, event, nullptr);
}

ScreenReader::~ScreenReader()
{
    for (const char *event : events)
        atspi_event_listener_deregister(m_ear->listener, event, nullptr);
    g_object_unref(m_ear->listener);
    delete m_ear;
}

bool ScreenReader::says(const std::string &words)
{
    return waitUntil([&] {
        const auto first = m_ear->spoken.begin();
        const auto found = std::find(first + std::ptrdiff_t(m_heard), m_ear->spoken.end(), words);
        if (found == m_ear->spoken.end())
            return false;
        m_heard = std::size_t(found - first) + 1;
        return true;
    });
}

} // namespace tirlo::e2e

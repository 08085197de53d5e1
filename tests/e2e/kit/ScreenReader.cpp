#include "ScreenReader.h"

#include "Desktop.h"

#include <atspi/atspi.h>

#include <algorithm>
#include <vector>

namespace tirlo::e2e {

namespace {

constexpr const char *events[]{"object:state-changed:showing", "object:state-changed:focused"};

std::string take(char *text)
{
    const std::string taken = text ? text : "";
    g_free(text);
    return taken;
}

} // namespace

struct ScreenReader::Ear
{
    long processId = 0;
    AtspiEventListener *listener = nullptr;
    std::vector<std::string> spoken;

    static void hear(AtspiEvent *event, void *data)
    {
        static_cast<Ear *>(data)->hear(*event);
        g_boxed_free(ATSPI_TYPE_EVENT, event);
    }

    void hear(const AtspiEvent &event)
    {
        if (event.detail1 == 0
            || long(atspi_accessible_get_process_id(event.source, nullptr)) != processId)
            return;
        atspi_accessible_clear_cache(event.source);
        const bool isNotification
            = atspi_accessible_get_role(event.source, nullptr) == ATSPI_ROLE_NOTIFICATION;
        const bool isFocus = std::string(event.type).find("focused") != std::string::npos;
        if (!isNotification && !isFocus)
            return;
        const std::string name = take(atspi_accessible_get_name(event.source, nullptr));
        const std::string role = take(atspi_accessible_get_role_name(event.source, nullptr));
        spoken.push_back(isFocus ? name + " " + role : role + " " + name);
    }
};

ScreenReader::ScreenReader(long processId)
    : m_ear(std::make_unique<Ear>())
{
    m_ear->processId = processId;
    static_cast<void>(atspi_init());
    m_ear->listener = atspi_event_listener_new(&Ear::hear, m_ear.get(), nullptr);
    for (const char *event : events)
        atspi_event_listener_register(m_ear->listener, event, nullptr);
}

ScreenReader::~ScreenReader()
{
    for (const char *event : events)
        atspi_event_listener_deregister(m_ear->listener, event, nullptr);
    g_object_unref(m_ear->listener);
}

bool ScreenReader::waitFor(const std::string &words)
{
    return waitUntil([&] {
        const auto &all = m_ear->spoken;
        const auto found = std::find(all.begin() + std::ptrdiff_t(m_heard), all.end(), words);
        if (found == all.end())
            return false;
        m_heard = std::size_t(found - all.begin()) + 1;
        return true;
    });
}

} // namespace tirlo::e2e

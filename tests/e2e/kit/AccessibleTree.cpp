#include "AccessibleTree.h"

#include <atspi/atspi.h>

#include <algorithm>
#include <functional>
#include <memory>

namespace tirlo::e2e {

namespace {

struct Release
{
    void operator()(void *object) const { g_object_unref(object); }
    void operator()(char *text) const { g_free(text); }
    void operator()(AtspiRect *rect) const { g_free(rect); }
};

template<typename T>
using Owned = std::unique_ptr<T, Release>;

std::string takeText(char *text)
{
    const Owned<char> owned(text);
    return text ? text : "";
}

void forEachChild(AtspiAccessible *parent, const std::function<void(AtspiAccessible *)> &visit)
{
    const int count = atspi_accessible_get_child_count(parent, nullptr);
    for (int i = 0; i < count; ++i) {
        const Owned<AtspiAccessible> child(atspi_accessible_get_child_at_index(parent, i, nullptr));
        if (!child)
            continue;
        atspi_accessible_clear_cache(child.get());
        visit(child.get());
    }
}

/// What a box of text holds; the beginning of a long one.
std::string contentOf(AtspiAccessible *node)
{
    constexpr int longest = 10000;
    const Owned<AtspiText> text(atspi_accessible_get_text_iface(node));
    if (!text)
        return {};
    const int length = atspi_text_get_character_count(text.get(), nullptr);
    return takeText(atspi_text_get_text(text.get(), 0, std::clamp(length, 0, longest), nullptr));
}

void collect(AtspiAccessible *node, std::vector<AccessibleNode> &nodes)
{
    const Owned<AtspiStateSet> states(atspi_accessible_get_state_set(node));
    if (!states || !atspi_state_set_contains(states.get(), ATSPI_STATE_SHOWING))
        return;
    AccessibleNode described{takeText(atspi_accessible_get_name(node, nullptr)),
                             takeText(atspi_accessible_get_role_name(node, nullptr)),
                             {},
                             contentOf(node)};
    const Owned<AtspiComponent> component(atspi_accessible_get_component_iface(node));
    if (const Owned<AtspiRect> rect{component ? atspi_component_get_extents(
                                        component.get(), ATSPI_COORD_TYPE_SCREEN, nullptr)
                                              : nullptr})
        described.place = {rect->x, rect->y, rect->width, rect->height};
    nodes.push_back(described);
    forEachChild(node, [&](AtspiAccessible *child) { collect(child, nodes); });
}

} // namespace

std::vector<AccessibleNode> visibleNodes(long processId)
{
    static const bool ready = atspi_init() <= 1;
    std::vector<AccessibleNode> nodes;
    const Owned<AtspiAccessible> desktop(ready ? atspi_get_desktop(0) : nullptr);
    if (!desktop)
        return nodes;
    atspi_accessible_clear_cache(desktop.get());
    forEachChild(desktop.get(), [&](AtspiAccessible *application) {
        // The application itself is never "showing"; its windows are.
        if (long(atspi_accessible_get_process_id(application, nullptr)) == processId)
            forEachChild(application, [&](AtspiAccessible *window) { collect(window, nodes); });
    });
    return nodes;
}

std::optional<AccessibleNode> findNode(long processId, const std::string &role,
                                       const std::string &name)
{
    for (const AccessibleNode &node : visibleNodes(processId)) {
        if (node.role == role && node.name == name)
            return node;
    }
    return std::nullopt;
}

bool showsText(long processId, const std::string &text)
{
    return std::ranges::any_of(visibleNodes(processId), [&](const AccessibleNode &node) {
        return node.name.find(text) != std::string::npos
            || node.content.find(text) != std::string::npos;
    });
}

} // namespace tirlo::e2e

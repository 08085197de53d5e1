#include "AccessibleTree.h"

#include <atspi/atspi.h>

#include <functional>
#include <memory>

namespace tirlo::e2e {

namespace {

struct Unref
{
    void operator()(void *object) const { g_object_unref(object); }
};

using Accessible = std::unique_ptr<AtspiAccessible, Unref>;

std::string takeText(char *text)
{
    std::string copy = text ? text : "";
    g_free(text);
    return copy;
}

bool hasState(AtspiAccessible *node, AtspiStateType state)
{
    const std::unique_ptr<AtspiStateSet, Unref> states(atspi_accessible_get_state_set(node));
    return states && atspi_state_set_contains(states.get(), state);
}

void forEachChild(AtspiAccessible *parent, const std::function<void(AtspiAccessible *)> &visit)
{
    const int count = atspi_accessible_get_child_count(parent, nullptr);
    for (int i = 0; i < count; ++i) {
        if (const Accessible child{atspi_accessible_get_child_at_index(parent, i, nullptr)})
            visit(child.get());
    }
}

AccessibleNode describe(AtspiAccessible *node)
{
    AccessibleNode described;
    described.name = takeText(atspi_accessible_get_name(node, nullptr));
    described.role = takeText(atspi_accessible_get_role_name(node, nullptr));
    AtspiComponent *component = atspi_accessible_get_component_iface(node);
    if (!component)
        return described;
    if (AtspiRect *rect
        = atspi_component_get_extents(component, ATSPI_COORD_TYPE_SCREEN, nullptr)) {
        described.x = rect->x;
        described.y = rect->y;
        described.width = rect->width;
        described.height = rect->height;
        g_free(rect);
    }
    g_object_unref(component);
    return described;
}

void collect(AtspiAccessible *node, std::vector<AccessibleNode> &nodes)
{
    atspi_accessible_clear_cache(node);
    if (!hasState(node, ATSPI_STATE_SHOWING))
        return;
    nodes.push_back(describe(node));
    forEachChild(node, [&](AtspiAccessible *child) { collect(child, nodes); });
}

} // namespace

std::vector<AccessibleNode> visibleNodes(long processId)
{
    static const bool ready = atspi_init() <= 1;
    std::vector<AccessibleNode> nodes;
    const Accessible desktop{ready ? atspi_get_desktop(0) : nullptr};
    if (!desktop)
        return nodes;
    atspi_accessible_clear_cache(desktop.get());
    forEachChild(desktop.get(), [&](AtspiAccessible *application) {
        if (long(atspi_accessible_get_process_id(application, nullptr)) != processId)
            return;
        // The application itself is never "showing"; its windows are.
        atspi_accessible_clear_cache(application);
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
    for (const AccessibleNode &node : visibleNodes(processId)) {
        if (node.name.find(text) != std::string::npos)
            return true;
    }
    return false;
}

} // namespace tirlo::e2e

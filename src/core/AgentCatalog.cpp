#include "AgentCatalog.h"

#include <algorithm>

namespace tirlo::AgentCatalog {

namespace {

constexpr bool standInOrder()
{
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].id != AgentId(int(i)))
            return false;
    }
    return true;
}
static_assert(standInOrder());

constexpr bool canBeRecognised(const AgentDefinition &agent)
{
    return !agent.tag.isEmpty() || !agent.application.isEmpty();
}
static_assert(std::ranges::all_of(all, canBeRecognised));

template<typename Test>
const AgentDefinition *find(Test test)
{
    const auto found = std::ranges::find_if(all, test);
    return found == all.end() ? nullptr : &*found;
}

} // namespace

const AgentDefinition *ofPill(const QString &pillId)
{
    return find([&](const AgentDefinition &agent) { return agent.pill.id == pillId; });
}

const AgentDefinition *ofTag(const QString &tag)
{
    if (tag.isEmpty())
        return nullptr;
    return find([&](const AgentDefinition &agent) { return agent.tag == tag; });
}

} // namespace tirlo::AgentCatalog

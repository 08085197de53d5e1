#include "BlockHooks.h"

using namespace Qt::StringLiterals;

namespace tirlo {

namespace {

const QString blockKey = u"tirlo"_s;

} // namespace

JsonObject BlockHooks::withHooks(JsonObject settings) const
{
    JsonObject block;
    for (const HookGroup &ours : groups())
        block.insert(ours.key, arrayOf({ours.group}));
    settings.insert(blockKey, {block});
    return settings;
}

JsonObject BlockHooks::withoutHooks(JsonObject settings) const
{
    settings.remove(blockKey);
    return settings;
}

bool BlockHooks::holdsHooks(const JsonObject &settings) const
{
    const JsonNode *block = member(settings, blockKey);
    return block && writeJson(*block, JsonSlashes::plain).contains("qv-hook");
}

} // namespace tirlo

#include "HookInstallers.h"

#include "BlockHooks.h"
#include "ListedHooks.h"

namespace tirlo {

HookInstallers::HookInstallers(const Paths &paths, const MainQueue &clock)
    : claude(paths, clock)
{
    for (const HookTable &table : HookTables::all()) {
        switch (table.form) {
        case HookForm::unguardedLists:
            break;
        case HookForm::lists:
            guarded.push_back(std::make_unique<ListedHooks>(paths, table, clock));
            break;
        case HookForm::block:
            guarded.push_back(std::make_unique<BlockHooks>(paths, table, clock));
            break;
        }
    }
}

} // namespace tirlo

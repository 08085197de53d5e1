#include "ProjectColors.h"

#include <QHash>

#include <algorithm>

namespace tirlo::IslandConst {

QString colorForProject(const QString &name)
{
    const QString known = name.toLower().trimmed();
    const auto exact = std::ranges::find(projectColors, known, &ProjectColor::project);
    if (exact != projectColors.end())
        return exact->color;
    for (const ProjectColor &row : projectColors) {
        if (known.contains(row.project))
            return row.color;
    }
    return fallbackColors[qHash(name, QHashSeed::globalSeed()) % fallbackColors.size()];
}

} // namespace tirlo::IslandConst

#pragma once

#include <QLatin1String>
#include <QString>

#include <array>

/// The fixed numbers and tables of the island's look.
namespace tirlo::IslandConst {

/// The colour of one known project, named in lower case.
struct ProjectColor
{
    QLatin1String project;
    /// "#" and six hexadecimal digits.
    QLatin1String color;
};

inline constexpr std::array projectColors{
    ProjectColor{QLatin1String("tessel"), QLatin1String("#FF5A4E")},
    ProjectColor{QLatin1String("orra hub"), QLatin1String("#2EC4A0")},
    ProjectColor{QLatin1String("dawn signal digest"), QLatin1String("#F29B38")},
    ProjectColor{QLatin1String("gazette feed"), QLatin1String("#7C5CFF")},
    ProjectColor{QLatin1String("feed post"), QLatin1String("#7C5CFF")},
    ProjectColor{QLatin1String("ilmar site"), QLatin1String("#38BDF8")},
    ProjectColor{QLatin1String("ilmar"), QLatin1String("#38BDF8")},
    ProjectColor{QLatin1String("skerry app"), QLatin1String("#EC4899")},
    ProjectColor{QLatin1String("skerry-app"), QLatin1String("#EC4899")},
    ProjectColor{QLatin1String("skerryapp"), QLatin1String("#EC4899")},
};

/// Colours of projects that the table doesn't know.
inline constexpr std::array fallbackColors{
    QLatin1String("#22C55E"),
    QLatin1String("#EAB308"),
    QLatin1String("#60A5FA"),
    QLatin1String("#E879F9"),
};

/// The colour of a project, or of an agent that is shown like one.
///
/// A known project's name wins, then one that the name contains. Any other name keeps one of the
/// fallback colours for the length of a run.
[[nodiscard]] QString colorForProject(const QString &name);

} // namespace tirlo::IslandConst

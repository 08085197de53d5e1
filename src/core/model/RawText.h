#pragma once

#include <QLatin1String>
#include <QString>
#include <QStringView>

#include <array>
#include <cstddef>
#include <optional>

namespace tirlo {

/// The texts of an enumeration's cases, in declaration order; specialised beside each enumeration.
///
/// Cases count from 0 without gaps, so a case's number is its place in `texts`.
template<typename Enum>
struct RawTexts;

/// The persisted and logged form of a case.
template<typename Enum>
[[nodiscard]] QString rawText(Enum value)
{
    return RawTexts<Enum>::texts[std::size_t(value)];
}

/// The case with this text, or nothing.
template<typename Enum>
[[nodiscard]] std::optional<Enum> fromRawText(QStringView text)
{
    const auto &texts = RawTexts<Enum>::texts;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (text == texts[i])
            return Enum(int(i));
    }
    return std::nullopt;
}

/// All cases in declaration order.
template<typename Enum>
[[nodiscard]] constexpr auto allCases()
{
    std::array<Enum, RawTexts<Enum>::texts.size()> cases{};
    for (std::size_t i = 0; i < cases.size(); ++i)
        cases[i] = Enum(int(i));
    return cases;
}

} // namespace tirlo

#pragma once

#include <QProperty>

#include <utility>

namespace tirlo {

/// A property that everybody may read and follow, and that only its owner changes.
template<typename T, typename Owner>
class OwnedProperty
{
public:
    explicit OwnedProperty(T initial)
        : m_property(std::move(initial))
    {
    }

    [[nodiscard]] T value() const { return m_property.value(); }
    operator T() const { return value(); }

    /// Runs `changed` after each change for as long as the result lives.
    template<typename Functor>
    [[nodiscard]] QPropertyNotifier addNotifier(Functor changed)
    {
        return m_property.addNotifier(std::move(changed));
    }

private:
    friend Owner;

    QProperty<T> m_property;
};

} // namespace tirlo

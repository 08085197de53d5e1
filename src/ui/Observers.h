#pragma once

#include <QProperty>

#include <functional>
#include <utility>
#include <vector>

namespace tirlo {

/// The fields of the store that one object follows; it stops following when it goes.
class Observers
{
public:
    /// Runs `changed` after each change of the property from now on.
    template<typename Property>
    void follow(Property &property, std::function<void()> changed)
    {
        m_notifiers.push_back(property.addNotifier(std::move(changed)));
    }

private:
    std::vector<QPropertyNotifier> m_notifiers;
};

} // namespace tirlo

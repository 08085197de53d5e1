#pragma once

#include <QProperty>

#include <vector>

namespace tirlo {

class AppState;
class KeyValueStore;

/// Binds the store's settings to their keys: the one place that knows the keys.
class Settings
{
public:
    explicit Settings(KeyValueStore &store);

    /// Reads every setting into the state, then writes each later change of it through.
    ///
    /// A value of the wrong type or outside its rule leaves the default. The state must outlive
    /// this object.
    void apply(AppState &state);

    // Plain fields have no observer: whoever changes one has it written here.
    void writeAbsenceInterval(const AppState &state);
    void writeHotkey(const AppState &state);

private:
    template<typename T, typename Read, typename Encode>
    void bind(QProperty<T> &property, const QString &key, Read read, Encode encode);

    KeyValueStore &m_store;
    std::vector<QPropertyNotifier> m_notifiers;
};

} // namespace tirlo

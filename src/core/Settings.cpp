#include "Settings.h"

#include "AppState.h"
#include "PillCatalog.h"
#include "platform/KeyValueStore.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <limits>

namespace tirlo {

namespace {

const QString absenceIntervalKey = QStringLiteral("absenceInterval");
const QString hotkeyFlagsKey = QStringLiteral("hotkeyFlags");
const QString hotkeyCodeKey = QStringLiteral("hotkeyCode");

template<typename T>
StoredValue asIs(const T &value)
{
    return value;
}

std::optional<bool> readFlag(const KeyValueStore &store, const QString &key)
{
    return store.boolean(key);
}

std::optional<double> readReal(const KeyValueStore &store, const QString &key)
{
    return store.real(key);
}

std::optional<QString> readText(const KeyValueStore &store, const QString &key)
{
    const auto text = store.text(key);
    return text && !text->isEmpty() ? text : std::nullopt;
}

std::optional<QString> readNonBlankText(const KeyValueStore &store, const QString &key)
{
    const auto text = store.text(key);
    return text && !text->trimmed().isEmpty() ? text : std::nullopt;
}

std::optional<QString> readMainPill(const KeyValueStore &store, const QString &key)
{
    const auto text = store.text(key);
    return text && PillCatalog::canBeMainPill(*text) ? text : std::nullopt;
}

template<typename Enum>
std::optional<Enum> readCase(const KeyValueStore &store, const QString &key)
{
    const auto text = store.text(key);
    return text ? fromRawText<Enum>(*text) : std::nullopt;
}

/// Older versions closed after a minute by default; such a default becomes the present one.
std::optional<double> readAutoCloseInterval(const KeyValueStore &store, const QString &key)
{
    const auto seconds = store.real(key);
    return seconds == 60.0 ? std::optional(15.0) : seconds;
}

std::optional<QSet<QString>> readTextSet(const KeyValueStore &store, const QString &key)
{
    const auto bytes = store.bytes(key);
    if (!bytes)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(*bytes);
    if (!document.isArray())
        return std::nullopt;

    QSet<QString> texts;
    const QJsonArray entries = document.array();
    for (const auto entry : entries) {
        if (!entry.isString())
            return std::nullopt;
        texts.insert(entry.toString());
    }
    return texts;
}

StoredValue encodeTextSet(const QSet<QString> &texts)
{
    QStringList sorted(texts.begin(), texts.end());
    sorted.sort();
    return QJsonDocument(QJsonArray::fromStringList(sorted)).toJson(QJsonDocument::Compact);
}

template<typename Enum>
StoredValue encodeCase(Enum value)
{
    return rawText(value);
}

/// Takes a whole number that fits the field; any other leaves it.
template<typename T>
void readInteger(const KeyValueStore &store, const QString &key, QProperty<T> &field)
{
    const auto number = store.integer(key);
    if (number && *number >= 0 && *number <= std::int64_t(std::numeric_limits<T>::max()))
        field = T(*number);
}

void readInterval(const KeyValueStore &store, const QString &key, double &field)
{
    field = store.real(key).value_or(field);
}

} // namespace

Settings::Settings(KeyValueStore &store)
    : m_store(store)
{
}

void Settings::apply(AppState &state)
{
    const auto key = [](const char *name) { return QString::fromLatin1(name); };

    bind(state.soundEnabled, key("soundEnabled"), readFlag, asIs<bool>);
    bind(state.soundVolume, key("soundVolume"), readReal, asIs<double>);
    bind(state.claudeModel, key("claudeModel"), readNonBlankText, asIs<QString>);
    bind(state.chatProvider, key("chatProvider"), readCase<ChatProvider>, encodeCase<ChatProvider>);
    bind(state.googleChatModel, key("googleChatModel"), readText, asIs<QString>);
    bind(state.openAIChatModel, key("openAIChatModel"), readText, asIs<QString>);
    bind(state.autoCloseInterval, key("autoCloseInterval"), readAutoCloseInterval, asIs<double>);
    readInterval(m_store, absenceIntervalKey, state.absenceInterval);
    readInterval(m_store, key("greetThreshold"), state.greetThresholdSeconds);
    bind(state.hotkeyEnabled, key("hotkeyEnabled"), readFlag, asIs<bool>);
    readInteger(m_store, hotkeyFlagsKey, state.hotkeyFlags);
    readInteger(m_store, hotkeyCodeKey, state.hotkeyCode);
    bind(state.anyTerminal, key("anyTerminal"), readFlag, asIs<bool>);
    bind(state.islandPosition, key("islandPosition"), readCase<IslandPosition>,
         encodeCase<IslandPosition>);
    bind(state.islandScreen, key("islandScreen"), readCase<IslandScreen>, encodeCase<IslandScreen>);
    bind(state.requestsOverFullscreen, key("requestsOverFullscreen"), readFlag, asIs<bool>);
    bind(state.vercelProjectFilter, key("vercelProjectFilter"), readTextSet, encodeTextSet);
    bind(state.n8nWorkflowFilter, key("n8nWorkflowFilter"), readTextSet, encodeTextSet);
    bind(state.activeIntegrations, key("activeIntegrations"), readTextSet, encodeTextSet);
    bind(state.mainPillId, key("mainPill"), readMainPill, asIs<QString>);
}

void Settings::writeAbsenceInterval(const AppState &state)
{
    m_store.setValue(absenceIntervalKey, state.absenceInterval);
}

void Settings::writeHotkey(const AppState &state)
{
    m_store.setValue(hotkeyFlagsKey, std::int64_t(state.hotkeyFlags));
    m_store.setValue(hotkeyCodeKey, std::int64_t(state.hotkeyCode));
}

template<typename T, typename Read, typename Encode>
void Settings::bind(QProperty<T> &property, const QString &key, Read read, Encode encode)
{
    const auto write
        = [this, &property, key, encode] { m_store.setValue(key, encode(property.value())); };
    if (const auto stored = read(m_store, key)) {
        property = *stored;
        // A reading may have brought the value up to date.
        write();
    }
    m_notifiers.push_back(property.addNotifier(write));
}

} // namespace tirlo

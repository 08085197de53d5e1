#include "N8nAnswers.h"

#include "core/Text.h"

#include <algorithm>

namespace tirlo::N8n {

namespace {

constexpr int longestValue = 50;
constexpr qsizetype shownMembers = 4;

constexpr QLatin1String dataKey("data");
constexpr QLatin1String errorKey("error");
constexpr QLatin1String messageKey("message");
constexpr QLatin1String nameKey("name");
constexpr QLatin1String runDataKey("runData");

/// The first element of an array; no value if there is none.
JsonSlice first(const JsonSlice &array)
{
    const QList<JsonSlice> elements = array.elements();
    return elements.isEmpty() ? JsonSlice() : elements.first();
}

bool isArrayOf(const JsonSlice &value, JsonSlice::Kind kind)
{
    return value.isArray() && std::ranges::all_of(value.elements(), [kind](const JsonSlice &each) {
               return each.kind() == kind;
           });
}

} // namespace

Listing parseListing(const QByteArray &body)
{
    const JsonSlice root = JsonSlice::of(body);
    const JsonSlice list = root.isObject() ? root[dataKey] : root;
    if (!isArrayOf(list, JsonSlice::Kind::object))
        return {};
    const JsonSlice newest = first(list);
    if (newest.kind() == JsonSlice::Kind::none)
        return {.isList = true};

    const JsonSlice id = newest[QLatin1String("id")];
    return {
        .isList = true,
        .isEmpty = false,
        .id = id.text() ? id.text() : id.integerDigits(),
        .status = newest[QLatin1String("status")].text().value_or(QString()),
    };
}

std::optional<Execution> parseExecution(const QByteArray &body, bool success)
{
    const JsonSlice root = JsonSlice::of(body);
    if (!root.isObject())
        return std::nullopt;
    return Execution{extractWorkflowName(root), parseDetail(root, success)};
}

QString extractWorkflowName(const JsonSlice &from)
{
    if (const auto name = from[QLatin1String("workflowData")][nameKey].text())
        return *name;
    return from[nameKey].text().value_or(unnamedWorkflow);
}

std::optional<QString> parseDetail(const JsonSlice &from, bool success)
{
    const JsonSlice resultData = from[dataKey][QLatin1String("resultData")];
    if (!resultData.isObject())
        return std::nullopt;
    return success ? parseSuccessDetail(resultData) : parseErrorDetail(resultData);
}

std::optional<QString> parseSuccessDetail(const JsonSlice &resultData)
{
    const auto node = resultData[QLatin1String("lastNodeExecuted")].text();
    if (!node)
        return std::nullopt;
    const JsonSlice main = first(resultData[runDataKey][*node])[dataKey][QLatin1String("main")];
    const JsonSlice output = first(main);
    if (!isArrayOf(main, JsonSlice::Kind::array) || !output.isArray())
        return std::nullopt;

    const qsizetype count = output.elements().size();
    QStringList lines{
        QStringLiteral("→ %1 · %2 item%3")
            .arg(*node, QString::number(count), count == 1 ? QString() : QStringLiteral("s"))};
    for (const auto &[key, value] :
         first(output)[QLatin1String("json")].members().mid(0, shownMembers))
        lines.append(key + QStringLiteral(": ") + fmtValue(value));
    return lines.join(QLatin1Char('\n'));
}

std::optional<QString> parseErrorDetail(const JsonSlice &resultData)
{
    const auto titled = [](const QString &title, const QString &message) {
        return title + QLatin1Char('\n') + message;
    };
    const JsonSlice error = resultData[errorKey];
    if (error.isObject()) {
        const QString message = error[messageKey].text().value_or(QString());
        const QString node = error[QLatin1String("node")][nameKey].text().value_or(QString());
        return node.isEmpty() ? message : titled(node, message);
    }
    for (const auto &[node, runs] : resultData[runDataKey].members()) {
        if (const auto message = first(runs)[errorKey][messageKey].text())
            return titled(node, *message);
    }
    return std::nullopt;
}

QString fmtValue(const JsonSlice &value)
{
    switch (value.kind()) {
    case JsonSlice::Kind::string:
        return firstCharacters(value.text().value_or(QString()), longestValue);
    case JsonSlice::Kind::array:
        return QStringLiteral("[%1]").arg(value.elements().size());
    case JsonSlice::Kind::object:
        return QStringLiteral("{…}");
    default:
        return value.source();
    }
}

} // namespace tirlo::N8n

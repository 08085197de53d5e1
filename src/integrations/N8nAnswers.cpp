#include "N8nAnswers.h"

#include "core/json/JsonNode.h"
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

std::optional<QString> textOf(const JsonNode &node)
{
    return node.text() ? std::optional(*node.text()) : std::nullopt;
}

QString extractWorkflowName(const JsonNode &from)
{
    if (const auto name = textOf(from[QLatin1String("workflowData")][nameKey]))
        return *name;
    return textOf(from[nameKey]).value_or(unnamedWorkflow);
}

/// A value in few characters, as a digest shows it.
QString fmtValue(const JsonNode &value)
{
    if (value.text())
        return firstCharacters(*value.text(), longestValue);
    if (value.array())
        return QStringLiteral("[%1]").arg(value.array()->size());
    if (value.object())
        return QStringLiteral("{…}");
    return firstCharacters(QString::fromUtf8(writeJson(value, JsonSlashes::plain)), longestValue);
}

std::optional<QString> parseSuccessDetail(const JsonNode &resultData)
{
    const auto node = textOf(resultData[QLatin1String("lastNodeExecuted")]);
    if (!node)
        return std::nullopt;
    const JsonNode &main = resultData[runDataKey][*node].first()[dataKey][QLatin1String("main")];
    const JsonArray *items = main.first().array();
    if (!items || !std::ranges::all_of(*main.array(), &JsonNode::array))
        return std::nullopt;

    const qsizetype count = items->size();
    QStringList lines{
        QStringLiteral("→ %1 · %2 item%3")
            .arg(*node, QString::number(count), count == 1 ? QString() : QStringLiteral("s"))};
    const JsonNode &shown = main.first().first()[QLatin1String("json")];
    for (const QString &key : namesInOrder(shown).mid(0, shownMembers))
        lines.append(key + QStringLiteral(": ") + fmtValue(shown[key]));
    return lines.join(QLatin1Char('\n'));
}

std::optional<QString> parseErrorDetail(const JsonNode &resultData)
{
    const auto titled = [](const QString &title, const QString &message) {
        return title + QLatin1Char('\n') + message;
    };
    const JsonNode &error = resultData[errorKey];
    if (error.object()) {
        const QString message = textOf(error[messageKey]).value_or(QString());
        const QString node = textOf(error[QLatin1String("node")][nameKey]).value_or(QString());
        return node.isEmpty() ? message : titled(node, message);
    }
    const JsonNode &runData = resultData[runDataKey];
    for (const QString &node : namesInOrder(runData)) {
        if (const auto message = textOf(runData[node].first()[errorKey][messageKey]))
            return titled(node, *message);
    }
    return std::nullopt;
}

std::optional<QString> parseDetail(const JsonNode &from, bool success)
{
    const JsonNode &resultData = from[dataKey][QLatin1String("resultData")];
    if (!resultData.object())
        return std::nullopt;
    return success ? parseSuccessDetail(resultData) : parseErrorDetail(resultData);
}

} // namespace

Listing parseListing(const QByteArray &body)
{
    const JsonNode root = readJson(body).value_or(JsonNode());
    const JsonNode &list = root.object() ? root[dataKey] : root;
    if (!list.array() || !std::ranges::all_of(*list.array(), &JsonNode::object))
        return {};
    if (list.array()->isEmpty())
        return {.isList = true};

    const JsonNode &newest = list.first();
    const JsonNode &id = newest[QLatin1String("id")];
    return {
        .isList = true,
        .isEmpty = false,
        .id = id.text() ? textOf(id) : id.integerDigits(),
        .status = textOf(newest[QLatin1String("status")]).value_or(QString()),
    };
}

std::optional<Execution> parseExecution(const QByteArray &body, bool success)
{
    const JsonNode root = readJson(body).value_or(JsonNode());
    if (!root.object())
        return std::nullopt;
    return Execution{extractWorkflowName(root), parseDetail(root, success)};
}

} // namespace tirlo::N8n

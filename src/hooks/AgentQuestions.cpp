#include "AgentQuestions.h"

#include "core/Json.h"

#include <QSet>

namespace tirlo {

namespace {

/// The options with a label, each label once, since it is the label that goes back.
QList<AgentQuestion::Option> optionsOf(const QJsonObject &question)
{
    QList<AgentQuestion::Option> options;
    QSet<QString> labels;
    const QJsonArray listed = question.value(QLatin1String("options")).toArray();
    for (const auto value : listed) {
        const QJsonObject option = value.toObject();
        const QString label = value.isString()
            ? value.toString()
            : Json::text(option, QLatin1String("label")).value_or(QString());
        if (label.trimmed().isEmpty() || labels.contains(label))
            continue;
        labels.insert(label);
        options.append(
            {label, Json::text(option, QLatin1String("description")).value_or(QString())});
    }
    return options;
}

} // namespace

QList<AgentQuestion> agentQuestions(const QJsonObject &payload)
{
    if (payload.value(QLatin1String("tool_name")) != QLatin1String("AskUserQuestion"))
        return {};
    const QJsonObject input = payload.value(QLatin1String("tool_input")).toObject();
    const auto listed = Json::objects(input, QLatin1String("questions"));
    if (!listed)
        return {};

    QList<AgentQuestion> questions;
    QSet<QString> texts;
    for (const QJsonObject &asked : *listed) {
        const QString text = Json::text(asked, QLatin1String("question")).value_or(QString());
        if (text.trimmed().isEmpty() || texts.contains(text))
            return {};
        texts.insert(text);
        questions.append({
            .text = text,
            .header = Json::text(asked, QLatin1String("header")).value_or(QString()),
            .options = optionsOf(asked),
            .multiSelect = asked.value(QLatin1String("multiSelect")).toBool(),
        });
    }
    return questions;
}

QJsonObject answeredInput(const QJsonObject &input, const QHash<QString, QStringList> &answers)
{
    QJsonObject chosen;
    for (auto it = answers.begin(); it != answers.end(); ++it) {
        if (!it->isEmpty())
            chosen.insert(it.key(), it->join(QLatin1String(", ")));
    }
    QJsonObject answered = input;
    answered.insert(QLatin1String("answers"), chosen);
    return answered;
}

} // namespace tirlo

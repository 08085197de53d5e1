#pragma once

#include "LoopbackServer.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QStringList>

namespace tirlo {

/// Stands in for the web services of the three chat providers, each on a server of its own.
///
/// It refuses a wrong path or key. A question gets the next of `answers`, or its own words back.
/// What a test wants to go wrong otherwise it scripts on the server itself.
class ProviderStandIn
{
public:
    ProviderStandIn();

    LoopbackServer anthropic;
    LoopbackServer google;
    LoopbackServer openai;

    /// The key that all of them take.
    QString key = QStringLiteral("sk-right");
    /// Texts of the next answers, whoever is asked.
    QStringList answers;
    /// The models of each, as their lists tell of them.
    QJsonArray anthropicModels;
    QJsonArray googleModels;
    QJsonArray openAIModels;

    /// The body of the last request to the server, as JSON.
    [[nodiscard]] static QJsonObject lastBody(const LoopbackServer &server);

private:
    LoopbackAnswer anthropicAnswer(const LoopbackRequest &request);
    LoopbackAnswer completionsAnswer(const LoopbackRequest &request, const QByteArray &root,
                                     const QJsonArray &models);
    QString nextAnswer(const QJsonValue &question);
};

} // namespace tirlo

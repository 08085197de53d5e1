#include "ArgumentLines.h"

#include "core/HiddenMarks.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

namespace tirlo {

namespace {

QString compactJson(const QJsonValue &value)
{
    // A document is an object or a list, so the value goes into one and its brackets off again.
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.sliced(1, list.size() - 2));
}

} // namespace

QString argumentLines(const QJsonObject &arguments)
{
    QStringList lines;
    for (auto it = arguments.begin(); it != arguments.end(); ++it) {
        const QJsonValue argument = it.value();
        QString value
            = withoutHiddenMarks(argument.isString() ? argument.toString() : compactJson(argument));
        if (value.contains(u'\n'))
            value.prepend(u'\n').replace(u'\n', QLatin1String("\n    "));
        else
            value.prepend(u' ');
        lines.append(lineWithoutHiddenMarks(it.key()) + u':' + value);
    }
    return lines.join(u'\n');
}

} // namespace tirlo

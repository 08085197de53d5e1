#include "Sight.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QStringList>

namespace tirlo::Sight {

namespace {

/// Parts of 255 up to which a colour is the island's.
constexpr int mostLightness = 8;
const QString trayService = QStringLiteral("org.kde.StatusNotifierWatcher");

QByteArray outputOf(const QString &program, const QStringList &arguments,
                    const QProcessEnvironment &environment
                    = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

/// The number of the island's window as X programs write it; empty while it is not mapped.
QString windowNumber()
{
    return QString::fromLatin1(
               outputOf("xdotool", {"search", "--onlyvisible", "--name", "^Tirlo$"}))
        .section('\n', 0, 0);
}

} // namespace

QImage screen()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", environment.value("TIRLO_SCREEN"));
    return QImage::fromData(
        outputOf("import", {"-silent", "-window", "root", "png:-"}, environment));
}

QRect islandWindow()
{
    const QString window = windowNumber();
    if (window.isEmpty())
        return {};
    const QString text
        = QString::fromLatin1(outputOf("xdotool", {"getwindowgeometry", "--shell", window}));
    const auto number = [&](const char *name) {
        const QRegularExpression line(QStringLiteral("^%1=(-?\\d+)$").arg(name),
                                      QRegularExpression::MultilineOption);
        return line.match(text).captured(1).toInt();
    };
    return {number("X"), number("Y"), number("WIDTH"), number("HEIGHT")};
}

bool isInTaskList()
{
    const QString window = windowNumber();
    const QByteArray list = outputOf("xprop", {"-root", "_NET_CLIENT_LIST"});
    const QByteArray id = "0x" + QByteArray::number(window.toULongLong(), 16);
    const bool isListed = (list.trimmed() + ',').contains(id + ',');
    const QByteArray kind
        = outputOf("xprop", {"-id", window, "_NET_WM_STATE", "_NET_WM_WINDOW_TYPE"});
    return isListed && !kind.contains("_STATE_SKIP_TASKBAR") && !kind.contains("_TYPE_DOCK");
}

int drawnWidth()
{
    const QRect window = islandWindow();
    const QImage picture = screen();
    if (window.isEmpty() || picture.isNull())
        return 0;
    const int y = window.top();
    const auto isBlack = [&](int x) {
        return picture.valid(x, y) && picture.pixelColor(x, y).lightness() <= mostLightness;
    };
    const int middle = window.center().x();
    if (!isBlack(middle))
        return 0;
    int left = middle;
    int right = middle;
    while (isBlack(left - 1))
        --left;
    while (isBlack(right + 1))
        ++right;
    return right - left + 1;
}

bool hasTray()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(trayService);
}

bool hasStatusItem()
{
    auto question
        = QDBusMessage::createMethodCall(trayService, QStringLiteral("/StatusNotifierWatcher"),
                                         "org.freedesktop.DBus.Properties", "Get");
    question << trayService << "RegisteredStatusNotifierItems";
    const QVariantList answer = QDBusConnection::sessionBus().call(question).arguments();
    return !answer.value(0).value<QDBusVariant>().variant().toStringList().isEmpty();
}

} // namespace tirlo::Sight

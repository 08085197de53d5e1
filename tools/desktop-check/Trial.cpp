#include "Trial.h"

#include "e2e/kit/Desktop.h"

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QScreen>

#include <utility>

namespace tirlo {

namespace {

constexpr int compactWidth = 240;
constexpr int openWidth = 640;
/// How far a drawn width may be off: the edges are smooth.
constexpr int widthTolerance = 6;
/// Beside the open island, from the screen's middle and from its upper edge.
constexpr QPoint besideIsland(-335, 120);
/// Milliseconds: until a window manager has done what it was asked for.
constexpr int settling = 1200;
/// Milliseconds: a request's button acts only once its card has been seen.
constexpr int reading = 1500;
constexpr int greetingTime = 20000;
constexpr int idleTime = 90000;

} // namespace

Trial::Trial(const QString &binary, QString desktop, QString pictures)
    : m_binary(binary)
    , m_desktop(std::move(desktop))
    , m_pictures(std::move(pictures))
{
    QDir().mkpath(m_pictures);
}

QList<Finding> Trial::run(bool waitsForIdle)
{
    start();
    if (!m_program->isReady()) {
        add("start", false, "it does not start");
        return m_findings;
    }
    tryCompact();
    tryRequest();
    tryFullScreen();
    tryWorkspaces();
    tryHotkey();
    trySettings();
    if (m_desktop == "screens")
        tryScreens();
    if (waitsForIdle)
        tryIdle();
    return m_findings;
}

void Trial::start()
{
    e2e::movePointer(640, 700);
    fillScreen();
    m_editor.activateWindow();
    e2e::rest(settling);
    const QRect before = m_editor.geometry();

    m_program = std::make_unique<e2e::Program>(m_binary);
    if (!m_program->isReady() || !m_program->stop())
        return;
    QFile settings(m_program->supportFolder() + "/settings.json");
    if (settings.open(QIODevice::WriteOnly))
        settings.write(R"({"hotkeyEnabled": true})");
    settings.close();
    if (!m_program->start())
        return;
    m_agent = {m_program->hookScript(), "session-1", "/src/lighthouse"};
    e2e::rest(settling);
    add("room taken", m_editor.geometry() == before,
        QString::number(before.height() - m_editor.geometry().height()));
    add("focus at start", m_editor.isActiveWindow(), m_editor.isActiveWindow() ? "kept" : "lost");
}

void Trial::tryCompact()
{
    static_cast<void>(becomes(compactWidth, greetingTime));
    e2e::rest(settling);
    addWidth("compact", compactWidth);
    const bool isListed = Sight::isInTaskList();
    add("task list", !isListed, isListed ? "listed" : "not listed");
    const bool isRight = Sight::hasTray() == Sight::hasStatusItem();
    add("status item", isRight, !Sight::hasTray() ? "no tray" : isRight ? "shown" : "missing");
}

void Trial::tryRequest()
{
    m_editor.activateWindow();
    e2e::rest(settling);
    const Request request = ask();
    addWidth("request", openWidth);
    add("focus", m_editor.isActiveWindow(), m_editor.isActiveWindow() ? "kept" : "lost");

    const QRect island = Sight::islandWindow();
    const int before = m_editor.presses();
    e2e::clickAt(island.center().x() + besideIsland.x(), island.top() + besideIsland.y());
    const bool wentThrough = e2e::waitUntil([&] { return m_editor.presses() > before; }, 2000);
    add("click beside", wentThrough, wentThrough ? "goes through" : "is swallowed");

    const bool isAllowed = press("Allow") && request->waitForEnd(3000)
        && request->output().contains(R"("behavior":"allow")");
    add("Allow by a click", isAllowed, isAllowed ? "answered" : "no answer");
    add("focus after it", m_editor.isActiveWindow(), m_editor.isActiveWindow() ? "kept" : "lost");
}

void Trial::tryFullScreen()
{
    m_editor.showFullScreen();
    if (m_desktop == "none")
        m_editor.setGeometry(QGuiApplication::primaryScreen()->geometry());
    m_editor.activateWindow();
    e2e::movePointer(640, 700);
    static_cast<void>(becomes(0, 3000));
    e2e::rest(settling);
    addWidth("over full screen", 0);

    const Request request = ask();
    addWidth("request over full screen", openWidth);
    const bool isDenied = press("Deny") && request->waitForEnd(3000)
        && request->output().contains(R"("behavior":"deny")");
    add("Deny over full screen", isDenied, isDenied ? "answered" : "no answer");
    fillScreen();
    e2e::rest(settling);
    // What could not be pressed above is done with here, so that the rest begins as ever.
    if (!isDenied)
        static_cast<void>(press("Deny"));
    foldAway();
}

void Trial::tryWorkspaces()
{
    switchWorkspace(1);
    e2e::rest(settling);
    addWidth("another workspace", compactWidth);
    switchWorkspace(0);
    m_editor.activateWindow();
    e2e::rest(settling);
}

void Trial::tryHotkey()
{
    foldAway();
    m_editor.write();
    e2e::useXdotool({"key", "--clearmodifiers", "super+shift+n"});
    static_cast<void>(becomes(openWidth, 3000));
    e2e::rest(settling);
    addWidth("hotkey", openWidth);
    add("hotkey's letter", m_editor.text().isEmpty(),
        m_editor.text().isEmpty() ? "not typed" : m_editor.text());
}

void Trial::trySettings()
{
    const auto window
        = [this] { return e2e::findNode(m_program->processId(), "filler", "Settings — Tirlo"); };
    // The tab in the header, and then the button on its card.
    static_cast<void>(press("Settings"));
    e2e::rest(settling);
    const bool opens = press("Settings") && e2e::waitUntil([&] { return window().has_value(); });
    e2e::rest(settling);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const int below = opens ? screen.bottom() - window()->place.bottom() : 0;
    add("settings window", below >= 12, opens ? QString("%1 above the edge").arg(below) : "none");
    keepPicture("settings");
}

void Trial::tryScreens()
{
    const auto plug = [](const QStringList &change) {
        QProcess::execute("xrandr", QStringList{"--output", "DUMMY0"} + change);
        e2e::rest(settling);
    };
    foldAway();
    plug({"--off"});
    addWidth("its screen unplugged", compactWidth);
    const Request request = ask();
    addWidth("request on what is left", openWidth);
    plug({"--mode", "1024x768", "--primary", "--left-of", "DUMMY1"});
    addWidth("request on the screen's return", openWidth);
    const bool isAllowed = press("Allow") && request->waitForEnd(3000);
    add("Allow there", isAllowed, isAllowed ? "answered" : "no answer");
}

void Trial::tryIdle()
{
    e2e::movePointer(640, 700);
    const auto isIdle = [] {
        const int width = Sight::drawnWidth();
        return width < compactWidth - widthTolerance;
    };
    static_cast<void>(e2e::waitUntil(isIdle, idleTime));
    e2e::rest(settling);
    add("idle", isIdle(), QString::number(Sight::drawnWidth()));
    keepPicture("idle");
}

Trial::Request Trial::ask()
{
    auto request = m_agent.askFor("Bash", {{"command", "make install"}});
    static_cast<void>(m_program->waitForText("needs permission"));
    static_cast<void>(becomes(openWidth, 3000));
    e2e::rest(reading);
    return request;
}

/// Clicks the lowest button or tab of that name; false when none is on show.
bool Trial::press(const std::string &button)
{
    std::optional<QPoint> lowest;
    for (const e2e::AccessibleNode &node : e2e::visibleNodes(m_program->processId())) {
        const bool isButton = node.role.ends_with("button") || node.role.ends_with("tab")
            || node.role == "check box";
        const QPoint middle = node.place.center();
        if (isButton && node.name == button && (!lowest || middle.y() > lowest->y()))
            lowest = middle;
    }
    if (lowest)
        e2e::clickAt(lowest->x(), lowest->y());
    return lowest.has_value();
}

bool Trial::becomes(int width, int milliseconds) const
{
    return e2e::waitUntil(
        [width] { return std::abs(Sight::drawnWidth() - width) <= widthTolerance; }, milliseconds);
}

/// Gives the editor all the screen but what panels take.
void Trial::fillScreen()
{
    // Without a window manager nobody else does it, and all the screen would be full screen.
    m_editor.setGeometry(
        QGuiApplication::primaryScreen()->geometry().marginsRemoved({0, 0, 0, 60}));
    m_editor.showMaximized();
}

/// Lets the island fold as it does when the pointer has left it.
void Trial::foldAway()
{
    e2e::movePointer(640, 700);
    static_cast<void>(becomes(compactWidth, greetingTime));
}

void Trial::switchWorkspace(int index) const
{
    const QString number = QString::number(index + 1);
    if (m_desktop == "i3" || m_desktop == "sway")
        e2e::useXdotool({"key", "alt+" + number});
    else if (m_desktop == "gnome" || m_desktop == "gnome-wayland")
        e2e::useXdotool({"key", index ? "super+Next" : "super+Prior"});
    else if (m_desktop != "none")
        QProcess::execute(
            "sh",
            {"-c", "xdotool set_num_desktops 2; xdotool set_desktop " + QString::number(index)});
}

void Trial::add(const QString &what, bool isGood, const QString &seen)
{
    m_findings.append({what, seen, isGood});
}

void Trial::addWidth(const QString &what, int expected)
{
    const int width = Sight::drawnWidth();
    add(what, std::abs(width - expected) <= widthTolerance, QString::number(width));
    keepPicture(what);
}

void Trial::keepPicture(const QString &name)
{
    Sight::screen().save(QString("%1/%2-%3-%4.png")
                             .arg(m_pictures, m_desktop)
                             .arg(++m_pictureCount, 2, 10, QLatin1Char('0'))
                             .arg(QString(name).replace(' ', '-')));
}

} // namespace tirlo

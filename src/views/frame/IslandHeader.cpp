#include "IslandHeader.h"

#include "TabButton.h"
#include "core/AppState.h"
#include "core/IslandIntents.h"
#include "island/IslandMotion.h"
#include "ui/AccessibleRole.h"
#include "ui/FocusWalk.h"
#include "ui/IconButton.h"
#include "ui/PresenceEffect.h"
#include "ui/Style.h"

#include <QHBoxLayout>

namespace tirlo {

namespace {

constexpr int tabsLeft = 14;
constexpr int tabSpacing = 5;
constexpr int iconSide = 16;
constexpr int iconSpacing = 14;
constexpr int iconsRight = 16;
constexpr double fadeSeconds = 0.2;

/// The plain buttons may be hit a little beside their icon.
constexpr int reach = 4;
constexpr QSize plainSize{iconSide + 2 * reach, iconSide + 2 * reach};

IconButtonStyle plainStyle(bool isOn)
{
    return {.color = isOn ? Style::primaryText : Style::secondaryText,
            .hoveredColor = isOn ? Style::primaryText : Style::hoveredText,
            .iconSide = iconSide};
}

double shownOpacity(const AppState &state)
{
    return state.view == IslandView::confused ? 0 : 1;
}

} // namespace

IslandHeader::IslandHeader(const ViewContext &context, QWidget *parent)
    : QWidget(parent)
    , m_state(context.state)
    , m_clock(context.frames)
    , m_settings(new IconButton(plainSize, plainStyle(false)))
    , m_sound(new IconButton(plainSize, plainStyle(false)))
    , m_presence(new PresenceEffect(this))
    , m_opacity(shownOpacity(context.state))
{
    // A request is what the keyboard was asked for; the tabs can wait.
    FocusWalk::putLast(*this);
    layOut(context);
    connect(m_settings, &IconButton::clicked, this,
            [&island = context.island] { island.show(IslandView::settings); });
    connect(m_sound, &IconButton::clicked, this,
            [this] { m_state.soundEnabled = !m_state.soundEnabled.value(); });

    updateSettings();
    updateSound();
    showAt(m_clock.now());
    m_observers.follow(m_state.view, [this] { followView(); });
    m_observers.follow(m_state.soundEnabled, [this] { updateSound(); });
}

void IslandHeader::layOut(const ViewContext &context)
{
    const auto tab = [&](const char *icon, const char *name, IslandView view,
                         const std::function<void()> &preAction = {}) {
        return new TabButton(QLatin1String(icon), QString::fromLatin1(name), view, context,
                             preAction);
    };
    auto *tabList = new QWidget;
    AccessibleRole::set(*tabList, QAccessible::PageTabList);
    auto *tabs = new QHBoxLayout(tabList);
    tabs->setContentsMargins(0, 0, 0, 0);
    tabs->setSpacing(tabSpacing);
    tabs->addWidget(tab("house-fill", "Home", IslandView::overview));
    tabs->addWidget(tab("bubble-left-fill", "Chat", IslandView::prompt,
                        [&state = context.state, &actions = context.actions] {
                            if (!state.promptContext.value() && actions.capturePromptContext)
                                actions.capturePromptContext();
                        }));
    tabs->addWidget(tab("plus", "Drop a file", IslandView::upload));

    auto *icons = new QHBoxLayout;
    icons->setSpacing(iconSpacing - 2 * reach);
    icons->addWidget(m_settings);
    icons->addWidget(m_sound);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(tabsLeft, 0, iconsRight - reach, 0);
    row->setSpacing(0);
    row->addWidget(tabList);
    row->addStretch();
    row->addLayout(icons);
    setFixedHeight(rowHeight);
}

void IslandHeader::followView()
{
    updateSettings();
    const double now = m_clock.now();
    const Animation fade = TimingCurve::easeInOut(fadeSeconds);
    m_opacity.animateTo(shownOpacity(m_state), m_clock.permitted(fade), now);
    setAttribute(Qt::WA_TransparentForMouseEvents, shownOpacity(m_state) == 0);
    showAt(now);
    if (!m_opacity.isAtRest(now) && !m_frames.isActive())
        m_frames = m_clock.subscribe([this](double time) { showAt(time); });
}

void IslandHeader::updateSettings()
{
    const bool isOn = m_state.view == IslandView::settings;
    m_settings->setIcon(QLatin1String(isOn ? "gearshape-fill" : "gearshape"),
                        QStringLiteral("Settings"));
    m_settings->fadeTo(plainStyle(isOn), IslandMotion::viewSpring, m_clock);
}

void IslandHeader::updateSound()
{
    const bool isOn = m_state.soundEnabled;
    m_sound->setIcon(QLatin1String(isOn ? "speaker-wave-2" : "speaker-slash"),
                     isOn ? QStringLiteral("Mute") : QStringLiteral("Unmute"));
}

/// A header that has faded away can't be reached, by pointer or key.
void IslandHeader::showAt(double time)
{
    const double opacity = m_opacity.valueAt(time);
    m_presence->setPresence(opacity, 1);
    setVisible(opacity > 0 || m_opacity.target() > 0);
    if (m_opacity.isAtRest(time))
        m_frames.reset();
}

} // namespace tirlo

#include "CardPresence.h"

#include "ui/motion/FrameClock.h"
#include "ui/PresenceEffect.h"

#include <QWidget>

namespace tirlo {

namespace {

constexpr double goneScale = 0.97;
constexpr double wholeOpacity = 0.98;
constexpr double fadeSeconds = 0.16;
constexpr Spring arrival{.response = 0.4, .dampingFraction = 0.8};

} // namespace

CardPresence::CardPresence(QWidget &card)
    : m_card(card)
    , m_effect(new PresenceEffect(&card))
    , m_opacity(0)
    , m_scale(goneScale)
{
    m_card.hide();
}

void CardPresence::setSelected(bool isSelected, bool moves, const FrameClock &clock)
{
    const Animation told = isSelected ? Animation(arrival, fadeSeconds)
                                      : Animation(TimingCurve::easeIn(fadeSeconds));
    const Animation motion = moves ? clock.permitted(told) : Animation::none();
    m_opacity.animateTo(isSelected ? 1 : 0, motion, clock.now());
    m_scale.animateTo(isSelected ? 1 : goneScale, motion, clock.now());
    m_card.setAttribute(Qt::WA_TransparentForMouseEvents, !isSelected);
    if (isSelected)
        m_card.raise();
    else if (QWidget *focused = m_card.focusWidget())
        focused->clearFocus();
    showAt(clock.now());
}

bool CardPresence::isWhole(double time) const
{
    return m_opacity.target() > 0 && m_opacity.valueAt(time) >= wholeOpacity;
}

bool CardPresence::showAt(double time)
{
    const double opacity = m_opacity.valueAt(time);
    const bool isAtRest = m_opacity.isAtRest(time) && m_scale.isAtRest(time);
    m_effect->setPresence(opacity, m_scale.valueAt(time));
    m_card.setVisible(!isAtRest || opacity > 0);
    return isAtRest;
}

} // namespace tirlo

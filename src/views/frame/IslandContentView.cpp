#include "IslandContentView.h"

#include "IslandHeader.h"
#include "IslandViewContent.h"
#include "core/AppState.h"
#include "core/IslandLayout.h"
#include "views/CardMetrics.h"

#include <utility>

namespace tirlo {

namespace {

constexpr int paddingTop = 8;
constexpr int headerBottom = paddingTop + IslandHeader::rowHeight;
constexpr int headerSpacing = 10;

bool fillsIsland(IslandView view)
{
    return view == IslandView::prompt || view == IslandView::mail;
}

} // namespace

IslandContentView::IslandContentView(const ViewContext &context, QWidget *parent)
    : QWidget(parent)
    , m_state(context.state)
    , m_clock(context.frames)
    , m_header(new IslandHeader(context, this))
    , m_view(context.state.view)
{
    for (const IslandView view : allCases<IslandView>()) {
        QWidget *card = IslandViewContent::make(view, context);
        if (card)
            card->setParent(this);
        m_cards.push_back(card ? std::optional<CardPresence>(*card) : std::nullopt);
    }
    if (auto &card = selected())
        card->setSelected(true, false, m_clock);
}

void IslandContentView::showCard(IslandView view, bool moves)
{
    if (view == m_view)
        return;
    if (auto &old = selected())
        old->setSelected(false, moves, m_clock);
    m_view = view;
    placeCard();
    if (auto &card = selected())
        card->setSelected(true, moves, m_clock);
    if (!m_frames.isActive())
        m_frames = m_clock.subscribe([this](double time) { frame(time); });
}

bool IslandContentView::isCardWhole() const
{
    const auto &card = m_cards.at(std::size_t(m_view));
    return card && card->isWhole(m_clock.now());
}

void IslandContentView::setIslandHeight(int height)
{
    m_islandHeight = height;
    placeCard();
}

void IslandContentView::resizeEvent(QResizeEvent *)
{
    m_header->setGeometry(0, paddingTop, width(), IslandHeader::rowHeight);
    placeCard();
}

void IslandContentView::frame(double time)
{
    bool isAtRest = true;
    for (auto &card : m_cards) {
        if (card)
            isAtRest &= card->showAt(time);
    }
    if (isAtRest)
        m_frames.reset();
    Q_EMIT cardsMoved();
}

/// A card that goes keeps the place that it had.
void IslandContentView::placeCard()
{
    const auto &present = selected();
    if (!present)
        return;
    constexpr int left = CardMetrics::margin;
    const int cardWidth = width() - 2 * CardMetrics::margin;
    if (fillsIsland(m_view)) {
        constexpr int top = headerBottom + headerSpacing;
        present->card().setGeometry(left, top, cardWidth,
                                    m_islandHeight - top - CardMetrics::margin);
        return;
    }
    // The middle of the room below the header is also the middle of the mascot.
    const int height = CardMetrics::height + int(IslandLayout::cardGrowth(m_view, m_state));
    const int top = headerBottom + (m_islandHeight - headerBottom - height) / 2;
    present->card().setGeometry(left, top, cardWidth, height);
}

std::optional<CardPresence> &IslandContentView::selected()
{
    return m_cards.at(std::size_t(m_view));
}

} // namespace tirlo

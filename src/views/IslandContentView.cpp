#include "IslandContentView.h"

#include "CardMetrics.h"
#include "IslandHeader.h"
#include "IslandViewContent.h"
#include "core/AppState.h"

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
    , m_header(new IslandHeader(context, this))
{
    for (const IslandView view : allCases<IslandView>()) {
        QWidget *card = IslandViewContent::make(view, context);
        if (card) {
            card->setParent(this);
            card->hide();
        }
        m_cards.push_back(card);
    }
    selectCard();
    m_observers.follow(m_state.view, [this] { selectCard(); });
}

void IslandContentView::resizeEvent(QResizeEvent *)
{
    m_header->setGeometry(0, paddingTop, width(), IslandHeader::rowHeight);
    placeCard();
}

void IslandContentView::selectCard()
{
    QWidget *card = m_cards.at(std::size_t(m_state.view.value()));
    if (card == m_selected)
        return;
    if (m_selected)
        m_selected->hide();
    m_selected = card;
    placeCard();
    if (card)
        card->show();
}

void IslandContentView::placeCard()
{
    if (!m_selected)
        return;
    constexpr int left = CardMetrics::margin;
    const int cardWidth = width() - 2 * CardMetrics::margin;
    if (fillsIsland(m_state.view)) {
        constexpr int top = headerBottom + headerSpacing;
        m_selected->setGeometry(left, top, cardWidth, height() - top - CardMetrics::margin);
        return;
    }
    // The middle of the room below the header is also the middle of the mascot.
    const int top = headerBottom + (height() - headerBottom - CardMetrics::height) / 2;
    m_selected->setGeometry(left, top, cardWidth, CardMetrics::height);
}

} // namespace tirlo

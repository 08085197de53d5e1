#include "FocusWalk.h"

#include <QScrollArea>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <iterator>
#include <vector>

namespace tirlo::FocusWalk {

namespace {

constexpr auto lastProperty = "isWalkedLast";

/// Whether the control or something that it lies in, up to the window, is such.
bool isIn(const QWidget &control, bool (*isSuch)(const QWidget &))
{
    for (const QWidget *widget = &control; !widget->isWindow(); widget = widget->parentWidget()) {
        if (isSuch(*widget))
            return true;
    }
    return false;
}

bool isStop(const QWidget &control)
{
    return !control.isWindow() && (control.focusPolicy() & Qt::TabFocus) && !control.focusProxy()
        && control.isVisible() && control.isEnabled() && !isIn(control, [](const QWidget &part) {
               return part.testAttribute(Qt::WA_TransparentForMouseEvents);
           });
}

bool isLast(const QWidget &control)
{
    return isIn(control, [](const QWidget &part) { return part.property(lastProperty).toBool(); });
}

/// The window's stops in their order.
std::vector<QWidget *> way(QWidget &window)
{
    std::vector<QWidget *> stops;
    for (QWidget *next = window.nextInFocusChain(); next != &window;
         next = next->nextInFocusChain()) {
        if (isStop(*next))
            stops.push_back(next);
    }
    std::ranges::stable_partition(stops, [](const QWidget *stop) { return !isLast(*stop); });
    return stops;
}

/// What has the focus must be seen.
void scrollTo(QWidget &control)
{
    for (QWidget *widget = control.parentWidget(); widget; widget = widget->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(widget))
            area->ensureWidgetVisible(&control);
    }
}

} // namespace

bool step(QWidget &window, bool forward)
{
    const std::vector<QWidget *> stops = way(window);
    QWidget *present = window.focusWidget();
    const bool isChosen = present && present != &window;
    const auto place = std::ranges::find(stops, present);
    if (isChosen && place == stops.end()) {
        present->clearFocus();
        return true;
    }
    if (stops.empty())
        return false;

    const bool isAtEnd = place == stops.end() || std::next(place) == stops.end();
    const bool isAtBeginning = place == stops.end() || place == stops.begin();
    QWidget *next = forward ? (isAtEnd ? stops.front() : *std::next(place))
                            : (isAtBeginning ? stops.back() : *std::prev(place));
    next->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    scrollTo(*next);
    return true;
}

void putLast(QWidget &part)
{
    part.setProperty(lastProperty, true);
}

} // namespace tirlo::FocusWalk

#include "FocusWalk.h"

#include <QScrollArea>
#include <QWidget>

namespace tirlo::FocusWalk {

namespace {

bool isUnderPointer(const QWidget &control, const QWidget &window)
{
    for (const QWidget *widget = &control; widget && widget != &window;
         widget = widget->parentWidget()) {
        if (widget->testAttribute(Qt::WA_TransparentForMouseEvents))
            return false;
    }
    return true;
}

bool isStop(const QWidget &control, const QWidget &window)
{
    return (control.focusPolicy() & Qt::TabFocus) && !control.focusProxy() && control.isVisible()
        && control.isEnabled() && isUnderPointer(control, window);
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
    QWidget *present = window.focusWidget();
    const bool isChosen = present && present != &window;
    if (isChosen && !isStop(*present, window)) {
        present->clearFocus();
        return true;
    }
    QWidget *start = isChosen ? present : &window;
    const auto after = [forward](const QWidget *widget) {
        return forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    for (QWidget *next = after(start); next != start; next = after(next)) {
        if (next == &window || !isStop(*next, window))
            continue;
        next->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        scrollTo(*next);
        return true;
    }
    return false;
}

} // namespace tirlo::FocusWalk

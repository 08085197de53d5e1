#include "IslandViewContent.h"

#include "ApprovalView.h"
#include "EmptyStateView.h"
#include "NoteView.h"
#include "OverviewView.h"

namespace tirlo::IslandViewContent {

QWidget *make(IslandView view, const ViewContext &context)
{
    switch (view) {
    case IslandView::overview:
        return new OverviewView(context);
    case IslandView::empty:
        return new EmptyStateView(context);
    case IslandView::approval:
        return new ApprovalView(context);
    case IslandView::note:
        return new NoteView(context);
    case IslandView::greeting:
        return nullptr;
    default:
        return new CardBackground;
    }
}

} // namespace tirlo::IslandViewContent

#include "IslandViewContent.h"

#include "ApprovalView.h"
#include "ConfusedView.h"
#include "EmptyStateView.h"
#include "ErrorView.h"
#include "FinishedView.h"
#include "NoteView.h"
#include "OverviewView.h"
#include "QuestionView.h"

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
    case IslandView::question:
        return new QuestionView(context);
    case IslandView::error:
        return new ErrorView(context);
    case IslandView::finished:
        return new FinishedView(context);
    case IslandView::confused:
        return new ConfusedView;
    case IslandView::note:
        return new NoteView(context);
    case IslandView::greeting:
        return nullptr;
    default:
        return new CardBackground;
    }
}

} // namespace tirlo::IslandViewContent

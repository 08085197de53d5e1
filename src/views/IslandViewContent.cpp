#include "IslandViewContent.h"

#include "ApprovalView.h"
#include "ChooseView.h"
#include "ConfusedView.h"
#include "EmptyStateView.h"
#include "ErrorView.h"
#include "FinishedView.h"
#include "MailView.h"
#include "NoteView.h"
#include "OverviewView.h"
#include "PromptView.h"
#include "QuestionView.h"
#include "ResultView.h"
#include "SearchingView.h"
#include "UploadingView.h"
#include "UploadView.h"
#include "settings/SettingsIslandView.h"

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
    case IslandView::upload:
        return new UploadView;
    case IslandView::uploading:
        return new UploadingView;
    case IslandView::choose:
        return new ChooseView;
    case IslandView::mail:
        return new MailView;
    case IslandView::prompt:
        return new PromptView;
    case IslandView::searching:
        return new SearchingView;
    case IslandView::result:
        return new ResultView;
    case IslandView::note:
        return new NoteView(context);
    case IslandView::settings:
        return new SettingsIslandView;
    case IslandView::greeting:
        return nullptr;
    }
    return nullptr;
}

} // namespace tirlo::IslandViewContent

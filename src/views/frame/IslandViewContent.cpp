#include "IslandViewContent.h"

#include "settings/SettingsIslandView.h"
#include "views/chat/NoteView.h"
#include "views/chat/PromptView.h"
#include "views/chat/ResultView.h"
#include "views/chat/SearchingView.h"
#include "views/decisions/ApprovalView.h"
#include "views/decisions/ConfusedView.h"
#include "views/decisions/ErrorView.h"
#include "views/decisions/FinishedView.h"
#include "views/decisions/QuestionView.h"
#include "views/files/ChooseView.h"
#include "views/files/MailView.h"
#include "views/files/UploadingView.h"
#include "views/files/UploadView.h"
#include "views/overview/EmptyStateView.h"
#include "views/overview/OverviewView.h"

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
        return new SettingsIslandView(context.notifications);
    case IslandView::greeting:
        return nullptr;
    }
    return nullptr;
}

} // namespace tirlo::IslandViewContent

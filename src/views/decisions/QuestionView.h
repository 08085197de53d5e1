#pragma once

#include "ui/CardBackground.h"
#include "views/ViewContext.h"

namespace tirlo {

/// An agent's question with the answers to choose from.
class QuestionView final : public CardBackground
{
    Q_OBJECT

public:
    explicit QuestionView(const ViewContext &context, QWidget *parent = nullptr);
};

} // namespace tirlo

#pragma once

#include "ui/CardBackground.h"

namespace tirlo {

/// The chat: what was said, and the field for the next question.
class PromptView final : public CardBackground
{
    Q_OBJECT

public:
    explicit PromptView(QWidget *parent = nullptr);
};

} // namespace tirlo

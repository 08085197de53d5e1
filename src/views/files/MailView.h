#pragma once

#include "ui/CardBackground.h"

namespace tirlo {

/// The letter that a file is sent with.
class MailView final : public CardBackground
{
    Q_OBJECT

public:
    explicit MailView(QWidget *parent = nullptr);
};

} // namespace tirlo

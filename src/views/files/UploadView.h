#pragma once

#include "ui/CardBackground.h"

namespace tirlo {

/// Where files are dropped onto the island.
class UploadView final : public CardBackground
{
    Q_OBJECT

public:
    explicit UploadView(QWidget *parent = nullptr);
};

} // namespace tirlo

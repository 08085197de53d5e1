#pragma once

#include "ui/CardBackground.h"

namespace tirlo {

/// How far a dropped file has come.
class UploadingView final : public CardBackground
{
    Q_OBJECT

public:
    explicit UploadingView(QWidget *parent = nullptr);
};

} // namespace tirlo

#pragma once

#include <QWidget>

namespace tirlo {

/// A dot that tells well from ill, and a word about it.
class StatusBadge final : public QWidget
{
    Q_OBJECT

public:
    StatusBadge(const QString &label, bool ok, QWidget *parent = nullptr);
};

} // namespace tirlo

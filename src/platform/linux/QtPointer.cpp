#include "QtPointer.h"

#include <QCursor>

namespace tirlo {

QPointF QtPointer::position() const
{
    return QCursor::pos();
}

} // namespace tirlo

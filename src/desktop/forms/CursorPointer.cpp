#include "desktop/forms/CursorPointer.h"

#include <QCursor>

QPoint CursorPointer::position() const
{
    return QCursor::pos();
}

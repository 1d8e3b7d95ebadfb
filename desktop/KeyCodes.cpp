#include "desktop/KeyCodes.h"

#include <QtCore/qnamespace.h>

#include "platform/Forms/Form.h"

namespace Desktop {

std::int32_t KeyCodeOf(int key) {
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return Platform::KeyF1 + (key - Qt::Key_F1);
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
  switch (key) {
    case Qt::Key_Tab:
      return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return 13;
    case Qt::Key_Escape:
      return 27;
    case Qt::Key_Space:
      return 32;
    case Qt::Key_Left:
      return 37;
    case Qt::Key_Up:
      return 38;
    case Qt::Key_Right:
      return 39;
    case Qt::Key_Down:
      return 40;
    default:
      return 0;
  }
}

}  // namespace Desktop

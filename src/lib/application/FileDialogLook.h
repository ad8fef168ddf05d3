#ifndef APPLICATION_FILEDIALOGLOOK_H
#define APPLICATION_FILEDIALOGLOOK_H

#include <application/Export.h>

class QFileDialog;

namespace Zandu
{

/// Gives a file dialog that is not shown yet a size and columns in which names, sizes and dates are
/// seen. One of the desktop's own is left as it is.
ZANDU_EXPORT void arrangeFileDialog(QFileDialog* dialog);

} // namespace Zandu

#endif

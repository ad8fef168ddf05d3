#ifndef BENCHMARKS_EMPTYFILE_H
#define BENCHMARKS_EMPTYFILE_H

#include "Require.h"

#include <QFile>

namespace Bench
{

/// Makes an empty file. What is in its way ends the process.
inline void makeFile(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly), "a file can be made");
}

} // namespace Bench

#endif

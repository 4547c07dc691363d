#pragma once

#include <Inventor/SbVec3f.h>

#include <QString>
#include <QVector>

namespace SharedMethods {

/// Fills both arrays from an STL file: vertices in mm, and indices in face-set form, three and -1 for each
/// triangle. A file that cannot be opened leaves them untouched, one that cannot be read leaves them empty;
/// either way the log has a line. Indices of a second solid are not offset. The last argument has no effect.
void ReadSTLFile(const QString& path, QVector<SbVec3f>& vertices, QVector<int>& indices, bool unused = false);

}  // namespace SharedMethods

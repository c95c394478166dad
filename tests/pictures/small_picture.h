// Pictures for the pages: as small as a file may be without looking worse.
#pragma once

#include <QImage>
#include <QString>

namespace pictures {

// The picture with at most 256 colours: those that stand in it most, and for each other one the
// nearest of these. The same picture gives the same bytes.
QImage WithFewColours(const QImage& picture);
// Writes a PNG with a palette; false where the file cannot be written.
bool Save(const QImage& picture, const QString& file);

}  // namespace pictures

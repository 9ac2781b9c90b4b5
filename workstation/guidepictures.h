#pragma once

#include <QStringList>

class Workstation;

/// The pictures of the guide, which the program takes of itself with the sample lists.
namespace GuidePictures {

/// Their file names.
QStringList Names();
/// Writes them all into a folder, which is made; false, with a message, when one cannot be written. The
/// workstation is a demonstration that nobody attends.
bool Take(Workstation& station, const QString& folder);

} // namespace GuidePictures

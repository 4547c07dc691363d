#pragma once

#include <QString>
#include <QStringList>

/// The data folders of the program as a package that goes to another machine, or comes back from there.
namespace Packages {

/// Where the data stands: the working directory when it holds machines, otherwise the installation.
[[nodiscard]] QString dataFolder();

/// Copies machines, post-processors, fixtures, settings and the tool library to `target`, over what is there.
/// The files that could not be copied.
[[nodiscard]] QStringList exportTo(const QString& target);
/// Copies everything below `source` over the data folder. The files that could not be copied.
[[nodiscard]] QStringList importFrom(const QString& source);

}  // namespace Packages

#pragma once

#include <Inventor/SbName.h>

#include <QString>

/// The name for a node of the scene: its UTF-8 form, cut behind 1000 characters, as the scene library writes
/// past its memory on names of 64 KB. What the library keeps of it has no blanks and the like.
[[nodiscard]] SbName sceneName(const QString& name);

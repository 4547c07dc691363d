#pragma once

#include <Inventor/SbMatrix.h>

#include <QStringView>

/// The inclined plane of a directive
///
///     UPR, [integer,] three letters of X Y Z, three angles (degrees), three distances (mm)
///
/// p_work = p_plane R1 R2 R3 + distances, row vectors, single precision: the first letter turns first.
struct InclinedPlane {
    enum class Kind {
        Unchanged,   ///< nothing to do: no letters entry, or not of three characters
        BadLetters,  ///< a letter that is not X, Y or Z
        OutOfRange,  ///< an angle or distance that is not finite or beyond +-kLargest
        Plane        ///< `matrix` holds
    };
    static constexpr double kLargest = 1e9;  ///< mm or degrees: a number beyond it is no setting of a plane

    Kind kind = Kind::Unchanged;
    SbMatrix matrix = SbMatrix::identity();
};

/// `directive` is the text between the brackets; its first part is not looked at. Missing or bad numbers
/// count as 0.
[[nodiscard]] InclinedPlane inclinedPlaneOf(QStringView directive);

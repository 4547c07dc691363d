#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

// The machine file as plain records. Nearly everything is kept as text, exactly as it stands in the file;
// each user converts what it needs.

struct numericalAxisStruct {
    QString name;            ///< scene name; one character long: the letter by which chains find the axis
    QString nickName;        ///< letter in which ISO programs are written; `name` when the file has none
    QString homePosition;    ///< mm or degrees
    QString maxVelocity;     ///< mm or degrees per minute
    QString lower;           ///< mm or degrees
    QString upper;           ///< mm or degrees
    QString jerk;            ///< mm or degrees per s^3
    QString acceleration;    ///< mm or degrees per s^2
    QString color;           ///< r g b, 0 to 1
    QString initialization;  ///< x y z, mm
    QString direction;       ///< x y z
    QString type;            ///< "LINEAR", "ROTATION" or "FIXED"
    QString modelPath;       ///< STL file, absolute or relative to the installation folder
    bool isRTCP = true;
    int id = 6;  ///< 1..3 linear, 4 and 5 rotary, 6 auxiliary
};

struct nonNumericalAxisStruct {
    QString name;
    QString parent;  ///< name of the axis that carries the part; empty: the machine's root
    QString color;
    QString initialization;
    QString type;
    QString modelPath;
    QString direction;
    QString lower;
    QString upper;
};

struct spindleStruct {
    QString name;  ///< "T" and the spindle's number
    QString
        initialization;  ///< x y z w: offset on the carrier (mm), angle offset on the fifth axis (degrees)
    QString startString;
    QString reverseString;
    QString stopString;
    QString checkString;
    QString toolChangeString;
    QString range;
    QString coaxial;
    QString parent;
    QString color;
    QString direction = QStringLiteral("0 0 -1");
};

struct machineParametersStruct {
    QString systemVendor;
    QString decimal;
    QString machineType;
    QString type;
    QString serialNumber;
    QStringList kinematicChain;
};

struct interpolationParametersStruct {
    unsigned interpolationTime = 2;  ///< ms
    double minAcceleration = 300;
    double rapidThreshold = 7000;  ///< feed of rapid moves, mm per minute
    double decelerationAngle = 10;
    double angleThreshold = 85;
    double angleMaxFeedrate = 1200;
    double deltaG0 = 100;
    double deltaG1 = 50;
    double interpolationSmooth = 0;
};

struct workCoordinateSystemStruct {
    QString kind = QStringLiteral("userCoordinateSystem");
    QString parent;
    QString nickName;
    QString name;  ///< "G54", "G55", ...
    QStringList kinematicChain;
    QString initialization;  ///< origin x y z, mm
};

struct userCommandStruct {
    QString delay;
    QMap<QString, QString> startList;  ///< chain text -> command
};

/// One entry of the machine file's list of mounted fixtures.
struct UserFixtureList {
    QString key;    ///< axis that carries the fixtures
    QString value;  ///< fixture file
    int number = 0;
    float distance = 0;  ///< mm

    /// Logs "Name:%1 Path:%2 Number:%3 Distance:%4".
    void print() const;
};

#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <optional>
#include <variant>

// The command line of tornvale-batch, read without side effects. Values may stand behind "=" or as the next
// argument and may start with "-" ("--ucs -1,0,5"); an argument that starts with "--" is never a value.

enum class BatchCommand { Convert, Transform, Retime, Check, Audit, Items, Generate, Simulate, Picture };

/// One call, all values checked as far as that needs neither machine nor file.
struct BatchCall {
    bool help = false;
    bool version = false;
    bool quiet = false;
    BatchCommand command = BatchCommand::Convert;
    QString input;  ///< file of the command; "-" is standard input

    std::optional<QString> dataFolder;
    std::optional<QString> machineFile;
    std::optional<QString> toolFile;
    std::optional<QString> outputFile;

    std::optional<QString> workCoordinate;
    std::optional<QString> chain;
    std::optional<QString> section;  ///< one of sectionNames()
    std::optional<int> tool;         ///< index in the tool library

    using Triple = std::array<double, 3>;
    Triple userCoordinate_mm{};
    Triple translation_mm{};
    Triple offset_mm{};
    int mirror_deg = 0;
    double shift_mm = 0;
    double previousFifth_deg = 0;
    double extraLength_mm = 0;
    double factor = 1;
    int mode = 0;  ///< 0 to the machine, 1 back to the tool tip
    bool densePoint = false;

    std::optional<QString> pattern;  ///< of the post-processor

    bool stopAtFirst = false;
    int line = 0;  ///< 0: the whole program
    std::array<int, 2> size_px{1280, 800};
    std::optional<QString> cameraFile;
};

/// A wrong call: which argument, and what was expected.
struct WrongCall {
    QString argument;
    QString text;
};

/// `arguments` without the program's name.
[[nodiscard]] std::variant<BatchCall, WrongCall> readCommandLine(const QStringList& arguments);

/// The texts of a conversion, as --section names them.
[[nodiscard]] const QStringList& sectionNames();

/// What --help prints.
[[nodiscard]] QString batchHelp();

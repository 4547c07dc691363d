#include "app/batch/CommandLine.h"

#include <cmath>
#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace {

/// Takes a value into the call; a text tells what was expected instead.
using Taker = std::function<std::optional<QString>(BatchCall&, const QString&)>;

struct Option {
    QString name;
    bool isFlag;
    std::vector<BatchCommand> commands;  ///< empty: common to all
    Taker take;
};

std::optional<double> finiteNumber(const QString& text) {
    bool isNumber = false;
    const double value = text.trimmed().toDouble(&isNumber);  // the C locale's form, whatever the system's
    if (!isNumber || !std::isfinite(value))
        return std::nullopt;
    return value;
}

Taker takeText(std::optional<QString> BatchCall::*field) {
    return [field](BatchCall& call, const QString& value) -> std::optional<QString> {
        if (value.isEmpty())
            return QStringLiteral("is empty, expected a text");
        call.*field = value;
        return std::nullopt;
    };
}

Taker takeFlag(bool BatchCall::*field) {
    return [field](BatchCall& call, const QString&) -> std::optional<QString> {
        call.*field = true;
        return std::nullopt;
    };
}

Taker takeNumber(double BatchCall::*field) {
    return [field](BatchCall& call, const QString& value) -> std::optional<QString> {
        const std::optional<double> number = finiteNumber(value);
        if (!number)
            return QStringLiteral("\"%1\" is no number, expected one such as 12.5").arg(value);
        call.*field = *number;
        return std::nullopt;
    };
}

Taker takeTriple(BatchCall::Triple BatchCall::*field) {
    return [field](BatchCall& call, const QString& value) -> std::optional<QString> {
        const QStringList parts = value.split(QLatin1Char(','));
        BatchCall::Triple triple{};
        bool isGood = parts.size() == 3;
        for (int i = 0; isGood && i < 3; ++i) {
            const std::optional<double> number = finiteNumber(parts[i]);
            isGood = number.has_value();
            triple[static_cast<std::size_t>(i)] = number.value_or(0);
        }
        if (!isGood)
            return QStringLiteral("\"%1\" is not three numbers, expected a form such as -1,0,5").arg(value);
        call.*field = triple;
        return std::nullopt;
    };
}

template <typename Field>
Taker takeWhole(Field BatchCall::*field, const QString& expected, const std::function<bool(int)>& isAllowed) {
    return [field, expected, isAllowed](BatchCall& call, const QString& value) -> std::optional<QString> {
        bool isNumber = false;
        const int number = value.trimmed().toInt(&isNumber);
        if (!isNumber || !isAllowed(number))
            return QStringLiteral("\"%1\" cannot be taken, expected %2").arg(value, expected);
        call.*field = number;
        return std::nullopt;
    };
}

std::optional<QString> takeSize(BatchCall& call, const QString& value) {
    constexpr int kSmallest = 16;
    constexpr int kLargest = 8192;
    const QStringList parts = value.split(QLatin1Char('x'));
    for (int i = 0; i < 2; ++i) {
        bool isNumber = false;
        const int number = parts.value(i).toInt(&isNumber);
        if (parts.size() != 2 || !isNumber || number < kSmallest || number > kLargest)
            return QStringLiteral("\"%1\" is no size, expected a form such as 1280x800, each %2 to %3")
                .arg(value)
                .arg(kSmallest)
                .arg(kLargest);
        call.size_px[static_cast<std::size_t>(i)] = number;
    }
    return std::nullopt;
}

std::optional<QString> takeSection(BatchCall& call, const QString& value) {
    if (!sectionNames().contains(value))
        return QStringLiteral("\"%1\" is no section, expected one of %2")
            .arg(value, sectionNames().join(QStringLiteral(", ")));
    call.section = value;
    return std::nullopt;
}

std::vector<Option> commonOptions() {
    return {{QStringLiteral("--help"), true, {}, takeFlag(&BatchCall::help)},
            {QStringLiteral("--version"), true, {}, takeFlag(&BatchCall::version)},
            {QStringLiteral("--quiet"), true, {}, takeFlag(&BatchCall::quiet)},
            {QStringLiteral("--data"), false, {}, takeText(&BatchCall::dataFolder)},
            {QStringLiteral("--machine"), false, {}, takeText(&BatchCall::machineFile)},
            {QStringLiteral("--tools"), false, {}, takeText(&BatchCall::toolFile)},
            {QStringLiteral("-o"), false, {}, takeText(&BatchCall::outputFile)}};
}

std::vector<Option> commandOptions() {
    using enum BatchCommand;
    const auto any = [](int) { return true; };
    return {
        {QStringLiteral("--wcs"), false, {Convert, Transform, Picture}, takeText(&BatchCall::workCoordinate)},
        {QStringLiteral("--chain"),
         false,
         {Convert, Transform, Retime, Check, Audit},
         takeText(&BatchCall::chain)},
        {QStringLiteral("--tool"),
         false,
         {Convert, Transform},
         takeWhole(&BatchCall::tool, QStringLiteral("the index of a tool"), [](int i) { return i >= 0; })},
        {QStringLiteral("--ucs"), false, {Convert, Transform}, takeTriple(&BatchCall::userCoordinate_mm)},
        {QStringLiteral("--translation"), false, {Convert}, takeTriple(&BatchCall::translation_mm)},
        {QStringLiteral("--offset"), false, {Convert}, takeTriple(&BatchCall::offset_mm)},
        {QStringLiteral("--mirror"),
         false,
         {Convert},
         takeWhole(&BatchCall::mirror_deg, QStringLiteral("a whole number of degrees"), any)},
        {QStringLiteral("--shift"), false, {Convert}, takeNumber(&BatchCall::shift_mm)},
        {QStringLiteral("--previous-fifth"), false, {Convert}, takeNumber(&BatchCall::previousFifth_deg)},
        {QStringLiteral("--section"), false, {Convert}, takeSection},
        {QStringLiteral("--extra-length"), false, {Transform}, takeNumber(&BatchCall::extraLength_mm)},
        {QStringLiteral("--mode"),
         false,
         {Transform},
         takeWhole(&BatchCall::mode, QStringLiteral("0 or 1"), [](int i) { return i == 0 || i == 1; })},
        {QStringLiteral("--factor"), false, {Retime}, takeNumber(&BatchCall::factor)},
        {QStringLiteral("--dense-point"), true, {Retime}, takeFlag(&BatchCall::densePoint)},
        {QStringLiteral("--pattern"), false, {Generate}, takeText(&BatchCall::pattern)},
        {QStringLiteral("--stop-at-first"), true, {Simulate}, takeFlag(&BatchCall::stopAtFirst)},
        {QStringLiteral("--line"),
         false,
         {Picture},
         takeWhole(&BatchCall::line, QStringLiteral("the number of a line, from 1"),
                   [](int i) { return i >= 1; })},
        {QStringLiteral("--size"), false, {Picture}, takeSize},
        {QStringLiteral("--camera"), false, {Picture}, takeText(&BatchCall::cameraFile)}};
}

const std::vector<std::pair<QString, BatchCommand>>& commandNames() {
    static const std::vector<std::pair<QString, BatchCommand>> kNames{
        {QStringLiteral("convert"), BatchCommand::Convert},
        {QStringLiteral("transform"), BatchCommand::Transform},
        {QStringLiteral("retime"), BatchCommand::Retime},
        {QStringLiteral("check"), BatchCommand::Check},
        {QStringLiteral("audit"), BatchCommand::Audit},
        {QStringLiteral("items"), BatchCommand::Items},
        {QStringLiteral("generate"), BatchCommand::Generate},
        {QStringLiteral("simulate"), BatchCommand::Simulate},
        {QStringLiteral("picture"), BatchCommand::Picture}};
    return kNames;
}

QString nameOf(BatchCommand command) {
    for (const auto& [name, value] : commandNames()) {
        if (value == command)
            return name;
    }
    return {};
}

std::optional<BatchCommand> commandOf(const QString& name) {
    for (const auto& [known, command] : commandNames()) {
        if (known == name)
            return command;
    }
    return std::nullopt;
}

/// Walks the arguments once; options may stand before and behind the command.
class Reader {
  public:
    explicit Reader(QStringList arguments) : arguments_(std::move(arguments)), options_(commonOptions()) {
        for (Option& option : commandOptions())
            options_.push_back(std::move(option));
    }

    std::variant<BatchCall, WrongCall> read() {
        while (position_ < arguments_.size()) {
            if (std::optional<WrongCall> wrong = readOne(arguments_[position_++]))
                return *wrong;
            if (call_.help || call_.version)
                return call_;
        }
        if (std::optional<WrongCall> wrong = checkWhole())
            return *wrong;
        return call_;
    }

  private:
    std::optional<WrongCall> readOne(const QString& argument) {
        if (!onlyFiles_ && argument == QLatin1String("--")) {
            onlyFiles_ = true;
            return std::nullopt;
        }
        const bool isOption = argument.startsWith(QLatin1Char('-')) && argument != QLatin1String("-");
        if (isOption && !onlyFiles_)
            return readOption(argument == QLatin1String("-h") ? QStringLiteral("--help") : argument);
        return readPlain(argument);
    }

    std::optional<WrongCall> readPlain(const QString& argument) {
        if (!command_) {
            command_ = commandOf(argument);
            if (command_)
                return std::nullopt;
            QStringList names;
            for (const auto& entry : commandNames())
                names.append(entry.first);
            return WrongCall{
                argument,
                QStringLiteral("is no command, expected one of %1").arg(names.join(QStringLiteral(", ")))};
        }
        if (hasInput_)
            return WrongCall{argument, QStringLiteral("is a second file, expected one")};
        hasInput_ = true;
        call_.input = argument;
        return std::nullopt;
    }

    std::optional<WrongCall> readOption(const QString& argument) {
        const int equals = argument.indexOf(QLatin1Char('='));
        const QString name = equals < 0 ? argument : argument.left(equals);
        const Option* option = find(name);
        if (option == nullptr)
            return WrongCall{name, QStringLiteral("is no option, see tornvale-batch --help")};
        if (!used_.insert(name).second)
            return WrongCall{name, QStringLiteral("is given twice, expected once")};
        QString value;
        if (option->isFlag && equals >= 0)
            return WrongCall{name, QStringLiteral("takes no value")};
        if (!option->isFlag && equals >= 0)
            value = argument.mid(equals + 1);
        if (!option->isFlag && equals < 0) {
            if (position_ >= arguments_.size() || arguments_[position_].startsWith(QLatin1String("--")))
                return WrongCall{name, QStringLiteral("has no value, expected one behind it")};
            value = arguments_[position_++];
        }
        if (const std::optional<QString> problem = option->take(call_, value))
            return WrongCall{name, *problem};
        return std::nullopt;
    }

    std::optional<WrongCall> checkWhole() {
        if (!command_)
            return WrongCall{QStringLiteral("command"),
                             QStringLiteral("is missing, see tornvale-batch --help")};
        call_.command = *command_;
        for (const QString& name : used_) {
            const std::vector<BatchCommand>& allowed = find(name)->commands;
            if (allowed.empty() || std::find(allowed.begin(), allowed.end(), *command_) != allowed.end())
                continue;
            return WrongCall{name, QStringLiteral("is no option of the command %1").arg(nameOf(*command_))};
        }
        if (!hasInput_)
            return WrongCall{nameOf(*command_),
                             QStringLiteral("has no file, expected one, or - for standard input")};
        if (call_.input.isEmpty())
            return WrongCall{nameOf(*command_), QStringLiteral("has an empty file name")};
        return std::nullopt;
    }

    [[nodiscard]] const Option* find(const QString& name) const {
        for (const Option& option : options_) {
            if (option.name == name)
                return &option;
        }
        return nullptr;
    }

    QStringList arguments_;
    std::vector<Option> options_;
    int position_ = 0;
    bool onlyFiles_ = false;
    bool hasInput_ = false;
    std::set<QString> used_;
    std::optional<BatchCommand> command_;
    BatchCall call_;
};

}  // namespace

std::variant<BatchCall, WrongCall> readCommandLine(const QStringList& arguments) {
    return Reader(arguments).read();
}

const QStringList& sectionNames() {
    static const QStringList kNames{QStringLiteral("WorkCode"), QStringLiteral("LeadIn"),
                                    QStringLiteral("IsoCode"), QStringLiteral("LeadOut")};
    return kNames;
}

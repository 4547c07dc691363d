#include <benchmark/benchmark.h>

#include <QString>
#include <cstdio>
#include <fstream>
#include <string>

#include "machine/readConfig.h"
#include "nc/GCodeConversionStrategy.h"

// ISO text to way points and the emitted texts, without re-timing. The bars: a million lines in 1.5 s, time
// linear in the length, peak memory under four times the size of the texts.

namespace {

void addAxis(MachineDescription& machine, char letter, int id, const char* direction) {
    auto axis = std::make_unique<numericalAxisStruct>();
    axis->name = QString(QLatin1Char(letter));
    axis->nickName = axis->name;
    axis->id = id;
    axis->direction = QLatin1String(direction);
    machine.numericalAxes.push_back(std::move(axis));
}

void useMachine() {
    auto machine = std::make_unique<MachineDescription>();
    addAxis(*machine, 'X', 1, "1 0 0");
    addAxis(*machine, 'Y', 2, "0 1 0");
    addAxis(*machine, 'Z', 3, "0 0 1");
    addAxis(*machine, 'C', 4, "0 0 1");
    addAxis(*machine, 'A', 5, "1 0 0");
    machine->interpolationParameters.rapidThreshold = 20000;
    machine->rebuildIndex();
    ConfigReader::instance().setDescription(std::move(machine));
}

/// Lines of the kind "N10 G1 X1.234 Y2.345 Z-3.456 F3000 ; comment".
QString linearProgram(int lines) {
    std::string text;
    char buffer[96];
    for (int i = 0; i < lines; ++i) {
        const bool rapid = i < 2 || i > lines - 3;
        std::snprintf(buffer, sizeof buffer, "N%d G%d X%.3f Y%.3f Z%.3f F3000 ; comment\n", (i + 1) * 10,
                      rapid ? 0 : 1, i * 0.017 + 1.234, (i % 977) * 0.31 + 2.345, -3.456 - (i % 13) * 0.1);
        text += buffer;
    }
    return QString::fromStdString(text);
}

QString fiveAxisProgram(int lines) {
    std::string text;
    char buffer[96];
    for (int i = 0; i < lines; ++i) {
        std::snprintf(buffer, sizeof buffer, "X%.3f Y%.3f Z%.3f C%.3f A%.3f\n", i * 0.017, (i % 977) * 0.31,
                      -3.456 - (i % 13) * 0.1, (i % 360) * 0.25, (i % 77) * 0.1);
        text += buffer;
    }
    return QStringLiteral("G1 F3000\n") + QString::fromStdString(text);
}

/// Arcs of about 3 mm along X, there and back.
QString arcProgram(int lines) {
    std::string text = "G0 X0 Y0\nF2000\n";
    char buffer[64];
    for (int i = 1; i <= lines; ++i) {
        const int place = i % 2000 < 1000 ? i % 1000 : 1000 - i % 1000;
        std::snprintf(buffer, sizeof buffer, "G%d X%d Y%d R7\n", 2 + i % 2, place, i % 2 * 3);
        text += buffer;
    }
    return QString::fromStdString(text);
}

/// Peak resident bytes since the last call with `reset`.
double peakBytes(bool reset) {
    if (reset)
        std::ofstream("/proc/self/clear_refs") << 5;
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stod(line.substr(6)) * 1024.0;
    }
    return 0.0;
}

void convert(benchmark::State& state, const QString& code, const QString& chain) {
    useMachine();
    double texts = 0.0;
    double points = 0.0;
    const double before = peakBytes(true);
    double peak = 0.0;
    for (auto _ : state) {
        HandleIsoCode::GCodeConverter converter(chain);
        converter.reTime = false;
        if (!converter.doIt(code)) {
            state.SkipWithError("the program was refused");
            break;
        }
        state.PauseTiming();
        points = static_cast<double>(converter.wayPoints().size());
        texts = 2.0 * (code.size() + converter.WorkCode.size() + converter.LeadIn.size() +
                       converter.IsoCode.size() + converter.LeadOut.size());
        peak = peakBytes(false) - before + 2.0 * code.size();
        state.ResumeTiming();
    }
    state.counters["points"] = points;
    state.counters["text_MB"] = texts / 1e6;
    state.counters["peak_over_texts"] = peak / texts;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void convertLinear(benchmark::State& state) {
    convert(state, linearProgram(static_cast<int>(state.range(0))), QStringLiteral("XYZ"));
}

void convertFiveAxes(benchmark::State& state) {
    convert(state, fiveAxisProgram(static_cast<int>(state.range(0))), QStringLiteral("XYZCA"));
}

void convertArcs(benchmark::State& state) {
    convert(state, arcProgram(static_cast<int>(state.range(0))), QStringLiteral("XYZ"));
}

}  // namespace

BENCHMARK(convertLinear)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(convertFiveAxes)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(convertArcs)->Arg(100'000)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    // Only the log's information lines would be written.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

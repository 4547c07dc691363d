#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPixmap>

#include "items/CodePanel.h"
#include "items/CodeView.h"
#include "items/calc/CodeLines.h"
#include "items/calc/CodeSearch.h"
#include "items/calc/ModalLine.h"

// The code panel with a program of a million lines. Bars on the reference machine: text set 100 ms, search of
// a text at the end 200 ms, a screen painted and the running line moved within a frame of 40 ms. QListView
// with uniform items needs 40 ms and 13 MB for the layout of a million rows alone, which is why the view is
// our own.

namespace {

constexpr int kLines = 1000000;

const QString& program() {
    static const QString text = [] {
        QString made;
        made.reserve(kLines * 50);
        for (int i = 0; i < kLines; ++i) {
            made += QLatin1String("G1 X") + QString::number(i * 0.001, 'f', 3) + QLatin1String(" Y") +
                    QString::number(500 - i * 0.0007, 'f', 3) +
                    QLatin1String(" Z-12.500 C45.000 A0.000 F6000\n");
        }
        made += QLatin1String("M30 (the end)\n");
        return made;
    }();
    return text;
}

/// A panel of 360 by 900 pixels, shown, with the program as machine code.
CodePanel& panel() {
    static auto* const made = [] {
        auto* shown = new CodePanel;  // owned by nobody: lives as long as the process
        shown->resize(360, 900);
        shown->setTexts(QString(), program());
        shown->showCode(CodePanel::MachineCode);
        shown->show();
        QApplication::processEvents();
        return shown;
    }();
    return *made;
}

CodeView& view() {
    return *panel().findChild<CodeView*>(QStringLiteral("CodeView"));
}

void setText(benchmark::State& state) {
    panel();
    const QString other = QString(program()).replace(0, 2, QStringLiteral("G0"));
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        panel().setTexts(QString(), odd ? other : program());
        QApplication::processEvents();
    }
    const CodeLines lines(program());
    state.counters["indexPercentOfText"] =
        100.0 * static_cast<double>(lines.indexBytes()) / (2.0 * program().size());
    panel().setTexts(QString(), program());
}
BENCHMARK(setText)->Unit(benchmark::kMillisecond);

void searchToTheEnd(benchmark::State& state) {
    panel();
    const CodeSearch search(QStringLiteral("the END"), Qt::CaseInsensitive);
    for (auto _ : state)
        benchmark::DoNotOptimize(search.nextWrapped(program(), 0).offset);
}
BENCHMARK(searchToTheEnd)->Unit(benchmark::kMillisecond);

void searchBackToTheStart(benchmark::State& state) {
    const CodeSearch search(QStringLiteral("x0.000 y500"), Qt::CaseInsensitive);
    for (auto _ : state)
        benchmark::DoNotOptimize(search.previousWrapped(program(), program().size()).offset);
}
BENCHMARK(searchBackToTheStart)->Unit(benchmark::kMillisecond);

void countMatches(benchmark::State& state) {
    const CodeSearch search(state.range(0) == 0 ? QStringLiteral("0") : QStringLiteral("M30"),
                            Qt::CaseInsensitive);
    for (auto _ : state)
        benchmark::DoNotOptimize(search.count(program(), program().size()).total);
}
BENCHMARK(countMatches)->ArgName("rare")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void paintScreen(benchmark::State& state) {
    QPixmap picture(view().viewport()->size());
    int top = 0;
    for (auto _ : state) {
        view().setTopRow(top = (top + 7919) % kLines);
        view().viewport()->render(&picture);
    }
    state.counters["rows"] = view().rowsInView();
}
BENCHMARK(paintScreen)->Unit(benchmark::kMillisecond);

void lookUpLine(benchmark::State& state) {
    const CodeLines lines(program());
    int line = 0;
    for (auto _ : state) {
        line = (line + 7919) % kLines;
        benchmark::DoNotOptimize(lines.line(line).data());
    }
}
BENCHMARK(lookUpLine)->Unit(benchmark::kNanosecond);

void runningLineTold(benchmark::State& state) {
    int line = 0;
    for (auto _ : state)
        panel().setRunningLine(line++ % kLines);
}
BENCHMARK(runningLineTold)->Unit(benchmark::kNanosecond);

void modalWordsNotFound(benchmark::State& state) {
    const CodeLines lines(program());
    for (auto _ : state)
        benchmark::DoNotOptimize(modalLine(lines, kLines / 2, QStringLiteral("XYZB")).size());
}
BENCHMARK(modalWordsNotFound)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

/// The configurator's window on a parameter file of 100,000 keys: opening beside the translation alone, the cells of 50
/// visible rows beside a plain table of texts, a committed edit, and the change to the text beside writing alone.

#include <benchmark/benchmark.h>

#include <QAbstractTableModel>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "bench/support/texts.h"
#include "configurator/session.h"
#include "tests/support/configurator_window.h"

namespace {

constexpr int kKeys = 100'000;
constexpr std::uint32_t kVisibleRows = 50;

/// Translates the text and asks for nothing else, as a check on the command line does.
void Check(benchmark::State &state) {
    const std::string par = kq_bench::ParTextOfKeys(kKeys);
    const std::string pdt = kq_bench::PdtTextOfKeys();
    for (auto _ : state) {
        kq_pdt::CConfiguratorSession session;
        session.ParView().SetText(par);
        session.SetTemplateText(pdt);
        if (session.TranslateToModel() != kq_pdt::CConfiguratorSession::TOutcome::kDone) {
            state.SkipWithError("the text has errors");
        }
    }
}

void OpenAndTranslate(benchmark::State &state) {
    const std::string par = kq_bench::ParTextOfKeys(kKeys);
    for (auto _ : state) {
        state.PauseTiming();
        auto bench = std::make_unique<CWindowBench>(kq_bench::PdtTextOfKeys(), par);
        state.ResumeTiming();
        if (!bench->OpenSheet()) {
            state.SkipWithError("the sheet isn't shown");
        }
        bench.reset();
    }
}

class COpenWindow {
public:
    COpenWindow() : bench_(kq_bench::PdtTextOfKeys(), kq_bench::ParTextOfKeys(kKeys)) { bench_.OpenSheet(); }

    CSheetView &Sheet() { return bench_.window->Sheet(); }
    CWindowBench &Bench() { return bench_; }
    /// A section's table at random.
    std::uint32_t Table() {
        return Sheet().SubTable(1, 1 + static_cast<std::uint32_t>(random_() % Sheet().RowCount(1)));
    }

private:
    CWindowBench bench_;
    std::mt19937 random_{1};
};

void VisibleRows(benchmark::State &state) {
    COpenWindow window;
    for (auto _ : state) {
        const std::uint32_t table = window.Table();
        const std::size_t columns = window.Sheet().Columns(table).size();
        std::size_t size = 0;
        for (std::uint32_t row = 20; row < 20 + kVisibleRows; ++row) {
            for (std::uint32_t column = 1; column <= columns; ++column) {
                size += window.Sheet().ReadCell(table, row, column).text.View().size();
            }
            window.Sheet().SubTable(table, row);
        }
        benchmark::DoNotOptimize(size);
    }
}

/// The peer: a table that holds plain texts.
class CPlainTable : public QAbstractTableModel {
public:
    CPlainTable() {
        for (int row = 0; row < kKeys; ++row) {
            const QString number = QString::number(row);
            rows_.push_back({QLatin1String("Point") + number, number, QLatin1String("Pump") + number});
        }
    }

    int rowCount(const QModelIndex & /*parent*/) const override { return static_cast<int>(rows_.size()); }
    int columnCount(const QModelIndex & /*parent*/) const override { return 3; }
    QVariant data(const QModelIndex &index, int role) const override {
        return role == Qt::DisplayRole
                   ? QVariant(rows_[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())])
                   : QVariant();
    }

private:
    std::vector<std::array<QString, 3>> rows_;
};

void VisibleRowsOfPeer(benchmark::State &state) {
    const CPlainTable table;
    std::mt19937 random{1};
    for (auto _ : state) {
        const int first = static_cast<int>(random() % (kKeys - kVisibleRows));
        qsizetype size = 0;
        for (int row = first; row < first + static_cast<int>(kVisibleRows); ++row) {
            for (int column = 0; column < table.columnCount({}); ++column) {
                size += table.index(row, column).data().toString().size();
            }
        }
        benchmark::DoNotOptimize(size);
    }
}

void CommittedEdit(benchmark::State &state) {
    COpenWindow window;
    std::uint32_t number = 0;
    for (auto _ : state) {
        const std::uint32_t key = window.Sheet().SubTable(window.Table(), 50);
        if (!window.Bench().SetCell(window.Sheet(), key, 2, 2, std::to_string(++number % 60000))) {
            state.SkipWithError("the cell can't be edited");
        }
    }
}

void Undo(benchmark::State &state) {
    COpenWindow window;
    std::uint32_t number = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const std::uint32_t key = window.Sheet().SubTable(window.Table(), 50);
        window.Bench().SetCell(window.Sheet(), key, 2, 2, std::to_string(++number % 60000));
        state.ResumeTiming();
        if (!window.Bench().window->UserUndo()) {
            state.SkipWithError("there is no step");
        }
    }
}

void WriteAlone(benchmark::State &state) {
    kq_pdt::CConfiguratorSession session;
    session.ParView().SetText(kq_bench::ParTextOfKeys(kKeys));
    session.SetTemplateText(kq_bench::PdtTextOfKeys());
    session.TranslateToModel();
    for (auto _ : state) {
        session.WritePar();
        session.WriteDmf();
    }
}

void ChangeToText(benchmark::State &state) {
    COpenWindow window;
    for (auto _ : state) {
        if (!window.Bench().Tab(CConfiguratorWindow::kTextTab)) {
            state.SkipWithError("the text isn't shown");
        }
        state.PauseTiming();
        window.Bench().Tab(CConfiguratorWindow::kSheetTab);
        state.ResumeTiming();
    }
}

BENCHMARK(Check)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenAndTranslate)->Unit(benchmark::kMillisecond);
BENCHMARK(VisibleRows)->Unit(benchmark::kMicrosecond);
BENCHMARK(VisibleRowsOfPeer)->Unit(benchmark::kMicrosecond);
BENCHMARK(CommittedEdit)->Unit(benchmark::kMicrosecond);
BENCHMARK(Undo)->Unit(benchmark::kMicrosecond)->Iterations(1000);
BENCHMARK(WriteAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(ChangeToText)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

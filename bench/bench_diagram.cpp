// The diagram with many tables: adding 200 tables of 20 fields through Tables.AddTable inside
// BeginUpdate/EndUpdate, one full repaint of a work area that shows all of them, and how much a
// table drag repaints per pointer move (counters: the repainted pixels against the viewport's).
// Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise.
#include "ZvWindow.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPaintEvent>
#include <QTest>

#include <cstdlib>
#include <memory>
#include <string>

namespace zv {
namespace {

constexpr int TableCount = 200;
constexpr int FieldCount = 20;
// All 200 tables in a grid of 20 columns: the viewport that shows them all.
constexpr int GridColumns = 20;
constexpr int GridPitchX = 130;
constexpr int GridPitchY = 170;

const TZvDataSet& TwentyFields() {
    static const TZvDataSet DataSet = [] {
        TZvDataSet Fields;
        for (int I = 0; I < FieldCount; ++I)
            Fields.AddFieldDef("FIELD_" + std::to_string(I), I % 2 ? ftInteger : ftString);
        return Fields;
    }();
    return DataSet;
}

std::unique_ptr<TSQLZevrin> ShownHost(QSize Size) {
    auto Host = std::make_unique<TSQLZevrin>();
    Host->SetTabHeight(0);
    Host->resize(Size);
    Host->show();
    QApplication::processEvents();
    return Host;
}

void AddTwoHundredTables(TSQLZevrin& Host) {
    Host.BeginUpdate();
    for (int I = 0; I < TableCount; ++I)
        Host.GetTables().AddTable("TABLE_" + std::to_string(I), "", &TwentyFields());
    Host.EndUpdate();
}

// Adds the 200 tables through the public list, placed automatically, with the model following.
void BM_AddTablesInUpdate(benchmark::State& State) {
    for (auto _ : State) {
        State.PauseTiming();
        auto Host = ShownHost(QSize(1200, 800));
        State.ResumeTiming();
        AddTwoHundredTables(*Host);
        benchmark::DoNotOptimize(Host->GetWorkArea()->TableCount());
        State.PauseTiming();
        Host.reset();
        State.ResumeTiming();
    }
    State.counters["tables"] = TableCount;
}
BENCHMARK(BM_AddTablesInUpdate)->Unit(benchmark::kMillisecond)->Iterations(5);

// One repaint of a work area that shows all 200 tables (each with its caption, buttons, check box
// and six rows), painted synchronously.
void BM_FullRepaint(benchmark::State& State) {
    auto Host = ShownHost(QSize(GridColumns * GridPitchX + 40, (TableCount / GridColumns) * GridPitchY + 40));
    Host->BeginUpdate();
    for (int I = 0; I < TableCount; ++I)
        Host->GetTables().AddTableAt("TABLE_" + std::to_string(I), "", &TwentyFields(),
                                     QPoint((I % GridColumns) * GridPitchX, (I / GridColumns) * GridPitchY));
    Host->EndUpdate();
    QWidget* View = Host->GetWorkArea()->viewport();
    QApplication::processEvents();
    for (auto _ : State)
        View->repaint();
    State.counters["viewport_px"] = View->width() * View->height();
}
BENCHMARK(BM_FullRepaint)->Unit(benchmark::kMillisecond);

// Sums the area of every paint the viewport receives.
class TPaintMeter : public QObject {
public:
    bool eventFilter(QObject* /*Watched*/, QEvent* Event) override {
        if (Event->type() == QEvent::Paint)
            for (const QRect& R : static_cast<QPaintEvent*>(Event)->region())
                Pixels += static_cast<double>(R.width()) * R.height();
        return false;
    }
    double Pixels = 0;
};

// A caption drag over a diagram of 200 tables: each pointer move shows the moving frame, and the
// release moves the table. Reports the pixels repainted per move and per release against the
// viewport's.
void BM_DragTable(benchmark::State& State) {
    auto Host = ShownHost(QSize(1200, 800));
    AddTwoHundredTables(*Host);
    TZvWorkArea* Area = Host->GetWorkArea();
    TZvTable* Table = Area->GetTable("TABLE_0");
    Area->ShowPanel(Table);
    QWidget* View = Area->viewport();
    QApplication::processEvents();
    TPaintMeter Meter;
    View->installEventFilter(&Meter);
    const QRect Caption = Area->ToViewport(Table->GetCaptionRect());
    const QPoint Start(Caption.left() + 4, Caption.center().y());
    double MovePixels = 0;
    double ReleasePixels = 0;
    long Moves = 0;
    long Releases = 0;
    for (auto _ : State) {
        QTest::mousePress(View, Qt::LeftButton, {}, Start);
        for (int Step = 1; Step <= 10; ++Step) {
            Meter.Pixels = 0;
            QTest::mouseMove(View, Start + QPoint(3 * Step, 2 * Step));
            QApplication::processEvents();
            MovePixels += Meter.Pixels;
            ++Moves;
        }
        Meter.Pixels = 0;
        QTest::mouseRelease(View, Qt::LeftButton, {}, Start + QPoint(30, 20));
        QApplication::processEvents();
        ReleasePixels += Meter.Pixels;
        ++Releases;
        // Back where it was, so that every iteration drags the same way.
        Table->SetTopLeft(Table->GetBoundsRect().topLeft() - QPoint(30, 20));
        QApplication::processEvents();
    }
    View->removeEventFilter(&Meter);
    const double Viewport = static_cast<double>(View->width()) * View->height();
    State.counters["move_repaint_share"] = MovePixels / static_cast<double>(Moves) / Viewport;
    State.counters["release_repaint_share"] = ReleasePixels / static_cast<double>(Releases) / Viewport;
}
BENCHMARK(BM_DragTable)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace zv

int main(int argc, char** argv) {
    if (std::getenv("QT_QPA_PLATFORM") == nullptr)
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication App(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

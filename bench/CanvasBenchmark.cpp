// The canvas on one large flow: what runs under the pointer and the keys.
// Hit testing runs on every press, the rubber band on every release, the
// neighbour search on every arrow key; each must stay well inside a frame.
// Spacing the cards after switching sizing by estimate is measured beside
// them, as the slowest thing the canvas does on its own.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LiveStore.h"

#include "FenrowHistory.h"
#include "TaskFlow.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasHitTest.h"
#include "canvas/CanvasNavigation.h"
#include "canvas/CardSpacing.h"
#include "shell/AppPreferences.h"

#include <QSettings>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

// A flow of 5,000 cards: far beyond what people draw, within reach of an
// import or a generated plan.
constexpr int fullFlowNodes = 5000;
constexpr double edgesPerNode = 1.5;

LargeStoreShape flowShape()
{
    const int nodes = std::max(8, int(std::lround(fullFlowNodes * GeneratedStores::scale())));
    return LargeStoreShape::oneFlow(nodes, int(std::lround(nodes * edgesPerNode)));
}

// An editor on the generated flow, shown in a view of 1,600 × 1,000 at
// scale 0.4 and centred on the flow, as after zoom to fit.
struct Canvas {
    LiveStore *live = nullptr;
    const TaskFlow *flow = nullptr;
    QTemporaryDir settingsFolder;
    std::unique_ptr<AppPreferences> preferences;
    std::unique_ptr<FenrowHistory> history;
    ManualScheduler scheduler;
    CanvasInteraction interaction;
    std::unique_ptr<CanvasEditor> editor;

    // Made once and left to the process's exit, like the store it edits.
    static Canvas *open(benchmark::State &state)
    {
        static Canvas *shared = nullptr;
        if (shared)
            return shared;
        QString error;
        auto canvas = std::make_unique<Canvas>();
        canvas->live = LiveStore::of(flowShape(), &error);
        if (!canvas->live) {
            fail(state, error);
            return nullptr;
        }
        FenrowStore &store = *canvas->live->store;
        canvas->flow = store.flows().first();
        canvas->preferences = std::make_unique<AppPreferences>(std::make_unique<QSettings>(
            canvas->settingsFolder.filePath(QStringLiteral("fenrow.conf")), QSettings::IniFormat));
        canvas->history = std::make_unique<FenrowHistory>(store);
        canvas->editor = std::make_unique<CanvasEditor>(
            CanvasEditor::Services{store, *canvas->history, *canvas->preferences, canvas->scheduler},
            canvas->flow->id, canvas->interaction);
        canvas->editor->appear({1600, 1000});
        canvas->interaction.setScale(0.4);
        canvas->interaction.centerOn(canvas->editor->contentBounds().center(), canvas->editor->contentBounds());
        shared = canvas.release();
        return shared;
    }

    void report(benchmark::State &state) const
    {
        state.counters["nodes"] = double(flow->items().size());
        state.counters["visible"] = double(editor->visibleNodes().size());
        state.counters["edges"] = double(flow->edges().size());
    }
};

// Presses on cards spread over the flow: each finds the card under it.
void hitTestCards(benchmark::State &state)
{
    Canvas *canvas = Canvas::open(state);
    if (!canvas)
        return;
    const QList<const FlowNode *> &visible = canvas->editor->visibleNodes();
    std::vector<QPointF> points;
    for (qsizetype i = 0; i < visible.size(); i += std::max<qsizetype>(1, visible.size() / 64))
        points.push_back(canvas->interaction.toScreen({visible[i]->posX, visible[i]->posY}));
    std::size_t next = 0;
    for (auto _ : state) {
        const CanvasHit hit = CanvasHitTest::at(*canvas->editor, points[next]);
        if (hit.kind != CanvasHit::Kind::card && hit.kind != CanvasHit::Kind::port
            && hit.kind != CanvasHit::Kind::resizeGrip) {
            fail(state, QStringLiteral("a press on a card's centre found no card"));
            return;
        }
        next = (next + 1) % points.size();
    }
    canvas->report(state);
}

// A press on empty canvas: every card, edge and link is tried and missed,
// the most a hit test can cost.
void hitTestBackground(benchmark::State &state)
{
    Canvas *canvas = Canvas::open(state);
    if (!canvas)
        return;
    const QRectF bounds = canvas->editor->contentBounds();
    const QPointF empty = canvas->interaction.toScreen(bounds.bottomRight() + QPointF(500, 500));
    for (auto _ : state) {
        const CanvasHit hit = CanvasHitTest::at(*canvas->editor, empty);
        if (hit.kind != CanvasHit::Kind::background) {
            fail(state, QStringLiteral("empty canvas hit something"));
            return;
        }
    }
    canvas->report(state);
}

// The first press after the flow changed: the drawn cards and lines are
// gathered again (folding and the filter applied), then hit. Painting after
// the change would gather them first; this is the cost when nothing did.
void hitTestAfterChange(benchmark::State &state)
{
    Canvas *canvas = Canvas::open(state);
    if (!canvas)
        return;
    const QRectF bounds = canvas->editor->contentBounds();
    const QPointF empty = canvas->interaction.toScreen(bounds.bottomRight() + QPointF(500, 500));
    FenrowStore &store = *canvas->live->store;
    for (auto _ : state) {
        emit store.changed();
        const CanvasHit hit = CanvasHitTest::at(*canvas->editor, empty);
        if (hit.kind != CanvasHit::Kind::background) {
            fail(state, QStringLiteral("empty canvas hit something"));
            return;
        }
    }
    canvas->report(state);
}

// The rubber band released over a fifth of the flow in each direction.
void marqueeCards(benchmark::State &state)
{
    Canvas *canvas = Canvas::open(state);
    if (!canvas)
        return;
    const QRectF bounds = canvas->editor->contentBounds();
    const QRectF band(bounds.center(), bounds.size() / 5);
    for (auto _ : state)
        canvas->editor->commitMarquee(band, false);
    if (canvas->interaction.selectedItemIDs().isEmpty()) {
        fail(state, QStringLiteral("the band caught no card"));
        return;
    }
    state.counters["caught"] = double(canvas->interaction.selectedItemIDs().size());
    canvas->report(state);
}

// A band that catches no card goes on to try every edge.
void marqueeEdges(benchmark::State &state)
{
    Canvas *canvas = Canvas::open(state);
    if (!canvas)
        return;
    const QRectF bounds = canvas->editor->contentBounds();
    const QRectF band(bounds.bottomRight() + QPointF(100, 100), QSizeF(400, 400));
    for (auto _ : state)
        canvas->editor->commitMarquee(band, false);
    if (!canvas->interaction.selectedItemIDs().isEmpty() || canvas->interaction.selectedEdgeID()) {
        fail(state, QStringLiteral("a band beside the flow caught something"));
        return;
    }
    canvas->report(state);
}

// The arrow keys' search from cards spread over the flow, in all four
// directions in turn.
void spatialNeighbor(benchmark::State &state)
{
    Canvas *canvas = Canvas::open(state);
    if (!canvas)
        return;
    const QList<const FlowNode *> &visible = canvas->editor->visibleNodes();
    std::size_t turn = 0;
    int found = 0;
    for (auto _ : state) {
        const FlowNode &anchor = *visible[qsizetype((turn * 97) % std::size_t(visible.size()))];
        const auto direction = CanvasKeyCommand::Direction(turn % 4);
        const FlowNode *next = CanvasNavigation::spatialNeighbor(anchor, direction, visible);
        found += next ? 1 : 0;
        benchmark::DoNotOptimize(next);
        ++turn;
    }
    // A single run may start at the flow's edge; a longer one must find some.
    if (found == 0 && state.iterations() >= 8) {
        fail(state, QStringLiteral("no arrow found a neighbour"));
        return;
    }
    canvas->report(state);
}

// Alt-arrows: along the edges of cards spread over the flow.
void edgeNeighbor(benchmark::State &state)
{
    Canvas *canvas = Canvas::open(state);
    if (!canvas)
        return;
    const QList<const FlowNode *> &visible = canvas->editor->visibleNodes();
    QSet<QUuid> visibleIDs;
    for (const FlowNode *node : visible)
        visibleIDs.insert(node->id);
    std::size_t turn = 0;
    for (auto _ : state) {
        const FlowNode &anchor = *visible[qsizetype((turn * 97) % std::size_t(visible.size()))];
        benchmark::DoNotOptimize(CanvasNavigation::edgeNeighbor(anchor, turn % 2 == 0, *canvas->flow, visibleIDs));
        ++turn;
    }
    canvas->report(state);
}

// A whole arrow key press through the editor: search, selection, the
// history's selection step and the check that the card is in view.
void arrowKey(benchmark::State &state)
{
    Canvas *canvas = Canvas::open(state);
    if (!canvas)
        return;
    CanvasEditor &editor = *canvas->editor;
    const QUuid start = editor.visibleNodes()[editor.visibleNodes().size() / 2]->id;
    editor.selectAndKeepVisible(start);
    // Right and back left, so that the walk stays in the middle of the flow;
    // should it reach an edge of the flow, it starts over.
    bool right = true;
    int missed = 0;
    for (auto _ : state) {
        const auto direction = right ? CanvasKeyCommand::Direction::right : CanvasKeyCommand::Direction::left;
        if (!editor.handleKeyCommand(CanvasKeyCommand::move(direction))) {
            ++missed;
            editor.selectAndKeepVisible(start);
        }
        right = !right;
    }
    if (missed * 2 > int(state.iterations())) {
        fail(state, QStringLiteral("most arrows found no neighbour"));
        return;
    }
    state.counters["missed"] = missed;
    canvas->report(state);
}

// Switching sizing by estimate on: the cards that the larger sizes make
// overlap are pushed apart. Not written; the result is checked.
void spaceCards(benchmark::State &state)
{
    Canvas *canvas = Canvas::open(state);
    if (!canvas)
        return;
    QHash<QUuid, QPointF> moved;
    for (auto _ : state) {
        moved = CardSpacing::separate(*canvas->flow, NodeSizeResolver(false), NodeSizeResolver(true));
        benchmark::DoNotOptimize(moved);
    }
    state.counters["moved"] = double(moved.size());
    canvas->report(state);
}

} // namespace

int main(int argc, char **argv)
{
    const std::string size = "/nodes:" + std::to_string(flowShape().nodes);
    auto add = [&](const char *name, void (*run)(benchmark::State &), benchmark::TimeUnit unit) {
        benchmark::RegisterBenchmark((name + size).c_str(), run)->Unit(unit);
    };
    add("HitTestCards", hitTestCards, benchmark::kMicrosecond);
    add("HitTestBackground", hitTestBackground, benchmark::kMicrosecond);
    add("HitTestAfterChange", hitTestAfterChange, benchmark::kMicrosecond);
    add("MarqueeCards", marqueeCards, benchmark::kMicrosecond);
    add("MarqueeEdges", marqueeEdges, benchmark::kMicrosecond);
    add("SpatialNeighbor", spatialNeighbor, benchmark::kMicrosecond);
    add("EdgeNeighbor", edgeNeighbor, benchmark::kMicrosecond);
    add("ArrowKey", arrowKey, benchmark::kMicrosecond);
    add("SpaceCards", spaceCards, benchmark::kMillisecond);
    return runBenchmarks(argc, argv);
}

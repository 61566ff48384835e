// Drawing the canvas of one large flow into a frame of 1,920 × 1,080: the
// whole frame zoomed out to the lowest scale, at actual size, the small
// part a card drag repaints, and the first frame after the store changed.
// Cards off screen are culled, so a frame costs what is in view.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LiveStore.h"

#include "look/BrandPalette.h"
#include "canvasview/CanvasCardContent.h"
#include "canvasview/CanvasScenePainter.h"
#include "FenrowHistory.h"
#include "TaskFlow.h"
#include "canvas/CanvasEditor.h"
#include "shell/AppPreferences.h"
#include "shell/InterfaceLanguage.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QSettings>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

constexpr int fullFlowNodes = 5000;
constexpr double edgesPerNode = 1.5;
const QSize frameSize(1920, 1080);
struct Scene {
    LiveStore *live = nullptr;
    const TaskFlow *flow = nullptr;
    QTemporaryDir settingsFolder;
    std::unique_ptr<AppPreferences> preferences;
    std::unique_ptr<FenrowHistory> history;
    ManualScheduler scheduler;
    CanvasInteraction interaction;
    std::unique_ptr<CanvasEditor> editor;
    CanvasColors colors = CanvasColors::make(AccentPalette::violet, false);
    std::unique_ptr<CanvasCardContents> contents;
    std::unique_ptr<CanvasScenePainter> painter;
    QImage frame{frameSize, QImage::Format_ARGB32_Premultiplied};

    static Scene *open(benchmark::State &state)
    {
        static Scene *shared = nullptr;
        if (shared)
            return shared;
        const int nodes = std::max(8, int(std::lround(fullFlowNodes * GeneratedStores::scale())));
        QString error;
        auto scene = std::make_unique<Scene>();
        scene->live = LiveStore::of(LargeStoreShape::oneFlow(nodes, int(std::lround(nodes * edgesPerNode))), &error);
        if (!scene->live) {
            fail(state, error);
            return nullptr;
        }
        FenrowStore &store = *scene->live->store;
        scene->flow = store.flows().first();
        scene->preferences = std::make_unique<AppPreferences>(std::make_unique<QSettings>(
            scene->settingsFolder.filePath(QStringLiteral("fenrow.conf")), QSettings::IniFormat));
        scene->preferences->setGridEnabled(true);
        scene->history = std::make_unique<FenrowHistory>(store);
        scene->editor = std::make_unique<CanvasEditor>(
            CanvasEditor::Services{store, *scene->history, *scene->preferences, scene->scheduler}, scene->flow->id,
            scene->interaction);
        scene->editor->appear(QSizeF(frameSize));
        scene->contents = std::make_unique<CanvasCardContents>(store);
        scene->painter = std::make_unique<CanvasScenePainter>(*scene->contents);
        shared = scene.release();
        return shared;
    }

    void view(double scale)
    {
        interaction.setScale(scale);
        interaction.centerOn(editor->contentBounds().center(), editor->contentBounds());
    }

    CanvasScenePainter::ViewState viewState() const
    {
        CanvasScenePainter::ViewState state;
        state.offset = editor->effectiveOffset();
        state.scale = interaction.scale();
        state.grid = true;
        return state;
    }

    void paint(const QRect &exposed)
    {
        QPainter on(&frame);
        on.setClipRect(exposed);
        painter->paint(on, *editor, colors, viewState(), exposed);
    }

    // Cards whose frame meets the view.
    int cardsInView() const
    {
        const QRectF view((QPointF() - interaction.offset()) / interaction.scale(),
                          QSizeF(frameSize) / interaction.scale());
        int count = 0;
        for (const FlowNode *node : editor->visibleNodes())
            count += interaction.frame(*node).intersects(view) ? 1 : 0;
        return count;
    }

    void report(benchmark::State &state) const
    {
        state.counters["nodes"] = double(flow->items().size());
        state.counters["inView"] = double(cardsInView());
    }
};

void paintFrame(benchmark::State &state, double scale)
{
    Scene *scene = Scene::open(state);
    if (!scene)
        return;
    scene->view(scale);
    const QRect whole(QPoint(), frameSize);
    scene->paint(whole);
    for (auto _ : state)
        scene->paint(whole);
    if (scene->cardsInView() == 0) {
        fail(state, QStringLiteral("the view shows no card"));
        return;
    }
    scene->report(state);
}

// Zoomed out as far as the canvas goes: the most cards a frame can show.
void paintZoomedOut(benchmark::State &state)
{
    paintFrame(state, CanvasZoom::minimumScale);
}

void paintActualSize(benchmark::State &state)
{
    paintFrame(state, 1.0);
}

// One card dragged at actual size: only its old and new places with the
// lines that follow it are drawn again, as the view asks.
void paintDragStep(benchmark::State &state)
{
    Scene *scene = Scene::open(state);
    if (!scene)
        return;
    scene->view(1.0);
    const FlowNode *grabbed = nullptr;
    const QRectF view{QPointF(), QSizeF(frameSize)};
    for (const FlowNode *node : scene->editor->visibleNodes())
        if (!grabbed && view.contains(scene->interaction.toScreen({node->posX, node->posY})))
            grabbed = node;
    if (!grabbed) {
        fail(state, QStringLiteral("no card in view to drag"));
        return;
    }
    int step = 0;
    for (auto _ : state) {
        const QPointF moved(step % 2 ? 12 : 0, step % 2 ? 8 : 0);
        scene->interaction.setNodeDrag(NodeDrag{{grabbed->id}, moved});
        const QRectF frame = scene->interaction.frame(*grabbed);
        const QRect dirty = QRectF(scene->interaction.toScreen(frame.topLeft()), frame.size())
                                .toAlignedRect()
                                .adjusted(-26, -22, 64, 22);
        scene->paint(dirty);
        ++step;
    }
    scene->interaction.setNodeDrag(std::nullopt);
    scene->report(state);
}

// The first frame after a task changed: the contents of every card are
// worked out again, and the one card that changed is drawn anew.
void paintAfterChange(benchmark::State &state)
{
    Scene *scene = Scene::open(state);
    if (!scene)
        return;
    scene->view(CanvasZoom::minimumScale);
    const QRect whole(QPoint(), frameSize);
    scene->paint(whole);
    FenrowStore &store = *scene->live->store;
    const FlowNode &changed = *scene->editor->visibleNodes().first();
    int round = 0;
    for (auto _ : state) {
        // The store's own write is not the canvas's cost.
        state.PauseTiming();
        store.setPriority(round++ % 2 ? NodePriority::high : NodePriority::low, changed);
        state.ResumeTiming();
        scene->painter->invalidate();
        scene->paint(whole);
    }
    scene->report(state);
}

// Everything drawn from nothing: a new filter, or the first frame of a flow.
void paintFromScratch(benchmark::State &state)
{
    Scene *scene = Scene::open(state);
    if (!scene)
        return;
    scene->view(CanvasZoom::minimumScale);
    const QRect whole(QPoint(), frameSize);
    for (auto _ : state) {
        scene->painter->invalidateAll();
        scene->paint(whole);
    }
    scene->report(state);
}

} // namespace

BENCHMARK(paintZoomedOut)->Unit(benchmark::kMillisecond);
BENCHMARK(paintActualSize)->Unit(benchmark::kMillisecond);
BENCHMARK(paintDragStep)->Unit(benchmark::kMillisecond);
BENCHMARK(paintAfterChange)->Unit(benchmark::kMillisecond);
BENCHMARK(paintFromScratch)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    // Text is shaped with real fonts, but no window is shown.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    InterfaceLanguage::apply(QStringLiteral("en"));
    return runBenchmarks(argc, argv);
}

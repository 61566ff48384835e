// Drawing the canvas of one large flow into a frame of 1,920 × 1,080: the
// whole frame zoomed out to the lowest scale, at actual size and the small
// part a card drag repaints, drawn again from what is kept; then, through
// the window's own canvas view, every frame that follows work: a task
// renamed or its status changed, the viewport saved at a scroll's end, a
// new flow shown and a filter applied, each timed with the work it
// follows; the lines of a new line layer blended in alone, over its
// ground; and the titles of a view's cards broken into lines. Floors: the
// same number of cards copied, or drawn as plain rectangles with their
// titles, and nothing else; the layer's ground.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LiveStore.h"

#include "DependencyEdge.h"
#include "FenrowHistory.h"
#include "NodeRecurrence.h"
#include "TaskFlow.h"
#include "canvas/CanvasEditor.h"
#include "canvasview/CanvasAppearance.h"
#include "canvasview/CanvasCardContent.h"
#include "canvasview/CanvasScenePainter.h"
#include "canvasview/CanvasScenePainting.h"
#include "canvasview/CanvasView.h"
#include "canvasview/TitleWords.h"
#include "look/BrandPalette.h"
#include "shell/AppPreferences.h"
#include "shell/InterfaceLanguage.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextLayout>

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

    // Shared by every benchmark of a run; closed before the application,
    // so that its settings folder goes too.
    static inline std::unique_ptr<Scene> shared;

    static Scene *open(benchmark::State &state)
    {
        if (shared)
            return shared.get();
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
        shared = std::move(scene);
        return shared.get();
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

// The window's canvas on a second editor of the same flow, and a copy of
// the flow to switch to; frames are drawn by the view itself, through its
// window's backing store, so the work a change sets off in it and in its
// editor is part of what is timed, and so is how much it asks to repaint.
struct Window {
    Scene *scene = nullptr;
    const TaskFlow *other = nullptr;
    std::unique_ptr<CanvasAppearance> appearance;
    std::unique_ptr<CanvasView> view;
    std::unique_ptr<CanvasInteraction> interaction;
    std::unique_ptr<CanvasEditor> editor;

    static inline std::unique_ptr<Window> shared;

    ~Window()
    {
        if (view)
            view->setEditor(nullptr);
    }

    static Window *open(benchmark::State &state)
    {
        if (shared)
            return shared.get();
        Scene *scene = Scene::open(state);
        if (!scene)
            return nullptr;
        auto window = std::make_unique<Window>();
        window->scene = scene;
        FenrowStore &store = *scene->live->store;
        window->other = store.duplicateFlow(*scene->flow);
        window->appearance = std::make_unique<CanvasAppearance>(*scene->preferences);
        window->view = std::make_unique<CanvasView>(store, *scene->history, *scene->preferences, *window->appearance);
        window->view->resize(frameSize);
        // A window of its own on the offscreen platform: it paints into a
        // real backing store what it asks to have painted, as on a desktop.
        window->view->show();
        // Both flows open zoomed out on their middle, as left there.
        for (const TaskFlow *flow : {window->other, scene->flow}) {
            window->show(*flow);
            window->interaction->setScale(CanvasZoom::minimumScale);
            window->interaction->centerOn(window->editor->contentBounds().center(), window->editor->contentBounds());
            // On whole pixels, where kept lines fall exactly where fresh ones would.
            const QPointF offset = window->interaction->offset();
            window->interaction->setOffset(QPointF(std::round(offset.x()), std::round(offset.y())));
            window->editor->persistViewport();
        }
        window->settle();
        // What the window does once idle (the last flow's pictures freed).
        QCoreApplication::processEvents();
        shared = std::move(window);
        return shared.get();
    }

    // Opened and painted whole, so that each case starts from the frame
    // a user would see.
    static Window *openPainted(benchmark::State &state)
    {
        Window *window = open(state);
        if (window)
            window->repaint();
        return window;
    }

    // What the window does when another flow is chosen.
    void show(const TaskFlow &flow)
    {
        view->setEditor(nullptr);
        editor.reset();
        interaction = std::make_unique<CanvasInteraction>();
        editor = std::make_unique<CanvasEditor>(
            CanvasEditor::Services{*scene->live->store, *scene->history, *scene->preferences, scene->scheduler},
            flow.id, *interaction);
        view->setEditor(editor.get());
        editor->appear(QSizeF(frameSize));
    }

    // Lets a zoom come to rest, so that the next frame is drawn as at rest.
    void settle()
    {
        QElapsedTimer waited;
        waited.start();
        while (view->isZooming() && waited.elapsed() < 5000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }

    // The frame the view asked for since the last, painted as the window
    // paints it: only what it marked as changed, into its backing store.
    static void paint() { QCoreApplication::sendPostedEvents(); }
    // Everything painted again, with nothing changed.
    void repaint()
    {
        view->update();
        paint();
    }
    // A pan one way or back, by turns, `distance` across and half of it
    // down: whole pixels, so the kept lines and a fresh frame meet exactly.
    void panStep(int round, double distance) const
    {
        const double step = round % 2 ? distance : -distance;
        editor->pan(step, step / 2);
    }
    // What the window shows now.
    QImage shown() const
    {
        return view->screen()->grabWindow(view->winId()).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }

    // A card in view; a repeating task done starts its next round instead.
    const FlowNode *cardInView(bool once = false) const
    {
        const QRectF shown{QPointF(), QSizeF(frameSize)};
        for (const FlowNode *node : editor->visibleNodes())
            if (shown.contains(view->toScreen(interaction->frame(*node).center())) &&
                !(once && NodeRecurrence::decode(node->recurrenceRaw)))
                return node;
        return nullptr;
    }

    QImage cardPixels(const FlowNode &node) const
    {
        const QRectF frame = interaction->frame(node);
        const QRect onScreen =
            QRectF(view->toScreen(frame.topLeft()), frame.size() * interaction->scale()).toAlignedRect();
        return shown().copy(onScreen);
    }

    // The frame the view drew, against one drawn with nothing kept: what
    // is kept between frames must never show what is no longer so.
    bool matchesFreshFrame() const
    {
        CanvasCardContents contents(*scene->live->store);
        CanvasScenePainter painter(contents);
        QImage fresh(frameSize, QImage::Format_ARGB32_Premultiplied);
        CanvasScenePainter::ViewState state;
        state.offset = editor->effectiveOffset();
        state.scale = interaction->scale();
        state.grid = scene->preferences->gridEnabled();
        QPainter on(&fresh);
        painter.paint(on, *editor, appearance->colors(), state, QRectF(QPointF(), QSizeF(frameSize)));
        on.end();
        // Lines kept from another place are cut at other ends, which moves
        // their edge pixels by a few levels; anything stale differs by far more.
        const QImage now = shown();
        if (now.size() != fresh.size())
            return false;
        for (int y = 0; y < fresh.height(); ++y) {
            const QRgb *a = reinterpret_cast<const QRgb *>(fresh.constScanLine(y));
            const QRgb *b = reinterpret_cast<const QRgb *>(now.constScanLine(y));
            for (int x = 0; x < fresh.width(); ++x) {
                if (std::abs(qRed(a[x]) - qRed(b[x])) > 6 || std::abs(qGreen(a[x]) - qGreen(b[x])) > 6 ||
                    std::abs(qBlue(a[x]) - qBlue(b[x])) > 6)
                    return false;
            }
        }
        return true;
    }

    void report(benchmark::State &state) const
    {
        int inView = 0;
        const QRectF shown{QPointF(), QSizeF(frameSize)};
        for (const FlowNode *node : editor->visibleNodes()) {
            const QRectF frame = interaction->frame(*node);
            inView += QRectF(view->toScreen(frame.topLeft()), frame.size() * interaction->scale()).intersects(shown);
        }
        state.counters["nodes"] = double(editor->flow()->items().size());
        state.counters["inView"] = double(inView);
    }
};

// A repaint of the window's canvas with nothing changed.
void viewRepaint(benchmark::State &state)
{
    Window *window = Window::openPainted(state);
    if (!window)
        return;
    for (auto _ : state)
        window->repaint();
    if (!window->matchesFreshFrame())
        fail(state, QStringLiteral("the repainted frame differs from one drawn anew"));
    window->report(state);
}

// A task renamed in place, as the title field does it (one undoable step),
// and the frame after it.
void paintAfterRename(benchmark::State &state)
{
    Window *window = Window::open(state);
    if (!window)
        return;
    const FlowNode *card = window->cardInView();
    if (!card) {
        fail(state, QStringLiteral("no card in view to rename"));
        return;
    }
    const QString original = card->title;
    const auto rename = [&](const QString &title) {
        window->interaction->setEditingItemID(card->id);
        window->editor->finishEditing(title);
    };
    window->repaint();
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        // The title field opening is a frame of its own.
        window->interaction->setEditingItemID(card->id);
        window->paint();
        state.ResumeTiming();
        window->editor->finishEditing(round++ % 2 ? original : QStringLiteral("Renamed on the canvas"));
        window->paint();
    }
    rename(QStringLiteral("Wide title WWWW WWWW"));
    window->paint();
    const QImage before = window->cardPixels(*card);
    rename(original);
    window->paint();
    if (window->cardPixels(*card) == before || window->view->cardContent(*card).title != original)
        fail(state, QStringLiteral("the frame does not show the new title"));
    else if (!window->matchesFreshFrame())
        fail(state, QStringLiteral("the frame after a rename differs from one drawn anew"));
    window->report(state);
}

// A task done and open again from its menu, which changes what it holds
// up and the count of ready tasks, and the frame after it.
void paintAfterStatus(benchmark::State &state)
{
    Window *window = Window::open(state);
    if (!window)
        return;
    const FlowNode *card = window->cardInView(true);
    if (!card) {
        fail(state, QStringLiteral("no card in view"));
        return;
    }
    FenrowStore &store = *window->scene->live->store;
    FenrowHistory &history = *window->scene->history;
    const auto setStatus = [&](NodeStatus status) {
        history.recordAction(QStringLiteral("Change status"), *card->flow(), [&] { store.setStatus(status, *card); });
    };
    window->repaint();
    int round = 0;
    for (auto _ : state) {
        setStatus(round++ % 2 ? NodeStatus::pending : NodeStatus::done);
        window->paint();
    }
    setStatus(NodeStatus::done);
    window->paint();
    const QImage done = window->cardPixels(*card);
    setStatus(NodeStatus::pending);
    window->paint();
    if (window->cardPixels(*card) == done || window->view->cardContent(*card).done)
        fail(state, QStringLiteral("the frame does not show the new status"));
    else if (!window->matchesFreshFrame())
        fail(state, QStringLiteral("the frame after a status change differs from one drawn anew"));
    window->report(state);
}

// A card chosen, then another, in turn, as a click chooses it, and the
// frame after each.
void paintAfterSelect(benchmark::State &state)
{
    Window *window = Window::open(state);
    if (!window)
        return;
    const FlowNode *first = window->cardInView();
    const FlowNode *second = nullptr;
    const QRectF shown{QPointF(), QSizeF(frameSize)};
    for (const FlowNode *node : window->editor->visibleNodes())
        if (node != first && shown.contains(window->view->toScreen(window->interaction->frame(*node).center())))
            second = node;
    if (!first || !second) {
        fail(state, QStringLiteral("not two cards in view"));
        return;
    }
    window->repaint();
    const QImage before = window->cardPixels(*second);
    int round = 0;
    for (auto _ : state) {
        window->editor->cardClicked((round++ % 2 ? first : second)->id, Qt::NoModifier);
        window->paint();
    }
    window->editor->cardClicked(second->id, Qt::NoModifier);
    window->paint();
    if (window->cardPixels(*second) == before)
        fail(state, QStringLiteral("the frame does not show the card chosen"));
    else if (!window->matchesFreshFrame())
        fail(state, QStringLiteral("the frame after a choice differs from one drawn anew"));
    window->interaction->setSelectedItemIDs({});
    window->paint();
    window->report(state);
}

// A step of a pan, by wheel or drag, and its frame: the kept lines are
// copied from where they now fall and the strip the pan brings in drawn.
void paintPanStep(benchmark::State &state)
{
    Window *window = Window::openPainted(state);
    if (!window)
        return;
    int round = 0;
    for (auto _ : state) {
        window->panStep(round++, 40);
        window->paint();
    }
    if (!window->matchesFreshFrame())
        fail(state, QStringLiteral("the frame after a pan differs from one drawn anew"));
    window->report(state);
}

// A scroll comes to rest: the viewport is saved to the flow after the
// pause, and the view draws the frame that follows.
void paintAfterScrollEnd(benchmark::State &state)
{
    Window *window = Window::openPainted(state);
    if (!window)
        return;
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        window->panStep(round++, 60);
        window->paint();
        state.ResumeTiming();
        window->scene->scheduler.advance(CanvasEditor::persistDelay);
        window->paint();
    }
    const TaskFlow &flow = *window->editor->flow();
    if (QPointF(flow.viewportOffsetX, flow.viewportOffsetY) != window->interaction->offset())
        fail(state, QStringLiteral("the viewport was not saved"));
    else if (!window->matchesFreshFrame())
        fail(state, QStringLiteral("the frame after a scroll differs from one drawn anew"));
    window->report(state);
}

// Another flow chosen: a new editor, the view given it, and its first
// frame, everything drawn anew.
void paintNewFlow(benchmark::State &state)
{
    Window *window = Window::open(state);
    if (!window)
        return;
    const TaskFlow *flows[] = {window->other, window->scene->flow};
    int round = 0;
    for (auto _ : state) {
        window->show(*flows[round++ % 2]);
        window->paint();
        // What the window does once the frame is shown, before the user
        // can choose again, is not part of the frame.
        state.PauseTiming();
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
    window->show(*window->scene->flow);
    window->settle();
    window->paint();
    if (window->editor->flow() != window->scene->flow || !window->cardInView())
        fail(state, QStringLiteral("the new flow is not shown"));
    else if (!window->matchesFreshFrame())
        fail(state, QStringLiteral("the first frame of a flow differs from one drawn anew"));
    window->report(state);
}

// A colour filter applied and taken off from the toolbar, dimming or
// hiding the other cards (argument 0 or 1), and the frame after it; or
// (2) dimming to another colour each time, three in turn, so that no
// frame finds its lines kept from before.
void paintAfterFilter(benchmark::State &state)
{
    Window *window = Window::open(state);
    if (!window)
        return;
    const bool hide = state.range(0) == 1;
    window->scene->preferences->setFilterMode(hide ? FilterMode::hide : FilterMode::dim);
    CanvasColorFilter filter;
    filter.toggle(NodeColor::blue);
    QList<CanvasColorFilter> rounds{filter, CanvasColorFilter()};
    if (state.range(0) == 2) {
        rounds = {filter, filter, filter};
        rounds[1].toggle(NodeColor::green);
        rounds[2].toggle(NodeColor::red);
    }
    const qsizetype all = window->editor->visibleNodes().size();
    window->repaint();
    int round = 0;
    for (auto _ : state) {
        window->interaction->setColorFilter(rounds[round++ % rounds.size()]);
        window->paint();
    }
    window->interaction->setColorFilter(filter);
    window->paint();
    const bool filtered = !window->matchesFreshFrame();
    const qsizetype shown = window->editor->visibleNodes().size();
    window->interaction->setColorFilter({});
    window->paint();
    if (filtered || !window->matchesFreshFrame())
        fail(state, QStringLiteral("the filtered frame differs from one drawn anew"));
    else if (hide && shown >= all)
        fail(state, QStringLiteral("the filter hid no card"));
    window->scene->preferences->setFilterMode(FilterMode::dim);
    window->report(state);
}

// The line layer of the zoomed-out view as a new flow or a filter of a
// new colour draws it: a strip of rows at a time, the ground filled and
// then every plain and every dashed line that crosses it blended in, here
// the flow's lines between their cards' centres. Argument 0 fills the
// ground alone, the floor the lines are drawn over.
void blendLineLayer(benchmark::State &state)
{
    Scene *scene = Scene::open(state);
    if (!scene)
        return;
    scene->view(CanvasZoom::minimumScale);
    const double scale = CanvasZoom::minimumScale;
    const QTransform toPixels =
        QTransform::fromScale(scale, scale) *
        QTransform::fromTranslate(scene->interaction.offset().x(), scene->interaction.offset().y());
    const QRectF shown{QPointF(), QSizeF(frameSize)};
    QList<QLineF> plain;
    QList<QLineF> dashed;
    ScenePainting::ThinDashes dashes{ScenePainting::subtaskDashes[0] * CanvasGeometry::edgeStroke,
                                     (ScenePainting::subtaskDashes[0] + ScenePainting::subtaskDashes[1]) *
                                         CanvasGeometry::edgeStroke,
                                     {}};
    for (const DependencyEdge *edge : scene->flow->edges()) {
        const FlowNode *from = edge->fromItem();
        const FlowNode *to = edge->toItem();
        if (!from || !to)
            continue;
        const QLineF line(scene->interaction.frame(*from).center(), scene->interaction.frame(*to).center());
        // Only lines that may cross the view are gathered for a layer.
        if (!toPixels.mapRect(QRectF(line.p1(), line.p2()).normalized()).adjusted(-1, -1, 1, 1).intersects(shown))
            continue;
        (edge->isSubtask() ? dashed : plain).append(line);
        if (edge->isSubtask())
            dashes.phases.append(0);
    }
    const bool lines = state.range(0) == 1;
    const QColor ink = scene->colors.edge;
    const QRgb ground = scene->colors.ramp.brandSubtle.rgb();
    QImage layer(frameSize, QImage::Format_RGB32);
    constexpr int stripRows = 64;
    for (auto _ : state) {
        // Mapped to the layer's pixels once, for all its strips.
        const auto plainRuns = ScenePainting::ThinLineRuns::map(toPixels, plain, nullptr);
        const auto dashedRuns = ScenePainting::ThinLineRuns::map(toPixels, dashed, &dashes);
        for (int top = 0; top < layer.height(); top += stripRows) {
            const QRect strip(0, top, layer.width(), std::min(stripRows, layer.height() - top));
            for (int y = strip.top(); y <= strip.bottom(); ++y)
                ScenePainting::fillPixels(reinterpret_cast<QRgb *>(layer.scanLine(y)), layer.width(), ground);
            if (!lines)
                continue;
            ScenePainting::blendThinLines(layer, strip, plainRuns, 0, ink, CanvasGeometry::edgeStroke * scale);
            ScenePainting::blendThinLines(layer, strip, dashedRuns, 0, ink, CanvasGeometry::edgeStroke * scale,
                                          &dashes);
        }
    }
    qint64 inked = 0;
    for (int y = 0; y < layer.height(); ++y) {
        const QRgb *row = reinterpret_cast<const QRgb *>(layer.constScanLine(y));
        inked += std::count_if(row, row + layer.width(),
                               [&](QRgb pixel) { return (pixel & 0xffffff) != (ground & 0xffffff); });
    }
    if (lines && inked == 0) {
        fail(state, QStringLiteral("no line crosses the view"));
        return;
    }
    state.counters["lines"] = double(plain.size() + dashed.size());
    state.counters["inkedPixels"] = double(inked);
}

// Floors for a frame of as many cards as the zoomed-out view shows: the
// background and the cards' pictures copied (a frame drawn from what is
// kept), or each card a plain rectangle with one line of its title (a
// frame drawn anew, with no chrome, pills or lines).
void floorFrame(benchmark::State &state)
{
    Scene *scene = Scene::open(state);
    if (!scene)
        return;
    scene->view(CanvasZoom::minimumScale);
    const int cards = scene->cardsInView();
    const bool drawn = state.range(0) == 1;
    const double scale = CanvasZoom::minimumScale;
    const QSizeF card = QSizeF(220, 96) * scale;
    QImage picture((card + QSizeF(16, 16) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(scene->colors.ramp.nodeSurface);
    const QList<const FlowNode *> &nodes = scene->editor->visibleNodes();
    QFont font = QApplication::font();
    font.setPixelSize(std::max(1, int(std::lround(13 * scale))));
    const QFontMetricsF metrics(font);
    for (auto _ : state) {
        QPainter on(&scene->frame);
        on.fillRect(QRect(QPoint(), frameSize), scene->colors.ramp.brandSubtle);
        on.setFont(font);
        on.setPen(scene->colors.text);
        for (int i = 0; i < cards; ++i) {
            const QPointF at((i % 20) * 96.0, (i / 20) * 72.0);
            if (!drawn) {
                on.drawImage(at, picture);
                continue;
            }
            on.fillRect(QRectF(at, card), scene->colors.ramp.nodeSurface);
            on.drawText(at + QPointF(4, metrics.ascent() + 4), nodes[i % nodes.size()]->title.left(24));
        }
    }
    state.counters["inView"] = double(cards);
}

// The titles of as many cards as the zoomed-out view shows broken into
// lines and shaped, as a card's first picture needs them: (0) each laid
// out whole, (1) from words kept from before, as when another flow of the
// same words was shown, or (2) from words met for the first time, as in
// the first flow shown after the program starts; the second argument 1
// makes every word of every title its own, the worst case for words.
void breakTitles(benchmark::State &state)
{
    Scene *scene = Scene::open(state);
    if (!scene)
        return;
    scene->view(CanvasZoom::minimumScale);
    const qint64 way = state.range(0);
    const bool unique = state.range(1) == 1;
    QStringList titles;
    for (const FlowNode *node : scene->editor->visibleNodes()) {
        if (titles.size() == scene->cardsInView())
            break;
        QString title = node->title.simplified();
        if (unique) {
            // Each word of each title made its own by a tail of letters.
            QString tail;
            for (qsizetype n = titles.size() + 1; n > 0; n /= 26)
                tail += QChar(u'a' + char16_t(n % 26));
            title.replace(QLatin1Char(' '), tail + QLatin1Char(' '));
            title += tail;
        }
        titles.append(title);
    }
    QFont font = QApplication::font();
    font.setPixelSize(13);
    font.setWeight(QFont::DemiBold);
    font.setHintingPreference(QFont::PreferNoHinting);
    const double width = NodeSize().width - 2 * CanvasScenePainter::paddingX;
    constexpr int maxLines = 4;
    TitleWords kept(font);
    qint64 glyphs = 0;
    for (auto _ : state) {
        glyphs = 0;
        TitleWords fresh(font);
        for (const QString &title : std::as_const(titles)) {
            if (way == 0) {
                QTextLayout layout(title, font);
                layout.setCacheEnabled(true);
                QTextOption option;
                option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
                layout.setTextOption(option);
                layout.beginLayout();
                QList<QTextLine> lines;
                for (QTextLine line = layout.createLine(); line.isValid() && lines.size() < maxLines;
                     line = layout.createLine()) {
                    line.setLineWidth(width);
                    lines.append(line);
                }
                layout.endLayout();
                for (const QTextLine &line : std::as_const(lines))
                    for (const QGlyphRun &run : line.glyphRuns())
                        glyphs += run.glyphIndexes().size();
                continue;
            }
            const auto lines = (way == 1 ? kept : fresh).lines(title, width, maxLines);
            if (!lines)
                continue;
            for (const TitleWords::Line &line : lines->lines)
                for (const QGlyphRun &run : line.runs)
                    glyphs += run.glyphIndexes().size();
        }
    }
    if (glyphs == 0)
        fail(state, QStringLiteral("no title was shaped"));
    state.counters["titles"] = double(titles.size());
    state.counters["glyphs"] = double(glyphs);
}

} // namespace

BENCHMARK(paintZoomedOut)->Unit(benchmark::kMillisecond);
BENCHMARK(paintActualSize)->Unit(benchmark::kMillisecond);
BENCHMARK(paintDragStep)->Unit(benchmark::kMillisecond);
BENCHMARK(viewRepaint)->Unit(benchmark::kMillisecond);
BENCHMARK(paintAfterRename)->Unit(benchmark::kMillisecond);
BENCHMARK(paintAfterStatus)->Unit(benchmark::kMillisecond);
BENCHMARK(paintAfterSelect)->Unit(benchmark::kMillisecond);
BENCHMARK(paintPanStep)->Unit(benchmark::kMillisecond);
BENCHMARK(paintAfterScrollEnd)->Unit(benchmark::kMillisecond);
BENCHMARK(paintNewFlow)->Unit(benchmark::kMillisecond);
BENCHMARK(paintAfterFilter)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(blendLineLayer)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(floorFrame)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(breakTitles)->ArgsProduct({{0, 1, 2}, {0, 1}})->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    // Text is shaped with real fonts, but no window is shown.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    InterfaceLanguage::apply(QStringLiteral("en"));
    const int result = runBenchmarks(argc, argv);
    Window::shared.reset();
    Scene::shared.reset();
    return result;
}

#pragma once

#include "CanvasPrinters.h"
#include "TestStore.h"

#include "canvas/CanvasEditor.h"
#include "canvas/CanvasInputMonitor.h"
#include "canvas/CanvasPointer.h"
#include "canvas/CanvasRequests.h"
#include "domain/Scheduler.h"
#include "domain/ActiveFlowState.h"
#include "domain/FenrowHistory.h"
#include "shell/AppPreferences.h"

#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace fenrow::testing {

// A canvas without a window: a flow in an in-memory store, the history,
// preferences in a file of their own and a clock that moves only when told.
// Gestures are scripted as a view would report them (press, moves and
// release in view coordinates, keys, the wheel) and go through the same
// pointer router and input monitor the desktop view uses.
class CanvasDriver : public FlowFixture {
protected:
    CanvasDriver()
        : preferences(std::make_unique<QSettings>(settingsFolder.filePath(QStringLiteral("fenrow.conf")),
                                                  QSettings::IniFormat)),
          history(*store),
          editor(CanvasEditor::Services{*store, history, preferences, scheduler, &activeFlow, &reveals, &zooms},
                 flow->id, interaction),
          pointer(editor)
    {
        interaction.setRequestFocus([this] { ++focusRequests; });
        monitor.onPan = [this](double dx, double dy) { editor.pan(dx, dy); };
        monitor.onZoom = [this](double factor, QPointF point) { editor.zoom(factor, point); };
        monitor.onSpaceHeldChange = [this](bool held) { editor.setSpaceHeld(held); };
        monitor.onDeleteSelection = [this] { return editor.deleteSelection(); };
        monitor.onKeyCommand = [this](CanvasKeyCommand command) { return editor.handleKeyCommand(command); };
        monitor.isEditing = [this] { return editor.isEditing(); };
    }

    // A node at a canvas position.
    const FlowNode &place(const QString &title, double x, double y)
    {
        const FlowNode &node = add(title);
        store->moveNode(node, x, y);
        return node;
    }

    // Shows the canvas at scale 1 with the canvas origin at the view's top
    // left corner, so that view and canvas coordinates agree.
    void open(QSizeF size = {1000, 800})
    {
        store->setViewport(*flow, 0, 0, 1);
        editor.appear(size);
    }

    QPointF screen(const QString &title) const
    {
        const FlowNode &node = (*this)[title];
        return interaction.toScreen({node.posX, node.posY});
    }
    QPointF position(const QString &title) const { return {(*this)[title].posX, (*this)[title].posY}; }

    void press(QPointF at, Qt::KeyboardModifiers modifiers = {}, int clicks = 1)
    {
        pointer.press(at, modifiers, clicks);
    }
    // Moves in a few steps, as a real pointer reports them, then lets go.
    void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = {})
    {
        pointer.press(from, modifiers);
        for (int step = 1; step <= 4; ++step)
            pointer.move(from + (to - from) * step / 4.0, modifiers);
        pointer.release(to, modifiers);
    }
    void click(QPointF at, Qt::KeyboardModifiers modifiers = {})
    {
        pointer.press(at, modifiers);
        pointer.release(at, modifiers);
    }
    void doubleClick(QPointF at)
    {
        click(at);
        pointer.press(at, {}, 2);
        pointer.release(at, {});
    }
    bool key(int key, Qt::KeyboardModifiers modifiers = {})
    {
        return monitor.keyDown({key, modifiers, false}, context);
    }
    bool keyUp(int key) { return monitor.keyUp({key, {}, false}, context); }
    bool wheel(QPointF delta, bool precise = true, Qt::KeyboardModifiers modifiers = {}, QPointF at = {500, 400})
    {
        return monitor.scroll({delta, precise, modifiers, at}, context);
    }
    void wait(int milliseconds) { scheduler.advance(std::chrono::milliseconds(milliseconds)); }

    QSet<QUuid> ids(std::initializer_list<const char *> titles) const
    {
        QSet<QUuid> result;
        for (const char *title : titles)
            result.insert((*this)[QString::fromUtf8(title)].id);
        return result;
    }
    QStringList undoNames() const
    {
        QStringList names;
        for (const auto &entry : history.undoStack(flow->id))
            names << entry.name;
        return names;
    }

    QTemporaryDir settingsFolder;
    AppPreferences preferences;
    FenrowHistory history;
    ManualScheduler scheduler;
    ActiveFlowState activeFlow;
    CanvasRevealRequest reveals;
    CanvasZoomRequest zooms;
    CanvasInteraction interaction;
    CanvasEditor editor;
    CanvasPointer pointer;
    CanvasInputMonitor monitor;
    CanvasInputMonitor::Context context;
    int focusRequests = 0;
};

} // namespace fenrow::testing

#include "WindowSheets.h"

#include "DismissableDialogOverlay.h"
#include "window/FlowDetailView.h"
#include "GenerateSubtasksSheet.h"
#include "NewFlowFromTextSheet.h"
#include "PlanDaySheet.h"
#include "canvas/CanvasEditor.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/FlowNode.h"
#include "domain/Readiness.h"
#include "shell/AppPreferences.h"
#include "shell/ShortcutKeys.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>

namespace fenrow {

WindowSheets::WindowSheets(FenrowStore &store, FenrowHistory &history, ActiveFlowState &activeFlow,
                           AppPreferences &preferences, AppEnvironment &environment, QWidget *window)
    : QObject(window), m_store(store), m_history(history), m_activeFlow(activeFlow), m_preferences(preferences),
      m_environment(environment), m_window(window)
{
    m_newFlowFromText = new NewFlowFromTextPresentation(this);
    m_planDay = new PlanDayPresentation(this);
    m_generateSubtasks = new GenerateSubtasksPresentation(this);
    follow(m_newFlowFromText, [this] { return makeNewFlowFromText(); });
    follow(m_planDay, [this] { return makePlanDay(); });
    follow(m_generateSubtasks, [this] { return makeGenerateSubtasks(); });
    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::commandShortcuts))
            applyShortcuts();
        else if (key == QLatin1StringView(PreferenceKey::hasCompletedOnboarding))
            followOnboarding();
    });
}

// The welcome covers the whole window: a sheet opened under it could be
// neither seen nor closed, so none opens until onboarding is done.
void WindowSheets::followOnboarding()
{
    const bool usable = m_preferences.hasCompletedOnboarding();
    for (QAction *action : {m_newFlowFromTextAction, m_planDayAction})
        if (action)
            action->setEnabled(usable);
    if (!usable) {
        for (SheetPresentation *presentation : m_shown.keys())
            presentation->setPresented(false);
    }
}

void WindowSheets::follow(SheetPresentation *presentation, std::function<QWidget *()> makeSheet)
{
    connect(presentation, &SheetPresentation::presentedChanged, this, [=, this](bool presented) {
        DismissableDialogOverlay *overlay = m_shown.value(presentation);
        if (!presented) {
            // Someone cleared the request: the sheet goes.
            if (overlay)
                overlay->dismiss();
            return;
        }
        if (overlay)
            return;
        if (!m_preferences.hasCompletedOnboarding()) {
            presentation->setPresented(false);
            return;
        }
        QWidget *sheet = makeSheet();
        if (!sheet) {
            presentation->setPresented(false);
            return;
        }
        overlay = new DismissableDialogOverlay(m_window);
        overlay->setObjectName(sheet->objectName() + QStringLiteral(".overlay"));
        overlay->setContent(sheet);
        m_shown.insert(presentation, overlay);
        m_overlays.append(overlay);
        if (auto *frame = qobject_cast<SheetFrame *>(sheet))
            connect(frame, &SheetFrame::closeRequested, overlay, &DismissableDialogOverlay::dismiss);
        connect(overlay, &DismissableDialogOverlay::dismissed, this, [this, presentation, overlay] {
            m_shown.remove(presentation);
            m_overlays.removeAll(overlay);
            // Later: the sheet may still be inside its own signal.
            overlay->deleteLater();
            presentation->setPresented(false);
        });
        overlay->present();
    });
}

DismissableDialogOverlay *WindowSheets::currentOverlay() const
{
    for (qsizetype i = m_overlays.size() - 1; i >= 0; --i)
        if (m_overlays[i] && m_overlays[i]->isPresented())
            return m_overlays[i];
    return nullptr;
}

QWidget *WindowSheets::makeNewFlowFromText()
{
    auto *sheet = new NewFlowFromTextSheet(m_store, m_environment, &m_activeFlow);
    connect(sheet, &NewFlowFromTextSheet::flowCreated, this, &WindowSheets::flowCreated);
    return sheet;
}

QWidget *WindowSheets::makePlanDay()
{
    // The Ready list as it stands: today's tasks first in their planned
    // order, then the rest in the list's sort.
    const QList<ReadyTask> tasks = Readiness::inListOrder(m_store.flows(), m_store.clock().now(), m_store.calendar(),
                                                          m_preferences.readySort());
    return new PlanDaySheet(tasks, m_store, m_history, m_environment, m_preferences);
}

QWidget *WindowSheets::makeGenerateSubtasks()
{
    const std::optional<QUuid> itemID = m_generateSubtasks->itemID();
    if (!itemID || !m_store.node(*itemID))
        return nullptr;
    // New cards take the sizes the canvas draws them at.
    NodeSizeResolver sizes;
    if (m_flowDetail && m_flowDetail->editor())
        sizes = m_flowDetail->editor()->interaction().sizeResolver();
    auto *sheet = new GenerateSubtasksSheet(m_store, m_history, m_environment, *itemID, sizes);
    connect(sheet, &GenerateSubtasksSheet::finished, this, &WindowSheets::showGenerated);
    connect(sheet, &GenerateSubtasksSheet::failed, this, &WindowSheets::showGenerationFailure);
    return sheet;
}

void WindowSheets::showGenerated(const QUuid &parentID, const QList<QUuid> &added)
{
    const FlowNode *parent = m_store.node(parentID);
    CanvasEditor *editor = m_flowDetail ? m_flowDetail->editor() : nullptr;
    if (added.isEmpty() || !parent || !editor || editor->flow() != parent->flow())
        return;
    editor->interaction().setSelectedItemIDs(QSet<QUuid>(added.begin(), added.end()));
    editor->reveal(added[added.size() / 2], true);
}

void WindowSheets::showGenerationFailure(const QUuid &parentID)
{
    const FlowNode *parent = m_store.node(parentID);
    CanvasEditor *editor = m_flowDetail ? m_flowDetail->editor() : nullptr;
    if (parent && editor && editor->flow() == parent->flow())
        editor->interaction().setExpandFailure(parent->title);
}

void WindowSheets::addTo(QMenu *file)
{
    QAction *before = file->actions().isEmpty() ? nullptr : file->actions().first();
    const QList<QAction *> actions = file->actions();
    for (qsizetype i = 0; i < actions.size(); ++i) {
        if (actions[i]->objectName().startsWith(QStringLiteral("menu.newFlow"))) {
            before = i + 1 < actions.size() ? actions[i + 1] : nullptr;
            break;
        }
    }
    m_newFlowFromTextAction = new QAction(qtTrId("menu.newFlowFromText"), file);
    m_newFlowFromTextAction->setObjectName(QStringLiteral("menu.newFlowFromText"));
    connect(m_newFlowFromTextAction, &QAction::triggered, this, [this] { m_newFlowFromText->setPresented(true); });
    m_planDayAction = new QAction(qtTrId("menu.planDay"), file);
    m_planDayAction->setObjectName(QStringLiteral("menu.planDay"));
    m_planDayAction->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D));
    connect(m_planDayAction, &QAction::triggered, this, [this] { m_planDay->setPresented(true); });
    file->insertAction(before, m_newFlowFromTextAction);
    file->insertAction(before, m_planDayAction);
    if (before && !before->isSeparator())
        file->insertSeparator(before);
    applyShortcuts();
    followOnboarding();
}

void WindowSheets::applyShortcuts()
{
    if (!m_newFlowFromTextAction)
        return;
    const ShortcutAction action = ShortcutAction::newFlowFromText;
    m_newFlowFromTextAction->setShortcut(
        QKeySequence(ShortcutKeys::keyboardShortcut(m_preferences.shortcut(action), action)));
}

} // namespace fenrow

#include "CanvasAccessibility.h"

#include "CanvasView.h"
#include "FileOpener.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasKeyCommand.h"
#include "domain/DependencyEdge.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"
#include "domain/TaskFlow.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>
#include <QWindow>

#include <mutex>
#include <optional>

namespace fenrow
{

namespace
{

// One card of the canvas: a task, or a file's card. It holds the id only
// and finds the record again on every question, so a card that went away
// answers as invalid rather than reaching a deleted record.
class CanvasCardAccessible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    CanvasCardAccessible(CanvasView *view, const QUuid &id, bool isFile) : m_view(view), m_id(id), m_isFile(isFile) {}

    QUuid id() const { return m_id; }

    bool isValid() const override { return node() || file(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_view ? m_view->window()->windowHandle() : nullptr; }

    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(m_view.data()); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }

    QString text(QAccessible::Text type) const override;
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override;

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
    }

    QStringList actionNames() const override;
    QString localizedActionName(const QString &name) const override;
    QString localizedActionDescription(const QString &name) const override { return localizedActionName(name); }
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    CanvasEditor *editor() const { return m_view ? m_view->editor() : nullptr; }
    const FlowNode *node() const;
    const FlowFile *file() const;
    QString stateText() const;
    QString description() const;

    QPointer<CanvasView> m_view;
    QUuid m_id;
    bool m_isFile;
};

const FlowNode *CanvasCardAccessible::node() const
{
    const CanvasEditor *current = editor();
    if (m_isFile || !current || !current->isVisible(m_id))
        return nullptr;
    for (const FlowNode *candidate : current->visibleNodes())
        if (candidate->id == m_id)
            return candidate;
    return nullptr;
}

const FlowFile *CanvasCardAccessible::file() const
{
    const CanvasEditor *current = editor();
    if (!m_isFile || !current)
        return nullptr;
    for (const FlowFile *candidate : current->liveFiles())
        if (candidate->id == m_id)
            return candidate;
    return nullptr;
}

QString CanvasCardAccessible::stateText() const
{
    const FlowNode *task = node();
    if (!task)
        return file() ? qtTrId("canvas.access.file") : QString();
    const CardContent &content = m_view->cardContent(*task);
    // The first pill is the card's state: done, in progress, ready, waiting, starts.
    return content.pills.isEmpty() ? QString() : content.pills.first().text;
}

QString CanvasCardAccessible::description() const
{
    const FlowNode *task = node();
    if (!task)
        return stateText();
    QStringList parts{stateText()};
    const CardContent &content = m_view->cardContent(*task);
    for (qsizetype i = 1; i < content.pills.size(); ++i)
        parts << content.pills[i].help + QStringLiteral(": ") + content.pills[i].text;

    // Its place in the graph, as the lines on the canvas show it.
    QStringList after, before, parents, subtasks;
    for (const DependencyEdge *edge : task->flow()->edges()) {
        const FlowNode *from = edge->fromItem();
        const FlowNode *to = edge->toItem();
        if (!from || !to)
            continue;
        if (to == task)
            (edge->isSubtask() ? parents : after) << from->title;
        else if (from == task)
            (edge->isSubtask() ? subtasks : before) << to->title;
    }
    const auto add = [&](const char *key, const QStringList &titles) {
        if (!titles.isEmpty())
            parts << qtTrId(key).arg(titles.join(QStringLiteral(", ")));
    };
    add(QT_TRID_NOOP("canvas.access.after %1"), after);
    add(QT_TRID_NOOP("canvas.access.before %1"), before);
    add(QT_TRID_NOOP("canvas.access.subtaskOf %1"), parents);
    add(QT_TRID_NOOP("canvas.access.subtasks %1"), subtasks);
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}

QString CanvasCardAccessible::text(QAccessible::Text type) const
{
    switch (type) {
    case QAccessible::Name:
        if (const FlowNode *task = node())
            return task->title;
        if (const FlowFile *card = file())
            return card->filename;
        return {};
    case QAccessible::Value:
        return stateText();
    case QAccessible::Description:
        return description();
    default:
        return {};
    }
}

QRect CanvasCardAccessible::rect() const
{
    const CanvasEditor *current = editor();
    if (!current)
        return {};
    QRectF frame;
    if (const FlowNode *task = node())
        frame = current->interaction().frame(*task);
    else if (const FlowFile *card = file())
        frame = current->interaction().fileFrame(*card);
    else
        return {};
    const QRectF onScreen(m_view->toScreen(frame.topLeft()), m_view->toScreen(frame.bottomRight()));
    return QRectF(m_view->mapToGlobal(onScreen.topLeft()), onScreen.size()).toAlignedRect();
}

QAccessible::State CanvasCardAccessible::state() const
{
    QAccessible::State state;
    const CanvasEditor *current = editor();
    if (!current || !isValid()) {
        state.invalid = true;
        return state;
    }
    const CanvasInteraction &interaction = current->interaction();
    state.selectable = true;
    state.focusable = true;
    if (m_isFile) {
        state.selected = interaction.selectedFileID() == m_id;
        return state;
    }
    const QSet<QUuid> &selected = interaction.selectedItemIDs();
    state.selected = selected.contains(m_id);
    state.multiSelectable = true;
    // The keyboard works from the one selected card.
    state.focused = selected.size() == 1 && state.selected && m_view->hasFocus();
    state.checkable = true;
    state.checked = node()->isDone;
    const QRect shown = rect();
    state.offscreen = !QRect(m_view->mapToGlobal(QPoint(0, 0)), m_view->size()).intersects(shown);
    return state;
}

QStringList CanvasCardAccessible::actionNames() const
{
    // A file opens as its card's menu opens it: only while its bytes are kept.
    if (m_isFile) {
        const FlowFile *card = file();
        if (card && card->data.isPresent())
            return {pressAction(), QStringLiteral("open")};
        return {pressAction()};
    }
    return {pressAction(), QStringLiteral("open"), toggleAction()};
}

QString CanvasCardAccessible::localizedActionName(const QString &name) const
{
    if (name == pressAction())
        return qtTrId("canvas.access.action.select");
    if (name == QLatin1StringView("open"))
        return qtTrId("canvas.access.action.open");
    if (name == toggleAction() && !m_isFile) {
        const FlowNode *task = node();
        return task && task->isDone ? qtTrId("canvas.access.action.undone") : qtTrId("canvas.access.action.done");
    }
    return {};
}

void CanvasCardAccessible::doAction(const QString &name)
{
    CanvasEditor *current = editor();
    if (!current || !isValid())
        return;
    if (m_isFile) {
        if (name == pressAction()) {
            current->fileClicked(m_id);
        } else if (name == QLatin1StringView("open")) {
            const FlowFile *card = file();
            if (card && card->data.isPresent())
                FileOpener::open(*card);
        }
        return;
    }
    if (name == pressAction()) {
        current->selectAndKeepVisible(m_id);
        current->interaction().requestFocus();
    } else if (name == QLatin1StringView("open")) {
        // What a double click does: selected, shown in the inspector, its title open.
        current->cardDoubleClicked(m_id);
    } else if (name == toggleAction()) {
        // The canvas's own command, so the undo step reads as it does there.
        current->selectAndKeepVisible(m_id);
        current->handleKeyCommand(CanvasKeyCommand::of(CanvasKeyCommand::Kind::toggleDone));
    }
}

// The canvas as a list of its cards: tasks in their order, then files,
// then the widgets inside the canvas (the title field while it is open).
// Card interfaces are made when first asked for and dropped when their
// card goes; while no tool listens, nothing is sent.
class CanvasAccessible : public QAccessibleWidget
{
public:
    explicit CanvasAccessible(CanvasView *view) : QAccessibleWidget(view, QAccessible::List)
    {
        QObject::connect(view, &CanvasView::contentChanged, &m_watcher, [this] { contentChanged(); });
        followEditor();
        m_shown = items();
    }

    ~CanvasAccessible() override
    {
        for (const QAccessible::Id id : std::as_const(m_cards))
            QAccessible::deleteAccessibleInterface(id);
    }

    QString text(QAccessible::Text type) const override
    {
        if (type == QAccessible::Name && widget()->accessibleName().isEmpty()) {
            const CanvasEditor *current = view()->editor();
            const TaskFlow *flow = current ? current->flow() : nullptr;
            return qtTrId("canvas.access.name %1").arg(flow ? flow->name : QString());
        }
        return QAccessibleWidget::text(type);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.multiSelectable = true;
        return state;
    }

    int childCount() const override { return int(items().size()) + QAccessibleWidget::childCount(); }

    QAccessibleInterface *child(int index) const override
    {
        const QList<Item> cards = items();
        if (index < 0)
            return nullptr;
        if (index >= cards.size())
            return QAccessibleWidget::child(index - int(cards.size()));
        return card(cards[index]);
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const auto *card = dynamic_cast<const CanvasCardAccessible *>(child);
        const QList<Item> cards = items();
        if (!card) {
            const int index = QAccessibleWidget::indexOfChild(child);
            return index < 0 ? -1 : index + int(cards.size());
        }
        for (qsizetype i = 0; i < cards.size(); ++i)
            if (cards[i].id == card->id())
                return int(i);
        return -1;
    }

    QAccessibleInterface *childAt(int x, int y) const override
    {
        for (int i = QAccessibleWidget::childCount() - 1; i >= 0; --i)
            if (QAccessibleInterface *inside = QAccessibleWidget::child(i);
                inside && !inside->state().invisible && inside->rect().contains(x, y))
                return inside;
        // Later cards are drawn over earlier ones.
        const QList<Item> cards = items();
        for (qsizetype i = cards.size() - 1; i >= 0; --i)
            if (QAccessibleInterface *found = card(cards[i]); found->rect().contains(x, y))
                return found;
        return nullptr;
    }

    QAccessibleInterface *focusChild() const override
    {
        if (QAccessibleInterface *inside = QAccessibleWidget::focusChild(); inside && inside->object() != view())
            return inside;
        const std::optional<Item> anchor = focusedCard();
        return anchor ? card(*anchor) : nullptr;
    }

private:
    struct Item {
        QUuid id;
        bool isFile = false;
        friend bool operator==(const Item &, const Item &) = default;
    };

    CanvasView *view() const { return static_cast<CanvasView *>(widget()); }

    QList<Item> items() const
    {
        QList<Item> cards;
        const CanvasEditor *current = view()->editor();
        if (!current || !current->flow())
            return cards;
        for (const FlowNode *node : current->visibleNodes())
            cards.append({node->id, false});
        for (const FlowFile *file : current->liveFiles())
            cards.append({file->id, true});
        return cards;
    }

    QAccessibleInterface *card(const Item &item) const
    {
        auto found = m_cards.constFind(item.id);
        if (found != m_cards.cend())
            return QAccessible::accessibleInterface(*found);
        auto *made = new CanvasCardAccessible(view(), item.id, item.isFile);
        m_cards.insert(item.id, QAccessible::registerAccessibleInterface(made));
        // What it said first, to tell a later change by.
        m_texts.insert(item.id, {made->text(QAccessible::Name), made->text(QAccessible::Description)});
        return made;
    }

    std::optional<Item> focusedCard() const
    {
        const CanvasEditor *current = view()->editor();
        if (!current || !view()->hasFocus())
            return std::nullopt;
        const CanvasInteraction &interaction = current->interaction();
        if (interaction.selectedItemIDs().size() == 1 && current->isVisible(*interaction.selectedItemIDs().begin()))
            return Item{*interaction.selectedItemIDs().begin(), false};
        if (const auto file = interaction.selectedFileID())
            return Item{*file, true};
        return std::nullopt;
    }

    // The canvas shows another flow's editor from time to time; the
    // selection is watched on whichever it shows.
    void followEditor()
    {
        CanvasEditor *current = view()->editor();
        if (current == m_editor)
            return;
        QObject::disconnect(m_selection);
        m_editor = current;
        if (current)
            m_selection = QObject::connect(&current->interaction(), &CanvasInteraction::changed, &m_watcher,
                                           [this](CanvasInteraction::Field field) {
                                               if (field == CanvasInteraction::Field::selectedItemIDs ||
                                                   field == CanvasInteraction::Field::selectedFileID)
                                                   selectionChanged();
                                           });
    }

    void selectionChanged()
    {
        if (!QAccessible::isActive())
            return;
        if (const std::optional<Item> anchor = focusedCard()) {
            QAccessibleEvent focus(card(*anchor), QAccessible::Focus);
            QAccessible::updateAccessibility(&focus);
            QAccessibleEvent selection(card(*anchor), QAccessible::Selection);
            QAccessible::updateAccessibility(&selection);
            return;
        }
        QAccessibleEvent within(view(), QAccessible::SelectionWithin);
        QAccessible::updateAccessibility(&within);
    }

    // Only cards a tool has asked about are compared, so a store change
    // costs nothing while none listens.
    void contentChanged()
    {
        followEditor();
        // With no tool listening and no card asked about, there is nothing
        // to compare: the next change a tool hears of is a reorder.
        if (!QAccessible::isActive() && m_cards.isEmpty()) {
            m_shown.reset();
            return;
        }
        const QList<Item> cards = items();
        QSet<QUuid> present;
        for (const Item &item : cards)
            present.insert(item.id);
        QList<QUuid> gone;
        for (auto it = m_cards.cbegin(); it != m_cards.cend(); ++it)
            if (!present.contains(it.key()))
                gone << it.key();
        for (const QUuid &id : std::as_const(gone))
            QAccessible::deleteAccessibleInterface(m_cards.take(id));
        const bool reordered = !m_shown || cards != *m_shown;
        m_shown = cards;
        if (!QAccessible::isActive())
            return;
        if (reordered) {
            QAccessibleEvent reorder(view(), QAccessible::ObjectReorder);
            QAccessible::updateAccessibility(&reorder);
        }
        QHash<QUuid, std::pair<QString, QString>> texts;
        for (auto it = m_cards.cbegin(); it != m_cards.cend(); ++it) {
            QAccessibleInterface *known = QAccessible::accessibleInterface(*it);
            const std::pair<QString, QString> now{known->text(QAccessible::Name),
                                                  known->text(QAccessible::Description)};
            const auto before = m_texts.constFind(it.key());
            if (before != m_texts.cend() && before->first != now.first) {
                QAccessibleEvent named(known, QAccessible::NameChanged);
                QAccessible::updateAccessibility(&named);
            }
            if (before != m_texts.cend() && before->second != now.second) {
                QAccessibleEvent described(known, QAccessible::DescriptionChanged);
                QAccessible::updateAccessibility(&described);
            }
            texts.insert(it.key(), now);
        }
        m_texts = std::move(texts);
    }

    QObject m_watcher;
    QPointer<CanvasEditor> m_editor;
    QMetaObject::Connection m_selection;
    mutable QHash<QUuid, QAccessible::Id> m_cards;
    std::optional<QList<Item>> m_shown;
    mutable QHash<QUuid, std::pair<QString, QString>> m_texts;
};

QAccessibleInterface *canvasFactory(const QString &className, QObject *object)
{
    if (className != QLatin1StringView(CanvasView::staticMetaObject.className()))
        return nullptr;
    auto *view = qobject_cast<CanvasView *>(object);
    return view ? new CanvasAccessible(view) : nullptr;
}

} // namespace

void installCanvasAccessibility()
{
    static std::once_flag installed;
    std::call_once(installed, [] { QAccessible::installFactory(canvasFactory); });
}

} // namespace fenrow

#include "SettingsShortcutsPage.h"

#include "quickcapture/GlobalCaptureKey.h"

#include "SettingsForm.h"
#include "ShortcutRecorderButton.h"
#include "look/Theme.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"

#include <QGridLayout>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace fenrow {

namespace {

const char *actionTitle(ShortcutAction action)
{
    switch (action) {
    case ShortcutAction::undo: return "settings.shortcuts.action.undo";
    case ShortcutAction::redo: return "settings.shortcuts.action.redo";
    case ShortcutAction::newFlowFromText: return "settings.shortcuts.action.newFlowFromText";
    case ShortcutAction::findInFlow: return "settings.shortcuts.action.findInFlow";
    case ShortcutAction::exportMarkdown: return "settings.shortcuts.action.exportMarkdown";
    case ShortcutAction::copyMarkdown: return "settings.shortcuts.action.copyMarkdown";
    case ShortcutAction::zoomIn: return "settings.shortcuts.action.zoomIn";
    case ShortcutAction::zoomOut: return "settings.shortcuts.action.zoomOut";
    case ShortcutAction::zoomToFit: return "settings.shortcuts.action.zoomToFit";
    }
    return "settings.shortcuts.action.undo";
}

QString keysText(const QKeySequence &keys)
{
    return keys.toString(QKeySequence::NativeText);
}

} // namespace

SettingsShortcutsPage::SettingsShortcutsPage(AppPreferences &preferences, const AppEnvironment &environment,
                                             QWidget *parent)
    : QWidget(parent), m_preferences(preferences), m_environment(environment)
{
    QVBoxLayout *column = SettingsForm::makePage(this, qtTrId("settings.page.shortcuts"));
    m_rows = new QWidget(this);
    auto *grid = new QGridLayout(m_rows);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(0, 1);
    column->addWidget(m_rows);

    m_globalSubtitle = addRow(QStringLiteral("globalShortcut"), std::nullopt,
                              qtTrId("settings.general.quickCapture.title"),
                              qtTrId("settings.general.quickCapture.subtitle"));
    // The command on a line of its own so that it is never broken at its
    // hyphens; selectable, so that it can be copied.
    const QString &command = GlobalCaptureKey::fallbackCommand;
    m_globalUnavailable = SettingsForm::warning(
        qtTrId("settings.shortcuts.globalUnavailable").toHtmlEscaped() + QStringLiteral("<br><code>%1</code>").arg(command),
        QStringLiteral("settings.shortcuts.globalUnavailable"), m_rows);
    m_globalUnavailable->setTextFormat(Qt::RichText);
    m_globalUnavailable->setTextInteractionFlags(Qt::TextSelectableByMouse);
    grid->addWidget(m_globalUnavailable, grid->rowCount(), 0, 1, 2);
    connect(&m_environment, &AppEnvironment::globalHotkeyStateChanged, this, &SettingsShortcutsPage::showHotkeyState);
    showHotkeyState();
    for (int i = 0; i < int(RawNames<ShortcutAction>::names.size()); ++i) {
        const auto action = ShortcutAction(i);
        addRow(rawString(action), action, qtTrId(actionTitle(action)), QString());
    }

    auto *reset = new QPushButton(qtTrId("settings.shortcuts.reset"), this);
    reset->setObjectName(QStringLiteral("settings.shortcuts.reset"));
    connect(reset, &QPushButton::clicked, &m_preferences, &AppPreferences::resetShortcuts);
    column->addWidget(reset, 0, Qt::AlignLeft);

    // The canvas's own keys: fixed, shown so they can be found.
    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.shortcuts.reference.title"), this));
    auto *reference = new QWidget(this);
    reference->setObjectName(QStringLiteral("settings.shortcuts.reference"));
    auto *table = new QGridLayout(reference);
    table->setContentsMargins(0, 0, 0, 0);
    table->setHorizontalSpacing(16);
    table->setColumnStretch(0, 1);
    const QList<std::pair<const char *, QString>> fixed{
        {"settings.shortcuts.reference.rename", keysText(QKeySequence(Qt::Key_Return))},
        {"settings.shortcuts.reference.toggleDone", keysText(QKeySequence(Qt::CTRL | Qt::Key_Return))},
        {"settings.shortcuts.reference.addAfter", keysText(QKeySequence(Qt::Key_Tab))},
        {"settings.shortcuts.reference.addBefore", keysText(QKeySequence(Qt::SHIFT | Qt::Key_Tab))},
        {"settings.shortcuts.reference.delete", qtTrId("settings.shortcuts.reference.delete.keys")},
        {"settings.shortcuts.reference.deselect", keysText(QKeySequence(Qt::Key_Escape))},
        {"settings.shortcuts.reference.move", QStringLiteral("← ↑ → ↓")},
        {"settings.shortcuts.reference.follow",
         keysText(QKeySequence(Qt::ALT | Qt::Key_Left)) + QStringLiteral(" / →")},
        {"settings.shortcuts.reference.multiSelect", qtTrId("settings.shortcuts.reference.multiSelect.keys")},
        {"settings.shortcuts.reference.pan", qtTrId("settings.shortcuts.reference.pan.keys")},
    };
    for (int i = 0; i < fixed.size(); ++i) {
        table->addWidget(new QLabel(qtTrId(fixed[i].first), reference), i, 0);
        auto *keys = new QLabel(fixed[i].second, reference);
        keys->setFont(Theme::bodyFont());
        QPalette muted = keys->palette();
        muted.setColor(QPalette::WindowText, Theme::Color::secondaryText);
        keys->setPalette(muted);
        table->addWidget(keys, i, 1, Qt::AlignRight);
    }
    column->addWidget(reference);
    column->addWidget(SettingsForm::caption(qtTrId("settings.shortcuts.reference.caption"), this));
    column->addStretch(1);

    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::commandShortcuts) ||
            key == QLatin1StringView(PreferenceKey::globalShortcut))
            refresh();
    });
    refresh();
}

QLabel *SettingsShortcutsPage::addRow(const QString &name, std::optional<ShortcutAction> action,
                                     const QString &title, const QString &subtitle)
{
    auto *grid = static_cast<QGridLayout *>(m_rows->layout());
    const int line = grid->rowCount();
    auto *label = new QLabel(title, m_rows);
    label->setWordWrap(true);
    auto *recorder = new ShortcutRecorderButton(QStringLiteral("settings.shortcuts.recorder.") + name, m_rows);
    recorder->setAccessibleName(title);
    label->setBuddy(recorder);
    QLabel *message = SettingsForm::warning(QString(), QStringLiteral("settings.shortcuts.message.") + name, m_rows);
    grid->addWidget(label, line, 0);
    grid->addWidget(recorder, line, 1);
    int next = line + 1;
    QLabel *caption = subtitle.isEmpty() ? nullptr : SettingsForm::caption(subtitle, m_rows);
    if (caption)
        grid->addWidget(caption, next++, 0, 1, 2);
    grid->addWidget(message, next, 0, 1, 2);
    m_list.append(Row{name, action, recorder, message, QString()});

    connect(recorder, &ShortcutRecorderButton::recorded, this, [this, name, action](const KeyCombo &combo) {
        for (Row &row : m_list)
            if (row.name == name)
                row.refusal.clear();
        if (action)
            m_preferences.setShortcut(combo, *action);
        else
            m_preferences.setGlobalShortcut(combo);
        // Recording the combination already held changes no preference.
        refresh();
    });
    connect(recorder, &ShortcutRecorderButton::refused, this, [this, name](const QString &reason) {
        for (Row &row : m_list)
            if (row.name == name)
                row.refusal = reason;
        refresh();
    });
    return caption;
}

void SettingsShortcutsPage::showHotkeyState()
{
    const bool refused = m_environment.globalHotkeyState() == GlobalHotkeyState::failed;
    m_globalSubtitle->setVisible(!refused);
    m_globalUnavailable->setVisible(refused);
}

KeyCombo SettingsShortcutsPage::comboOf(const Row &row) const
{
    return row.action ? m_preferences.shortcut(*row.action) : m_preferences.globalShortcut();
}

void SettingsShortcutsPage::refresh()
{
    for (Row &row : m_list) {
        const KeyCombo combo = comboOf(row);
        row.recorder->setCombo(combo);
        QStringList others;
        for (const Row &other : m_list)
            if (&other != &row && comboOf(other) == combo)
                others << other.recorder->accessibleName();
        QString text = row.refusal;
        if (text.isEmpty() && !others.isEmpty())
            text = qtTrId("settings.shortcuts.conflict").arg(others.join(QStringLiteral(", ")));
        row.message->setText(text);
        row.message->setVisible(!text.isEmpty());
    }
}

const SettingsShortcutsPage::Row *SettingsShortcutsPage::find(const QString &name) const
{
    for (const Row &row : m_list)
        if (row.name == name)
            return &row;
    return nullptr;
}

ShortcutRecorderButton *SettingsShortcutsPage::recorder(const QString &name) const
{
    const Row *row = find(name);
    return row ? row->recorder : nullptr;
}

QLabel *SettingsShortcutsPage::message(const QString &name) const
{
    const Row *row = find(name);
    return row ? row->message : nullptr;
}

} // namespace fenrow

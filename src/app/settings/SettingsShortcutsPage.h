#pragma once

#include "shell/KeyCombo.h"

#include <QWidget>

#include <optional>

class QLabel;

namespace fenrow {

class AppEnvironment;
class AppPreferences;
class ShortcutRecorderButton;
enum class ShortcutAction;

// The keys the user may change, one recorder per command and one for quick
// capture, each written to the preferences as soon as it is recorded; a
// reset to the defaults; and the canvas's fixed keys for reference.
//
// A combination another command uses too is taken, as recording takes
// every combination with a modifier, but both rows then say so; a key
// press the recorder turns down is explained under its row.
//
// The quick-capture row promises the key from any application only while
// the desktop holds it for Fenrow (the environment's global hot-key
// state); where the desktop refused it, one line says the key works only
// inside Fenrow and how to open the panel from anywhere instead: a key for
// `fenrow --capture` in the desktop's own keyboard settings.
class SettingsShortcutsPage : public QWidget {
    Q_OBJECT

public:
    SettingsShortcutsPage(AppPreferences &preferences, const AppEnvironment &environment, QWidget *parent = nullptr);

    // The row's recorder and its message line; identifiers are
    // "settings.shortcuts.recorder." plus the action's raw name, or
    // "globalShortcut".
    ShortcutRecorderButton *recorder(const QString &name) const;
    QLabel *message(const QString &name) const;
    // The quick-capture row's promise, and the line shown in its place
    // when the desktop refused the key ("settings.shortcuts.globalUnavailable").
    QLabel *globalSubtitle() const { return m_globalSubtitle; }
    QLabel *globalUnavailable() const { return m_globalUnavailable; }

private:
    struct Row {
        QString name;
        std::optional<ShortcutAction> action;
        ShortcutRecorderButton *recorder = nullptr;
        QLabel *message = nullptr;
        QString refusal;
    };

    // Returns the subtitle's label, if any.
    QLabel *addRow(const QString &name, std::optional<ShortcutAction> action, const QString &title,
                   const QString &subtitle);
    void refresh();
    void showHotkeyState();
    KeyCombo comboOf(const Row &row) const;
    const Row *find(const QString &name) const;

    AppPreferences &m_preferences;
    const AppEnvironment &m_environment;
    QWidget *m_rows = nullptr;
    QLabel *m_globalSubtitle = nullptr;
    QLabel *m_globalUnavailable = nullptr;
    QList<Row> m_list;
};

} // namespace fenrow

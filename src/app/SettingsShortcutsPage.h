#pragma once

#include "shell/KeyCombo.h"

#include <QWidget>

#include <optional>

class QLabel;

namespace fenrow {

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
class SettingsShortcutsPage : public QWidget {
    Q_OBJECT

public:
    explicit SettingsShortcutsPage(AppPreferences &preferences, QWidget *parent = nullptr);

    // The row's recorder and its message line; identifiers are
    // "settings.shortcuts.recorder." plus the action's raw name, or
    // "globalShortcut".
    ShortcutRecorderButton *recorder(const QString &name) const;
    QLabel *message(const QString &name) const;

private:
    struct Row {
        QString name;
        std::optional<ShortcutAction> action;
        ShortcutRecorderButton *recorder = nullptr;
        QLabel *message = nullptr;
        QString refusal;
    };

    void addRow(const QString &name, std::optional<ShortcutAction> action, const QString &title,
                const QString &subtitle);
    void refresh();
    KeyCombo comboOf(const Row &row) const;
    const Row *find(const QString &name) const;

    AppPreferences &m_preferences;
    QWidget *m_rows = nullptr;
    QList<Row> m_list;
};

} // namespace fenrow

#pragma once

#include "KeyCombo.h"
#include "PreferenceChoices.h"
#include "ShortcutAction.h"
#include "domain/Readiness.h"

#include <QByteArray>
#include <QDateTime>
#include <QMap>
#include <QObject>
#include <QString>
#include <QUuid>

#include <memory>
#include <optional>

class QSettings;
class QVariant;

namespace fenrow {

// The settings file's keys, exactly as stored.
namespace PreferenceKey {
inline constexpr const char *hasCompletedOnboarding = "preferences.hasCompletedOnboarding";
inline constexpr const char *hasSeededSampleFlow = "preferences.hasSeededSampleFlow";
inline constexpr const char *globalShortcut = "preferences.globalShortcut";
inline constexpr const char *commandShortcuts = "preferences.commandShortcuts";
inline constexpr const char *launchAtLogin = "preferences.launchAtLogin";
inline constexpr const char *widgetAtLogin = "preferences.widgetAtLogin";
inline constexpr const char *gridEnabled = "preferences.gridEnabled";
inline constexpr const char *sidebarCollapsed = "preferences.sidebarCollapsed";
inline constexpr const char *sidebarWidth = "preferences.sidebarWidth";
inline constexpr const char *inspectorWidth = "preferences.inspectorWidth";
inline constexpr const char *inspectorNotesHeight = "preferences.inspectorNotesHeight";
inline constexpr const char *theme = "preferences.theme";
inline constexpr const char *sizeByEstimate = "preferences.sizeByEstimate";
inline constexpr const char *accentPalette = "preferences.accentPalette";
inline constexpr const char *filterMode = "preferences.filterMode";
inline constexpr const char *uiLanguage = "preferences.uiLanguage";
inline constexpr const char *lastCaptureFlowID = "preferences.lastCaptureFlowID";
inline constexpr const char *lastRoute = "preferences.lastRoute";
inline constexpr const char *readySort = "preferences.readySort";
inline constexpr const char *dayPlanBudget = "preferences.dayPlanBudget";
inline constexpr const char *dayPlanBudgetUnit = "preferences.dayPlanBudgetUnit";
inline constexpr const char *dueRemindersEnabled = "preferences.dueRemindersEnabled";
inline constexpr const char *morningDigestEnabled = "preferences.morningDigestEnabled";
inline constexpr const char *dueReminderHour = "preferences.dueReminderHour";
inline constexpr const char *autoArchiveDays = "preferences.autoArchiveDays";
inline constexpr const char *autoBackupBookmark = "preferences.autoBackupBookmark";
inline constexpr const char *lastAutoBackup = "preferences.lastAutoBackup";
inline constexpr const char *languageModelPath = "preferences.languageModelPath";
} // namespace PreferenceKey

// Every user preference, read once from the settings file and written back
// key by key as it changes. The desktop program makes one at its start and
// hands it to whoever needs it; a command-line run makes its own.
//
// Loading is tolerant and read-only: an absent or damaged value gives the
// field's default (or its clamp), and nothing is written back, so a value
// this version does not understand survives in the file. Setters store
// what they are given, unclamped (limits are the views' concern), write
// the key at once and then emit `changed` with the key when the value
// differs from the one held.
class AppPreferences : public QObject {
    Q_OBJECT

public:
    static constexpr double defaultSidebarWidth = 260, minimumSidebarWidth = 216, maximumSidebarWidth = 420;
    static constexpr double defaultInspectorWidth = 280, minimumInspectorWidth = 220, maximumInspectorWidth = 560;
    static constexpr double defaultInspectorNotesHeight = 120, minimumInspectorNotesHeight = 72,
                            maximumInspectorNotesHeight = 480;
    static constexpr int defaultDayPlanBudgetMinutes = 240;
    static constexpr int defaultDueReminderHour = 9;

    explicit AppPreferences(std::unique_ptr<QSettings> defaults, QObject *parent = nullptr);
    ~AppPreferences() override;

    QSettings &defaults() const { return *m_defaults; }

    bool hasCompletedOnboarding() const { return m_hasCompletedOnboarding; }
    void setHasCompletedOnboarding(bool value);
    bool hasSeededSampleFlow() const { return m_hasSeededSampleFlow; }
    void setHasSeededSampleFlow(bool value);

    KeyCombo globalShortcut() const { return m_globalShortcut; }
    void setGlobalShortcut(const KeyCombo &combo);
    // Raw action name to combination; only actions the user changed.
    QMap<QString, KeyCombo> commandShortcuts() const { return m_commandShortcuts; }
    void setCommandShortcuts(const QMap<QString, KeyCombo> &shortcuts);
    // The user's combination for `action`, else its default.
    KeyCombo shortcut(ShortcutAction action) const;
    void setShortcut(const KeyCombo &combo, ShortcutAction action);
    // Every action back to its default, and the quick-capture keys too.
    void resetShortcuts();

    bool launchAtLogin() const { return m_launchAtLogin; }
    void setLaunchAtLogin(bool value);
    // The tray widget started at login too.
    bool widgetAtLogin() const { return m_widgetAtLogin; }
    void setWidgetAtLogin(bool value);
    bool gridEnabled() const { return m_gridEnabled; }
    void setGridEnabled(bool value);
    bool sidebarCollapsed() const { return m_sidebarCollapsed; }
    void setSidebarCollapsed(bool value);
    double sidebarWidth() const { return m_sidebarWidth; }
    void setSidebarWidth(double value);
    double inspectorWidth() const { return m_inspectorWidth; }
    void setInspectorWidth(double value);
    double inspectorNotesHeight() const { return m_inspectorNotesHeight; }
    void setInspectorNotesHeight(double value);

    QString themeRaw() const { return m_themeRaw; }
    void setThemeRaw(const QString &raw);
    AppTheme theme() const { return readRaw<AppTheme>(m_themeRaw); }
    void setTheme(AppTheme theme) { setThemeRaw(rawString(theme)); }

    bool sizeByEstimate() const { return m_sizeByEstimate; }
    void setSizeByEstimate(bool value);

    QString accentPaletteRaw() const { return m_accentPaletteRaw; }
    void setAccentPaletteRaw(const QString &raw);
    AccentPalette accentPalette() const { return readRaw<AccentPalette>(m_accentPaletteRaw); }
    void setAccentPalette(AccentPalette palette) { setAccentPaletteRaw(rawString(palette)); }

    QString filterModeRaw() const { return m_filterModeRaw; }
    void setFilterModeRaw(const QString &raw);
    FilterMode filterMode() const { return readRaw<FilterMode>(m_filterModeRaw); }
    void setFilterMode(FilterMode mode) { setFilterModeRaw(rawString(mode)); }

    QString uiLanguageRaw() const { return m_uiLanguageRaw; }
    void setUiLanguageRaw(const QString &raw);
    UiLanguage uiLanguage() const { return readRaw<UiLanguage>(m_uiLanguageRaw); }
    void setUiLanguage(UiLanguage language) { setUiLanguageRaw(rawString(language)); }

    std::optional<QUuid> lastCaptureFlowID() const { return m_lastCaptureFlowID; }
    // What the main window showed when it was last left: "ready",
    // "archive", a flow's id, or empty; the next start opens it again.
    QString lastRouteRaw() const { return m_lastRouteRaw; }
    void setLastRouteRaw(const QString &raw);
    void setLastCaptureFlowID(const std::optional<QUuid> &id);

    QString readySortRaw() const { return m_readySortRaw; }
    void setReadySortRaw(const QString &raw);
    ReadySort readySort() const { return readRaw<ReadySort>(m_readySortRaw); }
    void setReadySort(ReadySort sort) { setReadySortRaw(rawString(sort)); }

    int dayPlanBudgetMinutes() const { return m_dayPlanBudgetMinutes; }
    void setDayPlanBudgetMinutes(int minutes);
    QString dayPlanBudgetUnitRaw() const { return m_dayPlanBudgetUnitRaw; }
    void setDayPlanBudgetUnitRaw(const QString &raw);
    DayPlanBudgetUnit dayPlanBudgetUnit() const { return readRaw<DayPlanBudgetUnit>(m_dayPlanBudgetUnitRaw); }
    void setDayPlanBudgetUnit(DayPlanBudgetUnit unit) { setDayPlanBudgetUnitRaw(rawString(unit)); }

    bool dueRemindersEnabled() const { return m_dueRemindersEnabled; }
    void setDueRemindersEnabled(bool value);
    bool morningDigestEnabled() const { return m_morningDigestEnabled; }
    void setMorningDigestEnabled(bool value);
    int dueReminderHour() const { return m_dueReminderHour; }
    void setDueReminderHour(int hour);
    // 0 is off.
    int autoArchiveDays() const { return m_autoArchiveDays; }
    void setAutoArchiveDays(int days);

    // The automatic backup's folder (its path as bytes) and its last run.
    std::optional<QByteArray> autoBackupBookmark() const { return m_autoBackupBookmark; }
    void setAutoBackupBookmark(const std::optional<QByteArray> &bookmark);
    std::optional<QDateTime> lastAutoBackup() const { return m_lastAutoBackup; }
    void setLastAutoBackup(const std::optional<QDateTime> &when);

    // The user's language model: a GGUF file's absolute path; none when no
    // model is chosen.
    std::optional<QString> languageModelPath() const { return m_languageModelPath; }
    void setLanguageModelPath(const std::optional<QString> &path);

signals:
    // A field changed; `key` is its settings key (PreferenceKey), and the
    // file already holds the new value.
    void changed(const QString &key);

private:
    void load();
    // Stores `value` in `field`, writes `stored` (an invalid variant clears
    // the key) and signals when the value differs.
    template <typename T>
    void update(T &field, const T &value, const char *key, const QVariant &stored);

    const std::unique_ptr<QSettings> m_defaults;

    bool m_hasCompletedOnboarding = false;
    bool m_hasSeededSampleFlow = false;
    KeyCombo m_globalShortcut = defaultGlobalShortcut;
    QMap<QString, KeyCombo> m_commandShortcuts;
    bool m_launchAtLogin = false;
    bool m_widgetAtLogin = false;
    bool m_gridEnabled = false;
    bool m_sidebarCollapsed = false;
    double m_sidebarWidth = defaultSidebarWidth;
    double m_inspectorWidth = defaultInspectorWidth;
    double m_inspectorNotesHeight = defaultInspectorNotesHeight;
    QString m_themeRaw;
    bool m_sizeByEstimate = false;
    QString m_accentPaletteRaw;
    QString m_filterModeRaw;
    QString m_uiLanguageRaw;
    std::optional<QUuid> m_lastCaptureFlowID;
    QString m_lastRouteRaw;
    QString m_readySortRaw;
    int m_dayPlanBudgetMinutes = defaultDayPlanBudgetMinutes;
    QString m_dayPlanBudgetUnitRaw;
    bool m_dueRemindersEnabled = true;
    bool m_morningDigestEnabled = false;
    int m_dueReminderHour = defaultDueReminderHour;
    int m_autoArchiveDays = 0;
    std::optional<QByteArray> m_autoBackupBookmark;
    std::optional<QString> m_languageModelPath;
    std::optional<QDateTime> m_lastAutoBackup;
};

} // namespace fenrow

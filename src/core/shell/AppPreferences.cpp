#include "AppPreferences.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QVariant>

#include <algorithm>
#include <cmath>
#include <limits>

namespace fenrow {

namespace {

// What a hand-edited INI file gives back is text; what this process wrote
// earlier is still typed in QSettings' cache. The readers accept both.

bool isNumberType(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

bool isText(const QVariant &value)
{
    return value.typeId() == QMetaType::QString;
}

// A finite number, or none for anything else (text that is no number, a
// list, a point, a boolean).
std::optional<double> castDouble(const QVariant &value)
{
    bool ok = false;
    double number = 0;
    if (isNumberType(value)) {
        number = value.toDouble(&ok);
    } else if (isText(value)) {
        number = value.toString().toDouble(&ok);
    }
    if (!ok || !std::isfinite(number))
        return std::nullopt;
    return number;
}

// A whole number within int, or none.
std::optional<int> castInt(const QVariant &value)
{
    const std::optional<double> number = castDouble(value);
    if (!number || std::trunc(*number) != *number || *number < std::numeric_limits<int>::min() ||
        *number > std::numeric_limits<int>::max())
        return std::nullopt;
    return int(*number);
}

// Only a real yes or no; anything else is of another type.
std::optional<bool> castBool(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    const QString text = isText(value) ? value.toString().trimmed().toLower()
                                       : (isNumberType(value) ? value.toString() : QString());
    if (text == QLatin1StringView("true") || text == QLatin1StringView("1"))
        return true;
    if (text == QLatin1StringView("false") || text == QLatin1StringView("0"))
        return false;
    return std::nullopt;
}

// The lenient reading of a flag: "true", "yes" or a non-zero number are
// set; everything else, absence included, is not.
bool readBool(const QVariant &value)
{
    if (const std::optional<bool> flag = castBool(value))
        return *flag;
    if (isText(value) && value.toString().trimmed().compare(QLatin1StringView("yes"), Qt::CaseInsensitive) == 0)
        return true;
    const std::optional<double> number = castDouble(value);
    return number && *number != 0;
}

// Any number, cut to a whole one within int; anything else is 0.
int readInteger(const QVariant &value)
{
    const std::optional<double> number = castDouble(value);
    if (!number)
        return 0;
    return int(std::clamp(std::trunc(*number), double(std::numeric_limits<int>::min()),
                          double(std::numeric_limits<int>::max())));
}

std::optional<QString> readString(const QVariant &value)
{
    return isText(value) ? std::optional(value.toString()) : std::nullopt;
}

double clampedDouble(const QVariant &value, double fallback, double minimum, double maximum)
{
    const std::optional<double> number = castDouble(value);
    return number ? std::clamp(*number, minimum, maximum) : fallback;
}

// JSON is written as bytes; a hand edit may give it as quoted text.
std::optional<QJsonObject> readJsonObject(const QVariant &value)
{
    QByteArray bytes;
    if (value.typeId() == QMetaType::QByteArray)
        bytes = value.toByteArray();
    else if (isText(value))
        bytes = value.toString().toUtf8();
    else
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

QByteArray jsonBytes(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

// All entries or none: one damaged entry makes the whole set unreadable.
std::optional<QMap<QString, KeyCombo>> decodeShortcuts(const QVariant &value)
{
    const std::optional<QJsonObject> object = readJsonObject(value);
    if (!object)
        return std::nullopt;
    QMap<QString, KeyCombo> shortcuts;
    for (auto entry = object->begin(); entry != object->end(); ++entry) {
        const std::optional<KeyCombo> combo = KeyCombo::fromJson(entry.value());
        if (!combo)
            return std::nullopt;
        shortcuts.insert(entry.key(), *combo);
    }
    return shortcuts;
}

QJsonObject encodeShortcuts(const QMap<QString, KeyCombo> &shortcuts)
{
    QJsonObject object;
    for (auto entry = shortcuts.begin(); entry != shortcuts.end(); ++entry)
        object.insert(entry.key(), entry.value().toJson());
    return object;
}

std::optional<QDateTime> readDate(const QVariant &value)
{
    QDateTime date;
    if (value.typeId() == QMetaType::QDateTime)
        date = value.toDateTime();
    else if (isText(value))
        date = QDateTime::fromString(value.toString().trimmed(), Qt::ISODateWithMs);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

} // namespace

AppPreferences::AppPreferences(std::unique_ptr<QSettings> defaults, QObject *parent)
    : QObject(parent), m_defaults(std::move(defaults))
{
    load();
}

AppPreferences::~AppPreferences() = default;

void AppPreferences::load()
{
    const auto stored = [this](const char *key) { return m_defaults->value(QLatin1StringView(key)); };
    const auto text = [&](const char *key, const char *fallback) {
        return readString(stored(key)).value_or(QString::fromLatin1(fallback));
    };

    m_hasCompletedOnboarding = readBool(stored(PreferenceKey::hasCompletedOnboarding));
    m_hasSeededSampleFlow = readBool(stored(PreferenceKey::hasSeededSampleFlow));
    const std::optional<QJsonObject> global = readJsonObject(stored(PreferenceKey::globalShortcut));
    m_globalShortcut = (global ? KeyCombo::fromJson(*global) : std::nullopt).value_or(defaultGlobalShortcut);
    m_commandShortcuts = decodeShortcuts(stored(PreferenceKey::commandShortcuts)).value_or(QMap<QString, KeyCombo>());
    m_launchAtLogin = readBool(stored(PreferenceKey::launchAtLogin));
    m_widgetAtLogin = readBool(stored(PreferenceKey::widgetAtLogin));
    m_gridEnabled = readBool(stored(PreferenceKey::gridEnabled));
    m_sidebarCollapsed = readBool(stored(PreferenceKey::sidebarCollapsed));
    m_sidebarWidth = clampedDouble(stored(PreferenceKey::sidebarWidth), defaultSidebarWidth, minimumSidebarWidth,
                                   maximumSidebarWidth);
    m_inspectorWidth = clampedDouble(stored(PreferenceKey::inspectorWidth), defaultInspectorWidth,
                                     minimumInspectorWidth, maximumInspectorWidth);
    m_inspectorNotesHeight = clampedDouble(stored(PreferenceKey::inspectorNotesHeight), defaultInspectorNotesHeight,
                                           minimumInspectorNotesHeight, maximumInspectorNotesHeight);
    m_themeRaw = text(PreferenceKey::theme, "auto");
    m_sizeByEstimate = readBool(stored(PreferenceKey::sizeByEstimate));
    m_accentPaletteRaw = text(PreferenceKey::accentPalette, "violet");
    m_filterModeRaw = text(PreferenceKey::filterMode, "dim");
    m_uiLanguageRaw = text(PreferenceKey::uiLanguage, "auto");
    const QUuid captureFlow = QUuid::fromString(readString(stored(PreferenceKey::lastCaptureFlowID)).value_or(QString()));
    m_lastCaptureFlowID = captureFlow.isNull() ? std::nullopt : std::optional(captureFlow);
    m_lastRouteRaw = text(PreferenceKey::lastRoute, "");
    m_readySortRaw = text(PreferenceKey::readySort, "flow");
    m_dayPlanBudgetMinutes = castInt(stored(PreferenceKey::dayPlanBudget)).value_or(defaultDayPlanBudgetMinutes);
    m_dayPlanBudgetUnitRaw = text(PreferenceKey::dayPlanBudgetUnit, "minutes");
    m_dueRemindersEnabled = castBool(stored(PreferenceKey::dueRemindersEnabled)).value_or(true);
    m_morningDigestEnabled = readBool(stored(PreferenceKey::morningDigestEnabled));
    const std::optional<int> hour = castInt(stored(PreferenceKey::dueReminderHour));
    m_dueReminderHour = hour && *hour >= 0 && *hour < 24 ? *hour : defaultDueReminderHour;
    m_autoArchiveDays = std::max(readInteger(stored(PreferenceKey::autoArchiveDays)), 0);
    // A bookmark is bytes; text there is not one.
    const QVariant bookmark = stored(PreferenceKey::autoBackupBookmark);
    if (bookmark.typeId() == QMetaType::QByteArray)
        m_autoBackupBookmark = bookmark.toByteArray();
    m_lastAutoBackup = readDate(stored(PreferenceKey::lastAutoBackup));
    if (const QString model = stored(PreferenceKey::languageModelPath).toString().trimmed(); !model.isEmpty())
        m_languageModelPath = model;
}

template <typename T>
void AppPreferences::update(T &field, const T &value, const char *key, const QVariant &stored)
{
    const bool differs = !(field == value);
    field = value;
    const QLatin1StringView name(key);
    if (stored.isValid())
        m_defaults->setValue(name, stored);
    else
        m_defaults->remove(name);
    // Other processes (the command line, a second window) read the file.
    m_defaults->sync();
    if (differs)
        emit changed(QString(name));
}

void AppPreferences::setHasCompletedOnboarding(bool value)
{
    update(m_hasCompletedOnboarding, value, PreferenceKey::hasCompletedOnboarding, value);
}

void AppPreferences::setHasSeededSampleFlow(bool value)
{
    update(m_hasSeededSampleFlow, value, PreferenceKey::hasSeededSampleFlow, value);
}

void AppPreferences::setGlobalShortcut(const KeyCombo &combo)
{
    update(m_globalShortcut, combo, PreferenceKey::globalShortcut, jsonBytes(combo.toJson()));
}

void AppPreferences::setCommandShortcuts(const QMap<QString, KeyCombo> &shortcuts)
{
    update(m_commandShortcuts, shortcuts, PreferenceKey::commandShortcuts, jsonBytes(encodeShortcuts(shortcuts)));
}

KeyCombo AppPreferences::shortcut(ShortcutAction action) const
{
    return m_commandShortcuts.value(rawString(action), defaultShortcut(action));
}

void AppPreferences::setShortcut(const KeyCombo &combo, ShortcutAction action)
{
    QMap<QString, KeyCombo> shortcuts = m_commandShortcuts;
    shortcuts.insert(rawString(action), combo);
    setCommandShortcuts(shortcuts);
}

void AppPreferences::resetShortcuts()
{
    setCommandShortcuts({});
    setGlobalShortcut(defaultGlobalShortcut);
}

void AppPreferences::setLaunchAtLogin(bool value)
{
    update(m_launchAtLogin, value, PreferenceKey::launchAtLogin, value);
}

void AppPreferences::setWidgetAtLogin(bool value)
{
    update(m_widgetAtLogin, value, PreferenceKey::widgetAtLogin, value);
}

void AppPreferences::setGridEnabled(bool value)
{
    update(m_gridEnabled, value, PreferenceKey::gridEnabled, value);
}

void AppPreferences::setSidebarCollapsed(bool value)
{
    update(m_sidebarCollapsed, value, PreferenceKey::sidebarCollapsed, value);
}

void AppPreferences::setSidebarWidth(double value)
{
    update(m_sidebarWidth, value, PreferenceKey::sidebarWidth, value);
}

void AppPreferences::setInspectorWidth(double value)
{
    update(m_inspectorWidth, value, PreferenceKey::inspectorWidth, value);
}

void AppPreferences::setInspectorNotesHeight(double value)
{
    update(m_inspectorNotesHeight, value, PreferenceKey::inspectorNotesHeight, value);
}

void AppPreferences::setThemeRaw(const QString &raw)
{
    update(m_themeRaw, raw, PreferenceKey::theme, raw);
}

void AppPreferences::setSizeByEstimate(bool value)
{
    update(m_sizeByEstimate, value, PreferenceKey::sizeByEstimate, value);
}

void AppPreferences::setAccentPaletteRaw(const QString &raw)
{
    update(m_accentPaletteRaw, raw, PreferenceKey::accentPalette, raw);
}

void AppPreferences::setFilterModeRaw(const QString &raw)
{
    update(m_filterModeRaw, raw, PreferenceKey::filterMode, raw);
}

void AppPreferences::setUiLanguageRaw(const QString &raw)
{
    update(m_uiLanguageRaw, raw, PreferenceKey::uiLanguage, raw);
}

void AppPreferences::setLastCaptureFlowID(const std::optional<QUuid> &id)
{
    update(m_lastCaptureFlowID, id, PreferenceKey::lastCaptureFlowID,
           id ? QVariant(id->toString(QUuid::WithoutBraces)) : QVariant());
}

void AppPreferences::setLastRouteRaw(const QString &raw)
{
    update(m_lastRouteRaw, raw, PreferenceKey::lastRoute, raw.isEmpty() ? QVariant() : QVariant(raw));
}

void AppPreferences::setReadySortRaw(const QString &raw)
{
    update(m_readySortRaw, raw, PreferenceKey::readySort, raw);
}

void AppPreferences::setDayPlanBudgetMinutes(int minutes)
{
    update(m_dayPlanBudgetMinutes, minutes, PreferenceKey::dayPlanBudget, minutes);
}

void AppPreferences::setDayPlanBudgetUnitRaw(const QString &raw)
{
    update(m_dayPlanBudgetUnitRaw, raw, PreferenceKey::dayPlanBudgetUnit, raw);
}

void AppPreferences::setDueRemindersEnabled(bool value)
{
    update(m_dueRemindersEnabled, value, PreferenceKey::dueRemindersEnabled, value);
}

void AppPreferences::setMorningDigestEnabled(bool value)
{
    update(m_morningDigestEnabled, value, PreferenceKey::morningDigestEnabled, value);
}

void AppPreferences::setDueReminderHour(int hour)
{
    update(m_dueReminderHour, hour, PreferenceKey::dueReminderHour, hour);
}

void AppPreferences::setAutoArchiveDays(int days)
{
    update(m_autoArchiveDays, days, PreferenceKey::autoArchiveDays, days);
}

void AppPreferences::setAutoBackupBookmark(const std::optional<QByteArray> &bookmark)
{
    update(m_autoBackupBookmark, bookmark, PreferenceKey::autoBackupBookmark,
           bookmark ? QVariant(*bookmark) : QVariant());
}

void AppPreferences::setLanguageModelPath(const std::optional<QString> &path)
{
    const std::optional<QString> chosen = path && !path->trimmed().isEmpty() ? path : std::nullopt;
    update(m_languageModelPath, chosen, PreferenceKey::languageModelPath, chosen ? QVariant(*chosen) : QVariant());
}

void AppPreferences::setLastAutoBackup(const std::optional<QDateTime> &when)
{
    // As ISO text in UTC: readable in the file, and exact to the millisecond.
    const std::optional<QDateTime> date = when && when->isValid() ? when : std::nullopt;
    update(m_lastAutoBackup, date, PreferenceKey::lastAutoBackup,
           date ? QVariant(date->toUTC().toString(Qt::ISODateWithMs)) : QVariant());
}

} // namespace fenrow

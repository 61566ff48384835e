#include "SettingsWindow.h"

#include "look/BrandPalette.h"
#include "look/Glyphs.h"
#include "look/InterfaceLook.h"
#include "SettingsDataPage.h"
#include "SettingsForm.h"
#include "SettingsModelPage.h"
#include "SettingsShortcutsPage.h"
#include "look/Theme.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/LoginItem.h"
#include "shell/SettingsFile.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QRadioButton>
#include <QScrollArea>
#include <QSettings>
#include <QShortcut>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QUrl>

#include <array>

namespace fenrow {

namespace {

struct PageInfo {
    SettingsPage page;
    const char *name;
    const char *title;
};

constexpr std::array<PageInfo, 7> pageInfos{{
    {SettingsPage::general, "general", "settings.page.general"},
    {SettingsPage::shortcuts, "shortcuts", "settings.page.shortcuts"},
    {SettingsPage::appearance, "appearance", "settings.page.appearance"},
    {SettingsPage::language, "language", "settings.page.language"},
    {SettingsPage::languageModel, "model", "settings.page.model"},
    {SettingsPage::data, "data", "settings.page.data"},
    {SettingsPage::about, "about", "settings.page.about"},
}};

// Runs `refresh` now and whenever the preference `key` changes, for as long
// as `control` lives, without the control's own signals firing.
template <typename Refresh>
void follow(AppPreferences &preferences, const char *key, QWidget *control, Refresh refresh)
{
    const auto run = [control, refresh] {
        const QSignalBlocker quiet(control);
        refresh();
    };
    run();
    QObject::connect(&preferences, &AppPreferences::changed, control, [key, run](const QString &changed) {
        if (changed == QLatin1StringView(key))
            run();
    });
}

QCheckBox *checkBox(const char *identifier, QWidget *parent)
{
    auto *box = new QCheckBox(qtTrId(identifier), parent);
    box->setObjectName(QString::fromLatin1(identifier));
    return box;
}

// One accent palette as a round swatch of its brand colour, ringed when
// chosen.
class PaletteSwatch : public QAbstractButton {
public:
    PaletteSwatch(AccentPalette palette, bool dark, QWidget *parent)
        : QAbstractButton(parent), m_color(BrandPalette::ramp(palette, dark).brand)
    {
        setCheckable(true);
        setFixedSize(30, 30);
        setCursor(Qt::PointingHandCursor);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF area = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
        if (isChecked() || hasFocus()) {
            painter.setPen(QPen(isChecked() ? Theme::Color::text : Theme::Color::ringOutline, 2));
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(area);
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_color);
        painter.drawEllipse(area.adjusted(4, 4, -4, -4));
    }

private:
    QColor m_color;
};

const char *paletteKey(AccentPalette palette)
{
    switch (palette) {
    case AccentPalette::violet: return "settings.appearance.palette.violet";
    case AccentPalette::blue: return "settings.appearance.palette.blue";
    case AccentPalette::green: return "settings.appearance.palette.green";
    case AccentPalette::orange: return "settings.appearance.palette.orange";
    case AccentPalette::pink: return "settings.appearance.palette.pink";
    case AccentPalette::graphite: return "settings.appearance.palette.graphite";
    }
    return "settings.appearance.palette.violet";
}

} // namespace

SettingsWindow::SettingsWindow(FenrowStore &store, AppPreferences &preferences, const AppEnvironment &environment,
                               InterfaceLook &look, QWidget *parent)
    : QWidget(parent, Qt::Window), m_store(store), m_preferences(preferences), m_environment(environment)
{
    setObjectName(QStringLiteral("settings.window"));
    setMinimumSize(700, 500);
    resize(780, 580);
    auto *close = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
    build();
    connect(&look, &InterfaceLook::changed, this, [this] {
        const SettingsPage page = currentPage();
        build();
        showPage(page);
    });
}

void SettingsWindow::build()
{
    setWindowTitle(qtTrId("settings.title"));
    // The pages are made anew; the frame is reused.
    if (m_pageList) {
        delete m_pageList;
        delete m_pages;
        delete layout();
    }
    m_pageList = new QListWidget(this);
    m_pageList->setObjectName(QStringLiteral("settings.pages"));
    m_pageList->setFrameShape(QFrame::NoFrame);
    m_pageList->setStyleSheet(
        QStringLiteral("QListWidget { background: %1; border: none; padding: 12px 8px; outline: none; }"
                       " QListWidget::item { color: %2; padding: 0 10px; border-radius: 6px; margin-bottom: 2px; }"
                       " QListWidget::item:selected { background: %3; color: %2; }"
                       " QListWidget::item:hover:!selected { background: %4; }")
            .arg(Theme::Color::sidebar.name(), Theme::Color::text.name(), Theme::Color::accentSoft.name(),
                 Theme::Color::hover.name()));
    m_pages = new QStackedWidget(this);
    // The style's own button leaves the label about 2 px of room.
    m_pages->setStyleSheet(QStringLiteral("QPushButton { padding: 5px 14px; }"));

    int widest = 0;
    for (const PageInfo &info : pageInfos) {
        auto *item = new QListWidgetItem(qtTrId(info.title), m_pageList);
        item->setSizeHint(QSize(0, 32));
        widest = std::max(widest, m_pageList->fontMetrics().horizontalAdvance(item->text()));
        QWidget *content = nullptr;
        switch (info.page) {
        case SettingsPage::general: content = makeGeneralPage(); break;
        case SettingsPage::shortcuts: content = new SettingsShortcutsPage(m_preferences, m_environment); break;
        case SettingsPage::appearance: content = makeAppearancePage(); break;
        case SettingsPage::language: content = makeLanguagePage(); break;
        case SettingsPage::languageModel: content = new SettingsModelPage(m_preferences); break;
        case SettingsPage::data: content = new SettingsDataPage(m_store, m_preferences); break;
        case SettingsPage::about: content = makeAboutPage(); break;
        }
        content->setObjectName(QStringLiteral("settings.page.") + QLatin1StringView(info.name));
        auto *scroll = new QScrollArea(m_pages);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setWidgetResizable(true);
        scroll->setWidget(content);
        m_pages->addWidget(scroll);
    }
    m_pageList->setFixedWidth(widest + 64);
    connect(m_pageList, &QListWidget::currentRowChanged, m_pages, &QStackedWidget::setCurrentIndex);
    m_pageList->setCurrentRow(0);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_pageList);
    row->addWidget(m_pages, 1);
}

void SettingsWindow::showPage(SettingsPage page)
{
    m_pageList->setCurrentRow(int(page));
}

SettingsPage SettingsWindow::currentPage() const
{
    return SettingsPage(std::max(0, m_pages->currentIndex()));
}

QWidget *SettingsWindow::page(SettingsPage page) const
{
    return static_cast<QScrollArea *>(m_pages->widget(int(page)))->widget();
}

QWidget *SettingsWindow::makeGeneralPage()
{
    auto *page = new QWidget;
    QVBoxLayout *column = SettingsForm::makePage(page, qtTrId("settings.page.general"));

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.general.startup.title"), page));
    QLabel *loginFailed = SettingsForm::warning(
        qtTrId("settings.general.launchAtLogin.failed")
            .arg(QDir::toNativeSeparators(QFileInfo(LoginItem::forThisUser().entryPath()).absolutePath())),
        QStringLiteral("settings.general.launchAtLogin.failed"), page);
    // The autostart entry first; the preference follows only what was
    // written, and a toggle that could not be written goes back.
    const auto loginToggle = [&, this](const char *identifier, LoginProgram program, const QString &path,
                                       const char *key, bool (AppPreferences::*stored)() const,
                                       void (AppPreferences::*store)(bool)) {
        QCheckBox *box = checkBox(identifier, page);
        follow(m_preferences, key, box, [=, this] { box->setChecked((m_preferences.*stored)()); });
        const LoginItem item = LoginItem::forThisUser(program);
        connect(box, &QCheckBox::toggled, this, [=, this](bool on) {
            const bool written = item.setEnabled(on, path);
            if (written) {
                (m_preferences.*store)(on);
            } else {
                const QSignalBlocker quiet(box);
                box->setChecked((m_preferences.*stored)());
            }
            loginFailed->setVisible(!written);
        });
        column->addWidget(box);
    };
    loginToggle("settings.general.launchAtLogin", LoginProgram::fenrow, QCoreApplication::applicationFilePath(),
                PreferenceKey::launchAtLogin, &AppPreferences::launchAtLogin, &AppPreferences::setLaunchAtLogin);
    // Offered only where the widget program was installed or built.
    if (!m_environment.widgetProgram().isEmpty())
        loginToggle("settings.general.widgetAtLogin", LoginProgram::widget, m_environment.widgetProgram(),
                    PreferenceKey::widgetAtLogin, &AppPreferences::widgetAtLogin, &AppPreferences::setWidgetAtLogin);
    column->addWidget(loginFailed);

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.general.reminders.title"), page));
    QCheckBox *reminders = checkBox("settings.general.dueReminders", page);
    auto *hour = new QComboBox;
    hour->setObjectName(QStringLiteral("settings.general.dueReminderHour"));
    for (int h = 0; h < 24; ++h)
        hour->addItem(QTime(h, 0).toString(QStringLiteral("HH:mm")), h);
    follow(m_preferences, PreferenceKey::dueRemindersEnabled, reminders, [=, this] {
        reminders->setChecked(m_preferences.dueRemindersEnabled());
        hour->setEnabled(m_preferences.dueRemindersEnabled());
    });
    follow(m_preferences, PreferenceKey::dueReminderHour, hour,
           [=, this] { hour->setCurrentIndex(hour->findData(m_preferences.dueReminderHour())); });
    connect(reminders, &QCheckBox::toggled, &m_preferences, &AppPreferences::setDueRemindersEnabled);
    connect(hour, &QComboBox::currentIndexChanged, this,
            [=, this] { m_preferences.setDueReminderHour(hour->currentData().toInt()); });
    column->addWidget(reminders);
    column->addWidget(SettingsForm::row(qtTrId("settings.general.dueReminderHour"), hour, page));
    QCheckBox *digest = checkBox("settings.general.morningDigest", page);
    follow(m_preferences, PreferenceKey::morningDigestEnabled, digest,
           [=, this] { digest->setChecked(m_preferences.morningDigestEnabled()); });
    connect(digest, &QCheckBox::toggled, &m_preferences, &AppPreferences::setMorningDigestEnabled);
    column->addWidget(digest);

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.general.planDay.title"), page));
    auto *budgetBox = new QWidget;
    auto *budgetRow = new QHBoxLayout(budgetBox);
    budgetRow->setContentsMargins(0, 0, 0, 0);
    auto *budget = new QSpinBox(budgetBox);
    budget->setObjectName(QStringLiteral("settings.general.dayPlanBudget"));
    auto *unit = new QComboBox(budgetBox);
    unit->setObjectName(QStringLiteral("settings.general.dayPlanBudgetUnit"));
    unit->addItem(qtTrId("settings.general.dayPlanBudget.minutes"));
    unit->addItem(qtTrId("settings.general.dayPlanBudget.hours"));
    budgetRow->addWidget(budget);
    budgetRow->addWidget(unit);
    // The budget is kept in minutes; the unit only says how it is shown.
    const auto showBudget = [=, this] {
        const QSignalBlocker quiet(budget);
        const bool hours = m_preferences.dayPlanBudgetUnit() == DayPlanBudgetUnit::hours;
        budget->setRange(hours ? 1 : 15, hours ? 24 : 1440);
        budget->setSingleStep(hours ? 1 : 15);
        budget->setValue(hours ? m_preferences.dayPlanBudgetMinutes() / 60 : m_preferences.dayPlanBudgetMinutes());
    };
    follow(m_preferences, PreferenceKey::dayPlanBudget, budget, showBudget);
    follow(m_preferences, PreferenceKey::dayPlanBudgetUnit, unit, [=, this] {
        unit->setCurrentIndex(int(m_preferences.dayPlanBudgetUnit()));
        showBudget();
    });
    connect(budget, &QSpinBox::valueChanged, this, [=, this](int value) {
        const bool hours = m_preferences.dayPlanBudgetUnit() == DayPlanBudgetUnit::hours;
        m_preferences.setDayPlanBudgetMinutes(hours ? value * 60 : value);
    });
    connect(unit, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_preferences.setDayPlanBudgetUnit(DayPlanBudgetUnit(index)); });
    column->addWidget(SettingsForm::row(qtTrId("settings.general.dayPlanBudget"), budgetBox, page));

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.general.filter.title"), page));
    auto *filter = new QComboBox;
    filter->setObjectName(QStringLiteral("settings.general.filterMode"));
    filter->addItem(qtTrId("settings.general.filterMode.dim"));
    filter->addItem(qtTrId("settings.general.filterMode.hide"));
    follow(m_preferences, PreferenceKey::filterMode, filter,
           [=, this] { filter->setCurrentIndex(int(m_preferences.filterMode())); });
    connect(filter, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_preferences.setFilterMode(FilterMode(index)); });
    column->addWidget(SettingsForm::row(qtTrId("settings.general.filterMode"), filter, page));
    column->addStretch(1);
    return page;
}

QWidget *SettingsWindow::makeAppearancePage()
{
    auto *page = new QWidget;
    QVBoxLayout *column = SettingsForm::makePage(page, qtTrId("settings.page.appearance"));

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.appearance.theme.title"), page));
    auto *themes = new QButtonGroup(page);
    const std::array<std::pair<AppTheme, const char *>, 3> themeChoices{{
        {AppTheme::automatic, "settings.appearance.theme.auto"},
        {AppTheme::light, "settings.appearance.theme.light"},
        {AppTheme::dark, "settings.appearance.theme.dark"},
    }};
    for (const auto &[theme, key] : themeChoices) {
        auto *choice = new QRadioButton(qtTrId(key), page);
        choice->setObjectName(QString::fromLatin1(key));
        themes->addButton(choice, int(theme));
        column->addWidget(choice);
    }
    column->addWidget(SettingsForm::caption(qtTrId("settings.appearance.theme.caption"), page));
    follow(m_preferences, PreferenceKey::theme, page, [=, this] {
        const QSignalBlocker quiet(themes);
        themes->button(int(m_preferences.theme()))->setChecked(true);
    });
    connect(themes, &QButtonGroup::idClicked, this, [this](int id) { m_preferences.setTheme(AppTheme(id)); });

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.appearance.palette.title"), page));
    auto *swatches = new QWidget(page);
    auto *swatchRow = new QHBoxLayout(swatches);
    swatchRow->setContentsMargins(0, 0, 0, 0);
    swatchRow->setSpacing(6);
    auto *palettes = new QButtonGroup(page);
    auto *paletteName = new QLabel(page);
    paletteName->setObjectName(QStringLiteral("settings.appearance.palette.name"));
    for (int i = 0; i < 6; ++i) {
        const auto palette = AccentPalette(i);
        auto *swatch = new PaletteSwatch(palette, Theme::colors().dark, swatches);
        swatch->setObjectName(QStringLiteral("settings.appearance.palette.") + rawString(palette));
        swatch->setToolTip(qtTrId(paletteKey(palette)));
        swatch->setAccessibleName(qtTrId(paletteKey(palette)));
        palettes->addButton(swatch, i);
        swatchRow->addWidget(swatch);
    }
    swatchRow->addSpacing(8);
    swatchRow->addWidget(paletteName, 1);
    column->addWidget(swatches);
    follow(m_preferences, PreferenceKey::accentPalette, page, [=, this] {
        const QSignalBlocker quiet(palettes);
        palettes->button(int(m_preferences.accentPalette()))->setChecked(true);
        paletteName->setText(qtTrId(paletteKey(m_preferences.accentPalette())));
    });
    connect(palettes, &QButtonGroup::idClicked, this,
            [this](int id) { m_preferences.setAccentPalette(AccentPalette(id)); });

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.appearance.canvas.title"), page));
    QCheckBox *grid = checkBox("settings.appearance.grid", page);
    follow(m_preferences, PreferenceKey::gridEnabled, grid, [=, this] { grid->setChecked(m_preferences.gridEnabled()); });
    connect(grid, &QCheckBox::toggled, &m_preferences, &AppPreferences::setGridEnabled);
    column->addWidget(grid);
    QCheckBox *sizes = checkBox("settings.appearance.sizeByEstimate", page);
    follow(m_preferences, PreferenceKey::sizeByEstimate, sizes,
           [=, this] { sizes->setChecked(m_preferences.sizeByEstimate()); });
    connect(sizes, &QCheckBox::toggled, &m_preferences, &AppPreferences::setSizeByEstimate);
    column->addWidget(sizes);
    column->addStretch(1);
    return page;
}

QWidget *SettingsWindow::makeLanguagePage()
{
    auto *page = new QWidget;
    QVBoxLayout *column = SettingsForm::makePage(page, qtTrId("settings.page.language"));
    column->addWidget(SettingsForm::caption(qtTrId("settings.language.caption"), page));
    auto *languages = new QButtonGroup(page);
    // Each language under its own name, as its speakers look for it.
    const std::array<std::pair<UiLanguage, QString>, 6> choices{{
        {UiLanguage::automatic, qtTrId("settings.language.system")},
        {UiLanguage::en, QStringLiteral("English")},
        {UiLanguage::tr, QStringLiteral("Türkçe")},
        {UiLanguage::de, QStringLiteral("Deutsch")},
        {UiLanguage::es, QStringLiteral("Español")},
        {UiLanguage::fr, QStringLiteral("Français")},
    }};
    for (const auto &[language, name] : choices) {
        auto *choice = new QRadioButton(name, page);
        choice->setObjectName(QStringLiteral("settings.language.") + rawString(language));
        languages->addButton(choice, int(language));
        column->addWidget(choice);
    }
    follow(m_preferences, PreferenceKey::uiLanguage, page, [=, this] {
        const QSignalBlocker quiet(languages);
        languages->button(int(m_preferences.uiLanguage()))->setChecked(true);
    });
    connect(languages, &QButtonGroup::idClicked, this,
            [this](int id) { m_preferences.setUiLanguage(UiLanguage(id)); });
    column->addStretch(1);
    return page;
}

QWidget *SettingsWindow::makeAboutPage()
{
    auto *page = new QWidget;
    QVBoxLayout *column = SettingsForm::makePage(page, qtTrId("settings.page.about"));
    auto *brand = new QWidget(page);
    auto *brandRow = new QHBoxLayout(brand);
    brandRow->setContentsMargins(0, 0, 0, 0);
    brandRow->setSpacing(14);
    auto *mark = new QLabel(brand);
    mark->setPixmap(Glyphs::brandMark(56));
    auto *words = new QVBoxLayout;
    auto *name = new QLabel(QStringLiteral("Fenrow"), brand);
    name->setFont(Theme::largeTitleFont());
    auto *version = new QLabel(qtTrId("settings.about.version").arg(QCoreApplication::applicationVersion()), brand);
    version->setObjectName(QStringLiteral("settings.about.version"));
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    words->addWidget(name);
    words->addWidget(version);
    brandRow->addWidget(mark);
    brandRow->addLayout(words, 1);
    column->addWidget(brand);
    column->addWidget(SettingsForm::caption(qtTrId("settings.about.tagline"), page));

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.about.files.title"), page));
    const auto link = [&](const char *key, const QString &path) {
        auto *label = new QLabel(QStringLiteral("<a href=\"%1\">%2</a>")
                                     .arg(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded),
                                          qtTrId(key).toHtmlEscaped()),
                                 page);
        label->setObjectName(QString::fromLatin1(key));
        label->setToolTip(path);
        label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        connect(label, &QLabel::linkActivated, label, [](const QString &url) { QDesktopServices::openUrl(QUrl(url)); });
        column->addWidget(label);
    };
    link("settings.about.dataFolder", QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    link("settings.about.settingsFile", m_preferences.defaults().fileName());
    column->addStretch(1);
    return page;
}

} // namespace fenrow

#include "SettingsDataPage.h"

#include "program/AppShell.h"
#include "look/Glyphs.h"
#include "window/MainWindow.h"
#include "SettingsForm.h"
#include "look/Theme.h"
#include "program/UuidText.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "shell/AppPreferences.h"
#include "shell/MaintenanceScheduler.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

namespace {

constexpr std::array<int, 7> archiveChoices{0, 1, 3, 7, 14, 30, 90};

} // namespace

SettingsDataPage::SettingsDataPage(FenrowStore &store, AppPreferences &preferences, QWidget *parent)
    : QWidget(parent), m_store(store), m_preferences(preferences)
{
    QVBoxLayout *column = SettingsForm::makePage(this, qtTrId("settings.page.data"));

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.data.autoArchive.title"), this));
    m_autoArchive = new QComboBox;
    m_autoArchive->setObjectName(QStringLiteral("settings.data.autoArchive"));
    column->addWidget(SettingsForm::row(qtTrId("settings.data.autoArchive.label"), m_autoArchive, this));
    column->addWidget(SettingsForm::caption(qtTrId("settings.data.autoArchive.caption"), this));
    connect(m_autoArchive, &QComboBox::currentIndexChanged, this, [this] {
        m_preferences.setAutoArchiveDays(m_autoArchive->currentData().toInt());
    });

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.data.autoBackup.title"), this));
    m_backupFolder = new QLabel(this);
    m_backupFolder->setObjectName(QStringLiteral("settings.data.autoBackup.folder"));
    m_backupFolder->setWordWrap(true);
    m_backupFolder->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(m_backupFolder);
    m_lastBackup = SettingsForm::caption(QString(), this);
    m_lastBackup->setObjectName(QStringLiteral("settings.data.autoBackup.last"));
    column->addWidget(m_lastBackup);
    m_backupFailed = SettingsForm::warning(qtTrId("settings.data.autoBackup.failed"),
                                           QStringLiteral("settings.data.autoBackup.failed"), this);
    column->addWidget(m_backupFailed);
    auto *buttons = new QHBoxLayout;
    auto *choose = new QPushButton(qtTrId("settings.data.autoBackup.choose"), this);
    choose->setObjectName(QStringLiteral("settings.data.autoBackup.choose"));
    m_backupNow = new QPushButton(qtTrId("settings.data.autoBackup.now"), this);
    m_backupNow->setObjectName(QStringLiteral("settings.data.autoBackup.now"));
    m_backupOff = new QPushButton(qtTrId("settings.data.autoBackup.off"), this);
    m_backupOff->setObjectName(QStringLiteral("settings.data.autoBackup.off"));
    buttons->addWidget(choose);
    buttons->addWidget(m_backupNow);
    buttons->addWidget(m_backupOff);
    buttons->addStretch(1);
    column->addLayout(buttons);
    column->addWidget(SettingsForm::caption(qtTrId("settings.data.autoBackup.caption"), this));
    connect(choose, &QPushButton::clicked, this, [this] {
        const QString start = m_preferences.autoBackupBookmark() ? QString::fromUtf8(*m_preferences.autoBackupBookmark())
                                                                 : QDir::homePath();
        const QString path = QFileDialog::getExistingDirectory(this, qtTrId("settings.data.autoBackup.choose"), start);
        if (!path.isEmpty())
            setBackupFolder(path);
    });
    connect(m_backupOff, &QPushButton::clicked, this, [this] { setBackupFolder(QString()); });
    // A failure shows through the scheduler's status, a success through
    // the time of the last backup.
    connect(m_backupNow, &QPushButton::clicked, this, [this] {
        if (MaintenanceScheduler *scheduler = maintenance())
            scheduler->autoBackupNow(m_store.clock().now());
    });
    if (MaintenanceScheduler *scheduler = maintenance())
        connect(scheduler, &MaintenanceScheduler::backupStatusChanged, this, &SettingsDataPage::showBackup);

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.data.templates.title"), this));
    m_templates = new QWidget(this);
    m_templates->setObjectName(QStringLiteral("settings.data.templates"));
    m_templateRows = new QVBoxLayout(m_templates);
    m_templateRows->setContentsMargins(0, 0, 0, 0);
    m_templateRows->setSpacing(2);
    column->addWidget(m_templates);
    column->addStretch(1);

    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::autoArchiveDays))
            showAutoArchive();
        else if (key == QLatin1StringView(PreferenceKey::autoBackupBookmark) ||
                 key == QLatin1StringView(PreferenceKey::lastAutoBackup))
            showBackup();
    });
    connect(&m_store, &FenrowStore::changed, this, &SettingsDataPage::showTemplates);
    showAutoArchive();
    showBackup();
    showTemplates();
}

void SettingsDataPage::setBackupFolder(const QString &path)
{
    // The folder's path stands in for a lasting reference to it.
    m_preferences.setAutoBackupBookmark(path.isEmpty() ? std::nullopt
                                                       : std::optional<QByteArray>(QDir::cleanPath(path).toUtf8()));
}

void SettingsDataPage::showAutoArchive()
{
    const QSignalBlocker quiet(m_autoArchive);
    m_autoArchive->clear();
    const int days = m_preferences.autoArchiveDays();
    QList<int> choices(archiveChoices.begin(), archiveChoices.end());
    // A number set elsewhere (the command line) is shown as it is.
    if (!choices.contains(days)) {
        choices.append(days);
        std::sort(choices.begin(), choices.end());
    }
    for (int choice : choices)
        m_autoArchive->addItem(choice == 0   ? qtTrId("settings.data.autoArchive.off")
                               : choice == 1 ? qtTrId("settings.data.autoArchive.oneDay")
                                             : qtTrId("settings.data.autoArchive.days").arg(choice),
                               choice);
    m_autoArchive->setCurrentIndex(m_autoArchive->findData(days));
}

void SettingsDataPage::showBackup()
{
    const std::optional<QByteArray> folder = m_preferences.autoBackupBookmark();
    m_backupFolder->setText(folder ? QDir::toNativeSeparators(QString::fromUtf8(*folder))
                                   : qtTrId("settings.data.autoBackup.none"));
    m_backupOff->setEnabled(folder.has_value());
    const std::optional<QDateTime> last = m_preferences.lastAutoBackup();
    m_lastBackup->setText(last ? qtTrId("settings.data.autoBackup.last")
                                     .arg(QLocale().toString(last->toLocalTime(), QLocale::LongFormat))
                               : qtTrId("settings.data.autoBackup.never"));
    m_lastBackup->setVisible(folder.has_value());
    const MaintenanceScheduler *scheduler = maintenance();
    m_backupNow->setVisible(scheduler != nullptr);
    m_backupNow->setEnabled(folder.has_value());
    m_backupFailed->setVisible(folder && scheduler && scheduler->lastBackupFailed());
}

MaintenanceScheduler *SettingsDataPage::maintenance()
{
    AppShell *shell = AppShell::current();
    return shell ? shell->maintenance() : nullptr;
}

void SettingsDataPage::showTemplates()
{
    // Later, not now: the row's own delete button may be what changed the
    // store.
    while (QLayoutItem *item = m_templateRows->takeAt(0)) {
        if (QWidget *row = item->widget()) {
            row->hide();
            row->deleteLater();
        }
        delete item;
    }
    const QList<const FlowTemplate *> templates = m_store.templateList();
    if (templates.isEmpty()) {
        QLabel *empty = SettingsForm::caption(qtTrId("settings.data.templates.empty"), m_templates);
        empty->setObjectName(QStringLiteral("settings.data.templates.empty"));
        m_templateRows->addWidget(empty);
        return;
    }
    for (const FlowTemplate *flowTemplate : templates) {
        auto *remove = new QToolButton;
        remove->setObjectName(QStringLiteral("settings.data.templates.delete.") + uuidText(flowTemplate->id));
        remove->setIcon(Glyphs::trash(Theme::Color::secondaryText));
        remove->setToolTip(qtTrId("settings.data.templates.delete"));
        remove->setAccessibleName(qtTrId("settings.data.templates.delete"));
        remove->setAutoRaise(true);
        const QUuid id = flowTemplate->id;
        connect(remove, &QToolButton::clicked, this, [this, id] {
            for (const FlowTemplate *candidate : m_store.templateList())
                if (candidate->id == id) {
                    m_store.deleteTemplate(*candidate);
                    return;
                }
        });
        QWidget *line = SettingsForm::row(flowTemplate->name, remove, m_templates);
        line->setObjectName(QStringLiteral("settings.data.templates.row.") + uuidText(flowTemplate->id));
        m_templateRows->addWidget(line);
    }
}

} // namespace fenrow

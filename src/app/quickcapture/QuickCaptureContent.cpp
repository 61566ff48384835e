#include "QuickCaptureContent.h"

#include "look/Glyphs.h"
#include "look/Theme.h"
#include "capture/QuickCaptureModel.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "shell/InterfaceLanguage.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

namespace {

// A small picture drawn with the window's glyphs, in one colour.
class MarkLabel : public QWidget {
public:
    MarkLabel(Glyphs::Mark mark, const QColor &color, int size, QWidget *parent)
        : QWidget(parent), m_mark(mark), m_color(color)
    {
        setFixedSize(size, size);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        Glyphs::paintMark(painter, QRectF(rect()), m_mark, m_color);
    }

private:
    Glyphs::Mark m_mark;
    QColor m_color;
};

QString panelStyleSheet(const CanvasColors &colors)
{
    const BrandRamp &ramp = colors.ramp;
    return QStringLiteral(
               "QLineEdit#quickCapture\\.field { border: none; background: transparent; color: %1;"
               " selection-background-color: %3; padding: 0; }"
               " QLabel { color: %2; }"
               " QToolButton#quickCapture\\.flowPicker { color: %1; background: %4; border: 1px solid %5;"
               " border-radius: 6px; padding: 3px 8px; }"
               " QToolButton#quickCapture\\.flowPicker:hover { border-color: %3; }"
               " QToolButton#quickCapture\\.flowPicker::menu-indicator { image: none; width: 0; }"
               " QFrame#quickCapture\\.dateChip { background: %6; border: 1px solid %5; border-radius: 6px; }"
               " QFrame#quickCapture\\.dateChip QLabel { color: %3; font-weight: 600; }"
               " QToolButton#quickCapture\\.date\\.dismiss { color: %2; border: none; background: transparent;"
               " padding: 0 2px; font-weight: 600; }"
               " QToolButton#quickCapture\\.date\\.dismiss:hover { color: %1; }"
               " QPushButton#quickCapture\\.cancelButton { color: %1; background: transparent; border: 1px solid %5;"
               " border-radius: 6px; padding: 4px 12px; }"
               " QPushButton#quickCapture\\.cancelButton:hover { background: %4; }"
               " QPushButton#quickCapture\\.saveButton { color: %7; background: %3; border: none;"
               " border-radius: 6px; padding: 5px 14px; font-weight: 600; }"
               " QPushButton#quickCapture\\.saveButton:hover { background: %8; }"
               " QPushButton#quickCapture\\.saveButton:disabled { background: %5; color: %2; }")
        .arg(colors.text.name(), colors.secondaryText.name(), ramp.brand.name(), ramp.fieldSurface.name(),
             ramp.brandBorder.name(), ramp.brandSubtle.name(), ramp.onAccent.name(), ramp.brandHover.name());
}

} // namespace

QuickCaptureContent::QuickCaptureContent(FenrowStore &store, AppEnvironment &environment,
                                         AppPreferences &preferences, FenrowHistory *history,
                                         const ActiveFlowState *activeFlow, const CanvasColors &colors,
                                         QWidget *parent)
    : QWidget(parent), m_store(store)
{
    setObjectName(QStringLiteral("quickCapture.panel"));
    m_model = new QuickCaptureModel(store, environment, preferences, history, activeFlow, QuickCaptureSeed(), this);
    m_model->onClose = [this] { emit closeRequested(); };
    setStyleSheet(panelStyleSheet(colors));

    // The line: a plus in the accent colour, then the field.
    auto *plus = new QLabel(this);
    plus->setPixmap(Glyphs::plus(colors.ramp.brand).pixmap(QSize(16, 16), devicePixelRatioF()));
    m_field = new QLineEdit(this);
    m_field->setObjectName(QStringLiteral("quickCapture.field"));
    m_field->setPlaceholderText(qtTrId("quickCapture.field.placeholder"));
    m_field->setFrame(false);
    QFont large = Theme::bodyFont();
    large.setPointSizeF(large.pointSizeF() * 1.35);
    m_field->setFont(large);
    QPalette fieldColours = m_field->palette();
    fieldColours.setColor(QPalette::PlaceholderText, colors.secondaryText);
    fieldColours.setColor(QPalette::Text, colors.text);
    m_field->setPalette(fieldColours);
    auto *line = new QHBoxLayout;
    line->setSpacing(10);
    line->addWidget(plus);
    line->addWidget(m_field, 1);

    // Where the task goes, and when it is due.
    auto *into = new QLabel(qtTrId("quickCapture.picker.label"), this);
    into->setObjectName(QStringLiteral("quickCapture.picker.caption"));
    into->setFont(Theme::captionFont());
    m_flowPicker = new QToolButton(this);
    m_flowPicker->setObjectName(QStringLiteral("quickCapture.flowPicker"));
    m_flowPicker->setAccessibleName(qtTrId("quickCapture.picker.label"));
    m_flowPicker->setPopupMode(QToolButton::InstantPopup);
    m_flowPicker->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_flowPicker->setCursor(Qt::PointingHandCursor);
    m_flowMenu = new QMenu(m_flowPicker);
    m_flowMenu->setObjectName(QStringLiteral("quickCapture.flowMenu"));
    m_flowPicker->setMenu(m_flowMenu);
    connect(m_flowMenu, &QMenu::aboutToShow, this, &QuickCaptureContent::fillFlowMenu);

    m_dateChip = new QFrame(this);
    m_dateChip->setObjectName(QStringLiteral("quickCapture.dateChip"));
    auto *calendar = new MarkLabel(Glyphs::Mark::due, colors.ramp.brand, 13, m_dateChip);
    m_dateText = new QLabel(m_dateChip);
    m_dateText->setObjectName(QStringLiteral("quickCapture.dateChip.text"));
    auto *refuse = new QToolButton(m_dateChip);
    refuse->setObjectName(QStringLiteral("quickCapture.date.dismiss"));
    refuse->setText(QStringLiteral("×"));
    refuse->setToolTip(qtTrId("quickCapture.date.dismiss"));
    refuse->setAccessibleName(qtTrId("quickCapture.date.dismiss"));
    refuse->setCursor(Qt::PointingHandCursor);
    connect(refuse, &QToolButton::clicked, this, [this] {
        m_model->dismissDate();
        refresh();
        m_field->setFocus();
    });
    auto *chip = new QHBoxLayout(m_dateChip);
    chip->setContentsMargins(8, 2, 4, 2);
    chip->setSpacing(6);
    chip->addWidget(calendar);
    chip->addWidget(m_dateText);
    chip->addWidget(refuse);

    auto *details = new QHBoxLayout;
    details->setSpacing(8);
    details->addWidget(into);
    details->addWidget(m_flowPicker);
    details->addWidget(m_dateChip);
    details->addStretch(1);

    // The way out: a hint for the keys, then the buttons.
    auto *hint = new QLabel(qtTrId("quickCapture.hint"), this);
    hint->setObjectName(QStringLiteral("quickCapture.hint"));
    hint->setFont(Theme::captionFont());
    auto *cancel = new QPushButton(qtTrId("quickCapture.action.cancel"), this);
    cancel->setObjectName(QStringLiteral("quickCapture.cancelButton"));
    cancel->setAutoDefault(false);
    cancel->setCursor(Qt::PointingHandCursor);
    connect(cancel, &QPushButton::clicked, this, &QuickCaptureContent::closeRequested);
    m_save = new QPushButton(qtTrId("quickCapture.action.save"), this);
    m_save->setObjectName(QStringLiteral("quickCapture.saveButton"));
    m_save->setAutoDefault(false);
    m_save->setCursor(Qt::PointingHandCursor);
    connect(m_save, &QPushButton::clicked, this, &QuickCaptureContent::save);
    auto *actions = new QHBoxLayout;
    actions->setSpacing(8);
    actions->addWidget(hint, 1);
    actions->addWidget(cancel);
    actions->addWidget(m_save);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(18, 16, 16, 14);
    column->setSpacing(0);
    column->addLayout(line);
    column->addSpacing(8);
    column->addLayout(details);
    column->addStretch(1);
    column->addLayout(actions);

    connect(m_field, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_model->text = text;
        refresh();
    });
    connect(m_field, &QLineEdit::returnPressed, this, &QuickCaptureContent::save);
    // A flow renamed or deleted while the panel is open shows at once.
    connect(&m_store, &FenrowStore::changed, this, &QuickCaptureContent::refresh);
    setFocusProxy(m_field);
    refresh();
}

void QuickCaptureContent::save()
{
    m_model->save();
}

void QuickCaptureContent::refresh()
{
    m_flowPicker->setText(m_model->pickerLabel() + QStringLiteral("  ▾"));
    if (const std::optional<CaptureDateParser::Match> match = m_model->datePreview()) {
        // The weekday too: "next friday" is best checked against a day name.
        // The year when it is not this one, so that a date long past or one
        // that rolled over into next year does not pass for this year's.
        const QDate due = m_store.calendar().dayOf(match->date);
        const bool thisYear = due.year() == m_store.calendar().dayOf(m_store.clock().now()).year();
        const QString day = QLocale(InterfaceLanguage::current())
                                .toString(due, thisYear ? qtTrId("quickCapture.date.format")
                                                        : qtTrId("quickCapture.date.format.withYear"));
        m_dateText->setText(qtTrId("quickCapture.date.due %@").arg(day));
        m_dateChip->setToolTip(qtTrId("quickCapture.date.help %@").arg(day));
        m_dateChip->show();
    } else {
        m_dateChip->hide();
    }
    m_save->setEnabled(m_model->canSave());
}

void QuickCaptureContent::fillFlowMenu()
{
    m_flowMenu->clear();
    auto *group = new QActionGroup(m_flowMenu);
    const TaskFlow *target = m_model->targetFlow();
    for (const TaskFlow *flow : m_store.flows()) {
        QAction *entry = m_flowMenu->addAction(flow->name);
        entry->setCheckable(true);
        entry->setChecked(flow == target);
        entry->setActionGroup(group);
        const QUuid id = flow->id;
        connect(entry, &QAction::triggered, this, [this, id] {
            m_model->selectedFlowID = id;
            refresh();
        });
    }
}

} // namespace fenrow

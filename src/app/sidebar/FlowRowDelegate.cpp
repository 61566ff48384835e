#include "FlowRowDelegate.h"

#include "FlowListModel.h"
#include "FlowListView.h"
#include "look/Theme.h"

#include <QHash>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

namespace fenrow {

namespace {

using namespace Theme;

// Where the parts of a row go, for painting, measuring and the editor alike.
struct RowLayout {
    QRect background;
    QRect ring;
    QRect name;
    QRect progress;
};

// Greedy line filling over the given pieces, joined by `glue` on a line.
QStringList fill(const QStringList &pieces, const QString &glue, const QFontMetrics &metrics, int width)
{
    QStringList lines;
    for (const QString &piece : pieces) {
        if (!lines.isEmpty() && metrics.horizontalAdvance(lines.last() + glue + piece) <= width)
            lines.last() += glue + piece;
        else
            lines.append(piece);
    }
    return lines;
}

// The progress text on as many lines as the width needs. It breaks between
// its parts ("3 of 12 done", "2 in progress") before it breaks inside one, so
// a number never ends up on a line apart from its words.
QStringList measuredProgressLines(const QString &text, int width, const QFont &font)
{
    const QFontMetrics metrics(font);
    if (metrics.horizontalAdvance(text) <= width)
        return {text};
    static const QString separator = QStringLiteral(" · ");
    QStringList lines;
    for (const QString &part : fill(text.split(separator), separator, metrics, width)) {
        if (metrics.horizontalAdvance(part) <= width)
            lines.append(part);
        else
            lines.append(fill(part.split(QLatin1Char(' ')), QStringLiteral(" "), metrics, width));
    }
    return lines;
}

// The same, each text and width measured once: the list lays out every row
// again whenever the store changes, and shaping the texts was most of a
// change's cost on a store of many flows.
QStringList progressLines(const QString &text, int width)
{
    static QString measuredWith;
    static QHash<std::pair<QString, int>, QStringList> measured;
    const QFont font = captionFont();
    if (const QString key = font.key(); key != measuredWith || measured.size() > 4096) {
        measured.clear();
        measuredWith = key;
    }
    const std::pair<QString, int> key{text, width};
    auto found = measured.constFind(key);
    if (found == measured.constEnd())
        found = measured.insert(key, measuredProgressLines(text, width, font));
    return *found;
}

int progressHeight(const QString &text, int width)
{
    return int(progressLines(text, width).size()) * QFontMetrics(captionFont()).lineSpacing();
}

RowLayout layoutRow(const QRect &rect, const QString &progressText)
{
    RowLayout layout;
    layout.background = rect.adjusted(0, Metric::rowGap / 2, 0, -Metric::rowGap / 2);
    const QRect content = layout.background.adjusted(Metric::rowPaddingX, Metric::rowPaddingY, -Metric::rowPaddingX,
                                                     -Metric::rowPaddingY);
    const int nameHeight = QFontMetrics(bodyFont()).height();
    layout.ring = QRect(content.left(), content.top() + (nameHeight - Metric::progressRing) / 2,
                        Metric::progressRing, Metric::progressRing);
    const int textLeft = layout.ring.right() + 1 + Metric::rowPaddingX;
    const int textWidth = content.right() + 1 - textLeft;
    layout.name = QRect(textLeft, content.top(), textWidth, nameHeight);
    layout.progress = QRect(textLeft, layout.name.bottom() + 3, textWidth, progressHeight(progressText, textWidth));
    return layout;
}

void paintRing(QPainter &painter, const QRectF &rect, qint64 done, qint64 total)
{
    const QRectF ring = rect.adjusted(1.5, 1.5, -1.5, -1.5);
    painter.setBrush(Qt::NoBrush);
    if (total > 0 && done == total) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Color::done);
        painter.drawEllipse(rect.adjusted(0.5, 0.5, -0.5, -0.5));
        QPainterPath tick;
        tick.moveTo(rect.left() + rect.width() * 0.29, rect.top() + rect.height() * 0.52);
        tick.lineTo(rect.left() + rect.width() * 0.44, rect.top() + rect.height() * 0.67);
        tick.lineTo(rect.left() + rect.width() * 0.72, rect.top() + rect.height() * 0.36);
        painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(tick);
        return;
    }
    // An outline with the done share filled in as a pie: reads as "how far",
    // where a bare arc would read as "busy".
    painter.setPen(QPen(total > 0 ? Color::accent : Color::ringOutline, 1.5));
    painter.drawEllipse(ring);
    if (done > 0 && total > 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Color::accent);
        // Qt counts angles in sixteenths of a degree, anticlockwise from three o'clock.
        painter.drawPie(ring.adjusted(2.5, 2.5, -2.5, -2.5), 90 * 16, -int(360 * 16 * done / total));
    }
}

} // namespace

QSize FlowRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    // The row spans the viewport; its height depends on how the progress
    // text wraps at that width.
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    const int width = view ? view->viewport()->width() : option.rect.width();
    const QString progress = index.data(FlowListModel::ProgressTextRole).toString();
    const RowLayout layout = layoutRow(QRect(0, 0, width, 0), progress);
    return {width, layout.progress.bottom() + 1 + Metric::rowPaddingY + Metric::rowGap / 2};
}

void FlowRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QString progress = index.data(FlowListModel::ProgressTextRole).toString();
    const RowLayout layout = layoutRow(option.rect, progress);
    const auto *view = qobject_cast<const FlowListView *>(option.widget);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);

    const bool selected = option.state & QStyle::State_Selected;
    const bool hovered = option.state & QStyle::State_MouseOver;
    if (selected || hovered) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(selected ? Color::accentSoft : Color::hover);
        painter->drawRoundedRect(layout.background, Metric::rowRadius, Metric::rowRadius);
    }
    if (view && view->dropTarget() == index) {
        painter->setPen(QPen(Color::accent, 1.5));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(layout.background).adjusted(0.75, 0.75, -0.75, -0.75), Metric::rowRadius,
                                 Metric::rowRadius);
    }

    paintRing(*painter, layout.ring, index.data(FlowListModel::DoneCountRole).toLongLong(),
              index.data(FlowListModel::TotalCountRole).toLongLong());

    // The open rename field covers the name; don't paint it twice.
    if (!(view && view->isEditing(index))) {
        painter->setFont(bodyFont());
        painter->setPen(Color::text);
        const QString name = index.data(Qt::DisplayRole).toString();
        painter->drawText(layout.name, Qt::AlignLeft | Qt::AlignVCenter,
                          painter->fontMetrics().elidedText(name, Qt::ElideRight, layout.name.width()));
    }

    painter->setFont(captionFont());
    painter->setPen(selected ? Color::accent : Color::secondaryText);
    QRect line = layout.progress;
    line.setHeight(painter->fontMetrics().lineSpacing());
    for (const QString &text : progressLines(progress, layout.progress.width())) {
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter, text);
        line.translate(0, line.height());
    }
    painter->restore();
}

bool FlowRowDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                                const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString name = index.data(Qt::DisplayRole).toString();
    const RowLayout layout = layoutRow(option.rect, index.data(FlowListModel::ProgressTextRole).toString());
    if (QFontMetrics(bodyFont()).horizontalAdvance(name) > layout.name.width())
        QToolTip::showText(event->globalPos(), name, view, option.rect);
    else
        QToolTip::hideText();
    return true;
}

QWidget *FlowRowDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    auto *editor = new QLineEdit(parent);
    editor->setObjectName(QStringLiteral("sidebar.flow.rename"));
    editor->setPlaceholderText(qtTrId("sidebar.flow.rename.placeholder"));
    editor->setAccessibleName(qtTrId("sidebar.flow.rename.placeholder"));
    editor->setFont(bodyFont());
    editor->setFrame(false);
    editor->setStyleSheet(QStringLiteral("QLineEdit { background: %1; color: %2; border: 1px solid %3;"
                                         " border-radius: 4px; padding: 0 3px; }")
                              .arg(Color::window.name(), Color::text.name(), Color::accent.name()));
    return editor;
}

void FlowRowDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *field = static_cast<QLineEdit *>(editor);
    // A store change while the field is open refreshes the rows; it must not
    // throw away what the user has typed so far.
    if (field->isModified())
        return;
    field->setText(index.data(Qt::EditRole).toString());
    // Typing replaces the whole name, as after "+" the name is a stand-in.
    field->selectAll();
}

void FlowRowDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                           const QModelIndex &index) const
{
    const RowLayout layout = layoutRow(option.rect, index.data(FlowListModel::ProgressTextRole).toString());
    // The field's text sits where the painted name was: its border, padding
    // and the line edit's own margin come to 6 pixels.
    editor->setGeometry(layout.name.adjusted(-6, -3, 0, 3));
}

} // namespace fenrow

#include "ReadyRowDelegate.h"

#include "look/Glyphs.h"
#include "ReadyListModel.h"
#include "look/Theme.h"

#include <QAbstractItemView>
#include <QCursor>
#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

namespace fenrow {

namespace {

using namespace Theme;

constexpr int paddingX = 12;
constexpr int paddingY = 9;
constexpr int circleSize = 18;
constexpr int markSize = 12;
constexpr int markGap = 5;
constexpr int chipGap = 16;
constexpr int detailGap = 3;
constexpr int headerTop = 22;
constexpr int firstHeaderTop = 4;
constexpr int headerBottom = 6;

using Kind = ReadyListModel::Kind;

Kind kindOf(const QModelIndex &index)
{
    return Kind(index.data(ReadyListModel::KindRole).toInt());
}

// One detail of a task: a small mark and a short text.
struct Chip {
    Glyphs::Mark mark;
    QString text;
    QColor textColor;
    QColor markColor;
};

QColor priorityColor(NodePriority priority)
{
    switch (priority) {
    case NodePriority::high:
        return Color::priorityHigh;
    case NodePriority::medium:
        return Color::priorityMedium;
    case NodePriority::low:
    case NodePriority::none:
        break;
    }
    return Color::priorityLow;
}

QList<Chip> chipsOf(const QModelIndex &index)
{
    QList<Chip> chips;
    const auto add = [&](Glyphs::Mark mark, const QString &text, const QColor &textColor, const QColor &markColor) {
        if (!text.isEmpty())
            chips.append({mark, text, textColor, markColor});
    };
    add(Glyphs::Mark::flow, index.data(ReadyListModel::FlowNameRole).toString(), Color::secondaryText,
        Color::ringOutline);
    const bool overdue = index.data(ReadyListModel::OverdueRole).toBool();
    add(Glyphs::Mark::due, index.data(ReadyListModel::DueTextRole).toString(),
        overdue ? Color::warning : Color::secondaryText, overdue ? Color::warning : Color::ringOutline);
    add(Glyphs::Mark::priority, index.data(ReadyListModel::PriorityTextRole).toString(), Color::secondaryText,
        priorityColor(NodePriority(index.data(ReadyListModel::PriorityRole).toInt())));
    add(Glyphs::Mark::estimate, index.data(ReadyListModel::EstimateTextRole).toString(), Color::secondaryText,
        Color::ringOutline);
    if (index.data(ReadyListModel::HasNotesRole).toBool())
        add(Glyphs::Mark::notes, qtTrId("ready.row.hasNotes"), Color::secondaryText, Color::ringOutline);
    if (const qint64 files = index.data(ReadyListModel::ReferencesRole).toLongLong(); files > 0)
        add(Glyphs::Mark::files, qtTrId("ready.row.references").arg(files), Color::secondaryText, Color::ringOutline);
    return chips;
}

int chipWidth(const Chip &chip, const QFontMetrics &metrics)
{
    return markSize + markGap + metrics.horizontalAdvance(chip.text);
}

// Chips filled greedily into lines of `width`; a chip wider than a whole
// line gets a line of its own and is shortened when painted.
QList<QList<Chip>> chipLines(const QList<Chip> &chips, int width)
{
    const QFontMetrics metrics(captionFont());
    QList<QList<Chip>> lines;
    int used = 0;
    for (const Chip &chip : chips) {
        const int needed = chipWidth(chip, metrics);
        if (lines.isEmpty() || used + chipGap + needed > width) {
            lines.append({chip});
            used = needed;
        } else {
            lines.last().append(chip);
            used += chipGap + needed;
        }
    }
    return lines;
}

struct TaskLayout {
    QRect background;
    QRect circle;
    QRect title;
    QRect details;
    QList<QList<Chip>> lines;
};

TaskLayout layoutTask(const QRect &rect, const QModelIndex &index)
{
    TaskLayout layout;
    layout.background = rect.adjusted(0, 1, 0, -1);
    const QRect content = layout.background.adjusted(paddingX, paddingY, -paddingX, -paddingY);
    const int titleHeight = QFontMetrics(bodyFont()).height();
    layout.circle = ReadyRowDelegate::completeRect(rect);
    const int textLeft = layout.circle.right() + 1 + paddingX;
    const int textWidth = std::max(0, content.right() + 1 - textLeft);
    layout.title = QRect(textLeft, content.top(), textWidth, titleHeight);
    layout.lines = chipLines(chipsOf(index), textWidth);
    const int detailHeight = int(layout.lines.size()) * QFontMetrics(captionFont()).lineSpacing();
    layout.details = QRect(textLeft, layout.title.bottom() + 1 + (detailHeight > 0 ? detailGap : 0), textWidth,
                           detailHeight);
    return layout;
}

int headerTopPadding(const QModelIndex &index)
{
    return index.row() == 0 ? firstHeaderTop : headerTop;
}

void paintCircle(QPainter &painter, const QRect &rect, bool hovered)
{
    const QRectF ring = QRectF(rect).adjusted(1, 1, -1, -1);
    painter.setPen(QPen(hovered ? Color::accent : Color::ringOutline, 1.5));
    painter.setBrush(hovered ? Color::accentSoft : Color::window);
    painter.drawEllipse(ring);
    if (!hovered)
        return;
    // A hint of the tick the click will make.
    QPainterPath tick;
    tick.moveTo(ring.left() + ring.width() * 0.28, ring.top() + ring.height() * 0.52);
    tick.lineTo(ring.left() + ring.width() * 0.44, ring.top() + ring.height() * 0.68);
    tick.lineTo(ring.left() + ring.width() * 0.72, ring.top() + ring.height() * 0.36);
    painter.setPen(QPen(Color::accent, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(tick);
}

void paintHeader(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QRect content = option.rect.adjusted(paddingX, headerTopPadding(index), -paddingX, -headerBottom);
    const bool today = index.data(ReadyListModel::IdentifierRole).toString() == QLatin1StringView("ready.group.today");
    const QString count = QString::number(index.data(ReadyListModel::CountRole).toLongLong());

    const QFontMetrics countMetrics(captionFont());
    const int countWidth = countMetrics.horizontalAdvance(count);
    painter.setFont(sectionFont());
    const QString title = painter.fontMetrics().elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight,
                                                           content.width() - countWidth - 8);
    painter.setPen(today ? Color::accent : Color::text);
    painter.drawText(content, Qt::AlignLeft | Qt::AlignVCenter, title);
    const int titleWidth = painter.fontMetrics().horizontalAdvance(title);
    painter.setFont(captionFont());
    painter.setPen(Color::secondaryText);
    painter.drawText(content.adjusted(titleWidth + 8, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, count);

    // Today in the user's own order: a small pill at the header's end.
    const QString note = index.data(ReadyListModel::OrderNoteRole).toString();
    const int free = content.width() - titleWidth - 8 - countWidth - 16;
    if (note.isEmpty() || free < 40)
        return;
    const QFontMetrics metrics(captionFont());
    const QString shown = metrics.elidedText(note, Qt::ElideRight, free - 16);
    const int width = metrics.horizontalAdvance(shown) + 16;
    const QRect pill(content.right() - width, content.center().y() - metrics.height() / 2 - 2, width,
                     metrics.height() + 4);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Color::accentSoft);
    painter.drawRoundedRect(pill, pill.height() / 2.0, pill.height() / 2.0);
    painter.setPen(Color::accent);
    painter.drawText(pill, Qt::AlignCenter, shown);
}

void paintTask(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const TaskLayout layout = layoutTask(option.rect, index);
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    const bool hovered = option.state & QStyle::State_MouseOver;
    const bool current = (option.state & QStyle::State_HasFocus) && view && view->hasFocus();

    if (hovered || current) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(current ? Color::accentSoft : Color::sidebar);
        painter.drawRoundedRect(layout.background, Metric::rowRadius, Metric::rowRadius);
    }
    const QPoint mouse = view ? view->viewport()->mapFromGlobal(QCursor::pos()) : QPoint(-1, -1);
    paintCircle(painter, layout.circle, hovered && ReadyRowDelegate::completeHitRect(option.rect).contains(mouse));

    painter.setFont(bodyFont());
    painter.setPen(Color::text);
    painter.drawText(layout.title, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight,
                                                      layout.title.width()));

    painter.setFont(captionFont());
    const QFontMetrics metrics = painter.fontMetrics();
    QRect line(layout.details.left(), layout.details.top(), layout.details.width(), metrics.lineSpacing());
    for (const QList<Chip> &chips : layout.lines) {
        int x = line.left();
        for (const Chip &chip : chips) {
            const QRectF mark(x, line.center().y() - markSize / 2.0 + 0.5, markSize, markSize);
            Glyphs::paintMark(painter, mark, chip.mark, chip.markColor);
            const int textLeft = x + markSize + markGap;
            const QString text =
                metrics.elidedText(chip.text, Qt::ElideRight, std::max(0, line.right() + 1 - textLeft));
            painter.setPen(chip.textColor);
            painter.drawText(QRect(textLeft, line.top(), line.right() + 1 - textLeft, line.height()),
                             Qt::AlignLeft | Qt::AlignVCenter, text);
            x = textLeft + metrics.horizontalAdvance(text) + chipGap;
        }
        line.translate(0, line.height());
    }

    // A hairline between tasks of one group; a header sets groups apart.
    const QModelIndex next = index.siblingAtRow(index.row() + 1);
    if (next.isValid() && kindOf(next) == Kind::task && !hovered && !current) {
        painter.setPen(QPen(Color::hover, 1));
        const int y = option.rect.bottom();
        painter.drawLine(QPoint(layout.title.left(), y), QPoint(layout.background.right() - paddingX, y));
    }
}

} // namespace

QRect ReadyRowDelegate::completeRect(const QRect &rowRect)
{
    const int titleHeight = QFontMetrics(bodyFont()).height();
    return QRect(rowRect.left() + paddingX, rowRect.top() + 1 + paddingY + (titleHeight - circleSize) / 2, circleSize,
                 circleSize);
}

QRect ReadyRowDelegate::completeHitRect(const QRect &rowRect)
{
    return completeRect(rowRect).adjusted(-5, -5, 5, 5);
}

QSize ReadyRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    // Rows span the viewport; a task's height depends on how its details wrap.
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    const int width = view ? view->viewport()->width() : option.rect.width();
    if (kindOf(index) == Kind::header)
        return {width, headerTopPadding(index) + QFontMetrics(sectionFont()).height() + headerBottom};
    const TaskLayout layout = layoutTask(QRect(0, 0, width, 0), index);
    return {width, layout.details.bottom() + 1 + paddingY + 1};
}

void ReadyRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (kindOf(index) == Kind::header)
        paintHeader(*painter, option, index);
    else
        paintTask(*painter, option, index);
    painter->restore();
}

bool ReadyRowDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                                 const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || kindOf(index) != Kind::task)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const TaskLayout layout = layoutTask(option.rect, index);
    const QString title = index.data(Qt::DisplayRole).toString();
    if (completeHitRect(option.rect).contains(event->pos()))
        QToolTip::showText(event->globalPos(), qtTrId("ready.row.complete"), view, layout.circle);
    else if (QFontMetrics(bodyFont()).horizontalAdvance(title) > layout.title.width())
        QToolTip::showText(event->globalPos(), title, view, option.rect);
    else
        QToolTip::hideText();
    return true;
}

} // namespace fenrow

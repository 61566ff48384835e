#include "ArchiveRowDelegate.h"

#include "ArchiveListModel.h"
#include "look/Glyphs.h"
#include "look/Theme.h"

#include <QAbstractItemView>
#include <QCursor>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace fenrow {

namespace {

using namespace Theme;
using Kind = ArchiveListModel::Kind;

constexpr int paddingX = 12;
constexpr int paddingY = 9;
constexpr int kindMarkSize = 16;
constexpr int markSize = 12;
constexpr int markGap = 5;
constexpr int chipGap = 16;
constexpr int detailGap = 3;
constexpr int headerTop = 22;
constexpr int firstHeaderTop = 4;
constexpr int headerBottom = 6;
constexpr int buttonHeight = 26;
constexpr int buttonPaddingX = 9;
constexpr int buttonIcon = 14;
constexpr int actionGap = 4;

Kind kindOf(const QModelIndex &index)
{
    return Kind(index.data(ArchiveListModel::KindRole).toInt());
}

int headerTopPadding(const QModelIndex &index)
{
    return index.row() == 0 ? firstHeaderTop : headerTop;
}

int restoreWidth()
{
    const QFontMetrics metrics(captionFont());
    return buttonPaddingX + buttonIcon + markGap + metrics.horizontalAdvance(qtTrId("archive.row.restore")) +
           buttonPaddingX;
}

// Rows are as tall as a title and a line of details, whatever the font.
int recordHeight()
{
    return paddingY + QFontMetrics(bodyFont()).height() + detailGap + QFontMetrics(captionFont()).lineSpacing() +
           paddingY;
}

QRect backgroundOf(const QRect &rowRect)
{
    return rowRect.adjusted(0, 1, 0, -1);
}

// The title's line: between the kind mark and the actions. A row with no
// restore lends its place to the text.
QRect titleRect(const QRect &rowRect, bool canRestore)
{
    const int left = rowRect.left() + paddingX + kindMarkSize + paddingX;
    const int right = (canRestore ? ArchiveRowDelegate::restoreRect(rowRect) : ArchiveRowDelegate::deleteRect(rowRect))
                          .left() - paddingX;
    return QRect(left, rowRect.top() + 1 + paddingY, std::max(0, right - left), QFontMetrics(bodyFont()).height());
}

struct Chip {
    Glyphs::Mark mark;
    QString text;
};

QList<Chip> chipsOf(const QModelIndex &index)
{
    QList<Chip> chips;
    for (const Chip &chip : {Chip{Glyphs::Mark::flow, index.data(ArchiveListModel::FlowNameRole).toString()},
                             Chip{Glyphs::Mark::estimate, index.data(ArchiveListModel::TimeTextRole).toString()},
                             Chip{Glyphs::Mark::repeat, index.data(ArchiveListModel::RepeatTextRole).toString()}})
        if (!chip.text.isEmpty())
            chips.append(chip);
    return chips;
}

bool under(const QStyleOptionViewItem &option, const QRect &area)
{
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    return view && (option.state & QStyle::State_MouseOver) &&
           area.contains(view->viewport()->mapFromGlobal(QCursor::pos()));
}

void paintHeader(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QRect content = option.rect.adjusted(paddingX, headerTopPadding(index), -paddingX, -headerBottom);
    const QString count = QString::number(index.data(ArchiveListModel::CountRole).toLongLong());
    const int countWidth = QFontMetrics(captionFont()).horizontalAdvance(count);
    painter.setFont(sectionFont());
    const QString title = painter.fontMetrics().elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight,
                                                           content.width() - countWidth - 8);
    painter.setPen(Color::text);
    painter.drawText(content, Qt::AlignLeft | Qt::AlignVCenter, title);
    const int titleWidth = painter.fontMetrics().horizontalAdvance(title);
    painter.setFont(captionFont());
    painter.setPen(Color::secondaryText);
    painter.drawText(content.adjusted(titleWidth + 8, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, count);
}

void paintRestore(QPainter &painter, const QRect &rect, bool hovered)
{
    if (hovered) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Color::accentSoft);
        painter.drawRoundedRect(QRectF(rect), 6, 6);
    }
    const QColor color = hovered ? Color::accent : Color::secondaryText;
    const QRect icon(rect.left() + buttonPaddingX, rect.center().y() - buttonIcon / 2 + 1, buttonIcon, buttonIcon);
    Glyphs::restore(color).paint(&painter, icon);
    painter.setFont(captionFont());
    painter.setPen(color);
    painter.drawText(rect.adjusted(buttonPaddingX + buttonIcon + markGap, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     qtTrId("archive.row.restore"));
}

void paintDelete(QPainter &painter, const QRect &rect, bool hovered)
{
    if (hovered) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Color::hover);
        painter.drawRoundedRect(QRectF(rect), 6, 6);
    }
    const QRect icon(rect.center().x() - buttonIcon / 2 + 1, rect.center().y() - buttonIcon / 2 + 1, buttonIcon,
                     buttonIcon);
    Glyphs::trash(hovered ? Color::destructive : Color::ringOutline).paint(&painter, icon);
}

void paintRecord(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QRect background = backgroundOf(option.rect);
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    const bool hovered = option.state & QStyle::State_MouseOver;
    const bool current = (option.state & QStyle::State_HasFocus) && view && view->hasFocus();
    if (hovered || current) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(current ? Color::accentSoft : Color::sidebar);
        painter.drawRoundedRect(background, Metric::rowRadius, Metric::rowRadius);
    }

    const QRect remove = ArchiveRowDelegate::deleteRect(option.rect);
    const QRect restore = ArchiveRowDelegate::restoreRect(option.rect);
    const bool canRestore = index.data(ArchiveListModel::CanRestoreRole).toBool();
    const bool repeated = !index.data(ArchiveListModel::RepeatTextRole).toString().isEmpty();

    const QFontMetrics titleMetrics(bodyFont());
    const QRect title = titleRect(option.rect, canRestore);
    const QRectF kindMark(option.rect.left() + paddingX, title.top() + (title.height() - kindMarkSize) / 2.0,
                          kindMarkSize, kindMarkSize);
    if (repeated)
        Glyphs::paintMark(painter, kindMark.adjusted(1, 1, -1, -1), Glyphs::Mark::repeat, Color::ringOutline);
    else
        Glyphs::archiveBox(Color::ringOutline).paint(&painter, kindMark.toRect());

    const int textLeft = title.left();
    painter.setFont(bodyFont());
    painter.setPen(Color::text);
    painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
                     titleMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight, title.width()));

    painter.setFont(captionFont());
    const QFontMetrics metrics = painter.fontMetrics();
    const QRect line(textLeft, title.bottom() + 1 + detailGap, title.width(), metrics.lineSpacing());
    int x = line.left();
    for (const Chip &chip : chipsOf(index)) {
        if (x + markSize >= line.right())
            break;
        const QRectF mark(x, line.center().y() - markSize / 2.0 + 0.5, markSize, markSize);
        Glyphs::paintMark(painter, mark, chip.mark, Color::ringOutline);
        const int left = x + markSize + markGap;
        const QString text = metrics.elidedText(chip.text, Qt::ElideRight, std::max(0, line.right() + 1 - left));
        painter.setPen(Color::secondaryText);
        painter.drawText(QRect(left, line.top(), line.right() + 1 - left, line.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, text);
        x = left + metrics.horizontalAdvance(text) + chipGap;
    }

    if (canRestore)
        paintRestore(painter, restore, under(option, restore));
    paintDelete(painter, remove, under(option, remove));

    // A hairline between records of one day; a header sets days apart.
    const QModelIndex next = index.siblingAtRow(index.row() + 1);
    if (next.isValid() && kindOf(next) == Kind::record && !hovered && !current) {
        painter.setPen(QPen(Color::hover, 1));
        const int y = option.rect.bottom();
        painter.drawLine(QPoint(textLeft, y), QPoint(background.right() - paddingX, y));
    }
}

} // namespace

QRect ArchiveRowDelegate::deleteRect(const QRect &rowRect)
{
    const QRect background = backgroundOf(rowRect);
    return QRect(background.right() + 1 - paddingX + 6 - buttonHeight, background.center().y() - buttonHeight / 2 + 1,
                 buttonHeight, buttonHeight);
}

QRect ArchiveRowDelegate::restoreRect(const QRect &rowRect)
{
    const QRect remove = deleteRect(rowRect);
    const int width = restoreWidth();
    return QRect(remove.left() - actionGap - width, remove.top(), width, buttonHeight);
}

QSize ArchiveRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    const int width = view ? view->viewport()->width() : option.rect.width();
    if (kindOf(index) == Kind::day)
        return {width, headerTopPadding(index) + QFontMetrics(sectionFont()).height() + headerBottom};
    return {width, recordHeight() + 2};
}

void ArchiveRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (kindOf(index) == Kind::day)
        paintHeader(*painter, option, index);
    else
        paintRecord(*painter, option, index);
    painter->restore();
}

bool ArchiveRowDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                                   const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || kindOf(index) != Kind::record)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QRect restore = restoreRect(option.rect);
    const QRect remove = deleteRect(option.rect);
    const bool canRestore = index.data(ArchiveListModel::CanRestoreRole).toBool();
    if (canRestore && restore.contains(event->pos()))
        QToolTip::showText(event->globalPos(), qtTrId("archive.row.restore.help"), view, restore);
    else if (remove.contains(event->pos()))
        QToolTip::showText(event->globalPos(), qtTrId("archive.row.delete"), view, remove);
    else if (const QString title = index.data(Qt::DisplayRole).toString();
             QFontMetrics(bodyFont()).horizontalAdvance(title) > titleRect(option.rect, canRestore).width())
        QToolTip::showText(event->globalPos(), title, view, option.rect);
    else
        QToolTip::hideText();
    return true;
}

} // namespace fenrow

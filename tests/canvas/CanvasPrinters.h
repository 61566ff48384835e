#pragma once

#include "canvas/NodeSize.h"

#include <QPointF>
#include <QRectF>
#include <QString>
#include <QUuid>

#include <gtest/gtest.h>

#include <ostream>

// Readable failure messages for the canvas's Qt values.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QPointF &point, std::ostream *out)
{
    *out << '(' << point.x() << ", " << point.y() << ')';
}

inline void PrintTo(const QRectF &rect, std::ostream *out)
{
    *out << '(' << rect.x() << ", " << rect.y() << ' ' << rect.width() << " x " << rect.height() << ')';
}

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QUuid &id, std::ostream *out)
{
    *out << id.toString(QUuid::WithoutBraces).left(8).toStdString();
}
QT_END_NAMESPACE

namespace fenrow {
inline void PrintTo(const NodeSize &size, std::ostream *out)
{
    *out << size.width << " x " << size.height;
}
} // namespace fenrow

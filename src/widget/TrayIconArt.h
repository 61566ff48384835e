#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

#include <optional>

namespace fenrow::TrayIconArt {

// The accent of a palette's raw name ("violet", "blue", ...), the first
// palette for an unknown one; the lighter tone for dark surroundings.
QColor accent(const QString &paletteRaw, bool dark = false);

// The tray mark in `color`, with the ready count as a badge when there is
// one; without a count it is drawn plain.
QPixmap mark(int size, const QColor &color, std::optional<qsizetype> badge);
QIcon icon(const QColor &color, std::optional<qsizetype> badge);

} // namespace fenrow::TrayIconArt

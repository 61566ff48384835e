#pragma once

#include <QLocale>
#include <QString>

namespace fenrow::TextFolding {

// The locale whose case rules folding follows: the interface language's,
// so that a Turkish interface folds "I" to dotless "ı".
QLocale interfaceLocale();

// Text reduced for matching that ignores case and diacritics: lower-cased
// by the locale's rules, decomposed (NFKD) and stripped of combining marks.
// "Résumé" and "RESUME" both fold to "resume".
QString fold(const QString &text, const QLocale &locale = interfaceLocale());

// Whether `text`, folded, contains `foldedQuery` (already folded, so a
// search folds its query once). An empty query matches nothing.
bool contains(const QString &text, const QString &foldedQuery, const QLocale &locale = interfaceLocale());

} // namespace fenrow::TextFolding

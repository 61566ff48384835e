#pragma once

#include <QString>

class QBoxLayout;
class QLabel;
class QVBoxLayout;
class QWidget;

namespace fenrow {

// The parts every settings page is made of, so the pages line up: a page
// is a column of titled sections, a section a column of rows with a
// caption under them where one helps.
namespace SettingsForm {

// An empty page with its title; the returned layout takes the sections.
QVBoxLayout *makePage(QWidget *page, const QString &title);
QLabel *sectionTitle(const QString &text, QWidget *parent);
// Secondary text that wraps.
QLabel *caption(const QString &text, QWidget *parent);
// A line in the warning colour, named `name`, hidden until there is
// something to say.
QLabel *warning(const QString &text, const QString &name, QWidget *parent);
// A label on the left and `control` on the right.
QWidget *row(const QString &label, QWidget *control, QWidget *parent);

} // namespace SettingsForm

} // namespace fenrow

#pragma once

#include "Glyphs.h"

#include <QWidget>

class QLabel;

namespace fenrow {

class EmptyStateSymbol;

// A place with nothing to show yet: a large symbol, a title and a short
// message, centred. Its parts are named after the view: "<name>.title" and
// "<name>.message".
class EmptyStateView : public QWidget {
    Q_OBJECT

public:
    explicit EmptyStateView(const QString &name, QWidget *parent = nullptr);

    void setContent(Glyphs::Symbol symbol, const QString &title, const QString &message);
    Glyphs::Symbol symbol() const;

private:
    EmptyStateSymbol *m_symbol = nullptr;
    QLabel *m_title = nullptr;
    QLabel *m_message = nullptr;
};

} // namespace fenrow

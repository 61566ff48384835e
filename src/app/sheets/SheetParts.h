#pragma once

#include "capture/ManualOnlyBanner.h"

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPainter;
class QPushButton;
class QTimer;
class QToolButton;
class QVBoxLayout;

namespace fenrow {

class AppEnvironment;

// The small pictures of the sheets, drawn so they stay crisp at any scale.
namespace SheetGlyphs {
enum class Glyph { scissors, sparkles, warning, handle };
void paint(QPainter &painter, const QRectF &rect, Glyph glyph, const QColor &color);
// The glyph at menu size.
QIcon icon(Glyph glyph, const QColor &color);
} // namespace SheetGlyphs

// A glyph at a fixed size, in one colour.
class SheetGlyph : public QWidget {
public:
    SheetGlyph(SheetGlyphs::Glyph glyph, const QColor &color, int size, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    SheetGlyphs::Glyph m_glyph;
    QColor m_color;
};

// A turning arc that says work is under way.
class BusyIndicator : public QWidget {
public:
    explicit BusyIndicator(QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QTimer *m_timer = nullptr;
    int m_angle = 0;
};

// A line of text with a turning arc before it, named after the text's key.
class ProgressRow : public QWidget {
public:
    ProgressRow(const char *key, QWidget *parent = nullptr);
    // A Stop button at the end of the row, for work that can be given up;
    // named "<key>.stop".
    QPushButton *addStopButton();

private:
    QString m_key;
};

// A tinted box with a glyph, a bold title and a message below it: a
// warning that lets the user go on, or what went wrong.
class NoticeRow : public QWidget {
public:
    NoticeRow(const QString &identifier, SheetGlyphs::Glyph glyph, QWidget *parent = nullptr);
    void setTexts(const QString &title, const QString &message);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QLabel *m_title = nullptr;
    QLabel *m_message = nullptr;
};

// The slim bar that says the language model is off and that everything can
// still be done by hand. It follows the environment's availability; once
// dismissed it stays away for the life of the view that holds it.
class ManualOnlyBannerBar : public QWidget {
    Q_OBJECT

public:
    ManualOnlyBannerBar(AppEnvironment &environment, QWidget *parent = nullptr);

    bool isDismissed() const { return m_dismissed; }
    void dismiss();
    // Shows "Choose a model…", which asks for the settings' model page;
    // only where someone opens it.
    void offerModelChoice();

signals:
    void dismissed();
    void modelChoiceRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void refresh();

    AppEnvironment &m_environment;
    QLabel *m_message = nullptr;
    QToolButton *m_chooseModel = nullptr;
    bool m_dismissed = false;
};

// The frame every sheet shares: title and subtitle on top, the sheet's own
// content in `body`, and at the foot a cancel button and the primary one,
// right-aligned. Sheets are as wide as `width` and as tall as they need.
class SheetFrame : public QWidget {
    Q_OBJECT

public:
    SheetFrame(const QString &identifier, int width, QWidget *parent = nullptr);

    QLabel *title() const { return m_title; }
    QLabel *subtitle() const { return m_subtitle; }
    QVBoxLayout *body() const { return m_body; }
    QPushButton *cancelButton() const { return m_cancel; }
    QPushButton *primaryButton() const { return m_primary; }

    // A field's caption above it, in the caption font.
    static QLabel *fieldLabel(const QString &text, QWidget *parent);

signals:
    // The sheet is done: created, applied, or cancelled.
    void closeRequested();

protected:
    void showEvent(QShowEvent *event) override;

private:
    QLabel *m_title = nullptr;
    QLabel *m_subtitle = nullptr;
    QVBoxLayout *m_body = nullptr;
    QPushButton *m_cancel = nullptr;
    QPushButton *m_primary = nullptr;
};

} // namespace fenrow

#pragma once

#include "CanvasGlyphs.h"

#include <QToolButton>
#include <QWidget>

namespace fenrow {

class CanvasAppearance;

// The floating surface that the canvas's toolbar, zoom pill and readout
// sit on: a rounded panel with a soft shadow in the palette's colours.
class CanvasPanel : public QWidget {
    Q_OBJECT

public:
    CanvasPanel(CanvasAppearance &appearance, QWidget *parent = nullptr);

    static constexpr int shadowRoom = 4;
    static constexpr int radius = 10;

protected:
    void paintEvent(QPaintEvent *event) override;

    CanvasAppearance &m_appearance;
};

// An icon button of a canvas panel, drawn with the palette: quiet until
// hovered, tinted while checked.
class CanvasToolButton : public QToolButton {
    Q_OBJECT

public:
    CanvasToolButton(CanvasAppearance &appearance, CanvasGlyphs::Glyph glyph, const QString &name,
                     const QString &help, QWidget *parent = nullptr);

    void setGlyph(CanvasGlyphs::Glyph glyph);
    // A primary button shows its text beside the glyph on the brand colour.
    void setPrimary(bool primary);
    QSize sizeHint() const override;

    static constexpr int side = 30;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    CanvasAppearance &m_appearance;
    CanvasGlyphs::Glyph m_glyph;
    bool m_primary = false;
    bool m_hovering = false;
};

} // namespace fenrow

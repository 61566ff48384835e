#pragma once

#include "look/BrandPalette.h"

#include <QObject>

namespace fenrow {

class AppPreferences;

// Which colours the canvas draws with: the accent palette and the theme of
// the preferences, and for the automatic theme the desktop's own light or
// dark choice. Follows all three as they change.
class CanvasAppearance : public QObject {
    Q_OBJECT

public:
    explicit CanvasAppearance(AppPreferences &preferences, QObject *parent = nullptr);

    const CanvasColors &colors() const { return m_colors; }
    // Whether the automatic theme reads as dark right now.
    static bool desktopPrefersDark();

signals:
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void update();

    AppPreferences &m_preferences;
    CanvasColors m_colors;
};

} // namespace fenrow

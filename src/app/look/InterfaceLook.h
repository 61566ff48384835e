#pragma once

#include "Theme.h"

#include <QObject>
#include <QString>

namespace fenrow {

class AppPreferences;
class PortalAppearance;

// The language and the colours the windows are built in: the interface
// language, the accent palette, and light or dark from the theme preference
// (for "auto", the desktop's choice, followed live where the desktop
// portal tells of a change). It puts them in force for the process
// (translator, Theme colours, application palette) as the preferences
// change, and says when the result differs from what the windows were built
// with, so they can be built again: texts and colours are read while
// building, so a new tree is what shows them all at once, without a
// restart.
class InterfaceLook : public QObject {
    Q_OBJECT

public:
    // Puts the preferences' colours in force at once, without a signal.
    explicit InterfaceLook(AppPreferences &preferences, QObject *parent = nullptr);

    // Language code, palette and appearance joined by "#": equal identities
    // build equal windows.
    QString identity() const { return m_identity; }
    bool isDark() const { return Theme::colors().dark; }

    // Looks at the desktop's choice again; for the automatic theme.
    void refreshDesktop();

signals:
    // The identity moved. Sent from the event loop, once per burst of
    // changes, so that the control that made the change is not deleted
    // under its own signal.
    void changed();

private:
    void applyLanguage();
    void applyColors();
    void noteIdentity();
    QString currentIdentity() const;

    AppPreferences &m_preferences;
    PortalAppearance *m_portal;
    QString m_identity;
    bool m_announcing = false;
};

} // namespace fenrow

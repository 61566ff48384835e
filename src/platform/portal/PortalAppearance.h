#pragma once

#include <QDBusConnection>
#include <QObject>

#include <optional>

class QDBusMessage;

namespace fenrow
{

// The desktop's light or dark preference as the portal's Settings tell it
// ("org.freedesktop.appearance" "color-scheme"), read once when made and
// followed through SettingChanged while it lives. GNOME keeps the choice
// there and nowhere a file-reading fallback would find it.
class PortalAppearance : public QObject
{
    Q_OBJECT

public:
    // The values of "color-scheme".
    enum class Scheme : uint { noPreference = 0, preferDark = 1, preferLight = 2 };

    // Reads the preference at once, within `timeoutMs`, and only where the
    // portal already runs: without one, nothing is waited for.
    explicit PortalAppearance(const QDBusConnection &bus, int timeoutMs, QObject *parent = nullptr);

    // None where no portal answered.
    std::optional<Scheme> scheme() const { return m_scheme; }

    // True for dark, false for light; none where the portal has no
    // preference or did not say.
    std::optional<bool> prefersDark() const;

signals:
    // The portal said the preference changed.
    void changed();

private slots:
    void onSettingChanged(const QDBusMessage &message);

private:
    void read(int timeoutMs);
    static std::optional<Scheme> schemeOf(const QVariant &value);

    QDBusConnection m_bus;
    std::optional<Scheme> m_scheme;
};

} // namespace fenrow

#pragma once

#include <QAbstractButton>

#include <optional>

namespace fenrow {

// A fixed row at the top of the sidebar that leads to a view across all
// flows: an icon, a title and an optional count at the trailing end. It is
// checked while its view is shown.
class SidebarRouteRow : public QAbstractButton {
    Q_OBJECT

public:
    SidebarRouteRow(const QIcon &icon, const QString &title, QWidget *parent = nullptr);

    // No count hides the badge, and so does 0: a zero badge is only noise.
    void setBadge(std::optional<qsizetype> count);
    std::optional<qsizetype> badge() const { return m_badge; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    QString badgeText() const;
    int badgeWidth() const;

    std::optional<qsizetype> m_badge;
    bool m_hovered = false;
};

} // namespace fenrow

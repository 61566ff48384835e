#pragma once

#include <QString>
#include <QUuid>

namespace fenrow {

// What the detail area of the main window shows: nothing, one flow, the
// Ready list of all flows, or the archive. A value: the window owns the
// current one and the sidebar mirrors it.
class DetailRoute {
public:
    enum class Kind { none, flow, ready, archive };

    DetailRoute() = default;
    static DetailRoute flow(const QUuid &id) { return id.isNull() ? DetailRoute() : DetailRoute(Kind::flow, id); }
    static DetailRoute ready() { return DetailRoute(Kind::ready, {}); }
    static DetailRoute archive() { return DetailRoute(Kind::archive, {}); }

    Kind kind() const { return m_kind; }
    bool isNone() const { return m_kind == Kind::none; }
    bool isReady() const { return m_kind == Kind::ready; }
    bool isArchive() const { return m_kind == Kind::archive; }
    // The flow's id for a flow route, null for the others.
    QUuid flowId() const { return m_flowId; }

    // "ready", "archive", a flow's id, or empty for none; what is not
    // understood reads as none.
    QString raw() const
    {
        switch (m_kind) {
        case Kind::flow:
            return m_flowId.toString(QUuid::WithoutBraces);
        case Kind::ready:
            return QStringLiteral("ready");
        case Kind::archive:
            return QStringLiteral("archive");
        case Kind::none:
            break;
        }
        return {};
    }
    static DetailRoute fromRaw(const QString &raw)
    {
        if (raw == QLatin1StringView("ready"))
            return ready();
        if (raw == QLatin1StringView("archive"))
            return archive();
        return flow(QUuid::fromString(raw));
    }

    friend bool operator==(const DetailRoute &, const DetailRoute &) = default;

private:
    DetailRoute(Kind kind, const QUuid &flowId) : m_kind(kind), m_flowId(flowId) {}

    Kind m_kind = Kind::none;
    QUuid m_flowId;
};

} // namespace fenrow

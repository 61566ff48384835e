#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUuid>

#include <optional>

namespace fenrow {

// A saved flow shape; the payload is small and stays in the main row.
class FlowTemplate {
public:
    QUuid id;
    QString name;
    QDateTime createdAt;
    std::optional<QByteArray> payload;
};

} // namespace fenrow
